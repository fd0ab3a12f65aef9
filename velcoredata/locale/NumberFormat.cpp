#include "velcoredata/locale/NumberFormat.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "velcoredata/locale/LanguageCode.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/LocaleHelper.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/TCType.h"
#include "velcoredata/platform/TFormatString.h"

namespace {

using Units = UnitsFormatEnum;
using Negative = NegativeFormatEnum;

// ---- The OLE grammar ----
//
// ^.*?([-(]?)("([^"]*)")?(-?)((#,##0)|(0))([,]*)((\.[0]+)?)([KMBG]?)(-?)("([^"]*)")?([-)]?)$
//
// Matched by hand, with the answers a backtracking ECMAScript engine gives.
// From a start position the rest of the expression has only one way to
// succeed: each optional or repeated element is greedy, and giving back what
// it took never helps, because no later element can match the character
// given back (a sign or parenthesis given back by group 1 could only be
// group 4's "-", whose continuation group 1's path already tries; a comma,
// zero, unit letter or quote given back is matched by nothing after it; a
// "-" given back by group 12 reaches group 15 only when the greedy path
// succeeds as well). So the lazy ".*?" amounts to: try each start from the
// left, take the first that matches to the end. The "." of ".*?" does not
// match line terminators, so no start lies beyond the first one.

struct Span {
  int begin = -1;
  int end = -1;
  bool matched() const noexcept { return begin >= 0; }
  int size() const noexcept { return end - begin; }
};

// Groups 1 to 15 of the expression; unmatched optional groups stay unset.
struct OleMatch {
  Span group[16];
};

bool IsLineTerminator(char16_t c) noexcept { return c == u'\n' || c == u'\r' || c == u'\u2028' || c == u'\u2029'; }

// The closing quote of a quoted text opening at `open`, or -1.
int ClosingQuote(const char16_t* t, int n, int open) noexcept {
  for (int i = open + 1; i < n; ++i) {
    if (t[i] == u'"') return i;
  }
  return -1;
}

// Everything after ".*?", from `q` to the end of the text.
bool MatchFrom(const char16_t* t, int n, int q, OleMatch& m) noexcept {
  for (Span& g : m.group) g = Span();
  auto optionalChar = [&](int group, auto accepts) {
    m.group[group] = {q, q};
    if (q < n && accepts(t[q])) m.group[group].end = ++q;
  };
  auto quoted = [&](int outer, int inner) {
    if (q >= n || t[q] != u'"') return;
    const int close = ClosingQuote(t, n, q);
    if (close < 0) return;
    m.group[outer] = {q, close + 1};
    m.group[inner] = {q + 1, close};
    q = close + 1;
  };

  optionalChar(1, [](char16_t c) { return c == u'-' || c == u'('; });
  quoted(2, 3);
  optionalChar(4, [](char16_t c) { return c == u'-'; });
  // (#,##0)|(0): the first alternative first.
  static constexpr char16_t kGrouped[] = u"#,##0";
  if (n - q >= 5 && std::equal(kGrouped, kGrouped + 5, t + q)) {
    m.group[5] = m.group[6] = {q, q + 5};
    q += 5;
  } else if (q < n && t[q] == u'0') {
    m.group[5] = m.group[7] = {q, q + 1};
    q += 1;
  } else {
    return false;
  }
  m.group[8] = {q, q};
  while (q < n && t[q] == u',') m.group[8].end = ++q;
  m.group[9] = {q, q};
  if (n - q >= 2 && t[q] == u'.' && t[q + 1] == u'0') {
    int end = q + 1;
    while (end < n && t[end] == u'0') ++end;
    m.group[9] = m.group[10] = {q, end};
    q = end;
  }
  optionalChar(11, [](char16_t c) { return c == u'K' || c == u'M' || c == u'B' || c == u'G'; });
  optionalChar(12, [](char16_t c) { return c == u'-'; });
  quoted(13, 14);
  optionalChar(15, [](char16_t c) { return c == u'-' || c == u')'; });
  return q == n;
}

bool MatchOle(const char16_t* t, int n, OleMatch& m) noexcept {
  for (int start = 0; start <= n; ++start) {
    if (start < n) {
      const char16_t c = t[start];
      // Only these can begin the part after ".*?".
      const bool candidate = c == u'-' || c == u'(' || c == u'"' || c == u'#' || c == u'0';
      if (candidate && MatchFrom(t, n, start, m)) return true;
      if (IsLineTerminator(c)) return false;
    }
  }
  return false;
}

// Whether the concatenation of `a` equals that of `b`, without building them.
bool ConcatenationsEqual(std::initializer_list<std::u16string_view> a,
                         std::initializer_list<std::u16string_view> b) noexcept {
  size_t total = 0;
  for (std::u16string_view piece : a) total += piece.size();
  for (std::u16string_view piece : b) total -= piece.size();
  if (total != 0) return false;
  auto ia = a.begin();
  auto ib = b.begin();
  size_t offsetA = 0;
  size_t offsetB = 0;
  while (ia != a.end() && ib != b.end()) {
    if (offsetA == ia->size()) {
      ++ia;
      offsetA = 0;
      continue;
    }
    if (offsetB == ib->size()) {
      ++ib;
      offsetB = 0;
      continue;
    }
    const size_t step = std::min(ia->size() - offsetA, ib->size() - offsetB);
    if (ia->substr(offsetA, step) != ib->substr(offsetB, step)) return false;
    offsetA += step;
    offsetB += step;
  }
  return true;
}

// The negative template of a value as pieces around prefix, number, suffix.
bool SampleEquals(Negative format, std::u16string_view prefix, std::u16string_view number,
                  std::u16string_view suffix, std::initializer_list<std::u16string_view> text) {
  switch (format) {
    case Negative::Parentheses:
      return ConcatenationsEqual({u"(", prefix, number, suffix, u")"}, text);
    case Negative::LeadingMinus:
      return ConcatenationsEqual({u"-", prefix, number, suffix}, text);
    case Negative::TrailingMinus:
      return ConcatenationsEqual({prefix, number, suffix, u"-"}, text);
    case Negative::MinusAfterPrefix:
      return ConcatenationsEqual({prefix, u"-", number, suffix}, text);
    case Negative::MinusBeforeSuffix:
      return ConcatenationsEqual({prefix, number, u"-", suffix}, text);
    case Negative::None:
      break;
  }
  return false;
}

int UnitCommas(Units units) {
  UnitsFormatEnumEncodings().Encode(units);  // unknown values raise the encoding exception
  // The fourth comma is never written: "B" and "G" both mean thousand millions.
  return std::min(static_cast<int>(units), 3);
}

TString Zeros(int count) { return count > 0 ? TString(count, u'0') : TString(); }

// A count of decimal places as the int the string functions take.
int DecimalCount(uint32_t decimalPlaces) noexcept {
  return static_cast<int>(std::min<uint32_t>(decimalPlaces, 0x7FFFFFFFu));
}

bool IsLocaleNamedCode(FormatCode code) {
  return code == FormatCode::Custom || code == FormatCode::International || code == FormatCode::Number;
}

bool IsLocaleNumberedCode(FormatCode code) {
  return code == FormatCode::SystemCurrency || code == FormatCode::LongDate || code == FormatCode::SystemNumber ||
         code == FormatCode::ShortDate;
}

TString LeftTrimmed(const TString& text) {
  int i = 0;
  while (i < text.size() && TCType::isSpace(text[i])) ++i;
  return text.mid(i);
}

}  // namespace

