// WeakIndirectStringFactory: one stripe of the string pool.
//
// A multimap from a 64-bit text hash to the strings stored under it,
// holding each string by the pool's own reference. Dead strings (count 0)
// stay in the map until a lookup walks over them or ForceCollectAllGarbage
// runs; collecting one reports -1 to the entry and weak-entry counters.
//
// Not synchronised: the owner (IndirectStringFactoryMT) locks the stripe
// around every call. Destroying the factory frees its dead strings and lets
// go of its live ones (they are freed with their last user); it must not run
// while other threads use the factory's strings.
#pragma once

#include <cstdint>

#include <boost/container/small_vector.hpp>

#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT WeakIndirectStringFactory {
 public:
  // Strings collected under the stripe lock, freed after it is released.
  // Room for 64 without allocating.
  using GarbageList = boost::container::small_vector<IndirectString*, 64>;

  WeakIndirectStringFactory() noexcept = default;
  ~WeakIndirectStringFactory();
  WeakIndirectStringFactory(const WeakIndirectStringFactory&) = delete;
  WeakIndirectStringFactory& operator=(const WeakIndirectStringFactory&) = delete;

  // The live string with exactly this text (length code units) under
  // `collation` (a CanonicalCollations object), stored under `key`; a new
  // one when there is none (reported: +1 entry, + its bytes). Dead strings
  // met under the key are unlinked and appended to `garbage`.
  IndirectString::Ptr Lookup(const Collation* collation, const char16_t* text, int length,
                             uint64_t key, GarbageList& garbage);

  // A new reference to `string` if it is alive, else null.
  static IndirectString::Ptr GetPtrIfStringIsAlive(IndirectString& string);

  // Unlinks every dead string into `garbage`.
  void CollectGarbage(GarbageList& garbage);
  // Collects every dead string now, reports and frees them; returns how many.
  size_t ForceCollectAllGarbage();
  // Reports the collected strings (-n entries, -n weak entries), frees them
  // and empties the list.
  static void FreeGarbage(GarbageList& garbage);

  // Strings in the map, dead ones included.
  size_t GetEntryCount() const noexcept { return m_size; }

 private:
  struct Slot {
    uint64_t key;
    IndirectString* string;  // null: empty slot
  };

  void RemoveAt(uint32_t index) noexcept;
  void Insert(uint64_t key, IndirectString* string);
  void Grow();

  // Open addressing with linear probing; capacity a power of two (0 until
  // the first insert), at most three quarters full.
  Slot* m_slots = nullptr;
  uint32_t m_mask = 0;
  uint32_t m_size = 0;
};
