// The ICU formats a TLocale keeps: its date-format cache entries and the
// formats it tries when it parses text. Private to the locale code.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "velcoredata/datetime/DateTimeParseOptions.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/VelICU.h"

struct TLocale::CachedDateFormat {
  std::unique_ptr<VelICU::ICUSimpleDateFormat> format;
  std::mutex use;  // held while the format formats, parses or is cloned
};

// What a parse pattern carries and needs from the parse calendar.
struct TLocale::ParseTraits {
  // The parts the pattern carries (Date, Time or both).
  DateTimeParseOptions parts = DateTimeParseOptions::None;
  // ISO 8601 week dates: read with weeks starting on Monday, week 1 being the
  // first with four days.
  bool isoWeeks = false;
  // The pattern reads a zone or offset, which ICU sets on the calendar: the
  // calendar goes back to UTC afterwards.
  bool hasZone = false;
  // The pattern names the day (day of month or year, weekday, week) and the
  // month (or something that fixes it); a date pattern without them takes
  // them from the reference, or the first day and month when there is none.
  bool hasDay = false;
  bool hasMonth = false;
  // The runs of digits a text needs at least: one per numeric field, or per
  // group of abutting numeric fields.
  int digitRuns = 0;
  // The exact lengths of the digit runs the groups of two or more abutting
  // numeric fields need ("yyyyMMdd": 8), as bit n for length n.
  uint32_t abuttingRunLengths = 0;
};

struct TLocale::ParseFormats {
  struct Candidate {
    std::unique_ptr<VelICU::ICUSimpleDateFormat> format;
    ParseTraits traits;
  };

  // The locale's own patterns of every ICU style pair, full date-time first,
  // each pair also joined with a plain space; one-digit days, months and
  // hours accepted.
  std::vector<Candidate> localeStyles;
  // The parsing-format table in Gregorian: every entry for the default ISO
  // locale, the locale-neutral ones for the others.
  std::vector<Candidate> table;
  bool isDefaultISOLocale = false;
  // Every number of these patterns is written in decimal digits (see
  // ParseTraits::digitRuns), so a text short of digit runs cannot match.
  bool digitsRequired = false;
  // The locale's Qt formats in ICU form, where they differ from the above.
  std::vector<Candidate> native;

  // The locale calendar's own week rules, restored after an ISO week date.
  UCalendarDaysOfWeek firstDayOfWeek = UCAL_SUNDAY;
  uint8_t minimalDaysInFirstWeek = 1;

  // The traits of the candidate the cached parse formatter was cloned from.
  ParseTraits formatterTraits;
};
