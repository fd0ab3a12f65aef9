// TLocale: parsing date-time text.
//
// One recursive mutex per TLocale serialises parsing: the candidate formats,
// the parse calendar and the cached parse formatter are shared state of the
// object and ICU formats are not safe for concurrent use.

#include <QLocale>

#include <algorithm>

#include <unicode/numsys.h>

#include "velcoredata/datetime/DateTimeParsingFormats.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/locale/internal/ICUDateFormats.h"
#include "velcoredata/locale/internal/TLocaleParseFormats.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TCType.h"

#include <mutex>

namespace {

using Candidate = TLocale::ParseFormats::Candidate;
using Options = DateTimeParseOptions;

// 1899-12-30 00:00, the day of a time without a date.
constexpr unsigned long long kOLEEpochValue = 2086575552000000ull;
constexpr unsigned long long kUnitsPerDay = 864000000ull;
constexpr int kMaxDateTimeTextLength = 256;

bool IsPatternLetter(char16_t c) noexcept { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }

// Calls `visit(letter, position, count)` for each run of a pattern letter
// outside quoted literals.
template <class Visit>
void ForEachField(const TString& pattern, Visit&& visit) {
  bool quoted = false;
  for (int i = 0; i < pattern.size();) {
    const char16_t c = pattern[i];
    if (c == u'\'') {
      quoted = !quoted;
      ++i;
      continue;
    }
    int end = i + 1;
    if (!quoted && IsPatternLetter(c)) {
      while (end < pattern.size() && pattern[end] == c) ++end;
      visit(c, i, end - i);
    }
    i = end;
  }
}

// Whether a field run reads digits (its text form, if it has one, is not
// used at this length).
bool IsNumericField(char16_t c, int count) {
  static const TString alwaysNumeric(u"yYurdDFHhKkmsSwWg");
  static const TString numericWhenShort(u"MLecQq");
  return alwaysNumeric.contains(c) || (count <= 2 && numericWhenShort.contains(c));
}

TLocale::ParseTraits TraitsOf(const TString& pattern) {
  static const TString dateLetters(u"GyYuUrQqMLlwWdDFgEec");
  static const TString timeLetters(u"aBbhHkKmsSAjJC");
  static const TString zoneLetters(u"zZOvVXx");
  static const TString dayLetters(u"dDEecFwWg");
  static const TString monthLetters(u"MLDwWg");
  TLocale::ParseTraits traits;
  int previousEnd = -1;
  bool previousNumeric = false;
  int groupFields = 0;
  int groupWidth = 0;
  const auto endGroup = [&] {
    if (groupFields >= 2) traits.abuttingRunLengths |= 1u << std::min(groupWidth, 31);
    groupFields = 0;
    groupWidth = 0;
  };
  ForEachField(pattern, [&](char16_t c, int position, int count) {
    if (dateLetters.contains(c)) traits.parts = traits.parts | Options::Date;
    if (timeLetters.contains(c)) traits.parts = traits.parts | Options::Time;
    if (zoneLetters.contains(c)) traits.hasZone = true;
    if (dayLetters.contains(c)) traits.hasDay = true;
    if (monthLetters.contains(c)) traits.hasMonth = true;
    if (c == u'w') traits.isoWeeks = true;
    const bool numeric = IsNumericField(c, count);
    // Numeric fields that abut ("yyyyMMdd") share one run of digits.
    const bool abuts = numeric && previousNumeric && previousEnd == position;
    if (!abuts) endGroup();
    if (numeric) {
      if (!abuts) ++traits.digitRuns;
      ++groupFields;
      groupWidth += count;
    }
    previousEnd = position + count;
    previousNumeric = numeric;
  });
  endGroup();
  return traits;
}

// The runs of decimal digits in a text: how many, and which lengths occur
// (bit n for length n, 31 for 31 and more).
struct DigitRuns {
  int count = 0;
  uint32_t lengths = 0;
};

DigitRuns CountDigitRuns(const TString& text) noexcept {
  DigitRuns runs;
  int length = 0;
  for (int i = 0; i <= text.size(); ++i) {
    if (i < text.size() && TCType::isDigit(text[i])) {
      ++length;
      continue;
    }
    if (length > 0) {
      ++runs.count;
      runs.lengths |= 1u << std::min(length, 31);
    }
    length = 0;
  }
  return runs;
}

// Whether every number these patterns read is written in decimal digits: the
// locale's numbering system is decimal and its calendar writes years and
// days as numbers (the Japanese calendar writes a first year as "元", the
// Hebrew one uses Hebrew numerals, the Chinese ones cyclic year names).
bool ReadsDecimalDigits(const VelICU::ICULocale& locale, const VelICU::ICUCalendar& calendar) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberingSystem> numbers(icu::NumberingSystem::createInstance(locale, status));
  if (U_FAILURE(status) || numbers == nullptr || numbers->isAlgorithmic() || numbers->getRadix() != 10) return false;
  const std::string type = calendar.getType();
  return type == "gregorian" || type == "iso8601" || type == "buddhist" || type == "roc" || type == "persian" ||
         type == "indian" || type.rfind("islamic", 0) == 0;
}

