// WeakIndirectStringFactory: one stripe of the string pool.
//
// A multimap from a 64-bit text hash to the strings stored under it,
// holding each string by the pool's own reference. Dead strings (count 0)
// stay in the map until a lookup of their key walks over them or
// ForceCollectAllGarbage runs; collecting one reports -1 to the entry and
// weak-entry counters.
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
  // Room for 64 without allocating. A null stands for a collected string
  // whose memory a new string of the lookup took over: it counts as
  // collected, but there is nothing left to free.
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
  // Reports the collected strings (-n entries, -n weak entries, nulls
  // included), frees them and empties the list.
  static void FreeGarbage(GarbageList& garbage);

  // Strings in the map, dead ones included.
  size_t GetEntryCount() const noexcept;

  // Starts loading what a lookup of `key` will touch (for writing: the
  // lookup takes a reference), without the stripe's lock, so that the
  // caller can overlap the cache misses with other work. Only prefetches:
  // a concurrent writer makes it useless, never wrong.
  void Prefetch(uint64_t key) const noexcept {
    const uint32_t tags = m_tags.load(std::memory_order_relaxed);
    for (int k = 0; k < kInline; ++k) {
      if (TagAt(tags, k) != Tag(key)) continue;
      // Possibly freed meanwhile: prefetching it is harmless.
      if (const IndirectString* string = m_inline[k].load(std::memory_order_relaxed)) __builtin_prefetch(string, 1);
    }
    if (const Overflow* overflow = m_overflow.load(std::memory_order_relaxed)) {
      const uint32_t mask = m_overflowMask.load(std::memory_order_relaxed);
      __builtin_prefetch(overflow->Slots() + (static_cast<uint32_t>(key) & mask));
    }
  }

 private:
  friend class IndirectStringFactoryMT;

  // The first strings of the stripe live in the factory itself, each with
  // the top byte of its key as a tag, so that a lookup touches only strings
  // that probably have its key and a stripe holding a few strings costs no
  // cache miss beyond its own line (most stripes of a wide pool hold a
  // handful). Further strings go to an overflow table: open addressing with
  // linear probing on the full key, capacity a power of two, at most three
  // quarters full, freed when it empties.
  static constexpr int kInline = 4;
  static uint32_t Tag(uint64_t key) noexcept { return static_cast<uint32_t>(key >> 56); }
  static uint32_t TagAt(uint32_t tags, int k) noexcept { return (tags >> (8 * k)) & 0xFF; }

  // Slots are written under the stripe lock only; fields that Prefetch
  // reads without the lock are atomics (used relaxed: plain loads and
  // stores on the hardware).
  struct Slot {
    std::atomic<uint64_t> key{0};
    std::atomic<IndirectString*> string{nullptr};  // null: empty slot

    uint64_t Key() const noexcept { return key.load(std::memory_order_relaxed); }
    IndirectString* String() const noexcept { return string.load(std::memory_order_relaxed); }
    void Set(uint64_t k, IndirectString* s) noexcept {
      key.store(k, std::memory_order_relaxed);
      string.store(s, std::memory_order_relaxed);
    }
  };
  struct alignas(Slot) Overflow {
    uint32_t size = 0;
    // The slots follow the header in the same allocation.
    Slot* Slots() noexcept { return reinterpret_cast<Slot*>(this + 1); }
    const Slot* Slots() const noexcept { return reinterpret_cast<const Slot*>(this + 1); }
    static Overflow* Make(uint32_t capacity);
    static void Free(Overflow* overflow, uint32_t capacity) noexcept;
  };
  static_assert(sizeof(Overflow) % alignof(Slot) == 0);

  // Lookup, called directly by the pool: the string with `references`
  // (1 or 2) taken for the caller.
  [[gnu::visibility("hidden")]] IndirectString* LookupImpl(const Collation* collation, const char16_t* text,
                                                           int length, uint64_t key, GarbageList& garbage,
                                                           int32_t references);
  IndirectString* Inline(int k) const noexcept { return m_inline[k].load(std::memory_order_relaxed); }
  void SetInline(int k, uint32_t tag, IndirectString* string) noexcept;
  // The first empty inline slot, or -1.
  int FreeInlineSlot() const noexcept;
  // Makes room for one more string in the overflow table (may allocate), so
  // that InsertOverflow cannot fail.
  void ReserveOverflow();
  void InsertOverflow(uint64_t key, IndirectString* string) noexcept;
  void GrowOverflow();
  void RemoveOverflowAt(uint32_t index) noexcept;
  uint32_t OverflowCapacity() const noexcept { return m_overflowMask.load(std::memory_order_relaxed) + 1; }

  std::atomic<uint32_t> m_tags{0};          // byte k: the tag of m_inline[k]
  std::atomic<uint32_t> m_overflowMask{0};  // capacity - 1 while there is an overflow table
  std::atomic<Overflow*> m_overflow{nullptr};
  std::atomic<IndirectString*> m_inline[kInline] = {};
};