const EnumEncodingTable<UnitsFormatEnum>& UnitsFormatEnumEncodings() {
  static const EnumEncodingTable<Units> table("UnitsFormatEnum",
                                              {{Units::None, u""},
                                               {Units::Thousands, u"K"},
                                               {Units::Millions, u"M"},
                                               {Units::Billions, u"B"},
                                               {Units::Giga, u"G"}},
                                              Units::None);
  return table;
}

const EnumEncodingTable<NegativeFormatEnum>& NegativeFormatEnumEncodings() {
  static const EnumEncodingTable<Negative> table("NegativeFormatEnum",
                                                 {{Negative::None, u""},
                                                  {Negative::Parentheses, u"(%1%2%3)"},
                                                  {Negative::LeadingMinus, u"-%1%2%3"},
                                                  {Negative::TrailingMinus, u"%1%2%3-"},
                                                  {Negative::MinusAfterPrefix, u"%1-%2%3"},
                                                  {Negative::MinusBeforeSuffix, u"%1%2-%3"}},
                                                 Negative::None);
  return table;
}

TString BuildOleFormatString(const NUMBER_FORMAT_OPTIONS* options, bool withUnits, const TString* decimalSeparator,
                             const TString* groupSeparator) {
  const TString decimal = decimalSeparator ? *decimalSeparator : TString(u".");
  const TString group = groupSeparator ? *groupSeparator : TString(u",");
  const TString& negativeTemplate = NegativeFormatEnumEncodings().Encode(options->negativeFormat);
  const TString prefix = options->prefix.isEmpty() ? TString() : u"\"" + options->prefix + u"\"";
  const TString suffix = options->suffix.isEmpty() ? TString() : u"\"" + options->suffix + u"\"";
  TString body = options->grouping ? u"#" + group + u"##0" : TString(u"0");
  for (int i = UnitCommas(options->units); i > 0; --i) body += group;
  if (options->decimalPlaces > 0) {
    body += decimal;
    body += Zeros(DecimalCount(options->decimalPlaces));
  }
  if (withUnits && options->units != Units::None) body += UnitsFormatEnumEncodings().Encode(options->units);
  TString result = prefix + body + suffix;
  if (options->negativeFormat != Negative::None) {
    result += u";";
    result += TFormatString(negativeTemplate).arg(prefix).arg(body).arg(suffix).str();
  }
  return result;
}

