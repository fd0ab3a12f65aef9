// The string pool against general-purpose interners on the same workloads:
//   A  lookups drawn uniformly from 10,000 strings that stay interned;
//   B  1,000,000 distinct strings interned and held (bytes per entry are
//      reported as counters: heap from malloc statistics, and resident
//      memory; run each B case in its own process for clean figures);
//   C  churn: intern a string and release it at once, so it dies and is
//      made again on its next lookup;
//   Z  lookups with Zipf(1.0) popularity over 10,000 strings that stay
//      interned.
// Strings are 8-24 UTF-16 code units. Peers: boost::flyweight<std::u16string>
// (default configuration: hashed factory, reference counted, one lock),
// tbb::concurrent_hash_map keyed by the text with a count per entry, and
// one std::mutex around an unordered map from text to count.
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include <boost/flyweight.hpp>
#include <oneapi/tbb/concurrent_hash_map.h>

#include <benchmark/benchmark.h>

#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/collation/IndirectStringConfig.h"
#include "velcoredata/collation/IndirectStringFactoryMT.h"
#include "velcoredata/collation/IndirectStringLookupCache.h"

namespace {

constexpr size_t kPopular = 10000;
constexpr size_t kDistinct = 1000000;
constexpr size_t kDraws = 1 << 20;

std::vector<std::u16string> MakeStrings(size_t count, unsigned seed) {
  std::mt19937 rng(seed);
  std::uniform_int_distribution<int> length(8, 24), letter(0, 61);
  const std::u16string alphabet = u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  std::vector<std::u16string> strings(count);
  for (size_t i = 0; i < count; ++i) {
    auto& s = strings[i];
    s.resize(static_cast<size_t>(length(rng)));
    for (auto& c : s) c = alphabet[static_cast<size_t>(letter(rng))];
    // A unique tail makes every string distinct.
    for (size_t n = i, k = 0; k < 4; ++k, n /= 62) s[s.size() - 1 - k] = alphabet[n % 62];
  }
  return strings;
}

struct Data {
  std::vector<std::u16string> popular = MakeStrings(kPopular, 1);
  std::vector<std::u16string> distinct = MakeStrings(kDistinct, 2);
  std::vector<uint32_t> uniform, zipf;

  Data() {
    std::mt19937 rng(3);
    std::uniform_int_distribution<uint32_t> pick(0, kPopular - 1);
    uniform.resize(kDraws);
    for (auto& i : uniform) i = pick(rng);
    // Zipf(1.0): rank k drawn with weight 1/k; ranks map to random strings.
    std::vector<double> cumulative(kPopular);
    double sum = 0;
    for (size_t k = 0; k < kPopular; ++k) cumulative[k] = sum += 1.0 / static_cast<double>(k + 1);
    std::vector<uint32_t> rankToString(kPopular);
    for (uint32_t i = 0; i < kPopular; ++i) rankToString[i] = i;
    std::shuffle(rankToString.begin(), rankToString.end(), rng);
    std::uniform_real_distribution<double> u(0, sum);
    zipf.resize(kDraws);
    for (auto& i : zipf) {
      const size_t rank = static_cast<size_t>(std::upper_bound(cumulative.begin(), cumulative.end(), u(rng)) -
                                              cumulative.begin());
      i = rankToString[std::min(rank, kPopular - 1)];
    }
  }
};

const Data& GetData() {
  static const Data* const data = new Data();
  return *data;
}

const Collation& BenchCollation() {
  static const Collation* const collation = new Collation(u"LEN_RUS");
  return *collation;
}

// --- the interners under test ---------------------------------------------------

struct Pool {
  using Handle = IndirectString::Ptr;
  Handle Lookup(const std::u16string& s) { return IndirectString::Lookup(BenchCollation(), s.c_str()); }
};

struct CachedPool {
  using Handle = IndirectString::Ptr;
  IndirectStringLookupCache cache{BenchCollation()};  // one per thread, default size
  Handle Lookup(const std::u16string& s) { return cache.Lookup(s.c_str()); }
  double HitRate() const {
    return static_cast<double>(cache.GetHitCount()) /
           static_cast<double>(std::max<uint64_t>(1, cache.GetHitCount() + cache.GetMissCount()));
  }
};

template <class Interner>
void ReportHitRate(benchmark::State&, const Interner&) {}
void ReportHitRate(benchmark::State& state, const CachedPool& interner) {
  if (state.thread_index() == 0) state.counters["hit_rate"] = interner.HitRate();
}

struct Flyweight {
  using Handle = boost::flyweight<std::u16string>;
  Handle Lookup(const std::u16string& s) { return Handle(s); }
};

// A count per text; the last release erases the entry.
class TbbInterner {
 public:
  struct Entry {
    std::atomic<int> count{0};
  };
  using Map = tbb::concurrent_hash_map<std::u16string, Entry>;
  struct Handle {
    Handle() = default;
    Handle(TbbInterner* owner, const std::u16string* text, Entry* entry) : owner(owner), text(text), entry(entry) {}
    Handle(Handle&& other) noexcept { *this = std::move(other); }
    Handle& operator=(Handle&& other) noexcept {
      reset();
      std::swap(owner, other.owner);
      std::swap(text, other.text);
      std::swap(entry, other.entry);
      return *this;
    }
    ~Handle() { reset(); }
    void reset() {
      if (entry && entry->count.fetch_sub(1) == 1) owner->EraseIfUnused(*text);
      entry = nullptr;
    }
    TbbInterner* owner = nullptr;
    const std::u16string* text = nullptr;
    Entry* entry = nullptr;
  };