// In strict parsing ICU wants both digits of a two-letter day, month or hour
// field; typed dates often have one ("5.1.2020" for "dd.MM.yy"). One letter
// accepts one or two digits, so a run of two becomes one - unless the field
// abuts another ("yyyyMMdd"), where the width is what separates them.
TString RelaxForParsing(const TString& pattern) {
  TString relaxed = pattern;
  int removed = 0;
  ForEachField(pattern, [&](char16_t c, int position, int count) {
    if (count != 2 || !TString(u"dMHhKk").contains(c)) return;
    const bool abutsBefore = position > 0 && IsPatternLetter(pattern[position - 1]);
    const bool abutsAfter = position + 2 < pattern.size() && IsPatternLetter(pattern[position + 2]);
    if (abutsBefore || abutsAfter) return;
    relaxed.remove(position - removed, 1);
    ++removed;
  });
  return relaxed;
}

bool IsValidValue(unsigned long long value) noexcept {
  return value - 1518552576000000ull < 3124137599990001ull;
}

bool Allows(Options options, Options parts) noexcept {
  // A candidate is allowed when every part it carries is asked for.
  return parts != Options::None && (parts & options) == parts;
}

// The fields of the reference's date that a text may leave out, in the
// parse calendar's own system.
struct ReferenceFields {
  int32_t era;
  int32_t year;
  int32_t month;
  int32_t day;
};

bool ReadReferenceFields(VelICU::ICUCalendar& calendar, unsigned long long reference, ReferenceFields& fields) {
  UErrorCode status = U_ZERO_ERROR;
  calendar.setTime(LocaleInternal::ValueToUDate(reference / kUnitsPerDay * kUnitsPerDay), status);
  fields.era = calendar.get(UCAL_ERA, status);
  fields.year = calendar.get(UCAL_YEAR, status);
  fields.month = calendar.get(UCAL_MONTH, status);
  fields.day = calendar.get(UCAL_DATE, status);
  return U_SUCCESS(status);
}

struct Attempt {
  const icu::UnicodeString& text;
  ReferenceFields reference;
  bool whole;  // the whole text must be consumed
  // Whether the caller gave a reference (not the default, the OLE epoch),
  // and its time of day in units.
  bool hasReference = false;
  unsigned long long referenceTimeOfDay = 0;
};

Attempt MakeAttempt(const icu::UnicodeString& text, bool whole, unsigned long long reference) {
  Attempt attempt{text, {}, whole};
  attempt.hasReference = reference != kOLEEpochValue;
  attempt.referenceTimeOfDay = reference % kUnitsPerDay;
  return attempt;
}

