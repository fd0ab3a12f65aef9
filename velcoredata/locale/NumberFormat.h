// Number formats: the OLE format string (a spreadsheet-style picture such as
// "$"#,##0.00;("$"#,##0.00)), the options record it is built from and parsed
// into, and the encoded format string that callers store: a one-letter
// FormatCode followed by an option value or an OLE string.
//
// All functions are pure apart from the locale settings they read (through
// TLocale, whose per-LCID settings are cached) and may be called from any
// thread.
#pragma once

#include <cstdint>

#include "velcoredata/core/EnumEncoding.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

// Display scaling, shown by a letter after the number. The OLE string scales
// by one "," per thousand; "B" and "G" both mean thousand millions, so both
// write three commas.
enum class UnitsFormatEnum : int32_t {
  None = 0,       // ""
  Thousands = 1,  // "K", one comma
  Millions = 2,   // "M", two commas
  Billions = 3,   // "B", three commas
  Giga = 4,       // "G", three commas
};

// How negative numbers are shown: the template of the negative section,
// with %1 the (quoted) prefix, %2 the number and %3 the (quoted) suffix.
enum class NegativeFormatEnum : int32_t {
  None = 0,               // "": no negative section
  Parentheses = 1,        // "(%1%2%3)"
  LeadingMinus = 2,       // "-%1%2%3"
  TrailingMinus = 3,      // "%1%2%3-"
  MinusAfterPrefix = 4,   // "%1-%2%3"
  MinusBeforeSuffix = 5,  // "%1%2-%3"
};

// The letters and templates above. Encoding a value outside a table raises
// XMLEnumEncodingException; decoding unknown text gives None.
VELCOREDATA_EXPORT const EnumEncodingTable<UnitsFormatEnum>& UnitsFormatEnumEncodings();
VELCOREDATA_EXPORT const EnumEncodingTable<NegativeFormatEnum>& NegativeFormatEnumEncodings();

// The first character of an encoded format string.
enum class FormatCode : char16_t {
  Automatic = 0,         // the empty string
  Custom = u'*',         // [!locale!]OLE string; the option is the locale's LCID
  International = u'i',  // read like Custom
  Number = u'n',         // [!locale!]OLE string, rebuilt from the options
  Currency = u'c',       // OLE string, rebuilt from the options
  Scientific = u'e',     // OLE string of GetScientificFormatStringOfSize
  Percentage = u'p',     // OLE string of GetPercentFormatStringOfSize
  SystemCurrency = u'C',  // a locale's currency format: <LCID>%
  LongDate = u'L',        // a locale's long date: <LCID>%
  SystemNumber = u'N',    // a locale's number format: <LCID>%
  ShortDate = u'S',       // a locale's short date: <LCID>%
  LongTime = u'T',        // a locale's long time; the rest follows
};

// The options of an OLE format string. The default is all zeros, empty
// strings and no grouping.
struct VELCOREDATA_EXPORT NUMBER_FORMAT_OPTIONS {
  uint32_t decimalPlaces = 0;  // "0" digits after the decimal separator
  TString decimalSeparator;    // the locale's
  bool grouping = false;       // "#,##0" rather than "0"
  TString groupingDescription;  // "-1" without grouping, else "<first>;<second>" group sizes
  TString thousandsSeparator;  // the locale's
  TString prefix;              // literal text before the number
  TString suffix;              // literal text after the number
  UnitsFormatEnum units = UnitsFormatEnum::None;
  NegativeFormatEnum negativeFormat = NegativeFormatEnum::None;

  friend bool operator==(const NUMBER_FORMAT_OPTIONS&, const NUMBER_FORMAT_OPTIONS&) = default;
};

// ---- OLE format strings ----

// The OLE string of the options: the prefix and suffix in double quotes when
// not empty, the body ("#,##0" with grouping, else "0"; one group separator
// per unit step; the decimal separator and that many "0"; the unit letter
// when `withUnits`), and, unless the negative format is None, ";" and the
// negative template filled with the same parts. Null separators are "." and
// ",". Units or a negative format outside their tables raise
// XMLEnumEncodingException.
VELCOREDATA_EXPORT TString BuildOleFormatString(const NUMBER_FORMAT_OPTIONS* options, bool withUnits,
                                                const TString* decimalSeparator = nullptr,
                                                const TString* groupSeparator = nullptr);

// Fills decimal places, grouping, prefix, suffix, units and negative format
// from an OLE string and returns true when the text matches
//   ^.*?([-(]?)("([^"]*)")?(-?)((#,##0)|(0))([,]*)((\.[0]+)?)([KMBG]?)(-?)("([^"]*)")?([-)]?)$
// (ECMAScript). The lazy lead makes the match describe the string's last
// section (the negative one when there is one). Units come from the letter
// alone (scaling commas are ignored); the negative format is the first value
// whose sample (prefix, "1234", suffix) equals the signs, prefix, "1234" and
// suffix of the match, else None. Separators are always "." and ",". A text
// that does not match leaves the options untouched and gives false. The
// separators and the grouping description are never touched.
VELCOREDATA_EXPORT bool ParseOleFormatString(const TString& text, NUMBER_FORMAT_OPTIONS* options);

