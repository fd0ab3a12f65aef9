// Intrusive reference counting: RefCntObject and RefCntPtr.
//
// Shared immutable payloads carry a 32-bit atomic count. An increment that
// finds the count already at 0x7FFFFFFE aborts the process: an overflowing
// count would free a live object later, and no caller can recover from that.
//
// RefCntPtr<T, Traits> holds one counted reference. Traits supplies
// `static void AddRef(T*)` and `static void Release(T*)`; the default calls
// the object's AddRef()/Release() (RefCntObject). A type with its own
// release rules (for example weakly pooled strings) names itself as Traits.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/LogicException.h"

// The largest count an increment may start from.
inline constexpr int32_t kRefCountLimit = 0x7FFFFFFE;

// Aborts the process with a diagnostic; called when a count would overflow.
[[noreturn]] VELCOREDATA_EXPORT void RefCountOverflow() noexcept;

// Increments `count`, aborting when it was already at the limit.
inline void IncrementRefCount(std::atomic<int32_t>& count) noexcept {
  if (count.fetch_add(1, std::memory_order_relaxed) == kRefCountLimit) RefCountOverflow();
}

class VELCOREDATA_EXPORT RefCntObject {
 public:
  RefCntObject() noexcept = default;
  RefCntObject(const RefCntObject&) noexcept {}  // a copy starts with its own count
  RefCntObject& operator=(const RefCntObject&) noexcept { return *this; }
  virtual ~RefCntObject();

  void AddRef() const noexcept { IncrementRefCount(m_refCount); }
  // Drops one reference; the object deletes itself when the count reaches 0.
  void Release() const noexcept {
    if (m_refCount.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }
  int32_t GetRefCount() const noexcept { return m_refCount.load(std::memory_order_relaxed); }

 protected:
  // For tests and specialised owners: set the count directly.
  void SetRefCountForTesting(int32_t n) const noexcept { m_refCount.store(n, std::memory_order_relaxed); }

 private:
  mutable std::atomic<int32_t> m_refCount{0};
};

struct RefCntDefaultTraits {
  template <class T>
  static void AddRef(T* p) noexcept { p->AddRef(); }
  template <class T>
  static void Release(T* p) noexcept { p->Release(); }
};

// Tag: take over a reference the caller already owns instead of adding one.
struct AdoptRefTag {};
inline constexpr AdoptRefTag AdoptRef{};

template <class T, class Traits = RefCntDefaultTraits>
class RefCntPtr {
 public:
  RefCntPtr() noexcept = default;
  RefCntPtr(std::nullptr_t) noexcept {}  // NOLINT
  explicit RefCntPtr(T* p) noexcept : m_ptr(p) {
    if (m_ptr) Traits::AddRef(m_ptr);
  }
  RefCntPtr(T* p, AdoptRefTag) noexcept : m_ptr(p) {}
  RefCntPtr(const RefCntPtr& other) noexcept : RefCntPtr(other.m_ptr) {}
  RefCntPtr(RefCntPtr&& other) noexcept : m_ptr(std::exchange(other.m_ptr, nullptr)) {}
  ~RefCntPtr() { reset(); }

  RefCntPtr& operator=(const RefCntPtr& other) noexcept {
    RefCntPtr(other).swap(*this);
    return *this;
  }
  RefCntPtr& operator=(RefCntPtr&& other) noexcept {
    RefCntPtr(std::move(other)).swap(*this);
    return *this;
  }

  void reset() noexcept {
    if (T* p = std::exchange(m_ptr, nullptr)) Traits::Release(p);
  }
  // Gives up the reference without releasing it.
  T* detach() noexcept { return std::exchange(m_ptr, nullptr); }
  void swap(RefCntPtr& other) noexcept { std::swap(m_ptr, other.m_ptr); }

  T* get() const noexcept { return m_ptr; }
  T& operator*() const {
    VEL_ASSERT(m_ptr);
    return *m_ptr;
  }
  T* operator->() const {
    VEL_ASSERT(m_ptr);
    return m_ptr;
  }
  explicit operator bool() const noexcept { return m_ptr != nullptr; }

  friend bool operator==(const RefCntPtr& a, const RefCntPtr& b) noexcept { return a.m_ptr == b.m_ptr; }
  friend bool operator==(const RefCntPtr& a, std::nullptr_t) noexcept { return a.m_ptr == nullptr; }

 private:
  T* m_ptr = nullptr;
};

template <class T, class... Args>
RefCntPtr<T> MakeRefCnt(Args&&... args) {
  return RefCntPtr<T>(new T(std::forward<Args>(args)...));
}
