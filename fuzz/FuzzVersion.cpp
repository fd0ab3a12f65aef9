// Fuzzes version parsing: any text with any separators and numbers index is
// read without crashing, comparison is reflexive and antisymmetric, and with
// the usual separators the text form of a version with numbers parses back
// to the same numbers and descriptors.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "velcoredata/util/VersionNumber.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  // The first three bytes choose the separators and the numbers index.
  const char16_t numberSeparator = static_cast<char16_t>(data[0]);
  const char16_t descriptorSeparator = static_cast<char16_t>(data[1]);
  const unsigned long index = data[2] % 4;
  const TString text = TString::fromUtf8(std::string_view(reinterpret_cast<const char*>(data + 3), size - 3));

  const VersionNumber custom(text, numberSeparator, descriptorSeparator, index);
  if (custom.GetAsString() != custom.AsString(numberSeparator, descriptorSeparator)) std::abort();
  const VersionNumber usual(text, u'.', u' ', index);
  if (custom.compare(custom) != 0 || custom.compare(usual) != -usual.compare(custom)) std::abort();

  if (!usual.GetNumbers().empty()) {
    const VersionNumber back(usual.GetAsString());
    if (back.GetNumbers() != usual.GetNumbers()) std::abort();
    if (back.GetDescriptors() != usual.GetDescriptors()) std::abort();
    if (back.GetAsString() != usual.GetAsString()) std::abort();
  }
  VersionNumber cut = usual;
  cut.Truncate(index);
  if (cut.GetNumbers().size() > index || cut.compare(usual) > 0) std::abort();
  return 0;
}
