// vcd intern: interns every line of the input under a collation and shows
// what the string pool holds, so a user can see what interning saves on
// their data.
//
// The lines go through a lookup cache into a private pool (the global one
// is left alone); the pool's statistics hooks count entries, weak entries
// and bytes while the command runs.

#include <cstdio>
#include <fstream>
#include <istream>
#include <memory>
#include <ostream>

#include "CollationArgs.h"
#include "Command.h"
#include "velcoredata/collation/IndirectStringConfig.h"
#include "velcoredata/collation/IndirectStringFactoryMT.h"
#include "velcoredata/collation/IndirectStringLookupCache.h"

namespace {

struct Counters {
  long long entries = 0, weakEntries = 0, bytes = 0;
};

// Counts into `counters` while it lives, then puts the previous hooks back.
class CountingHooks {
 public:
  explicit CountingHooks(Counters& c)
      : m_entries(IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction([&c](long long d) { c.entries += d; })),
        m_weak(IndirectStringConfig::SetUpdateStringPoolWeakEntryCounterFunction([&c](long long d) { c.weakEntries += d; })),
        m_bytes(IndirectStringConfig::SetUpdateStringPoolTotalBytesCounterFunction([&c](long long d) { c.bytes += d; })) {}
  ~CountingHooks() {
    IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(m_entries);
    IndirectStringConfig::SetUpdateStringPoolWeakEntryCounterFunction(m_weak);
    IndirectStringConfig::SetUpdateStringPoolTotalBytesCounterFunction(m_bytes);
  }

 private:
  IndirectStringConfig::CounterFunction m_entries, m_weak, m_bytes;
};

std::string Percent(long long part, long long whole) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.1f%%", whole > 0 ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0.0);
  return buffer;
}

int RunIntern(const std::vector<std::string>& args, vcd::CommandIo& io) {
  vcd::CollationArgs collationArgs;
  unsigned long cacheSize = IndirectStringLookupCache::GetStringPoolThreadLocalCacheSize();
  std::vector<std::string> files;
  for (size_t i = 0; i < args.size(); ++i) {
    if (collationArgs.Consume(args, i)) continue;
    if (args[i] == "--cache-size") {
      if (i + 1 >= args.size()) throw vcd::UsageError("--cache-size needs a value");
      const std::string& value = args[++i];
      char* end = nullptr;
      cacheSize = std::strtoul(value.c_str(), &end, 10);
      if (value.empty() || *end != 0 || value[0] == '-') throw vcd::UsageError("bad --cache-size '" + value + "'");
    } else if (args[i].rfind("--", 0) == 0) {
      throw vcd::UsageError("unknown argument '" + args[i] + "'");
    } else {
      files.push_back(args[i]);
    }
  }
  const Collation collation = collationArgs.Build();

  Counters counters;
  const CountingHooks hooks(counters);
  const std::unique_ptr<IndirectStringFactoryMT> pool(
      new IndirectStringFactoryMT(IndirectStringConfig::GetStringPoolGlobalStripedMapWidth()));
  const GlobalIndirectStringPoolScope scope(pool.get());
  IndirectStringLookupCache cache(collation, cacheSize);
  std::vector<IndirectString::Ptr> held;
  long long lines = 0, textBytes = 0;

  auto internAll = [&](std::istream& in) {
    for (std::string line; std::getline(in, line);) {
      const TString text = TString::fromUtf8(line);
      held.push_back(cache.Lookup(text.c_str()));
      ++lines;
      textBytes += static_cast<long long>(text.size()) * 2;
    }
  };
  if (files.empty()) internAll(io.in);
  for (const std::string& file : files) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read '" + file + "'");
    internAll(in);
  }

  const uint64_t hits = cache.GetHitCount();
  io.out << "collation:           " << collation.GetName().toUtf8() << "\n"
         << "lines:               " << lines << "\n"
         << "text bytes (UTF-16): " << textBytes << "\n"
         << "entries:             " << counters.entries << "\n"
         << "bytes held:          " << counters.bytes << " (" << Percent(counters.bytes, textBytes)
         << " of the text)\n"
         << "lookup cache:        " << hits << " hits of " << lines << " lookups (" << Percent(static_cast<long long>(hits), lines)
         << ", capacity " << cache.GetCapacity() << ")\n";
  held.clear();
  cache.Clear();
  io.out << "after release:       " << counters.weakEntries << " weak entries, " << counters.bytes
         << " bytes held\n";
  pool->ForceCollectAllGarbage();
  io.out << "after collection:    " << counters.entries << " entries, " << counters.weakEntries
         << " weak entries\n";
  return 0;
}

const vcd::CommandRegistration kIntern{
    "intern",
    "intern [--collation NAME | --locale L [options]] [--cache-size N] [FILE...]",
    "intern every line of the files (or standard input) under a collation and print the pool's "
    "entries, weak entries, bytes held and the hit rate of a lookup cache",
    &RunIntern};

}  // namespace
