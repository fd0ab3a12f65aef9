// IndirectStringLookupCache: a small most-recently-used cache in front of
// the string pool, for one collation.
//
//   IndirectStringLookupCache cache(collation);   // the configured size
//   IndirectString::Ptr s = cache.Lookup(u"Berlin");
//
// A hit costs one hash and one probe under the cache's mutex; a miss goes
// to IndirectString::Lookup (the global pool) and remembers the result,
// evicting the least recently used entry when the cache is full. The cache
// holds a reference to each string it remembers. Typically each thread owns
// its caches; sharing one between threads is safe (the mutex is never held
// while the pool is called) but the hit counters then only approximate.
#pragma once

#include <atomic>
#include <cstdint>

#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/collation/MruCache.h"
#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT IndirectStringLookupCache {
 public:
  // Capacity of caches made without one (default 1000); read at construction.
  static void SetStringPoolThreadLocalCacheSize(unsigned long size) noexcept;
  static unsigned long GetStringPoolThreadLocalCacheSize() noexcept;

  explicit IndirectStringLookupCache(const Collation& collation);
  IndirectStringLookupCache(const Collation& collation, unsigned long capacity);
  IndirectStringLookupCache(const IndirectStringLookupCache&) = delete;
  IndirectStringLookupCache& operator=(const IndirectStringLookupCache&) = delete;

  // The interned string for `text` (null: the empty text) under the cache's
  // collation; the same object IndirectString::Lookup would return.
  IndirectString::Ptr Lookup(const char16_t* text);
  // Forgets every entry (dropping the cache's references).
  void Clear();

  const Collation& GetCollation() const noexcept { return *m_collation; }
  size_t GetCapacity() const noexcept { return m_cache.Capacity(); }
  uint64_t GetHitCount() const noexcept { return m_hits.load(std::memory_order_relaxed); }
  uint64_t GetMissCount() const noexcept { return m_misses.load(std::memory_order_relaxed); }

 private:
  const Collation* m_collation;  // shared by every string interned under it
  MruCache<unsigned long long, IndirectString::Ptr, 1> m_cache;
  std::atomic<uint64_t> m_hits{0}, m_misses{0};
};
