// MruCache against a list-based reference model, and the lookup cache in
// front of the string pool.

#include <algorithm>
#include <list>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "collation/StringPoolTestSupport.h"
#include "velcoredata/collation/IndirectStringLookupCache.h"
#include "velcoredata/collation/MruCache.h"

namespace {

// The obvious implementation: a list, most recent first.
class ReferenceMru {
 public:
  explicit ReferenceMru(size_t capacity) : m_capacity(capacity) {}
  bool Find(int key, std::string& value) {
    auto it = std::find_if(m_items.begin(), m_items.end(), [&](const auto& kv) { return kv.first == key; });
    if (it == m_items.end()) return false;
    value = it->second;
    m_items.splice(m_items.begin(), m_items, it);
    return true;
  }
  std::string Insert(int key, std::string value) {
    if (m_capacity == 0) return value;
    std::string evicted;
    auto it = std::find_if(m_items.begin(), m_items.end(), [&](const auto& kv) { return kv.first == key; });
    if (it != m_items.end()) {
      evicted = it->second;
      m_items.erase(it);
    } else if (m_items.size() == m_capacity) {
      evicted = m_items.back().second;
      m_items.pop_back();
    }
    m_items.emplace_front(key, std::move(value));
    return evicted;
  }
  size_t Size() const { return m_items.size(); }

 private:
  size_t m_capacity;
  std::list<std::pair<int, std::string>> m_items;
};

TEST(MruCacheTest, EvictsTheLeastRecentlyUsedAndPromotesOnFind) {
  MruCache<int, std::string, 1> cache(2);
  EXPECT_EQ(cache.Insert(1, "one"), "");
  EXPECT_EQ(cache.Insert(2, "two"), "");
  std::string value;
  EXPECT_TRUE(cache.Find(1, value));  // 1 is now the most recent
  EXPECT_EQ(value, "one");
  EXPECT_EQ(cache.Insert(3, "three"), "two");
  EXPECT_FALSE(cache.Find(2, value));
  EXPECT_EQ(cache.Insert(1, "uno"), "one");  // replacing hands back the old value
  EXPECT_EQ(cache.Size(), 2u);
  cache.Clear();
  EXPECT_EQ(cache.Size(), 0u);
  EXPECT_FALSE(cache.Find(1, value));
  EXPECT_EQ(cache.Insert(4, "four"), "");

  // Cleared and filled again past its first sizes, it still finds everything.
  MruCache<int, std::string, 0> grown(1000);
  for (int round = 0; round < 2; ++round) {
    for (int k = 0; k < 1000; ++k) grown.Insert(k, std::to_string(k));
    for (int k = 0; k < 1000; ++k) ASSERT_TRUE(grown.Find(k, value) && value == std::to_string(k)) << k;
    grown.Clear();
  }

  MruCache<int, std::string, 0> none(0);
  EXPECT_EQ(none.Insert(1, "one"), "one");  // nothing is kept
  EXPECT_FALSE(none.Find(1, value));
}

template <class Key>
void CompareWithTheReferenceModel(size_t capacity) {
  MruCache<Key, std::string, 0> cache(capacity);
  ReferenceMru model(capacity);
  std::mt19937 rng(static_cast<unsigned>(capacity));
  std::uniform_int_distribution<int> key(0, static_cast<int>(capacity * 3));
  for (int step = 0; step < 20000; ++step) {
    const int k = key(rng);
    if (rng() % 2) {
      std::string a, b;
      const bool foundA = cache.Find(Key{k}, a), foundB = model.Find(k, b);
      ASSERT_EQ(foundA, foundB) << "capacity " << capacity << " step " << step;
      ASSERT_EQ(a, b);
    } else {
      const std::string value = std::to_string(step);
      ASSERT_EQ(cache.Insert(Key{k}, value), model.Insert(k, value)) << "capacity " << capacity << " step " << step;
    }
    ASSERT_EQ(cache.Size(), model.Size());
  }
}

}  // namespace

TEST(MruCacheTest, MemoryGrowsWithTheEntriesNotTheCapacity) {
  using Cache = MruCache<uint64_t, std::shared_ptr<int>, 1>;
  const size_t before = HeapInUse();
  auto cache = std::make_unique<Cache>(1000000);
  EXPECT_LT(HeapInUse() - before, size_t{1} << 20) << "an empty cache of capacity 1,000,000 holds under 1 MB";
  EXPECT_EQ(cache->Capacity(), 1000000u);
  for (uint64_t k = 0; k < 1000; ++k) cache->Insert(k, nullptr);
  const size_t thousand = HeapInUse() - before;
  EXPECT_LT(thousand, size_t{1} << 20);
  for (uint64_t k = 1000; k < 100000; ++k) cache->Insert(k, nullptr);
  const size_t hundredThousand = HeapInUse() - before;
  EXPECT_GT(hundredThousand, thousand);
  EXPECT_LT(hundredThousand, size_t{1} << 26);
  cache->Clear();
  EXPECT_LT(HeapInUse() - before, size_t{1} << 20);
  // A capacity no memory could hold is a bound like any other.
  Cache huge(~size_t{0});
  EXPECT_EQ(huge.Insert(1, nullptr), nullptr);
  std::shared_ptr<int> found;
  EXPECT_TRUE(huge.Find(1, found));
}

