#include "velcoredata/collation/IndirectString.h"

#include <cstring>
#include <new>

#include "velcoredata/core/internal/StringPoolHooks.h"
#include "velcoredata/platform/LogicException.h"

IndirectString* IndirectString::Create(const Collation* collation, const char16_t* text, int length,
                                       int32_t references, IndirectString* reuse) {
  const size_t textBytes = static_cast<size_t>(length) * sizeof(char16_t);
  void* memory;
  if (reuse) {
    VEL_ASSERT(reuse->m_length == length);
    reuse->~IndirectString();
    memory = reuse;
  } else {
    memory = ::operator new(sizeof(IndirectString) + textBytes + sizeof(char16_t));
  }
  auto* string = new (memory) IndirectString(collation, length);
  string->m_refCount.store(1 + references, std::memory_order_relaxed);
  auto* copy = reinterpret_cast<char16_t*>(string + 1);
  if (textBytes) std::memcpy(copy, text, textBytes);
  copy[length] = 0;
  return string;
}

void IndirectString::Destroy(IndirectString* string) noexcept {
  string->~IndirectString();
  ::operator delete(static_cast<void*>(string));
}

void IndirectString::LastReferencesGone(int32_t count) noexcept {
  if (count == 1 && !m_detached.load(std::memory_order_relaxed)) {
    // Only the pool's reference is left: the string dies. Its memory stays
    // with the pool until a lookup or a forced collection frees it, which
    // happens only once the count is 0; this thread touches nothing after.
    StringPoolHooks::WeakEntries(1);
    StringPoolHooks::TotalBytes(-static_cast<long long>(TextBytes()));
    m_refCount.store(0, std::memory_order_release);
  } else if (count == 0) {
    Destroy(this);  // no longer in any map: the last user frees it
  }
}

void IndirectString::Detach() noexcept {
  m_detached.store(true, std::memory_order_relaxed);
  m_refCount.fetch_sub(1, std::memory_order_acq_rel);
}

uint32_t IndirectString::GetHash() const {
  const uint32_t hash = m_hash.load(std::memory_order_relaxed);
  return hash != 0 ? hash : ComputeHash();
}

uint32_t IndirectString::ComputeHash() const {
  const uint32_t hash = m_collation->Hash(GetText());
  m_hash.store(hash, std::memory_order_relaxed);
  return hash;
}

bool operator==(const IndirectString& a, const IndirectString& b) {
  const uint32_t hashA = a.m_hash.load(std::memory_order_relaxed);
  const uint32_t hashB = b.m_hash.load(std::memory_order_relaxed);
  if (hashA != 0 && hashB != 0 && hashA != hashB) return false;
  if (!Equivalent(*a.m_collation, *b.m_collation)) return false;
  return a.m_collation->Compare(a.GetText(), a.m_length, b.GetText(), b.m_length) == 0;
}

bool operator<(const IndirectString& a, const IndirectString& b) {
  if (!Equivalent(*a.m_collation, *b.m_collation)) return *a.m_collation < *b.m_collation;
  return a.m_collation->Compare(a.GetText(), a.m_length, b.GetText(), b.m_length) < 0;
}