// One parse of the text with one format, on the shared parse calendar.
bool ParseWith(const VelICU::ICUSimpleDateFormat& format, const TLocale::ParseTraits& traits, const Attempt& attempt,
               const TLocale::ParseFormats& formats, VelICU::ICUCalendar& calendar, unsigned long long& value,
               int& consumed) {
  calendar.setFirstDayOfWeek(traits.isoWeeks ? UCAL_MONDAY : formats.firstDayOfWeek);
  calendar.setMinimalDaysInFirstWeek(traits.isoWeeks ? 4 : formats.minimalDaysInFirstWeek);
  // Only the reference's date fields are set, and set before the parse sets
  // its own: ICU resolves a date from the most recently set fields, so a
  // weekday after the date ("5. Januar 2020, Sonntag") cannot outvote it as it
  // would against a calendar whose fields all come from one instant.
  // A date without its day ("March 2021") is the first of the month, or
  // the reference's day moved back to the month's end ("February 2021"
  // from the 30th is the 28th); the day is set to 1 for the parse so that
  // the reference's day cannot make the month invalid. Without a reference
  // a date without its month is in January.
  const bool dateWithoutDay = (traits.parts & Options::Date) == Options::Date && !traits.hasDay;
  const bool dateWithoutMonth = (traits.parts & Options::Date) == Options::Date && !traits.hasMonth;
  calendar.clear();
  calendar.set(UCAL_ERA, attempt.reference.era);
  calendar.set(UCAL_YEAR, attempt.reference.year);
  calendar.set(UCAL_MONTH, dateWithoutMonth && !attempt.hasReference ? 0 : attempt.reference.month);
  calendar.set(UCAL_DATE, dateWithoutDay ? 1 : attempt.reference.day);
  icu::ParsePosition position(0);
  format.parse(attempt.text, calendar, position);
  bool ok = position.getErrorIndex() < 0 && position.getIndex() > 0 &&
            (!attempt.whole || position.getIndex() == attempt.text.length());
  UErrorCode status = U_ZERO_ERROR;
  if (ok && dateWithoutDay && attempt.hasReference) {
    const int32_t lastDay = calendar.getActualMaximum(UCAL_DATE, status);
    calendar.set(UCAL_DATE, std::min(attempt.reference.day, lastDay));
  }
  const double udate = ok ? calendar.getTime(status) : 0.0;
  if (traits.hasZone) calendar.setTimeZone(*icu::TimeZone::getGMT());
  if (!ok || U_FAILURE(status) || !LocaleInternal::UDateToValue(udate, value)) return false;
  // A date without a time of day takes the reference's.
  if ((traits.parts & Options::Time) != Options::Time) {
    value += attempt.referenceTimeOfDay;
    if (!IsValidValue(value)) return false;
  }
  consumed = position.getIndex();
  return true;
}

Candidate MakeCandidate(const TString& pattern, const VelICU::ICULocale& locale) {
  Candidate candidate;
  candidate.traits = TraitsOf(pattern);
  candidate.format = LocaleInternal::MakeDateFormat(RelaxForParsing(pattern), locale);
  if (candidate.traits.isoWeeks) {
    auto calendar = LocaleInternal::MakeCalendar(locale);
    calendar->setFirstDayOfWeek(UCAL_MONDAY);
    calendar->setMinimalDaysInFirstWeek(4);
    candidate.format->adoptCalendar(calendar.release());
  }
  return candidate;
}

// The locale's Qt formats (short and long date, time and date-time),
// translated to ICU patterns: what Qt would read, parsed the way everything
// else is (Qt's own parser reads date-times in the process's local time).
std::vector<TString> QtPatternsOf(const VelICU::ICULocale& locale) {
  const QLocale qt(QString::fromLatin1(locale.getBaseName()));
  std::vector<TString> patterns;
  for (const QLocale::FormatType type : {QLocale::LongFormat, QLocale::ShortFormat}) {
    for (const QString& format : {qt.dateTimeFormat(type), qt.dateFormat(type), qt.timeFormat(type)}) {
      patterns.push_back(TLocale::MorphQLocaleToICU(TString(format), false));
    }
  }
  return patterns;
}

