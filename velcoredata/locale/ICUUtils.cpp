#include "velcoredata/locale/ICUUtils.h"

#include <cmath>
#include <limits>

#include "velcoredata/locale/internal/ICUDateFormats.h"
#include "velcoredata/platform/LogicException.h"

namespace ICUUtils {

DateTimeStyles GetStylesOfSpec(DefaultDateTimeFormatSpec spec) noexcept {
  using Format = VelICU::ICUDateFormat;
  switch (spec) {
    case DefaultDateTimeFormatSpec::LongDate:
      return {Format::kFull, Format::kNone};
    case DefaultDateTimeFormatSpec::ShortDate:
      return {Format::kShort, Format::kNone};
    case DefaultDateTimeFormatSpec::LongTime:
      return {Format::kNone, Format::kMedium};
    case DefaultDateTimeFormatSpec::ShortTime:
      return {Format::kNone, Format::kShort};
    case DefaultDateTimeFormatSpec::ShortDateLongTime:
    default:
      return {Format::kShort, Format::kMedium};
  }
}

void NormalizeSpaces(TString& text) noexcept {
  for (char16_t& c : text) {
    if (c == u'\u202F' || c == u'\u00A0') c = u' ';
  }
}

TString GetPattern(const VelICU::ICUDateFormat& format) {
  const auto* simple = dynamic_cast<const VelICU::ICUSimpleDateFormat*>(&format);
  if (simple == nullptr) return TString();
  icu::UnicodeString pattern;
  simple->toPattern(pattern);
  TString result = VelICU::FromUnicodeString(pattern);
  NormalizeSpaces(result);
  return result;
}

}  // namespace ICUUtils

namespace LocaleInternal {

std::unique_ptr<VelICU::ICUCalendar> MakeCalendar(const VelICU::ICULocale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<VelICU::ICUCalendar> calendar(
      VelICU::ICUCalendar::createInstance(icu::TimeZone::getGMT()->clone(), locale, status));
  VEL_ASSERT(VelICU::ICU_SUCCESS(status) && calendar != nullptr);
  calendar->setLenient(false);
  if (auto* gregorian = dynamic_cast<VelICU::ICUGregorianCalendar*>(calendar.get())) {
    // Proleptic: the Gregorian rules apply before 1582 too.
    gregorian->setGregorianChange(-std::numeric_limits<double>::max(), status);
    VEL_ASSERT(VelICU::ICU_SUCCESS(status));
  }
  return calendar;
}

std::unique_ptr<VelICU::ICUSimpleDateFormat> MakeDateFormat(const TString& pattern,
                                                            const VelICU::ICULocale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<VelICU::ICUSimpleDateFormat>(VelICU::ToUnicodeString(pattern), locale, status);
  VEL_ASSERT(VelICU::ICU_SUCCESS(status));
  format->adoptCalendar(MakeCalendar(locale).release());
  format->setBooleanAttribute(UDAT_PARSE_ALLOW_WHITESPACE, true, status);
  format->setBooleanAttribute(UDAT_PARSE_ALLOW_NUMERIC, true, status);
  // "M/d/yy" must not read "1-5-20": literals match in full.
  format->setBooleanAttribute(UDAT_PARSE_PARTIAL_LITERAL_MATCH, false, status);
  // "MMMM" also reads "Jan", "MMM" also reads "January".
  format->setBooleanAttribute(UDAT_PARSE_MULTIPLE_PATTERNS_FOR_MATCH, true, status);
  VEL_ASSERT(VelICU::ICU_SUCCESS(status));
  return format;
}

bool UDateToValue(double udate, unsigned long long& value) noexcept {
  if (!(udate >= kMinValidUDate && udate <= kMaxValidUDate)) return false;  // also rejects NaN
  const long long ms = static_cast<long long>(std::floor(udate));
  value = static_cast<unsigned long long>(static_cast<long long>(kUnixEpochValue) + ms * 10);
  return true;
}

double ValueToUDate(unsigned long long value) noexcept {
  // Wrapping unsigned difference read as signed: exact for every value within
  // 2^63 units of the epoch, which covers far more than the valid range.
  const auto units = static_cast<long long>(value - kUnixEpochValue);
  // Floor division: 0.5 ms before the epoch is the millisecond -1.
  long long ms = units / 10;
  if (units % 10 < 0) --ms;
  return static_cast<double>(ms);
}

}  // namespace LocaleInternal