bool ParseOleFormatString(const TString& text, NUMBER_FORMAT_OPTIONS* options) {
  OleMatch m;
  if (!MatchOle(text.data(), text.size(), m)) return false;
  const auto group = [&](int g) {
    const Span& span = m.group[g];
    return span.matched() ? std::u16string_view(text.data() + span.begin, static_cast<size_t>(span.size()))
                          : std::u16string_view();
  };
  const std::u16string_view prefix = group(3);
  const std::u16string_view suffix = group(14);
  // The signs of the match around "1234", compared with each value's sample.
  const std::initializer_list<std::u16string_view> signs = {group(1), prefix,  group(4), u"1234",
                                                            group(12), suffix, group(15)};
  Negative negative = Negative::None;
  for (int v = 1; v <= 5; ++v) {
    if (SampleEquals(static_cast<Negative>(v), prefix, u"1234", suffix, signs)) {
      negative = static_cast<Negative>(v);
      break;
    }
  }
  // None's sample is a message, tried before the others: it only matters
  // when it would shadow a template that matched.
  if (negative != Negative::None) {
    const TString sample = GetNegativeFormatSample(Negative::None, TString(), TString());
    if (ConcatenationsEqual({sample.view()}, signs)) negative = Negative::None;
  }
  if (options == nullptr) return true;
  options->decimalPlaces = static_cast<uint32_t>(std::max(m.group[9].size() - 1, 0));
  options->grouping = m.group[6].matched();
  options->prefix = TString(prefix);
  options->suffix = TString(suffix);
  options->units = UnitsFormatEnumEncodings().Decode(TString(group(11)));
  options->negativeFormat = negative;
  return true;
}

TString GetScientificFormatStringOfSize(int decimals) {
  return decimals > 0 ? u"0." + Zeros(decimals) + u"e+00" : TString(u"0e+00");
}

TString GetPercentFormatStringOfSize(int decimals) {
  return decimals > 0 ? u"0." + Zeros(decimals) + u"%" : TString(u"0%");
}

TString GetNegativeFormatSample(NegativeFormatEnum format, const TString& prefix, const TString& suffix) {
  const TString& negativeTemplate = NegativeFormatEnumEncodings().Encode(format);
  if (format == Negative::None) return CoreData::GetString(CoreData::StringId::IDS_NEGATIVE_FORMAT_DEFAULT_SAMPLE);
  return TFormatString(negativeTemplate).arg(prefix).arg(TString(u"1234")).arg(suffix).str();
}

