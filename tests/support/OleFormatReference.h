// The reference reading of OLE format strings: the grammar run through
// std::regex (ECMAScript) and the field rules applied to its groups, written
// independently of the library's parser. Shared by the oracle test, the fuzz
// target and the benchmark.
#pragma once

#include <regex>
#include <string>

#include "velcoredata/locale/NumberFormat.h"

namespace OleFormatReference {

inline const std::wregex& Grammar() {
  static const std::wregex grammar(
      LR"re(^.*?([-(]?)("([^"]*)")?(-?)((#,##0)|(0))([,]*)((\.[0]+)?)([KMBG]?)(-?)("([^"]*)")?([-)]?)$)re",
      std::regex::ECMAScript);
  return grammar;
}

// UTF-16 code units one to one as wchar_t, so that lone surrogates stay
// single characters for the regular expression as for the parser.
inline std::wstring Wide(const TString& text) { return std::wstring(text.begin(), text.end()); }

inline TString Narrow(const std::wstring& text) {
  std::u16string units;
  for (wchar_t c : text) units.push_back(static_cast<char16_t>(c));
  return TString(units);
}

// libstdc++ matches with recursion; very long texts exhaust the stack.
inline constexpr size_t kMaxLength = 2000;

// ParseOleFormatString as the rules read from the regular expression's groups.
inline bool Parse(const TString& text, NUMBER_FORMAT_OPTIONS* options) {
  const std::wstring wide = Wide(text);
  std::wsmatch m;
  if (!std::regex_search(wide, m, Grammar())) return false;
  const auto group = [&](int i) { return Narrow(m[i].str()); };
  const TString prefix = group(3);
  const TString suffix = group(14);
  const TString signs = group(1) + prefix + group(4) + u"1234" + group(12) + suffix + group(15);
  NegativeFormatEnum negative = NegativeFormatEnum::None;
  for (int v = 0; v <= 5; ++v) {
    if (GetNegativeFormatSample(static_cast<NegativeFormatEnum>(v), prefix, suffix) == signs) {
      negative = static_cast<NegativeFormatEnum>(v);
      break;
    }
  }
  const int decimals = static_cast<int>(m[9].length()) - 1;
  options->decimalPlaces = static_cast<uint32_t>(decimals > 0 ? decimals : 0);
  options->grouping = group(5) != u"0";
  options->prefix = prefix;
  options->suffix = suffix;
  options->units = UnitsFormatEnumEncodings().Decode(group(11));
  options->negativeFormat = negative;
  return true;
}

}  // namespace OleFormatReference
