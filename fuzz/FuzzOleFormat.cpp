// Fuzzes ParseOleFormatString against the grammar run through std::regex:
// the same answer and the same fields on any UTF-16 text (two bytes per code
// unit, little-endian). Also decodes the text as an encoded format string
// and rebuilds it, which must not crash.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "../tests/support/OleFormatReference.h"
#include "velcoredata/locale/NumberFormat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::u16string units;
  for (size_t i = 0; i + 1 < size; i += 2) units.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
  if (units.size() > OleFormatReference::kMaxLength) return 0;
  const TString text(units);

  NUMBER_FORMAT_OPTIONS parsed, expected;
  const bool ok = ParseOleFormatString(text, &parsed);
  if (ok != OleFormatReference::Parse(text, &expected)) std::abort();
  if (ok && !(parsed == expected)) std::abort();
  const auto breaksLines = [](const TString& t) {
    for (char16_t c : t) {
      if (c == u'\n' || c == u'\r' || c == u'\u2028' || c == u'\u2029') return true;
    }
    return false;
  };
  // A parsed picture builds again and reads back the same fields (unless a
  // line break in the prefix or suffix keeps the lead from reaching the
  // negative section).
  if (ok && !breaksLines(parsed.prefix) && !breaksLines(parsed.suffix)) {
    NUMBER_FORMAT_OPTIONS again;
    if (!ParseOleFormatString(BuildOleFormatString(&parsed, true), &again)) std::abort();
    if (again.decimalPlaces != parsed.decimalPlaces || again.prefix != parsed.prefix ||
        again.suffix != parsed.suffix || again.units != parsed.units || again.grouping != parsed.grouping) {
      std::abort();
    }
  }

  FormatCode code;
  int options;
  TString rest;
  DecodeFormatString(text, code, options, rest);
  if (IsAutoFormatString(text) != (code == FormatCode::Automatic)) std::abort();
  TString rebuilt;
  GetStringFromFormatCodeAndOptions(code, options, &parsed, rebuilt);
  return 0;
}
