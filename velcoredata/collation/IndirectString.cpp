#include "velcoredata/collation/IndirectString.h"

#include <cstring>
#include <memory>
#include <new>

#include "velcoredata/core/internal/StringPoolHooks.h"
#include "velcoredata/platform/LogicException.h"

namespace {
constexpr char16_t kEmptyText[1] = {0};
}  // namespace

IndirectString* IndirectString::Create(const Collation* collation, const char16_t* text, int length, uint64_t key,
                                       int32_t references, IndirectString* reuse) {
  const size_t textBytes = static_cast<size_t>(length) * sizeof(char16_t);
  // Allocate everything first: a failure leaves `reuse` as it was.
  std::unique_ptr<char16_t[]> copy;
  if (length > 0) {
    copy.reset(new char16_t[static_cast<size_t>(length) + 1]);
    std::memcpy(copy.get(), text, textBytes);
    copy[static_cast<size_t>(length)] = 0;
  }
  void* memory;
  if (reuse) {
    reuse->~IndirectString();
    memory = reuse;
  } else {
    memory = ::operator new(sizeof(IndirectString));
  }
  auto* string = new (memory) IndirectString(collation, copy ? copy.release() : kEmptyText, length, key);
  string->m_refCount.store(1 + references, std::memory_order_relaxed);
  return string;
}

void IndirectString::Destroy(IndirectString* string) noexcept {
  string->~IndirectString();
  ::operator delete(static_cast<void*>(string));
}

void IndirectString::FreeText() noexcept {
  if (m_text != kEmptyText) delete[] m_text;
  m_text = kEmptyText;
  m_length = 0;
}

void IndirectString::LastReferencesGone(int32_t count) noexcept {
  if (count == 1 && !m_detached.load(std::memory_order_relaxed)) {
    // Only the pool's reference is left: the string dies and gives its text
    // back now. Nobody reads it any more (the pool reads texts only of
    // strings it holds a reference to); the header stays with the pool
    // until a lookup or a forced collection frees it, which happens only
    // once the count is 0; this thread touches nothing after.
    StringPoolHooks::WeakEntries(1);
    StringPoolHooks::TotalBytes(-static_cast<long long>(TextBytes()));
    FreeText();
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