// The text between begin and end without the white space around it, with
// no-break spaces made plain; `skipped` is the number of leading characters
// dropped.
TString PrepareText(const char16_t* begin, const char16_t* end, int& skipped) {
  const char16_t* first = begin;
  while (first < end && TCType::isSpace(*first)) ++first;
  const char16_t* last = end;
  while (last > first && TCType::isSpace(last[-1])) --last;
  skipped = static_cast<int>(first - begin);
  TString text(first, static_cast<int>(last - first));
  ICUUtils::NormalizeSpaces(text);
  return text;
}

}  // namespace

TLocale::ParseFormats& TLocale::GetParseFormats() const {
  if (m_parseFormats) return *m_parseFormats;
  auto formats = std::make_unique<ParseFormats>();
  PopulateFormatterAndCalendar(nullptr, nullptr);
  UErrorCode status = U_ZERO_ERROR;
  formats->firstDayOfWeek = m_parseCalendar->getFirstDayOfWeek(status);
  formats->minimalDaysInFirstWeek = m_parseCalendar->getMinimalDaysInFirstWeek();

  // The locale's patterns, by style pair, full date and time first: ICU's
  // own join of date and time ("dd.MM.yy, HH:mm") and the join with a space
  // that Format writes and people type ("dd.MM.yy HH:mm").
  std::vector<TString> seen;
  const auto add = [&](const TString& pattern) {
    if (pattern.isEmpty() || std::find(seen.begin(), seen.end(), pattern) != seen.end()) return;
    seen.push_back(pattern);
    formats->localeStyles.push_back(MakeCandidate(pattern, *m_icuLocale));
  };
  const auto patternOf = [&](VelICU::ICUEStyle date, VelICU::ICUEStyle time) {
    std::unique_ptr<VelICU::ICUDateFormat> format(
        VelICU::ICUDateFormat::createDateTimeInstance(date, time, *m_icuLocale));
    VEL_ASSERT(format != nullptr);
    return ICUUtils::GetPattern(*format);
  };
  const VelICU::ICUEStyle styles[] = {VelICU::ICUDateFormat::kFull, VelICU::ICUDateFormat::kLong,
                                      VelICU::ICUDateFormat::kMedium, VelICU::ICUDateFormat::kShort,
                                      VelICU::ICUDateFormat::kNone};
  for (VelICU::ICUEStyle date : styles) {
    for (VelICU::ICUEStyle time : styles) {
      if (date == VelICU::ICUDateFormat::kNone && time == VelICU::ICUDateFormat::kNone) continue;
      add(patternOf(date, time));
      if (date != VelICU::ICUDateFormat::kNone && time != VelICU::ICUDateFormat::kNone) {
        add(patternOf(date, VelICU::ICUDateFormat::kNone) + u" " + patternOf(VelICU::ICUDateFormat::kNone, time));
      }
    }
  }

  // The table reads Gregorian dates whatever the locale's calendar system:
  // ISO 8601 is Gregorian.
  formats->isDefaultISOLocale = m_languageCode.GetISOString().startsWith(LanguageUtils::GetDefaultISOString());
  formats->digitsRequired = ReadsDecimalDigits(*m_icuLocale, *m_parseCalendar);
  VelICU::ICULocale gregorian(*m_icuLocale);
  gregorian.setKeywordValue("calendar", "gregorian", status);
  VEL_ASSERT(VelICU::ICU_SUCCESS(status));
  for (int i = 0; i < GetDateTimeParsingFormatCount(); ++i) {
    if (!formats->isDefaultISOLocale && !IsLocaleNeutralDateTimeParsingFormat(i)) continue;
    formats->table.push_back(MakeCandidate(LookupDateTimeParsingFormatString(i), gregorian));
  }
  for (const TString& pattern : QtPatternsOf(*m_icuLocale)) {
    if (std::find(seen.begin(), seen.end(), pattern) != seen.end()) continue;
    seen.push_back(pattern);
    formats->native.push_back(MakeCandidate(pattern, *m_icuLocale));
  }
  m_parseFormats = std::move(formats);
  return *m_parseFormats;
}

