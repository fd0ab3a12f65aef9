#include "velcoredata/collation/WeakIndirectStringFactory.h"

#include <cstring>
#include <memory>

#include "velcoredata/core/CoreDataOptions.h"

WeakIndirectStringFactory::~WeakIndirectStringFactory() {
  if (!m_slots) return;
  GarbageList garbage;
  long long released = 0, releasedBytes = 0;
  for (uint32_t i = 0; i <= m_mask; ++i) {
    IndirectString* string = m_slots[i].string;
    if (!string) continue;
    if (string->m_refCount.load(std::memory_order_acquire) == 0) {
      garbage.push_back(string);
    } else {
      ++released;
      releasedBytes += static_cast<long long>(string->TextBytes());
      string->Detach();
    }
  }
  delete[] m_slots;
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

IndirectString::Ptr WeakIndirectStringFactory::Lookup(const Collation* collation, const char16_t* text,
                                                      int length, uint64_t key, GarbageList& garbage) {
  if (m_slots) {
    const size_t bytes = static_cast<size_t>(length) * sizeof(char16_t);
    for (uint32_t i = static_cast<uint32_t>(key) & m_mask; m_slots[i].string;) {
      IndirectString* string = m_slots[i].string;
      if (m_slots[i].key != key) {
        i = (i + 1) & m_mask;
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
      i = (i + 1) & m_mask;
    }
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
  if (!m_slots) return;
  for (uint32_t i = 0; i <= m_mask;) {
    IndirectString* string = m_slots[i].string;
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
  if (!m_slots || (m_size + 1) * 4 > (m_mask + 1) * 3) Grow();
  uint32_t i = static_cast<uint32_t>(key) & m_mask;
  while (m_slots[i].string) i = (i + 1) & m_mask;
  m_slots[i] = Slot{key, string};
  ++m_size;
}

void WeakIndirectStringFactory::Grow() {
  const uint32_t capacity = m_slots ? (m_mask + 1) * 2 : 4;
  std::unique_ptr<Slot[]> slots(new Slot[capacity]());
  const uint32_t mask = capacity - 1;
  for (uint32_t i = 0; m_slots && i <= m_mask; ++i) {
    if (!m_slots[i].string) continue;
    uint32_t j = static_cast<uint32_t>(m_slots[i].key) & mask;
    while (slots[j].string) j = (j + 1) & mask;
    slots[j] = m_slots[i];
  }
  delete[] m_slots;
  m_slots = slots.release();
  m_mask = mask;
}

// Backward-shift deletion: later members of the probe run move up so that
// no run is broken by the hole.
void WeakIndirectStringFactory::RemoveAt(uint32_t index) noexcept {
  uint32_t hole = index;
  for (uint32_t i = (hole + 1) & m_mask; m_slots[i].string; i = (i + 1) & m_mask) {
    const uint32_t home = static_cast<uint32_t>(m_slots[i].key) & m_mask;
    // Move i into the hole unless its home lies cyclically in (hole, i].
    const bool homeAfterHole = hole <= i ? (home > hole && home <= i) : (home > hole || home <= i);
    if (homeAfterHole) continue;
    m_slots[hole] = m_slots[i];
    hole = i;
  }
  m_slots[hole] = Slot{0, nullptr};
  --m_size;
}