  Handle Lookup(const std::u16string& s) {
    Map::accessor a;
    m_map.insert(a, s);
    a->second.count.fetch_add(1);
    return Handle(this, &a->first, &a->second);
  }
  void EraseIfUnused(const std::u16string& text) {
    const std::u16string key = text;  // the entry (and `text`) may go with the erase
    Map::accessor a;
    if (m_map.find(a, key) && a->second.count.load() == 0) m_map.erase(a);
  }

 private:
  Map m_map;
};

class MutexInterner {
 public:
  struct Handle {
    Handle() = default;
    Handle(MutexInterner* owner, std::pair<const std::u16string, size_t>* node) : owner(owner), node(node) {}
    Handle(Handle&& other) noexcept { *this = std::move(other); }
    Handle& operator=(Handle&& other) noexcept {
      reset();
      std::swap(owner, other.owner);
      std::swap(node, other.node);
      return *this;
    }
    ~Handle() { reset(); }
    void reset() {
      if (node) owner->Release(node);
      node = nullptr;
    }
    MutexInterner* owner = nullptr;
    std::pair<const std::u16string, size_t>* node = nullptr;
  };

  Handle Lookup(const std::u16string& s) {
    std::lock_guard<std::mutex> lock(m_mutex);
    auto& node = *m_map.try_emplace(s, 0).first;
    ++node.second;
    return Handle(this, &node);
  }
  void Release(std::pair<const std::u16string, size_t>* node) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (--node->second == 0) m_map.erase(node->first);
  }

 private:
  std::mutex m_mutex;
  std::unordered_map<std::u16string, size_t> m_map;
};

// Process-wide instances of the peers, as an application would have them.
TbbInterner& SharedTbb() {
  static auto* interner = new TbbInterner();
  return *interner;
}
MutexInterner& SharedMutex() {
  static auto* interner = new MutexInterner();
  return *interner;
}
struct TbbPeer {
  using Handle = TbbInterner::Handle;
  Handle Lookup(const std::u16string& s) { return SharedTbb().Lookup(s); }
};
struct MutexPeer {
  using Handle = MutexInterner::Handle;
  Handle Lookup(const std::u16string& s) { return SharedMutex().Lookup(s); }
};

// The popular strings held for the whole process by each interner, so that
// workloads A and Z measure lookups of strings that stay interned.
template <class Interner>
void HoldPopular() {
  static auto* held = [] {
    Interner interner;
    auto* handles = new std::vector<typename Interner::Handle>();
    for (const auto& s : GetData().popular) handles->push_back(interner.Lookup(s));
    return handles;
  }();
  benchmark::DoNotOptimize(held);
}

// --- workloads -----------------------------------------------------------------

