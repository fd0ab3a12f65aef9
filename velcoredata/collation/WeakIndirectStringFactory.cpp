#include "velcoredata/collation/WeakIndirectStringFactory.h"

#include <exception>
#include <new>
#include <utility>

#include "velcoredata/collation/internal/ShortText.h"
#include "velcoredata/core/internal/StringPoolHooks.h"

namespace {

constexpr uint32_t kFirstOverflowCapacity = 8;

bool SameText(const IndirectString& string, const char16_t* text, int length) noexcept {
  return string.GetLength() == length && ShortText::Equal(string.GetText(), text, static_cast<size_t>(length));
}

// A string collected by this lookup, whose header a new string may take
// over, or null. Interning a text again after it died collects its dead
// entry on the way, so a new string usually finds one: the allocator is
// spared a free and an allocation, and the memory is already in cache. Its
// list entry becomes null (see GarbageList).
IndirectString* TakeReusable(WeakIndirectStringFactory::GarbageList& garbage) noexcept {
  for (auto it = garbage.rbegin(); it != garbage.rend(); ++it) {
    if (*it) return std::exchange(*it, nullptr);
  }
  return nullptr;
}

}  // namespace

WeakIndirectStringFactory::Overflow* WeakIndirectStringFactory::Overflow::Make(uint32_t capacity) {
  void* memory = ::operator new(sizeof(Overflow) + capacity * sizeof(Slot));
  auto* overflow = new (memory) Overflow();
  for (uint32_t i = 0; i < capacity; ++i) new (overflow->Slots() + i) Slot();
  return overflow;
}

void WeakIndirectStringFactory::Overflow::Free(Overflow* overflow, uint32_t capacity) noexcept {
  if (!overflow) return;
  for (uint32_t i = 0; i < capacity; ++i) overflow->Slots()[i].~Slot();
  overflow->~Overflow();
  ::operator delete(static_cast<void*>(overflow));
}

WeakIndirectStringFactory::~WeakIndirectStringFactory() {
  GarbageList garbage;
  long long released = 0, releasedBytes = 0;
  const auto letGo = [&](IndirectString* string) {
    if (string->IsDead()) {
      garbage.push_back(string);
    } else {
      ++released;
      releasedBytes += static_cast<long long>(string->TextBytes());
      string->Detach();
    }
  };
  for (int k = 0; k < kInline; ++k) {
    if (IndirectString* string = Inline(k)) letGo(string);
  }
  if (Overflow* overflow = m_overflow.load(std::memory_order_relaxed)) {
    for (uint32_t i = 0; i < OverflowCapacity(); ++i) {
      if (IndirectString* string = overflow->Slots()[i].String()) letGo(string);
    }
    Overflow::Free(overflow, OverflowCapacity());
  }
  // The counters describe what the maps hold; the detached strings leave them.
  try {
    FreeGarbage(garbage);
    if (released) {
      StringPoolHooks::Entries(-released);
      StringPoolHooks::TotalBytes(-releasedBytes);
    }
  } catch (...) {
    // An empty hook: the strings are gone all the same, only the counters miss it.
  }
}

size_t WeakIndirectStringFactory::GetEntryCount() const noexcept {
  size_t count = 0;
  for (int k = 0; k < kInline; ++k) count += Inline(k) != nullptr;
  if (const Overflow* overflow = m_overflow.load(std::memory_order_relaxed)) count += overflow->size;
  return count;
}

IndirectString::Ptr WeakIndirectStringFactory::Lookup(const Collation* collation, const char16_t* text, int length,
                                                      uint64_t key, GarbageList& garbage) {
  return IndirectString::Ptr(LookupImpl(collation, text, length, key, garbage, 1), AdoptRef);
}

IndirectString* WeakIndirectStringFactory::LookupImpl(const Collation* collation, const char16_t* text, int length,
                                                      uint64_t key, GarbageList& garbage, int32_t references) {
  // A string's text may be read only under a reference (a dying string
  // frees it), so the key and collation decide first, then a reference is
  // taken, then the text confirms; a string that proves different (a rare
  // 64-bit key collision) gets its references back.
  const auto matches = [&](IndirectString* string) {
    if (string->Key() != key || string->m_collation != collation || !string->TryAddRefIfAlive(references)) {
      return false;
    }
    if (SameText(*string, text, length)) return true;
    for (int32_t r = 0; r < references; ++r) string->RemoveReference();
    return false;
  };
  const uint32_t tags = m_tags.load(std::memory_order_relaxed);
  for (int k = 0; k < kInline; ++k) {
    IndirectString* string = Inline(k);
    if (!string || TagAt(tags, k) != Tag(key)) continue;
    if (string->IsDead()) {
      if (string->Key() == key) {
        garbage.push_back(string);
        SetInline(k, 0, nullptr);
      }
      continue;
    }
    if (matches(string)) return string;
  }
  if (Overflow* overflow = m_overflow.load(std::memory_order_relaxed)) {
    Slot* const slots = overflow->Slots();
    const uint32_t mask = OverflowCapacity() - 1;
    for (uint32_t i = static_cast<uint32_t>(key) & mask; IndirectString* string = slots[i].String();) {
      if (slots[i].Key() != key) {
        i = (i + 1) & mask;
        continue;
      }
      if (string->IsDead()) {
        garbage.push_back(string);
        RemoveOverflowAt(i);  // a later entry may now sit at i: look at it next
        if (!m_overflow.load(std::memory_order_relaxed)) break;  // emptied and freed
        continue;
      }
      if (matches(string)) return string;
      i = (i + 1) & mask;
    }
  }
  // Everything that can fail (room in the map, the string, the hooks)
  // comes before the string is linked: a failure leaves the map and the
  // counters as they were.
  const int freeSlot = FreeInlineSlot();
  if (freeSlot < 0) ReserveOverflow();
  IndirectString* created =
      IndirectString::Create(collation, text, length, key, references, TakeReusable(garbage));
  try {
    StringPoolHooks::Entries(1);
    StringPoolHooks::TotalBytes(static_cast<long long>(length) * 2);
  } catch (...) {
    IndirectString::Destroy(created);
    throw;
  }
  if (freeSlot >= 0) {
    SetInline(freeSlot, Tag(key), created);
  } else {
    InsertOverflow(key, created);
  }
  return created;
}

