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

#include <atomic>
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

  // Starts loading what a lookup of `key` will touch, without the stripe's
  // lock: the caller can overlap the cache misses with other work. Only
  // prefetches; a concurrent writer makes it useless, never wrong.
  void Prefetch(uint64_t key) const noexcept;

 private:
  // Slots are written under the stripe lock only; their fields are atomics
  // (used relaxed, plain loads and stores on the hardware) so that Prefetch
  // may read them without the lock.
  struct Slot {
    std::atomic<uint64_t> key{0};
    std::atomic<IndirectString*> string{nullptr};  // null: empty slot

    uint64_t Key() const noexcept { return key.load(std::memory_order_relaxed); }
    IndirectString* String() const noexcept { return string.load(std::memory_order_relaxed); }
    void Set(uint64_t k, IndirectString* s) noexcept {
      key.store(k, std::memory_order_relaxed);
      string.store(s, std::memory_order_relaxed);
    }
    void CopyFrom(const Slot& other) noexcept { Set(other.Key(), other.String()); }
  };

  Slot* Slots() const noexcept { return m_slots.load(std::memory_order_relaxed); }
  uint32_t Mask() const noexcept { return m_mask.load(std::memory_order_relaxed); }
  void RemoveAt(uint32_t index) noexcept;
  void Insert(uint64_t key, IndirectString* string);
  void Grow();

  // Open addressing with linear probing; capacity a power of two, at most
  // three quarters full. The first slots live inside the factory, so that a
  // stripe with a few strings costs no extra cache miss (most stripes of a
  // wide pool hold a handful).
  static constexpr uint32_t kInlineSlots = 4;
  Slot m_inline[kInlineSlots];
  std::atomic<Slot*> m_slots{m_inline};
  std::atomic<uint32_t> m_mask{kInlineSlots - 1};
  uint32_t m_size = 0;
};