char16_t GetUnitsFormatChar(UnitsFormatEnum units) {
  const TString& letter = UnitsFormatEnumEncodings().Encode(units);
  return letter.isEmpty() ? u'\0' : letter[0];
}

NegativeFormatEnum GetNegativeFormatting(const TString& negativePrefix, const TString& negativeSuffix,
                                         const TString& /*positivePrefix*/, const TString& /*positiveSuffix*/) {
  if (negativePrefix.startsWith(u'(') && negativeSuffix.endsWith(u')')) return Negative::Parentheses;
  if (negativePrefix.startsWith(u'-')) return Negative::LeadingMinus;
  if (negativeSuffix.endsWith(u'-')) return Negative::TrailingMinus;
  if (negativePrefix.endsWith(u'-')) return Negative::MinusAfterPrefix;
  if (negativeSuffix.startsWith(u'-')) return Negative::MinusBeforeSuffix;
  return Negative::None;
}

TString EncodeFormatString(FormatCode code, int options, const TString& rest) {
  if (code == FormatCode::Automatic) return TString();
  TString result(1, static_cast<char16_t>(code));
  if (IsLocaleNamedCode(code)) {
    if (options != 0) {
      result += u"!" + LanguageUtils::GetLocaleStr(static_cast<uint32_t>(options)) + u"!";
    }
    result += rest;
  } else if (IsLocaleNumberedCode(code)) {
    if (options != 0) result += TString::number(options) + u"%";
  } else {
    result += rest;
  }
  return result;
}

void DecodeFormatString(const TString& text, FormatCode& code, int& options, TString& rest) {
  code = FormatCode::Automatic;
  options = 0;
  rest.clear();
  const TString trimmed = LeftTrimmed(text);
  if (trimmed.isEmpty()) return;
  const auto first = static_cast<FormatCode>(trimmed[0]);
  const TString remainder = LeftTrimmed(trimmed.mid(1));
  switch (first) {
    case FormatCode::Custom:
    case FormatCode::International:
    case FormatCode::Number: {
      code = first;
      // "!<locale>!": only from seven characters on (the shortest locale
      // name and a one-character picture need "!xx!0"; shorter texts are
      // pictures that happen to start with "!").
      const int close = remainder.size() >= 7 && remainder[0] == u'!' ? remainder.indexOf(u'!', 1) : -1;
      if (close >= 2) {
        options = static_cast<int>(LanguageCode(remainder.mid(1, close - 1)).GetLCID());
        rest = remainder.mid(close + 1);
      } else {
        rest = remainder;
      }
      return;
    }
    case FormatCode::SystemCurrency:
    case FormatCode::LongDate:
    case FormatCode::SystemNumber:
    case FormatCode::ShortDate: {
      code = first;
      int end = remainder.size();
      while (end > 0 && remainder[end - 1] == u'%') --end;
      bool ok = false;
      const int value = remainder.left(end).toInt(&ok);
      options = ok ? value : 0;  // not a number, or too large for 32 bits
      return;
    }
    case FormatCode::Scientific:
      code = first;
      // The exponent of older strings, "E+00", is written "e+00" now.
      rest = remainder;
      rest.replace(u"E+00", u"e+00");
      return;
    case FormatCode::Automatic:
    case FormatCode::LongTime:
    case FormatCode::Currency:
    case FormatCode::Percentage:
      code = first;
      rest = remainder;
      return;
  }
  // Unknown codes read as the automatic format.
}

bool IsAutoFormatString(const TString& text) {
  FormatCode code;
  int options;
  TString rest;
  DecodeFormatString(text, code, options, rest);
  return code == FormatCode::Automatic;
}

