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
// LookupUnshared_A is A with a pool and strings per thread (nothing shared).
// Two reference points show what the hardware allows whatever the design:
// ReferenceOnly_A does on A's draws only what any interner handing out
// counted references does on a hit (an atomic increment and decrement of a
// count in the entry's own cache line, no lookup), one reference after the
// other as lookups come (each waits for the previous one); Lookup_Hot and
// CacheLookup_Hot run lookups over 500 strings, so the cache hits every
// time and its hit path meets the pool's on data both keep in cache.
// Every interner runs A, C and Z holding the same 10,000 popular strings,
// so a filtered run measures what a full run does; B starts from an empty
// interner each run. Each thread has its own draw sequence.
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
#include <utility>
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
constexpr size_t kMaxThreads = 2;
constexpr size_t kHot = 500;  // fewer than a default cache holds

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

// Each thread draws its own sequence (the same distribution, its own seed),
// so two threads never walk the same sequence in step.
struct Data {
  std::vector<std::u16string> popular = MakeStrings(kPopular, 1);
  std::vector<std::u16string> distinct = MakeStrings(kDistinct, 2);
  std::vector<uint32_t> uniform[kMaxThreads], zipf[kMaxThreads], hot[kMaxThreads];

  Data() {
    std::mt19937 rng(3);
    std::uniform_int_distribution<uint32_t> pick(0, kPopular - 1);
    // Zipf(1.0): rank k drawn with weight 1/k; ranks map to random strings,
    // the same mapping for every thread.
    std::vector<double> cumulative(kPopular);
    double sum = 0;
    for (size_t k = 0; k < kPopular; ++k) cumulative[k] = sum += 1.0 / static_cast<double>(k + 1);
    std::vector<uint32_t> rankToString(kPopular);
    for (uint32_t i = 0; i < kPopular; ++i) rankToString[i] = i;
    std::shuffle(rankToString.begin(), rankToString.end(), rng);
    std::uniform_real_distribution<double> u(0, sum);
    for (size_t t = 0; t < kMaxThreads; ++t) {
      uniform[t].resize(kDraws);
      for (auto& i : uniform[t]) i = pick(rng);
      hot[t].resize(kDraws);
      for (auto& i : hot[t]) i = pick(rng) % kHot;
      zipf[t].resize(kDraws);
      for (auto& i : zipf[t]) {
        const size_t rank = static_cast<size_t>(std::upper_bound(cumulative.begin(), cumulative.end(), u(rng)) -
                                                cumulative.begin());
        i = rankToString[std::min(rank, kPopular - 1)];
      }
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

// The default configuration.
struct Flyweight {
  using Handle = boost::flyweight<std::u16string>;
  Handle Lookup(const std::u16string& s) { return Handle(s); }
};
// The same with a factory of its own (a tag changes nothing else), so that
// workload B's million strings do not leave the shared factory's table
// grown for the other workloads. Its factory cannot be replaced between
// runs, so later B runs find its table already grown: in its favour.
struct DistinctFlyweight {
  using Handle = boost::flyweight<std::u16string, boost::flyweights::tag<DistinctFlyweight>>;
  Handle Lookup(const std::u16string& s) { return Handle(s); }
};

// A count per text; the last release erases the entry. Lookups share the
// entry's lock (the count is atomic), so hits on one text do not exclude
// each other.
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
    Map::const_accessor a;
    m_map.insert(a, s);
    const_cast<Entry&>(a->second).count.fetch_add(1);
    return Handle(this, &a->first, const_cast<Entry*>(&a->second));
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
// Workload B puts fresh ones in their place for each run (see FreshRun).
template <class Interner>
Interner*& Instance() {
  static Interner* instance = new Interner();
  return instance;
}
struct TbbPeer {
  using Handle = TbbInterner::Handle;
  Handle Lookup(const std::u16string& s) { return Instance<TbbInterner>()->Lookup(s); }
};
struct MutexPeer {
  using Handle = MutexInterner::Handle;
  Handle Lookup(const std::u16string& s) { return Instance<MutexInterner>()->Lookup(s); }
};

// The popular strings held for the whole process by each interner, so that
// every workload runs against an interner holding the same 10,000 live
// strings, whichever workloads ran before it.
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

// Lookups of `strings[draw]` over the thread's own draw sequence; each
// handle is dropped before the next lookup.
template <class Interner>
void Draws(benchmark::State& state, const std::vector<std::u16string>& strings,
           const std::vector<uint32_t>& draws) {
  Interner interner;
  size_t i = 0;
  for (auto _ : state) {
    auto handle = interner.Lookup(strings[draws[i++ & (kDraws - 1)]]);
    benchmark::DoNotOptimize(&handle);
  }
  ReportHitRate(state, interner);
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

size_t ThreadSlot(const benchmark::State& state) { return static_cast<size_t>(state.thread_index()) % kMaxThreads; }

template <class Interner>
void WorkloadA(benchmark::State& state) {
  HoldPopular<Interner>();
  Draws<Interner>(state, GetData().popular, GetData().uniform[ThreadSlot(state)]);
}
template <class Interner>
void WorkloadZ(benchmark::State& state) {
  HoldPopular<Interner>();
  Draws<Interner>(state, GetData().popular, GetData().zipf[ThreadSlot(state)]);
}
template <class Interner>
void WorkloadHot(benchmark::State& state) {
  HoldPopular<Interner>();
  Draws<Interner>(state, GetData().popular, GetData().hot[ThreadSlot(state)]);
}
// Churn: strings nobody holds (a set of 10,000 disjoint from the popular
// ones), so each lookup finds the text's previous entry dead or gone.
template <class Interner>
void WorkloadC(benchmark::State& state) {
  HoldPopular<Interner>();
  Draws<Interner>(state, GetData().distinct, GetData().uniform[ThreadSlot(state)]);
}

// Workload A with nothing shared between the threads: each thread interns
// its own copy of the 10,000 strings into a pool of its own. Beside
// Lookup_A it shows what two threads cost each other when they take
// references to the same strings (the strings' counts and the stripes'
// locks are then written from both cores).
void LookupUnsharedA(benchmark::State& state) {
  const Data& data = GetData();
  IndirectStringFactoryMT pool(IndirectStringConfig::GetStringPoolGlobalStripedMapWidth());
  const std::vector<std::u16string> strings = data.popular;  // this thread's copy
  std::vector<IndirectString::Ptr> held;
  for (const auto& s : strings) held.push_back(pool.Lookup(BenchCollation(), s.c_str()));
  const std::vector<uint32_t>& draws = data.uniform[ThreadSlot(state)];
  size_t i = 0;
  for (auto _ : state) {
    auto handle = pool.Lookup(BenchCollation(), strings[draws[i++ & (kDraws - 1)]].c_str());
    benchmark::DoNotOptimize(&handle);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

// A's draws against bare counts, one per cache line as a string's count
// is: the floor under every interner's hit, shared by the threads as the
// strings of A are. A lookup finds its entry only after the previous one
// is done (its address comes out of the lookup), so each reference here
// waits for the previous one too: `carry` is always 0 (counts stay
// positive), but the processor cannot know that before the count is back.
void ReferenceOnlyA(benchmark::State& state) {
  struct alignas(64) Count {
    std::atomic<int32_t> value{2};
  };
  static Count* const counts = new Count[kPopular];
  const std::vector<uint32_t>& draws = GetData().uniform[ThreadSlot(state)];
  size_t i = 0;
  uint32_t carry = 0;
  for (auto _ : state) {
    std::atomic<int32_t>& count = counts[draws[(i++ + carry) & (kDraws - 1)]].value;
    count.fetch_add(1, std::memory_order_acquire);
    carry = static_cast<uint32_t>(count.fetch_sub(1, std::memory_order_acq_rel)) >> 31;
  }
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

// Workload B interns into an empty interner of its own for each run: a
// fresh pool for ours, fresh instances of the peers.
template <class Interner>
struct FreshRun {
  FreshRun() {}  // the tagged flyweight's factory cannot be replaced
};
template <>
struct FreshRun<Pool> {
  std::unique_ptr<IGlobalIndirectStringPool> pool{
      MakeDefaultGlobalIndirectStringPool(IndirectStringConfig::GetStringPoolGlobalStripedMapWidth())};
  GlobalIndirectStringPoolScope scope{pool.get()};
};
template <>
struct FreshRun<CachedPool> : FreshRun<Pool> {};
template <class Interner>
struct FreshInstance {
  FreshInstance() : previous(std::exchange(Instance<Interner>(), new Interner())) {}
  ~FreshInstance() { delete std::exchange(Instance<Interner>(), previous); }
  Interner* previous;
};
template <>
struct FreshRun<TbbPeer> : FreshInstance<TbbInterner> {};
template <>
struct FreshRun<MutexPeer> : FreshInstance<MutexInterner> {};

// One run interns every distinct string once (threads take turns through
// the list) and keeps them until the run ends.
template <class Interner>
void WorkloadB(benchmark::State& state) {
  const Data& data = GetData();
  static std::vector<typename Interner::Handle> held;
  static std::unique_ptr<FreshRun<Interner>> fresh;
  static size_t heapBefore = 0, residentBefore = 0;
  const size_t threads = static_cast<size_t>(state.threads());
  const size_t thread = static_cast<size_t>(state.thread_index());
  if (thread == 0) {
    held.clear();
    held.resize(kDistinct);
    fresh = std::make_unique<FreshRun<Interner>>();
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
    fresh.reset();
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
VCD_STRINGPOOL_BENCH(WorkloadB, BM_StringPool_Lookup_B_PeerFlyweight, DistinctFlyweight, DistinctRuns);
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

void BM_StringPool_LookupUnshared_A(benchmark::State& state) { LookupUnsharedA(state); }
BENCHMARK(BM_StringPool_LookupUnshared_A)->Apply(OneAndTwoThreads);
void BM_StringPool_ReferenceOnly_A(benchmark::State& state) { ReferenceOnlyA(state); }
BENCHMARK(BM_StringPool_ReferenceOnly_A)->Apply(OneAndTwoThreads);

VCD_STRINGPOOL_BENCH(WorkloadHot, BM_StringPool_Lookup_Hot, Pool, OneAndTwoThreads);
VCD_STRINGPOOL_BENCH(WorkloadHot, BM_StringPool_CacheLookup_Hot, CachedPool, OneAndTwoThreads);

}  // namespace
