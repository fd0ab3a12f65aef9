// IndirectString: an interned, reference-counted string with its Collation.
//
// Every lookup of the same text under the same collation (same name and
// charset) returns the same object while it is alive, so string values can
// be kept as one pointer and compared by identity first:
//
//   IndirectString::Ptr a = IndirectString::Lookup(collation, u"Berlin");
//   IndirectString::Ptr b = IndirectString::Lookup(collation, u"Berlin");
//   a.get() == b.get();
//
// Lifetime: the pool that made a string keeps one reference of its own
// besides its users'. The string is alive while its count is at least 2;
// when the last user lets go (count 1) it dies: the statistics hooks hear of
// it, its text is freed at once (the text has an allocation of its own, so a
// dead string holds only its small header), its count drops to 0, and the
// pool frees the header later, when a lookup in its stripe walks over it or
// on ForceCollectAllGarbage. A dying string is never revived: the pool takes
// a new reference only while the count is at least 2, and reads a string's
// text only while it holds one. A string whose pool was destroyed is freed
// with its last user.
//
// Matching is exact on the text; collation-aware equality is operator==.
// Thread-safety: the text and collation never change; counts and the
// cached hash are atomics. Any thread may copy and drop references.
#pragma once

#include <atomic>
#include <cstdint>
#include <string_view>

#include "velcoredata/collation/Collation.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/RefCnt.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT IndirectString {
 public:
  using Ptr = RefCntPtr<IndirectString, IndirectString>;

  // Interns `text` (null: the empty text) under `collation` through the
  // global pool (see IGlobalIndirectStringPool.h). Never null.
  static Ptr Lookup(const Collation& collation, const char16_t* text);

  // The text, null-terminated, GetLength() code units (while the caller
  // holds a reference).
  const char16_t* GetText() const noexcept { return m_text; }
  int GetLength() const noexcept { return m_length; }
  std::u16string_view View() const noexcept { return {GetText(), static_cast<size_t>(m_length)}; }
  TString GetString() const { return TString(View()); }
  // The collation it was interned under (one shared object per distinct
  // collation, equal to the one given to Lookup).
  const Collation& GetCollation() const noexcept { return *m_collation; }

  // Collation::Hash of the text, computed on first use and cached.
  uint32_t GetHash() const;
  // Recomputes the hash and caches it.
  uint32_t ComputeHash() const;

  // Users plus the pool's own reference while the pool holds the string.
  int32_t GetRefCount() const noexcept { return m_refCount.load(std::memory_order_relaxed); }

  // RefCntPtr traits: AddRef aborts the process when the count would pass
  // 0x7FFFFFFE; Release is RemoveReference.
  static void AddRef(IndirectString* string) noexcept { IncrementRefCount(string->m_refCount); }
  static void Release(IndirectString* string) noexcept { string->RemoveReference(); }
  void RemoveReference() noexcept {
    // Inline: most releases leave the string alive.
    const int32_t count = m_refCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (count <= 1) LastReferencesGone(count);
  }

  // Collation-aware equality: different cached hashes or non-equivalent
  // collations are unequal; otherwise the collation compares the texts.
  friend VELCOREDATA_EXPORT bool operator==(const IndirectString& a, const IndirectString& b);
  // Non-equivalent collations order by Collation's operator<; otherwise
  // the collation compares the texts.
  friend VELCOREDATA_EXPORT bool operator<(const IndirectString& a, const IndirectString& b);

  IndirectString(const IndirectString&) = delete;
  IndirectString& operator=(const IndirectString&) = delete;

 private:
  friend class WeakIndirectStringFactory;

  IndirectString(const Collation* collation, const char16_t* text, int length, uint64_t key) noexcept
      : m_text(text), m_key(key), m_collation(collation), m_length(length) {}
  ~IndirectString() { FreeText(); }

  // A new string holding the pool's reference and `references` for the
  // caller (count 1 + references), stored under `key`. `reuse`, if given,
  // is a collected string whose header the new one takes over.
  static IndirectString* Create(const Collation* collation, const char16_t* text, int length, uint64_t key,
                                int32_t references = 1, IndirectString* reuse = nullptr);
  static void Destroy(IndirectString* string) noexcept;
  // `references` new references (1 or 2, taken in one step) if the string is
  // alive (count >= 2), by compare-and-swap; aborts where as many single
  // increments would.
  bool TryAddRefIfAlive(int32_t references = 1) noexcept {
    int32_t count = m_refCount.load(std::memory_order_relaxed);
    while (count >= 2) {
      if (count > kRefCountLimit - references) RefCountOverflow();
      if (m_refCount.compare_exchange_weak(count, count + references, std::memory_order_acquire,
                                           std::memory_order_relaxed)) {
        return true;
      }
    }
    return false;
  }
  // RemoveReference left `count` (1: only the pool's; 0: nobody's).
  void LastReferencesGone(int32_t count) noexcept;
  // Whether the string is dead (count 0); what its dying thread did before
  // is visible after a true answer, so the string may be freed.
  bool IsDead() const noexcept { return m_refCount.load(std::memory_order_acquire) == 0; }
  // The pool lets go of the string for good (the pool is being destroyed).
  void Detach() noexcept;
  size_t TextBytes() const noexcept { return static_cast<size_t>(m_length) * sizeof(char16_t); }
  // The key the pool stores the string under (a function of the text), for
  // the pool to tell entries apart without reading their texts.
  uint64_t Key() const noexcept { return m_key; }
  // Frees the text; the string reads as empty after.
  void FreeText() noexcept;

  std::atomic<int32_t> m_refCount{2};
  mutable std::atomic<uint32_t> m_hash{0};
  const char16_t* m_text;  // its own allocation, or a shared empty text
  uint64_t m_key;
  const Collation* m_collation;
  int32_t m_length;
  std::atomic<bool> m_detached{false};
};
