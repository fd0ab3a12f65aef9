// DateTime: parsing and formatting through a TLocale.

#include <algorithm>

#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/TFormatString.h"

namespace {

constexpr DateTimeParseOptions kDefaultOptions = DateTimeParseOptions::DateAndTime;

// The message of a text that is no date-time: the text up to its first zero.
TString NotADateTimeMessage(const char16_t* begin, const char16_t* end) {
  const char16_t* stop = begin == nullptr ? begin : std::find(begin, end, u'\0');
  const TString text = begin == nullptr ? TString() : TString(begin, static_cast<int>(stop - begin));
  return TFormatString(CoreData::StringId::IDS_ERR_PARSING_DATETIME).arg(text).str();
}

}  // namespace

DateTime::DateTime(const char16_t* begin, const char16_t* end) : m_value(0) {
  if (!TLocale::GetUserDefaultLocale().ParseDateTime(begin, end, &m_value, kDefaultOptions)) {
    throw VelmoraException(VelErrorsError::AutoGen_0x2CE8742C(NotADateTimeMessage(begin, end)));
  }
}

DateTime::DateTime(const char16_t* begin, const char16_t* end, const TLocale& locale) : m_value(0) {
  if (!locale.ParseDateTime(begin, end, &m_value, kDefaultOptions)) {
    throw VelmoraException(VelErrorsError::AutoGen_0x8E8A7D12(NotADateTimeMessage(begin, end)));
  }
}

DateTime::DateTime(const char16_t* text) : DateTime(text, kDefaultOptions) {}

DateTime::DateTime(const char16_t* text, DateTimeParseOptions options)
    : DateTime(text, options, TLocale::GetUserDefaultLocale()) {}

DateTime::DateTime(const char16_t* text, DateTimeParseOptions options, const TLocale& locale) : m_value(0) {
  locale.ParseDateTimeTryAllFormats(text, &m_value, options);
}

bool DateTime::ParseDateTime(const char16_t* begin, const char16_t* end, unsigned long long* out) {
  unsigned long long value = s_OLEEpoch;
  if (!TLocale::GetUserDefaultLocale().ParseDateTime(begin, end, &value, kDefaultOptions)) return false;
  *out = value;
  return true;
}

bool DateTime::ParseDateTime(const char16_t* begin, const char16_t* end, DateTime& out) {
  return TLocale::GetUserDefaultLocale().ParseDateTime(begin, end, &out.m_value, kDefaultOptions);
}

bool DateTime::ParseDateTime(const char16_t* begin, const char16_t* end, DateTime& out, const TLocale& locale,
                             const char16_t** stop) {
  return locale.ParseDateTime(begin, end, &out.m_value, kDefaultOptions, stop);
}

DateTime DateTime::ParseDateTime(const char16_t* begin, const char16_t* end) {
  return ParseDateTime(begin, end, TLocale::GetUserDefaultLocale());
}

DateTime DateTime::ParseDateTime(const char16_t* begin, const char16_t* end, const TLocale& locale) {
  DateTime value;
  ParseDateTime(begin, end, value, locale);
  return value;
}

DateTime DateTime::ParseDateTimeTryAllFormats(const char16_t* text) {
  return ParseDateTimeTryAllFormats(text, TLocale::GetUserDefaultLocale());
}

DateTime DateTime::ParseDateTimeTryAllFormats(const char16_t* text, const TLocale& locale) {
  return DateTime(text, kDefaultOptions, locale);
}

DateTime DateTime::ParseDateTimeTryAllFormats(const char16_t* text, const TLocale& locale,
                                              const DateTime& reference) {
  DateTime value(0ULL);
  locale.ParseDateTimeTryAllFormats(text, reference.m_value, &value.m_value, kDefaultOptions);
  return value;
}

bool DateTime::ParseTimeTryAllFormats(const TString& text, const TLocale& locale) {
  const auto [ok, value] = locale.ParseTimeTryAllFormats(text);
  if (ok) *this = value;
  return ok;
}

TString DateTime::Format(const char16_t* pattern) const { return Format(pattern, TLocale::GetUserDefaultLocale()); }

TString DateTime::Format(const char16_t* pattern, const TLocale& locale) const {
  return locale.Format(*this, TString(pattern));
}

TString DateTime::Format() const { return Format(kDefaultOptions); }

TString DateTime::Format(DateTimeParseOptions options) const {
  return Format(options, TLocale::GetUserDefaultLocale());
}

TString DateTime::Format(DateTimeParseOptions options, const TLocale& locale) const {
  return locale.Format(*this, options);
}
