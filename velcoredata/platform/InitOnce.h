// InitOnce: once-only initialisation that is safe under concurrent first use.
//
//   static InitOnce once;
//   once.Run([] { ... });        // the callable runs exactly once per process
//
// InitOnceValue<T> is the common case of a process-wide object created on
// first use and never destroyed (so it stays usable from thread-exit hooks
// and from other objects' destructors at process exit):
//
//   static InitOnceValue<Registry> registry;
//   Registry& r = registry.Get();          // default-constructed once
//   Registry& r = registry.Get([] { return new Registry(42); });
#pragma once

#include <atomic>
#include <mutex>
#include <utility>

class InitOnce {
 public:
  template <class F>
  void Run(F&& f) {
    std::call_once(m_flag, std::forward<F>(f));
  }

 private:
  std::once_flag m_flag;
};

template <class T>
class InitOnceValue {
 public:
  T& Get() {
    return Get([] { return new T(); });
  }
  // `make` returns a new T*; it runs once, and the object is never deleted.
  template <class Make>
  T& Get(Make&& make) {
    T* p = m_value.load(std::memory_order_acquire);
    if (p) return *p;
    std::call_once(m_flag, [&] { m_value.store(std::forward<Make>(make)(), std::memory_order_release); });
    return *m_value.load(std::memory_order_acquire);
  }

 private:
  std::once_flag m_flag;
  std::atomic<T*> m_value{nullptr};
};
