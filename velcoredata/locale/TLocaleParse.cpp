// TLocale: parsing date-time text.
//
// One recursive mutex per TLocale serialises parsing: the candidate formats,
// the parse calendar and the cached parse formatter are shared state of the
// object and ICU formats are not safe for concurrent use.

#include <QDateTime>
#include <QLocale>

#include <algorithm>

#include "velcoredata/datetime/DateTimeParsingFormats.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/locale/internal/ICUDateFormats.h"
#include "velcoredata/locale/internal/TLocaleParseFormats.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TCType.h"

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

TLocale::ParseTraits TraitsOf(const TString& pattern) {
  static const TString dateLetters(u"GyYuUrQqMLlwWdDFgEec");
  static const TString timeLetters(u"aBbhHkKmsSAjJC");
  static const TString zoneLetters(u"zZOvVXx");
  TLocale::ParseTraits traits;
  ForEachField(pattern, [&](char16_t c, int, int) {
    if (dateLetters.contains(c)) traits.parts = traits.parts | Options::Date;
    if (timeLetters.contains(c)) traits.parts = traits.parts | Options::Time;
    if (zoneLetters.contains(c)) traits.hasZone = true;
    if (c == u'w') traits.isoWeeks = true;
  });
  return traits;
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
};

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
  calendar.clear();
  calendar.set(UCAL_ERA, attempt.reference.era);
  calendar.set(UCAL_YEAR, attempt.reference.year);
  calendar.set(UCAL_MONTH, attempt.reference.month);
  calendar.set(UCAL_DATE, attempt.reference.day);
  icu::ParsePosition position(0);
  format.parse(attempt.text, calendar, position);
  bool ok = position.getErrorIndex() < 0 && position.getIndex() > 0 &&
            (!attempt.whole || position.getIndex() == attempt.text.length());
  UErrorCode status = U_ZERO_ERROR;
  const double udate = ok ? calendar.getTime(status) : 0.0;
  if (traits.hasZone) calendar.setTimeZone(*icu::TimeZone::getGMT());
  if (!ok || U_FAILURE(status) || !LocaleInternal::UDateToValue(udate, value)) return false;
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

// The Qt locale of an ICU locale (Qt does not read ICU keywords).
QLocale QtLocaleOf(const VelICU::ICULocale& locale) {
  return QLocale(QString::fromLatin1(locale.getBaseName()));
}

bool FromQt(const QDate& date, const QTime& time, unsigned long long& value) {
  if (!date.isValid() || !time.isValid()) return false;
  const double udate = static_cast<double>(QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch());
  return LocaleInternal::UDateToValue(udate, value);
}

// Qt's own parser with the locale's short and long formats: the last resort,
// for texts in the forms Qt writes.
bool ParseWithQt(const TString& text, const VelICU::ICULocale& icuLocale, unsigned long long reference,
                 Options options, unsigned long long& value) {
  const QLocale locale = QtLocaleOf(icuLocale);
  const QString qtext = text.toQString();
  for (const QLocale::FormatType type : {QLocale::ShortFormat, QLocale::LongFormat}) {
    if (Allows(options, Options::DateAndTime)) {
      const QDateTime dateTime = locale.toDateTime(qtext, type);
      if (dateTime.isValid() && FromQt(dateTime.date(), dateTime.time(), value)) return true;
    }
    if (Allows(options, Options::Date) && FromQt(locale.toDate(qtext, type), QTime(0, 0), value)) return true;
    if (Allows(options, Options::Time)) {
      const QTime time = locale.toTime(qtext, type);
      if (time.isValid()) {
        value = reference / kUnitsPerDay * kUnitsPerDay + static_cast<unsigned long long>(time.msecsSinceStartOfDay()) * 10;
        return true;
      }
    }
  }
  return false;
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

bool IsValidValue(unsigned long long value) noexcept {
  return value - 1518552576000000ull < 3124137599990001ull;
}

}  // namespace

