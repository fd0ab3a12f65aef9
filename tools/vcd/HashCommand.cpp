// vcd hash TEXT: the platform hashes of a text's UTF-16 code units.

#include <cstdio>
#include <ostream>

#include "Command.h"
#include "velcoredata/platform/THash.h"
#include "velcoredata/platform/TString.h"

namespace {

std::string Hex(uint64_t value, int digits) {
  char buffer[24];
  std::snprintf(buffer, sizeof buffer, "0x%0*llX", digits, static_cast<unsigned long long>(value));
  return buffer;
}

int RunHash(const std::vector<std::string>& args, vcd::CommandIo& io) {
  if (args.size() != 1) throw vcd::UsageError("expected exactly one TEXT");
  const TString text = TString::fromUtf8(args[0]);
  const void* bytes = text.data();
  const size_t length = static_cast<size_t>(text.size()) * sizeof(char16_t);
  constexpr uint32_t kSeed = 0xDEADBEEF;
  const THash128Value h128 = THash128(bytes, length, kSeed, 0xCAFEBABE);
  io.out << "text:        " << args[0] << " (" << text.size() << " UTF-16 code units)\n"
         << "StringHash:  " << Hex(StringHash(text), 8) << "\n"
         << "THash32:     " << Hex(THash32(bytes, length, kSeed), 8) << "  (seed 0xDEADBEEF)\n"
         << "THash64:     " << Hex(THash64(bytes, length, kSeed), 16) << "  (seed 0xDEADBEEF)\n"
         << "THash128:    " << Hex(h128.high, 16) << Hex(h128.low, 16).substr(2)
         << "  (seeds 0xDEADBEEF, 0xCAFEBABE)\n";
  return 0;
}

const vcd::CommandRegistration kHash{"hash", "hash TEXT",
                                     "print the platform hashes of TEXT (UTF-8, hashed as UTF-16)",
                                     &RunHash};

}  // namespace