void TLocale::PopulateFormatterAndCalendar(const VelICU::ICUSimpleDateFormat* format,
                                           const ParseTraits* traits) const {
  if (!m_parseCalendar) m_parseCalendar = LocaleInternal::MakeCalendar(*m_icuLocale);
  if (format == nullptr) return;
  m_parseFormatter.reset(format->clone());
  VEL_ASSERT(m_parseFormatter != nullptr);
  m_parseFormats->formatterTraits = *traits;
}

bool TLocale::ParseText(const char16_t* begin, const char16_t* end, unsigned long long reference,
                        DateTimeParseOptions options, uint32_t steps, unsigned long long& value,
                        const char16_t** stop) const {
  if (stop) *stop = begin;
  if (begin == nullptr || end < begin) return false;
  int skipped = 0;
  const TString text = PrepareText(begin, end, skipped);
  // Nothing longer is a date: the longest default patterns with month and
  // day names and a zone name stay far below this.
  if (text.isEmpty() || text.size() > kMaxDateTimeTextLength) return false;
  options = NormalizeDateTimeParseOptions(options);
  if (!IsValidValue(reference)) reference = kOLEEpochValue;
  const icu::UnicodeString utext = VelICU::ToUnicodeStringAlias(text);

  AutoSynchronize parsing(m_parseMutex);
  ++m_parseAttempts;
  ParseFormats& formats = GetParseFormats();
  Attempt attempt = MakeAttempt(utext, stop == nullptr, reference);
  if (!ReadReferenceFields(*m_parseCalendar, reference, attempt.reference)) return false;
  unsigned long long parsed = 0;
  int consumed = 0;
  // Texts without enough runs of digits are rejected without asking ICU: a
  // failed parse tries every form, at a few microseconds each.
  // Abutting numeric fields are read at their full width only: ICU reads
  // "yyyyMMdd" from shorter runs too, by retrying with narrower fields, which
  // gives nonsense ("123456" as 0123-04-05) and is slow when it fails.
  const DigitRuns digits = CountDigitRuns(text);
  const auto mayMatch = [&](const ParseTraits& traits) {
    return !formats.digitsRequired || (traits.digitRuns <= digits.count &&
                                       (traits.abuttingRunLengths & digits.lengths) == traits.abuttingRunLengths);
  };

  if ((steps & kCachedFormatterStep) != 0 && attempt.whole) {
    if (m_parseFormatter) {
      if (Allows(options, formats.formatterTraits.parts) && mayMatch(formats.formatterTraits) &&
          ParseWith(*m_parseFormatter, formats.formatterTraits, attempt, formats, *m_parseCalendar, parsed,
                    consumed)) {
        m_parseFormatterFailed = 0;
        value = parsed;
        return true;
      }
      m_parseFormatterFailed = 1;
    } else {
      m_parseFormatterFailed = 0;
    }
  }

  // The default ISO locale reads its own table first, every other locale its
  // own patterns first.
  struct List {
    uint32_t step;
    const std::vector<Candidate>* candidates;
  };
  List lists[3] = {{kLocaleStylesStep, &formats.localeStyles},
                   {kTableStep, &formats.table},
                   {kNativeStep, &formats.native}};
  if (formats.isDefaultISOLocale) std::swap(lists[0], lists[1]);
  int longest = 0;
  unsigned long long best = 0;
  for (const List& list : lists) {
    if ((steps & list.step) == 0) continue;
    for (const Candidate& candidate : *list.candidates) {
      if (!Allows(options, candidate.traits.parts) || !mayMatch(candidate.traits)) continue;
      if (!ParseWith(*candidate.format, candidate.traits, attempt, formats, *m_parseCalendar, parsed, consumed)) {
        continue;
      }
      if (attempt.whole) {
        PopulateFormatterAndCalendar(candidate.format.get(), &candidate.traits);
        m_parseFormatterFailed = 0;
        value = parsed;
        return true;
      }
      if (consumed > longest) {
        longest = consumed;
        best = parsed;
      }
    }
  }
  if (!attempt.whole) {
    if (longest == 0) return false;
    *stop = begin + skipped + longest;
    value = best;
    return true;
  }
  return false;
}