TLocale::ParseFormats& TLocale::GetParseFormats() const {
  if (m_parseFormats) return *m_parseFormats;
  auto formats = std::make_unique<ParseFormats>();
  PopulateFormatterAndCalendar(nullptr, nullptr);
  UErrorCode status = U_ZERO_ERROR;
  formats->firstDayOfWeek = m_parseCalendar->getFirstDayOfWeek(status);
  formats->minimalDaysInFirstWeek = m_parseCalendar->getMinimalDaysInFirstWeek();

  // The locale's patterns, by style pair: full date and time first.
  std::vector<TString> seen;
  for (int k = 0; k < 24; ++k) {
    const auto toICU = [](int style) {
      return style == 0 ? VelICU::ICUDateFormat::kNone : static_cast<VelICU::ICUEStyle>(4 - style);
    };
    std::unique_ptr<VelICU::ICUDateFormat> style(
        VelICU::ICUDateFormat::createDateTimeInstance(toICU(4 - k / 5), toICU(4 - k % 5), *m_icuLocale));
    VEL_ASSERT(style != nullptr);
    const TString pattern = ICUUtils::GetPattern(*style);
    if (pattern.isEmpty() || std::find(seen.begin(), seen.end(), pattern) != seen.end()) continue;
    seen.push_back(pattern);
    formats->localeStyles.push_back(MakeCandidate(pattern, *m_icuLocale));
  }

  // The table reads Gregorian dates whatever the locale's calendar system:
  // ISO 8601 is Gregorian.
  formats->isDefaultISOLocale = m_languageCode.GetISOString().startsWith(LanguageUtils::GetDefaultISOString());
  VelICU::ICULocale gregorian(*m_icuLocale);
  gregorian.setKeywordValue("calendar", "gregorian", status);
  VEL_ASSERT(VelICU::ICU_SUCCESS(status));
  for (int i = 0; i < GetDateTimeParsingFormatCount(); ++i) {
    if (!formats->isDefaultISOLocale && !IsLocaleNeutralDateTimeParsingFormat(i)) continue;
    formats->table.push_back(MakeCandidate(LookupDateTimeParsingFormatString(i), gregorian));
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
                        DateTimeParseOptions options, unsigned long long& value, const char16_t** stop) const {
  if (stop) *stop = begin;
  int skipped = 0;
  const TString text = PrepareText(begin, end, skipped);
  // Nothing longer is a date: the longest default patterns with month and
  // day names and a zone name stay far below this.
  if (text.isEmpty() || text.size() > kMaxDateTimeTextLength) return false;
  options = NormalizeDateTimeParseOptions(options);
  const icu::UnicodeString utext = VelICU::ToUnicodeStringAlias(text);

  AutoSynchronize parsing(m_parseMutex);
  ++m_parseAttempts;
  ParseFormats& formats = GetParseFormats();
  Attempt attempt{utext, {}, stop == nullptr};
  if (!ReadReferenceFields(*m_parseCalendar, reference, attempt.reference)) return false;
  unsigned long long parsed = 0;
  int consumed = 0;

  if (attempt.whole) {
    if (m_parseFormatter) {
      if (Allows(options, formats.formatterTraits.parts) &&
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
  const std::vector<Candidate>* lists[2] = {&formats.localeStyles, &formats.table};
  if (formats.isDefaultISOLocale) std::swap(lists[0], lists[1]);
  int longest = 0;
  unsigned long long best = 0;
  for (const std::vector<Candidate>* list : lists) {
    for (const Candidate& candidate : *list) {
      if (!Allows(options, candidate.traits.parts)) continue;
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
  if (ParseWithQt(text, *m_icuLocale, reference, options, parsed)) {
    value = parsed;
    return true;
  }
  return false;
}

bool TLocale::ParseDateTime(const char16_t* begin, const char16_t* end, unsigned long long* value,
                            DateTimeParseOptions options, const char16_t** stop) const {
  if (begin == nullptr || end < begin) return false;
  unsigned long long parsed = 0;
  if (!ParseText(begin, end, kOLEEpochValue, options, parsed, stop)) return false;
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
  if (!ParseText(text, end, IsValidValue(reference) ? reference : kOLEEpochValue, options, parsed, nullptr)) {
    return false;
  }
  *value = parsed;
  return true;
}

uint32_t TLocale::GetParseAttemptCount() const {
  AutoSynchronize parsing(m_parseMutex);
  return m_parseAttempts;
}

bool TLocale::HasParseFormatterFailed() const {
  AutoSynchronize parsing(m_parseMutex);
  return m_parseFormatterFailed != 0;
}
