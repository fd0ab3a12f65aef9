// date and duration: the small companion types of DateTime.
//
// A `date` is a day number: day N is the day whose chronological Julian Day
// Number is N + 1, so 2000-01-01 is day 2,451,544 and 1899-12-30 (the OLE
// epoch) is day 2,415,018. Dates are proleptic Gregorian (no Julian
// cut-over). A `duration` is a signed count of 1/10,000-second units, the
// unit of DateTime.
//
// All functions are pure and may be called from any thread.
#pragma once

#include <cstdint>

#include "velcoredata/platform/Export.h"

struct VELCOREDATA_EXPORT date {
  uint32_t dayNumber = 0;

  // The day number of a calendar date by the Julian-Day formula (proleptic
  // Gregorian). Month and day are read as signed 8-bit values and are not
  // validated: 31 April is 1 May, month 13 is January of the next year,
  // negative years count without a year 0. The result wraps to 32 bits.
  static date gregoriandate(long year, char month, char day);

  // The day of ISO-8601 year `isoYear`, week `isoWeek` (1-53) and weekday
  // `isoWeekday` (1 = Monday ... 7 = Sunday). Not validated: week 0 or 54
  // simply count on from the Monday of week 1.
  static date iso8601date(long isoYear, char isoWeek, char isoWeekday);

  // 1 = Monday ... 7 = Sunday.
  static int iso8601weekday(const date& d);

  // The ISO-8601 year, week (1-53) and weekday (1 = Monday) of a day.
  static void iso8601parts(long& isoYear, char& isoWeek, char& isoWeekday, const date& d);

  friend bool operator==(const date& a, const date& b) noexcept { return a.dayNumber == b.dayNumber; }
};

struct VELCOREDATA_EXPORT duration {
  int64_t units = 0;  // 1/10,000 s

  // ((((|days| x 24 + |hours|) x 60 + |minutes|) x 60 + |seconds|) x 10,000
  // + |units|), negative when days is negative or any other part is: the
  // magnitudes are summed and the sign applies to the whole span.
  static duration hmsduration(long long days, long long hours, long long minutes, long long seconds,
                              long long units);

  friend bool operator==(const duration& a, const duration& b) noexcept { return a.units == b.units; }
};