bool TLocale::ParseDateTime(const char16_t* begin, const char16_t* end, unsigned long long* value,
                            DateTimeParseOptions options, const char16_t** stop) const {
  unsigned long long parsed = 0;
  if (!ParseText(begin, end, kOLEEpochValue, options, kAllSteps, parsed, stop)) return false;
  *value = parsed;
  return true;
}

bool TLocale::ParseDateTimeTryAllFormats(const char16_t* text, unsigned long long* value,
                                         DateTimeParseOptions options) const {
  return ParseDateTimeTryAllFormats(text, kOLEEpochValue, value, options);
}

bool TLocale::ParseDateTimeTryAllFormats(const char16_t* text, unsigned long long reference,
                                         unsigned long long* value, DateTimeParseOptions options) const {
  if (text == nullptr) return false;
  const char16_t* end = text;
  while (*end != 0) ++end;
  unsigned long long parsed = 0;
  if (!ParseText(text, end, reference, options, kAllSteps, parsed, nullptr)) return false;
  *value = parsed;
  return true;
}

// ---- The DateTime forms and the single steps ----

namespace {

// Parses a TString through one step set into a DateTime.
template <class Parse>
bool IntoDateTime(DateTime& out, Parse&& parse) {
  unsigned long long parsed = 0;
  if (!parse(parsed)) return false;
  out = DateTime(parsed);
  return true;
}

}  // namespace

bool TLocale::ParseDateTime(const TString& text, const TString& pattern, DateTime& out,
                            DateTimeParseOptions options) const {
  int skipped = 0;
  const TString prepared = PrepareText(text.data(), text.data() + text.size(), skipped);
  if (prepared.isEmpty() || prepared.size() > kMaxDateTimeTextLength) return false;
  const std::shared_ptr<CachedDateFormat> entry = GetCachedDateFormat(pattern);
  const icu::UnicodeString utext = VelICU::ToUnicodeStringAlias(prepared);
  const ParseTraits traits = TraitsOf(pattern);
  if (!Allows(NormalizeDateTimeParseOptions(options), traits.parts)) return false;

  AutoSynchronize parsing(m_parseMutex);
  ++m_parseAttempts;
  const ParseFormats& formats = GetParseFormats();
  Attempt attempt = MakeAttempt(utext, true, kOLEEpochValue);
  if (!ReadReferenceFields(*m_parseCalendar, kOLEEpochValue, attempt.reference)) return false;
  unsigned long long parsed = 0;
  int consumed = 0;
  std::lock_guard<std::mutex> use(entry->use);
  if (!ParseWith(*entry->format, traits, attempt, formats, *m_parseCalendar, parsed, consumed)) return false;
  out = DateTime(parsed);
  return true;
}

bool TLocale::ParseDateTimeTryAllFormats(const TString& text, DateTime& out, DateTimeParseOptions options) const {
  return ParseDateTimeTryAllFormats(text, DateTime(), out, options);
}