// "0", then "." and n zeros when n > 0, then "e+00" resp. "%".
VELCOREDATA_EXPORT TString GetScientificFormatStringOfSize(int decimals);
VELCOREDATA_EXPORT TString GetPercentFormatStringOfSize(int decimals);

// The sample of a negative format: the template filled with prefix, "1234"
// and suffix; for None the localised message IDS_NEGATIVE_FORMAT_DEFAULT_SAMPLE.
// A value outside the table raises XMLEnumEncodingException.
VELCOREDATA_EXPORT TString GetNegativeFormatSample(NegativeFormatEnum format, const TString& prefix,
                                                   const TString& suffix);

// The first character of the unit's letter (0 for None). A value outside the
// table raises XMLEnumEncodingException.
VELCOREDATA_EXPORT char16_t GetUnitsFormatChar(UnitsFormatEnum units);

// The negative format of a locale's number format, from its negative prefix
// and suffix, tested in this order: "(" ... ")" -> Parentheses; prefix
// begins with "-" -> LeadingMinus; suffix ends with "-" -> TrailingMinus;
// prefix ends with "-" -> MinusAfterPrefix; suffix begins with "-" ->
// MinusBeforeSuffix; else None. The positive prefix and suffix are not used.
VELCOREDATA_EXPORT NegativeFormatEnum GetNegativeFormatting(const TString& negativePrefix,
                                                            const TString& negativeSuffix,
                                                            const TString& positivePrefix,
                                                            const TString& positiveSuffix);

// ---- Encoded format strings ----

// The code character followed by: for Custom, International and Number with
// a non-zero option, "!" + the LCID's locale name + "!" + rest, else rest;
// for SystemCurrency, LongDate, SystemNumber and ShortDate the option in
// decimal and "%" when it is non-zero, else nothing; for any other code,
// rest. Automatic is "".
VELCOREDATA_EXPORT TString EncodeFormatString(FormatCode code, int options, const TString& rest);

// Reads an encoded string: code Automatic, option 0 and an empty rest to
// start with; leading white space is skipped; the first character is the
// code and the remainder (left-trimmed) is read by code:
//   Custom, International, Number: "!<locale>!rest" when the remainder has
//     at least 7 characters, starts with "!" and its next "!" is at index 2
//     or later (the locale's LCID becomes the option); else all of it is
//     the rest;
//   SystemCurrency, LongDate, SystemNumber, ShortDate: trailing "%" removed,
//     the remainder read as a decimal 32-bit integer (a remainder that is not
//     one, or does not fit, gives 0), an empty rest;
//   Scientific: the rest with "E+00" written "e+00";
//   Automatic (a leading NUL), LongTime, Currency, Percentage: the rest;
//   any other character: Automatic with an empty rest.
VELCOREDATA_EXPORT void DecodeFormatString(const TString& text, FormatCode& code, int& options, TString& rest);

// Whether the string decodes to Automatic.
VELCOREDATA_EXPORT bool IsAutoFormatString(const TString& text);

// Fills `options` for a decoded format:
//  1. Custom with rest "Percent" becomes Percentage, with "Scientific"
//     Scientific, each with an empty rest and 2 default decimals;
//  2. the locale (the option, or the session locale when it is 0) gives the
//     decimal and thousands separators;
//  3. a grouping other than -1 sets the grouping flag (grouping > 0);
//  4. SystemNumber / SystemCurrency take the locale's number / currency
//     settings; Scientific and Percentage find the smallest decimal count
//     whose string equals the rest (0-15 resp. 0-16), else the default
//     (Percentage: grouping off when found, on when not; negative format
//     LeadingMinus either way); any other non-Automatic code parses the rest
//     with ParseOleFormatString (a rest that does not parse changes nothing
//     more).
VELCOREDATA_EXPORT void PopulateNumberFormatOptions(FormatCode& code, int options, TString& rest,
                                                    NUMBER_FORMAT_OPTIONS* numberOptions, int defaultDecimals,
                                                    int grouping);

// DecodeFormatString, then PopulateNumberFormatOptions(..., 0, -1).
VELCOREDATA_EXPORT void GetFormatCodeAndOptionsFromString(const TString& text, FormatCode& code, int& options,
                                                          NUMBER_FORMAT_OPTIONS* numberOptions);

// The encoded string of a code and options: Currency and Number rebuild
// their OLE string with BuildOleFormatString (units shown when not None),
// Scientific and Percentage from the decimal places; other codes have an
// empty rest.
VELCOREDATA_EXPORT void GetStringFromFormatCodeAndOptions(FormatCode& code, int& options,
                                                          const NUMBER_FORMAT_OPTIONS* numberOptions, TString& out);

// The OLE picture of a locale format: LongDate, ShortDate and LongTime give
// the locale's Windows patterns with every "'" written '"'; SystemNumber
// gives BuildOleFormatString of the locale's number settings (decimal places
// replaced by *decimals when given), units shown; other codes give "".
VELCOREDATA_EXPORT TString GetOleFormatString(FormatCode code, uint32_t lcid, const int* decimals = nullptr);