template <class Interner>
void Draws(benchmark::State& state, const std::vector<uint32_t>& draws) {
  const Data& data = GetData();
  HoldPopular<Interner>();
  Interner interner;
  size_t i = static_cast<size_t>(state.thread_index()) * 500009;
  for (auto _ : state) {
    auto handle = interner.Lookup(data.popular[draws[i++ & (kDraws - 1)]]);
    benchmark::DoNotOptimize(&handle);
  }
  ReportHitRate(state, interner);
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

template <class Interner>
void WorkloadA(benchmark::State& state) { Draws<Interner>(state, GetData().uniform); }
template <class Interner>
void WorkloadZ(benchmark::State& state) { Draws<Interner>(state, GetData().zipf); }

template <class Interner>
void WorkloadC(benchmark::State& state) {
  const Data& data = GetData();
  Interner interner;
  // Strings nobody holds: each lookup finds the previous one dead.
  const std::vector<std::u16string>& churned = data.distinct;  // a disjoint set of 10,000
  size_t i = static_cast<size_t>(state.thread_index()) * 500009;
  for (auto _ : state) {
    auto handle = interner.Lookup(churned[data.uniform[i++ & (kDraws - 1)]]);
    benchmark::DoNotOptimize(&handle);
  }
  ReportHitRate(state, interner);
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

size_t HeapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

size_t ResidentBytes() {
  long pages = 0, resident = 0;
  if (FILE* f = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2) resident = 0;
    std::fclose(f);
  }
  return static_cast<size_t>(resident) * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

// One run interns every distinct string once (threads take turns through
// the list) and keeps them, into a fresh pool for our interners.
template <class Interner>
void WorkloadB(benchmark::State& state) {
  const Data& data = GetData();
  static std::vector<typename Interner::Handle> held;
  static std::unique_ptr<IGlobalIndirectStringPool> pool;
  static std::unique_ptr<GlobalIndirectStringPoolScope> scope;
  static size_t heapBefore = 0, residentBefore = 0;
  const size_t threads = static_cast<size_t>(state.threads());
  const size_t thread = static_cast<size_t>(state.thread_index());
  if (thread == 0) {
    held.clear();
    held.resize(kDistinct);
    pool.reset(MakeDefaultGlobalIndirectStringPool(IndirectStringConfig::GetStringPoolGlobalStripedMapWidth()));
    scope = std::make_unique<GlobalIndirectStringPoolScope>(pool.get());
    heapBefore = HeapInUse();
    residentBefore = ResidentBytes();
  }
  Interner interner;
  size_t interned = 0;
  for (auto _ : state) {
    for (size_t next = thread; next < kDistinct; next += threads, ++interned) {
      held[next] = interner.Lookup(data.distinct[next]);
    }
  }
  if (thread == 0) {
    state.counters["heap_B_per_entry"] =
        static_cast<double>(HeapInUse() - heapBefore) / static_cast<double>(kDistinct);
    state.counters["rss_B_per_entry"] =
        static_cast<double>(ResidentBytes() - residentBefore) / static_cast<double>(kDistinct);
    held.clear();
    held.shrink_to_fit();
    scope.reset();
    pool.reset();
  }
  state.SetItemsProcessed(static_cast<int64_t>(interned));
}

void OneAndTwoThreads(benchmark::internal::Benchmark* b) { b->Threads(1)->Threads(2)->UseRealTime(); }
// One iteration interns all 1,000,000 strings, shared out among the threads.
void DistinctRuns(benchmark::internal::Benchmark* b) {
  b->Threads(1)->Threads(2)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
}

#define VCD_STRINGPOOL_BENCH(Workload, Name, Interner, Configure) \
  void Name(benchmark::State& state) { Workload<Interner>(state); } \
  BENCHMARK(Name)->Apply(Configure)

VCD_STRINGPOOL_BENCH(WorkloadA, BM_StringPool_Lookup_A, Pool, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadA, BM_StringPool_CacheLookup_A, CachedPool, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadA, BM_StringPool_Lookup_A_PeerTbb, TbbPeer, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadA, BM_StringPool_Lookup_A_PeerFlyweight, Flyweight, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadA, BM_StringPool_Lookup_A_PeerMutexSet, MutexPeer, OneAndTwoThreads);

VCD_STRINGPOOL_BENCH(WorkloadB, BM_StringPool_Lookup_B, Pool, DistinctRuns);
VCD_STRINGPOOL_BENCH(WorkloadB, BM_StringPool_CacheLookup_B, CachedPool, DistinctRuns);
VCD_STRINGPOOL_BENCH(WorkloadB, BM_StringPool_Lookup_B_PeerTbb, TbbPeer, DistinctRuns);
VCD_STRINGPOOL_BENCH(WorkloadB, BM_StringPool_Lookup_B_PeerFlyweight, Flyweight, DistinctRuns);
VCD_STRINGPOOL_BENCH(WorkloadB, BM_StringPool_Lookup_B_PeerMutexSet, MutexPeer, DistinctRuns);

VCD_STRINGPOOL_BENCH(WorkloadC, BM_StringPool_Lookup_C, Pool, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadC, BM_StringPool_CacheLookup_C, CachedPool, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadC, BM_StringPool_Lookup_C_PeerTbb, TbbPeer, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadC, BM_StringPool_Lookup_C_PeerFlyweight, Flyweight, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadC, BM_StringPool_Lookup_C_PeerMutexSet, MutexPeer, OneAndTwoThreads);

VCD_STRINGPOOL_BENCH(WorkloadZ, BM_StringPool_Lookup_Z, Pool, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadZ, BM_StringPool_CacheLookup_Z, CachedPool, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadZ, BM_StringPool_Lookup_Z_PeerTbb, TbbPeer, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadZ, BM_StringPool_Lookup_Z_PeerFlyweight, Flyweight, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadZ, BM_StringPool_Lookup_Z_PeerMutexSet, MutexPeer, OneAndTwoThreads);

}  // namespace