bool TLocale::ParseDateTimeTryAllFormats(const TString& text, const DateTime& reference, DateTime& out,
                                         DateTimeParseOptions options) const {
  return IntoDateTime(out, [&](unsigned long long& parsed) {
    return ParseText(text.data(), text.data() + text.size(), reference.GetRepresentation(), options, kAllSteps,
                     parsed, nullptr);
  });
}

std::pair<bool, DateTime> TLocale::ParseTimeTryAllFormats(const TString& text) const {
  DateTime value;
  const bool ok = ParseDateTimeTryAllFormats(text, DateTime(), value, DateTimeParseOptions::Time);
  return {ok, value};
}

bool TLocale::ParseInternationalDateTime(const TString& text, DateTimeParseOptions options, DateTime& out) const {
  return IntoDateTime(out, [&](unsigned long long& parsed) {
    return ParseText(text.data(), text.data() + text.size(), kOLEEpochValue, options, kLocaleStylesStep, parsed,
                     nullptr);
  });
}

bool TLocale::ParseDateTimeWithCachedFormatter(const TString& text, const DateTime& reference, DateTime& out) const {
  return IntoDateTime(out, [&](unsigned long long& parsed) {
    return ParseText(text.data(), text.data() + text.size(), reference.GetRepresentation(),
                     DateTimeParseOptions::DateAndTime, kCachedFormatterStep, parsed, nullptr);
  });
}

bool TLocale::ParseDateTimeUsingISODefaultDateTimeFormatStrings(const TString& text, const DateTime& reference,
                                                                DateTime& out) const {
  return IntoDateTime(out, [&](unsigned long long& parsed) {
    return ParseText(text.data(), text.data() + text.size(), reference.GetRepresentation(),
                     DateTimeParseOptions::DateAndTime, kTableStep, parsed, nullptr);
  });
}

bool TLocale::ParseDateTimeUsingNativeAPIs(const TString& text, const DateTime& reference, DateTime& out,
                                           DateTimeParseOptions options) const {
  return IntoDateTime(out, [&](unsigned long long& parsed) {
    return ParseText(text.data(), text.data() + text.size(), reference.GetRepresentation(), options, kNativeStep,
                     parsed, nullptr);
  });
}

// ---- Formatting ----

namespace {

TString FormatUDate(const VelICU::ICUDateFormat& format, double udate) {
  icu::UnicodeString out;
  format.format(udate, out);
  return VelICU::FromUnicodeString(out);
}

}  // namespace

TString TLocale::Format(const DateTime& value, const TString& pattern) const {
  const std::shared_ptr<CachedDateFormat> entry = GetCachedDateFormat(pattern);
  std::lock_guard<std::mutex> use(entry->use);
  return FormatUDate(*entry->format, LocaleInternal::ValueToUDate(value.GetRepresentation()));
}

TString TLocale::Format(const DateTime& value, DateTimeParseOptions options) const {
  return Format(value, GetDefaultPattern(options));
}

TString TLocale::Format(const Time& value, const TString& pattern) const {
  // A time of day lies on the day of no date, as a DateTime holding a time
  // alone does; microseconds below the millisecond are dropped.
  const unsigned long long units = value.GetRepresentation() / 100;
  return Format(DateTime(kOLEEpochValue + units), pattern);
}

TString TLocale::Format(const Interval& value, const TString& pattern) const {
  // Laid from 1899-12-30 00:00: "HH:mm:ss" writes the time part of a
  // positive interval; a negative one reaches back into the previous days.
  const long long units = value.GetTotalMicroseconds() / 100;
  return Format(DateTime(kOLEEpochValue + static_cast<unsigned long long>(units)), pattern);
}

uint32_t TLocale::GetParseAttemptCount() const {
  AutoSynchronize parsing(m_parseMutex);
  return m_parseAttempts;
}

bool TLocale::HasParseFormatterFailed() const {
  AutoSynchronize parsing(m_parseMutex);
  return m_parseFormatterFailed != 0;
}
