// The per-thread fast path in front of the ICU pools' per-thread maps.
//
// Each thread keeps a few slots from pool serial to its collator in that
// pool. The pools' maps stay the owners; a slot only mirrors an entry of
// the calling thread's own, and FreeOnThread (also run at thread exit)
// clears the slots before it drops the entries. Serials are never reused,
// so a slot of a pool that no longer exists never matches.
//
// Plain data on purpose: the thread-exit hook clears it after other
// thread_local objects of the thread may already be gone. Initial-exec TLS
// makes a lookup one %fs-relative load instead of a __tls_get_addr call;
// the 128 bytes fit the static TLS reserve even when the library is loaded
// with dlopen.
#pragma once

#include <cstddef>
#include <cstdint>

#include "velcoredata/collation/CollatorPool.h"
#include "velcoredata/collation/ICUCollatorPool.h"

struct ThreadCollators {
  struct Slot {
    uint64_t poolSerial;
    ICUCollator* collator;
  };
  static constexpr size_t kSlots = 8;
  // constinit: zero-initialised, so no per-access initialisation check.
  [[gnu::tls_model("initial-exec")]] static constinit thread_local Slot t_slots[kSlots];

  static ICUCollator* Find(uint64_t poolSerial) noexcept {
    const Slot& slot = t_slots[poolSerial % kSlots];
    return slot.poolSerial == poolSerial ? slot.collator : nullptr;
  }
  static void Remember(uint64_t poolSerial, ICUCollator* collator) noexcept {
    t_slots[poolSerial % kSlots] = Slot{poolSerial, collator};
  }
  static void Clear() noexcept {
    for (Slot& slot : t_slots) slot = Slot{0, nullptr};
  }

  // The calling thread's collator of `pool` when it is an ICU pool already
  // in the slots; null otherwise (then borrow through CollatorRef).
  static const ICUCollator* FindFor(const CollatorPool& pool) noexcept {
    if (pool.GetFamily() != CollatorPool::Family::ICU) return nullptr;
    return Find(static_cast<const ICUCollatorPool&>(pool).GetSerial());
  }
};
