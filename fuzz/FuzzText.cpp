// Fuzzes the platform's text conversions and format strings: UTF-8 decoding
// never fails, valid text survives a round trip, and a format string with any
// markers fills without reading past its arguments.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "velcoredata/platform/TFormatString.h"
#include "velcoredata/platform/TString.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const TString text = TString::fromUtf8(bytes);
  const std::string back = text.toUtf8();
  // Decoding what we encoded is stable (invalid input became U+FFFD once).
  if (TString::fromUtf8(back) != text && !text.contains(u'\uFFFD')) std::abort();

  const TString filled = TFormatString(text).arg(TString(u"a")).arg(2).arg(3.5).str();
  if (filled.size() > text.size() * 4 + 16) std::abort();

  bool ok = false;
  (void)text.toDouble(&ok);
  (void)text.toLongLong(&ok);
  (void)text.toUInt(&ok);
  (void)text.trimmed().toLower().compare(text, TString::CaseInsensitive);
  return 0;
}