void PopulateNumberFormatOptions(FormatCode& code, int options, TString& rest, NUMBER_FORMAT_OPTIONS* numberOptions,
                                 int defaultDecimals, int grouping) {
  if (code == FormatCode::Custom && (rest == u"Percent" || rest == u"Scientific")) {
    code = rest == u"Percent" ? FormatCode::Percentage : FormatCode::Scientific;
    rest.clear();
    defaultDecimals = 2;
  }
  const uint32_t lcid = options != 0 ? static_cast<uint32_t>(options) : LocaleHelper::GetSessionLCID();
  NUMBER_FORMAT_OPTIONS locale;
  TLocale::GetSystemNumberSettings(lcid, &locale);
  numberOptions->decimalSeparator = locale.decimalSeparator;
  numberOptions->thousandsSeparator = locale.thousandsSeparator;
  if (grouping != -1) numberOptions->grouping = grouping > 0;
  switch (code) {
    case FormatCode::SystemNumber:
      *numberOptions = locale;
      return;
    case FormatCode::SystemCurrency:
      TLocale::GetSystemCurrencySettings(lcid, numberOptions);
      return;
    case FormatCode::Scientific: {
      numberOptions->decimalPlaces = static_cast<uint32_t>(std::max(defaultDecimals, 0));
      for (int n = 0; n <= 15; ++n) {
        if (GetScientificFormatStringOfSize(n) == rest) {
          numberOptions->decimalPlaces = static_cast<uint32_t>(n);
          break;
        }
      }
      return;
    }
    case FormatCode::Percentage: {
      numberOptions->decimalPlaces = static_cast<uint32_t>(std::max(defaultDecimals, 0));
      numberOptions->grouping = true;
      for (int n = 0; n <= 16; ++n) {
        if (GetPercentFormatStringOfSize(n) == rest) {
          numberOptions->decimalPlaces = static_cast<uint32_t>(n);
          numberOptions->grouping = false;
          break;
        }
      }
      numberOptions->negativeFormat = Negative::LeadingMinus;
      return;
    }
    case FormatCode::Automatic:
      return;
    default:
      ParseOleFormatString(rest, numberOptions);
      return;
  }
}

void GetFormatCodeAndOptionsFromString(const TString& text, FormatCode& code, int& options,
                                       NUMBER_FORMAT_OPTIONS* numberOptions) {
  TString rest;
  DecodeFormatString(text, code, options, rest);
  PopulateNumberFormatOptions(code, options, rest, numberOptions, 0, -1);
}

void GetStringFromFormatCodeAndOptions(FormatCode& code, int& options, const NUMBER_FORMAT_OPTIONS* numberOptions,
                                       TString& out) {
  TString rest;
  switch (code) {
    case FormatCode::Currency:
    case FormatCode::Number:
      rest = BuildOleFormatString(numberOptions, numberOptions->units != Units::None);
      break;
    case FormatCode::Scientific:
      rest = GetScientificFormatStringOfSize(DecimalCount(numberOptions->decimalPlaces));
      break;
    case FormatCode::Percentage:
      rest = GetPercentFormatStringOfSize(DecimalCount(numberOptions->decimalPlaces));
      break;
    default:
      break;
  }
  out = EncodeFormatString(code, options, rest);
}

TString GetOleFormatString(FormatCode code, uint32_t lcid, const int* decimals) {
  using Spec = ICUUtils::DefaultDateTimeFormatSpec;
  const auto datePicture = [lcid](Spec spec) {
    TString picture = TLocale::GetLocaleFormatAsWindows(spec, lcid);
    picture.replace(u'\'', u'"');
    return picture;
  };
  switch (code) {
    case FormatCode::LongDate:
      return datePicture(Spec::LongDate);
    case FormatCode::ShortDate:
      return datePicture(Spec::ShortDate);
    case FormatCode::LongTime:
      return datePicture(Spec::LongTime);
    case FormatCode::SystemNumber: {
      NUMBER_FORMAT_OPTIONS options;
      TLocale::GetSystemNumberSettings(lcid, &options);
      if (decimals != nullptr) options.decimalPlaces = static_cast<uint32_t>(std::max(*decimals, 0));
      return BuildOleFormatString(&options, true);
    }
    default:
      return TString();
  }
}
