// Process-wide caches keyed by LCID: oneTBB concurrent hash maps, made on
// first use and never destroyed. Private to the locale code.
#pragma once

#include <oneapi/tbb/concurrent_hash_map.h>

#include <cstdint>
#include <memory>
#include <utility>

#include "velcoredata/locale/LanguageUtils.h"

namespace LocaleInternal {

// The maps allocate with std::allocator rather than TBB's own, so that leak
// checkers see the never-destroyed cache entries as reachable.
template <class Key, class Value, class HashCompare = tbb::tbb_hash_compare<Key>>
using ConcurrentMap = tbb::concurrent_hash_map<Key, Value, HashCompare, std::allocator<std::pair<const Key, Value>>>;

inline bool IsPseudoLCID(uint32_t lcid) noexcept {
  return lcid == LanguageUtils::kUserDefaultLCID || lcid == LanguageUtils::kSystemDefaultLCID;
}

// Looks `key` up and makes the value on a miss. The accessor holds the
// entry's lock while `make` runs, so a value is made once. Values of
// pseudo-LCIDs are never cached: they follow the current user locale.
template <class Map, class Key, class Make>
typename Map::mapped_type FindOrMake(Map& map, const Key& key, uint32_t lcid, Make&& make) {
  if (IsPseudoLCID(lcid)) return make();
  {
    typename Map::const_accessor found;
    if (map.find(found, key)) return found->second;
  }
  typename Map::accessor entry;
  if (map.insert(entry, key)) entry->second = make();
  return entry->second;
}

}  // namespace LocaleInternal