// A key whose hash takes five values: its entries pile up in long runs of
// the cache's index, which removals must keep reachable.
struct CollidingKey {
  int value;
  friend bool operator==(CollidingKey a, CollidingKey b) { return a.value == b.value; }
};
template <>
struct std::hash<CollidingKey> {
  size_t operator()(CollidingKey key) const noexcept { return static_cast<size_t>(key.value % 5); }
};

namespace {

TEST(MruCacheTest, BehavesLikeTheReferenceModelOnRandomOperations) {
  // Capacities past the first index size make the cache grow mid-run.
  for (size_t capacity : {1u, 2u, 7u, 64u, 1500u}) {
    CompareWithTheReferenceModel<int>(capacity);
    CompareWithTheReferenceModel<CollidingKey>(capacity);
  }
}

TEST(IndirectStringLookupCacheTest, ReturnsThePoolsObjectsAndCountsHits) {
  PoolUnderTest pool;
  const Collation c(u"LEN_RUS_S2");
  IndirectStringLookupCache cache(c, 4);
  const IndirectString::Ptr first = cache.Lookup(u"Oslo");
  EXPECT_EQ(first.get(), IndirectString::Lookup(c, u"Oslo").get());
  EXPECT_EQ(cache.Lookup(u"Oslo").get(), first.get());
  EXPECT_EQ(cache.GetHitCount(), 1u);
  EXPECT_EQ(cache.GetMissCount(), 1u);
  EXPECT_NE(cache.Lookup(u"OSLO").get(), first.get());  // exact text, not collation-equal
  EXPECT_EQ(cache.Lookup(nullptr).get(), cache.Lookup(u"").get());
  EXPECT_EQ(&first->GetCollation(), &cache.GetCollation());

  // The cache keeps what it remembers alive; Clear lets go.
  IndirectString* raw = cache.Lookup(u"Bergen").get();
  EXPECT_EQ(pool.counters.weakEntries, 0);
  EXPECT_EQ(raw->GetRefCount(), 2);  // the pool and the cache
  const long long liveBefore = pool.counters.entries - pool.counters.weakEntries;
  cache.Clear();
  EXPECT_EQ(pool.counters.entries - pool.counters.weakEntries, liveBefore - 3);  // Bergen, OSLO, ""
  EXPECT_EQ(first->GetRefCount(), 2);  // Oslo is still held by `first`
}

TEST(IndirectStringLookupCacheTest, HoldsOneReferenceOfItsOwnInTheGlobalPool) {
  // The default pool serves a cache's miss with two references at once:
  // the caller's and the cache's.
  CountingHooks counters;
  const Collation c(u"LEN_RUS");
  IndirectStringLookupCache cache(c, 2);
  IndirectString::Ptr fresh = cache.Lookup(u"held by the cache and its caller");
  EXPECT_EQ(fresh.get(), IndirectString::Lookup(c, u"held by the cache and its caller").get());
  EXPECT_EQ(fresh->GetRefCount(), 3);  // the pool, the cache, the caller
  EXPECT_EQ(counters.entries, 1);
  IndirectString* const raw = fresh.get();
  fresh.reset();
  EXPECT_EQ(raw->GetRefCount(), 2);
  EXPECT_EQ(cache.Lookup(u"held by the cache and its caller").get(), raw);

  // A text already interned elsewhere gains exactly the two references.
  const IndirectString::Ptr elsewhere = IndirectString::Lookup(c, u"interned before the cache saw it");
  const IndirectString::Ptr cached = cache.Lookup(u"interned before the cache saw it");
  EXPECT_EQ(cached.get(), elsewhere.get());
  EXPECT_EQ(elsewhere->GetRefCount(), 4);
  cache.Clear();
  EXPECT_EQ(elsewhere->GetRefCount(), 3);
  EXPECT_EQ(raw->GetRefCount(), 0);  // died with the cache's reference
  EXPECT_EQ(counters.weakEntries, 1);
}

TEST(IndirectStringLookupCacheTest, ACacheOfOneAlternatelyAskedForTwoTextsAlwaysGoesToThePool) {
  PoolUnderTest pool;
  IndirectStringLookupCache cache(Collation(u"LEN_RUS"), 1);
  for (int i = 0; i < 10; ++i) (void)cache.Lookup(i % 2 ? u"left" : u"right");
  EXPECT_EQ(cache.GetMissCount(), 10u);
  EXPECT_EQ(cache.GetHitCount(), 0u);
  (void)cache.Lookup(u"left");  // asked for last, so still cached
  EXPECT_EQ(cache.GetHitCount(), 1u);
  // Evicted strings nobody else holds die; the pool keeps one entry per text.
  EXPECT_EQ(pool.pool().GetEntryCount(), 2u);
  EXPECT_EQ(pool.counters.weakEntries, 1);  // "right", evicted last
}

}  // namespace
