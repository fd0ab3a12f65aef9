#include "velcoredata/collation/WeakIndirectStringFactory.h"

#include <cstring>
#include <memory>

#include "velcoredata/core/CoreDataOptions.h"

WeakIndirectStringFactory::~WeakIndirectStringFactory() {
  Slot* const slots = Slots();
  GarbageList garbage;
  long long released = 0, releasedBytes = 0;
  for (uint32_t i = 0; m_size != 0 && i <= Mask(); ++i) {
    IndirectString* string = slots[i].String();
    if (!string) continue;
    if (string->m_refCount.load(std::memory_order_acquire) == 0) {
      garbage.push_back(string);
    } else {
      ++released;
      releasedBytes += static_cast<long long>(string->TextBytes());
      string->Detach();
    }
  }
  if (slots != m_inline) delete[] slots;
  // The counters describe what the maps hold; the detached strings leave them.
  try {
    FreeGarbage(garbage);
    if (released) {
      CoreDataOptions::UpdateStringPoolEntryCounter(-released);
      CoreDataOptions::UpdateStringPoolTotalBytesCounter(-releasedBytes);
    }
  } catch (...) {
    // An empty hook: the strings are gone all the same, only the counters miss it.
  }
}

void WeakIndirectStringFactory::Prefetch(uint64_t key) const noexcept {
  const Slot* slots = Slots();
  const uint32_t i = static_cast<uint32_t>(key) & Mask();
  if (slots == m_inline) {
    // The inline slots are never freed, so the string one names can be
    // prefetched too (a prefetch of memory freed meanwhile is harmless).
    if (const IndirectString* string = m_inline[i & (kInlineSlots - 1)].String()) __builtin_prefetch(string);
  } else {
    __builtin_prefetch(slots + i);
  }
}

IndirectString::Ptr WeakIndirectStringFactory::Lookup(const Collation* collation, const char16_t* text,
                                                      int length, uint64_t key, GarbageList& garbage) {
  const size_t bytes = static_cast<size_t>(length) * sizeof(char16_t);
  Slot* const slots = Slots();
  const uint32_t mask = Mask();
  for (uint32_t i = static_cast<uint32_t>(key) & mask; IndirectString* string = slots[i].String();) {
    if (slots[i].Key() != key) {
      i = (i + 1) & mask;
      continue;
    }
    if (string->m_refCount.load(std::memory_order_acquire) == 0) {
      garbage.push_back(string);
      RemoveAt(i);  // a later entry may now sit at i: look at it next
      continue;
    }
    if (string->m_length == length && string->m_collation == collation &&
        std::memcmp(string->GetText(), text, bytes) == 0 && string->TryAddRefIfAlive()) {
      return IndirectString::Ptr(string, AdoptRef);
    }
    i = (i + 1) & mask;
  }
  // Report first: a hook that throws leaves the map as it was.
  CoreDataOptions::UpdateStringPoolEntryCounter(1);
  CoreDataOptions::UpdateStringPoolTotalBytesCounter(static_cast<long long>(length) * 2);
  IndirectString* created = IndirectString::Create(collation, text, length);
  Insert(key, created);
  return IndirectString::Ptr(created, AdoptRef);
}

IndirectString::Ptr WeakIndirectStringFactory::GetPtrIfStringIsAlive(IndirectString& string) {
  return string.TryAddRefIfAlive() ? IndirectString::Ptr(&string, AdoptRef) : IndirectString::Ptr();
}

void WeakIndirectStringFactory::CollectGarbage(GarbageList& garbage) {
  Slot* const slots = Slots();
  for (uint32_t i = 0; i <= Mask();) {
    IndirectString* string = slots[i].String();
    if (string && string->m_refCount.load(std::memory_order_acquire) == 0) {
      garbage.push_back(string);
      RemoveAt(i);  // re-examine i
    } else {
      ++i;
    }
  }
}

size_t WeakIndirectStringFactory::ForceCollectAllGarbage() {
  GarbageList garbage;
  CollectGarbage(garbage);
  const size_t collected = garbage.size();
  FreeGarbage(garbage);
  return collected;
}

void WeakIndirectStringFactory::FreeGarbage(GarbageList& garbage) {
  if (garbage.empty()) return;
  // Free first, so that a throwing hook cannot leak the strings.
  const long long count = static_cast<long long>(garbage.size());
  for (IndirectString* string : garbage) IndirectString::Destroy(string);
  garbage.clear();
  CoreDataOptions::UpdateStringPoolEntryCounter(-count);
  CoreDataOptions::UpdateStringPoolWeakEntryCounter(-count);
}

void WeakIndirectStringFactory::Insert(uint64_t key, IndirectString* string) {
  if ((m_size + 1) * 4 > (Mask() + 1) * 3) Grow();
  Slot* const slots = Slots();
  const uint32_t mask = Mask();
  uint32_t i = static_cast<uint32_t>(key) & mask;
  while (slots[i].String()) i = (i + 1) & mask;
  slots[i].Set(key, string);
  ++m_size;
}

void WeakIndirectStringFactory::Grow() {
  Slot* const old = Slots();
  const uint32_t oldMask = Mask();
  const uint32_t capacity = (oldMask + 1) * 2;
  std::unique_ptr<Slot[]> slots(new Slot[capacity]);
  const uint32_t mask = capacity - 1;
  for (uint32_t i = 0; i <= oldMask; ++i) {
    if (!old[i].String()) continue;
    uint32_t j = static_cast<uint32_t>(old[i].Key()) & mask;
    while (slots[j].String()) j = (j + 1) & mask;
    slots[j].CopyFrom(old[i]);
  }
  m_slots.store(slots.release(), std::memory_order_relaxed);
  m_mask.store(mask, std::memory_order_relaxed);
  if (old != m_inline) delete[] old;
}

// Backward-shift deletion: later members of the probe run move up so that
// no run is broken by the hole.
void WeakIndirectStringFactory::RemoveAt(uint32_t index) noexcept {
  Slot* const slots = Slots();
  const uint32_t mask = Mask();
  uint32_t hole = index;
  for (uint32_t i = (hole + 1) & mask; slots[i].String(); i = (i + 1) & mask) {
    const uint32_t home = static_cast<uint32_t>(slots[i].Key()) & mask;
    // Move i into the hole unless its home lies cyclically in (hole, i].
    const bool homeAfterHole = hole <= i ? (home > hole && home <= i) : (home > hole || home <= i);
    if (homeAfterHole) continue;
    slots[hole].CopyFrom(slots[i]);
    hole = i;
  }
  slots[hole].Set(0, nullptr);
  --m_size;
}