IndirectString::Ptr WeakIndirectStringFactory::GetPtrIfStringIsAlive(IndirectString& string) {
  return string.TryAddRefIfAlive() ? IndirectString::Ptr(&string, AdoptRef) : IndirectString::Ptr();
}

void WeakIndirectStringFactory::CollectGarbage(GarbageList& garbage) {
  for (int k = 0; k < kInline; ++k) {
    IndirectString* string = Inline(k);
    if (string && string->IsDead()) {
      garbage.push_back(string);
      SetInline(k, 0, nullptr);
    }
  }
  for (uint32_t i = 0; m_overflow.load(std::memory_order_relaxed) && i < OverflowCapacity();) {
    IndirectString* string = m_overflow.load(std::memory_order_relaxed)->Slots()[i].String();
    if (string && string->IsDead()) {
      garbage.push_back(string);
      RemoveOverflowAt(i);  // re-examine i
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
  for (IndirectString* string : garbage) {
    if (string) IndirectString::Destroy(string);
  }
  garbage.clear();
  // Each counter hears of it even if the other one's hook fails; the first
  // failure is raised.
  std::exception_ptr failure;
  try {
    StringPoolHooks::Entries(-count);
  } catch (...) {
    failure = std::current_exception();
  }
  try {
    StringPoolHooks::WeakEntries(-count);
  } catch (...) {
    if (!failure) failure = std::current_exception();
  }
  if (failure) std::rethrow_exception(failure);
}

void WeakIndirectStringFactory::SetInline(int k, uint32_t tag, IndirectString* string) noexcept {
  const uint32_t shift = 8 * static_cast<uint32_t>(k);
  const uint32_t tags = m_tags.load(std::memory_order_relaxed);
  m_tags.store((tags & ~(0xFFu << shift)) | (tag << shift), std::memory_order_relaxed);
  m_inline[k].store(string, std::memory_order_relaxed);
}

int WeakIndirectStringFactory::FreeInlineSlot() const noexcept {
  for (int k = 0; k < kInline; ++k) {
    if (!Inline(k)) return k;
  }
  return -1;
}

void WeakIndirectStringFactory::ReserveOverflow() {
  const Overflow* overflow = m_overflow.load(std::memory_order_relaxed);
  if (!overflow || (overflow->size + 1) * 4 > OverflowCapacity() * 3) GrowOverflow();
}

void WeakIndirectStringFactory::InsertOverflow(uint64_t key, IndirectString* string) noexcept {
  Overflow* const overflow = m_overflow.load(std::memory_order_relaxed);
  Slot* const slots = overflow->Slots();
  const uint32_t mask = OverflowCapacity() - 1;
  uint32_t i = static_cast<uint32_t>(key) & mask;
  while (slots[i].String()) i = (i + 1) & mask;
  slots[i].Set(key, string);
  ++overflow->size;
}

void WeakIndirectStringFactory::GrowOverflow() {
  Overflow* const old = m_overflow.load(std::memory_order_relaxed);
  const uint32_t oldCapacity = old ? OverflowCapacity() : 0;
  const uint32_t capacity = old ? oldCapacity * 2 : kFirstOverflowCapacity;
  Overflow* const grown = Overflow::Make(capacity);
  const uint32_t mask = capacity - 1;
  for (uint32_t i = 0; i < oldCapacity; ++i) {
    const Slot& from = old->Slots()[i];
    if (!from.String()) continue;
    uint32_t j = static_cast<uint32_t>(from.Key()) & mask;
    while (grown->Slots()[j].String()) j = (j + 1) & mask;
    grown->Slots()[j].Set(from.Key(), from.String());
  }
  grown->size = old ? old->size : 0;
  m_overflow.store(grown, std::memory_order_relaxed);
  m_overflowMask.store(mask, std::memory_order_relaxed);
  Overflow::Free(old, oldCapacity);
}

// Backward-shift deletion: later members of the probe run move up so that
// no run is broken by the hole. An emptied table is freed.
void WeakIndirectStringFactory::RemoveOverflowAt(uint32_t index) noexcept {
  Overflow* const overflow = m_overflow.load(std::memory_order_relaxed);
  const uint32_t mask = OverflowCapacity() - 1;
  if (--overflow->size == 0) {
    m_overflow.store(nullptr, std::memory_order_relaxed);
    m_overflowMask.store(0, std::memory_order_relaxed);
    Overflow::Free(overflow, mask + 1);
    return;
  }
  Slot* const slots = overflow->Slots();
  uint32_t hole = index;
  slots[hole].Set(0, nullptr);
  for (uint32_t i = (hole + 1) & mask; slots[i].String(); i = (i + 1) & mask) {
    const uint32_t home = static_cast<uint32_t>(slots[i].Key()) & mask;
    // i may move into the hole unless its home lies cyclically in (hole, i].
    const bool homeAfterHole = hole <= i ? (home > hole && home <= i) : (home > hole || home <= i);
    if (homeAfterHole) continue;
    slots[hole].Set(slots[i].Key(), slots[i].String());
    slots[i].Set(0, nullptr);
    hole = i;
  }
}
