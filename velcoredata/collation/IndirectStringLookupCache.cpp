#include "velcoredata/collation/IndirectStringLookupCache.h"

#include "velcoredata/collation/internal/CanonicalCollations.h"
#include "velcoredata/collation/internal/CollatorText.h"
#include "velcoredata/collation/internal/GlobalPoolAccess.h"
#include "velcoredata/collation/internal/ShortText.h"
#include "velcoredata/core/CoreDataOptions.h"
#include "velcoredata/platform/THash.h"

void IndirectStringLookupCache::SetStringPoolThreadLocalCacheSize(unsigned long size) noexcept {
  CoreDataOptions::SetStringPoolThreadLocalCacheSize(size);
}

unsigned long IndirectStringLookupCache::GetStringPoolThreadLocalCacheSize() noexcept {
  return CoreDataOptions::GetStringPoolThreadLocalCacheSize();
}

IndirectStringLookupCache::IndirectStringLookupCache(const Collation& collation)
    : IndirectStringLookupCache(collation, GetStringPoolThreadLocalCacheSize()) {}

IndirectStringLookupCache::IndirectStringLookupCache(const Collation& collation, unsigned long capacity)
    : m_collation(CanonicalCollations::Get(collation)), m_cache(capacity) {}

namespace {

// Counters of one owner thread: a load and a store, no locked increment.
void Bump(std::atomic<uint64_t>& counter) {
  counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

}  // namespace

IndirectString::Ptr IndirectStringLookupCache::Lookup(const char16_t* text) {
  text = CollatorText::Text(text);
  const int length = static_cast<int>(ShortText::Length(text));
  // The key is part of the pool's own hash of the text, which a miss hands
  // on to the pool: one hash per lookup.
  const THash128Value hash = GlobalPoolAccess::HashOf(text, length);
  const unsigned long long key = hash.high;
  IndirectString::Ptr found;
  // A different text with the same 64-bit key is a miss; it replaces the entry.
  if (m_cache.Find(key, found) && &found->GetCollation() == m_collation && found->GetLength() == length &&
      ShortText::Equal(found->GetText(), text, static_cast<size_t>(length))) {
    Bump(m_hits);
    return found;
  }
  Bump(m_misses);
  auto [interned, kept] = GlobalPoolAccess::LookupTwice(*m_collation, text, length, hash);
  // The evicted string (if any) is released here, after the cache's lock.
  IndirectString::Ptr evicted = m_cache.Insert(key, std::move(kept));
  return interned;
}

void IndirectStringLookupCache::Clear() { m_cache.Clear(); }
