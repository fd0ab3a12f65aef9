// VelICU: thin names for the ICU types and calls the library uses, and the
// conversions between TString and ICU strings. Code may call ICU directly;
// these exist where a name or a conversion would otherwise be repeated.
// Every ICU status must be checked (ICU_SUCCESS).
#pragma once

#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/decimfmt.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/ucol.h>
#include <unicode/unistr.h>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

namespace VelICU {

using ICUErrorCode = UErrorCode;
using ICULocale = icu::Locale;
using ICUCalendar = icu::Calendar;
using ICUGregorianCalendar = icu::GregorianCalendar;
using ICUDateFormat = icu::DateFormat;
using ICUSimpleDateFormat = icu::SimpleDateFormat;
using ICUDecimalFormat = icu::DecimalFormat;
using ICUColAttribute = UColAttribute;
using ICUColAttributeValue = UColAttributeValue;
using ICUEStyle = icu::DateFormat::EStyle;

inline constexpr int UCOL_ATTRIBUTE_COUNT = ::UCOL_ATTRIBUTE_COUNT;

inline bool ICU_SUCCESS(ICUErrorCode status) noexcept { return U_SUCCESS(status) != 0; }

// A read-only UnicodeString aliasing the TString's code units (valid while
// `text` lives and is not modified).
inline icu::UnicodeString ToUnicodeStringAlias(const TString& text) {
  return icu::UnicodeString(false, text.data(), text.size());
}
inline icu::UnicodeString ToUnicodeString(const TString& text) {
  return icu::UnicodeString(text.data(), text.size());
}
inline TString FromUnicodeString(const icu::UnicodeString& text) {
  return TString(text.getBuffer(), text.length());
}

// A collation tailoring that makes every decimal digit (general category Nd,
// all scripts) ignorable: a reset to U+0000 followed by a starred equality
// list of the digits. The rule holds a real U+0000 code unit, so pass it to
// ICU with its explicit length. Built once; safe from any thread.
VELCOREDATA_EXPORT const TString& getIgnoreDigitsRule();

}  // namespace VelICU
