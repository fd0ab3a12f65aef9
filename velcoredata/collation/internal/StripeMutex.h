// StripeMutex: the recursive mutex of one string-pool stripe, in 16 bytes,
// so that a stripe (its mutex and its first entries) fits one cache line.
//
// One word holds the owner: the holding thread's thread pointer, unique
// among live threads. Taking a free mutex is one compare-and-swap and
// releasing it one plain store: a stripe is held for a few dozen
// nanoseconds, and a pool lookup is short enough that a second atomic
// read-modify-write would be a sizeable part of it. The price is that a
// thread finding the mutex taken does not sleep until it is woken: it spins
// briefly, then yields, then naps for growing intervals (at most
// kLongestNap) between attempts. With thousands of stripes that is rare.
//
// The owner may lock it again; each lock needs its unlock. Satisfies
// Lockable (lock, try_lock, unlock) for std::lock_guard.
#pragma once

#include <pthread.h>
#include <sched.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

class StripeMutex {
 public:
  static constexpr std::chrono::microseconds kLongestNap{200};

  StripeMutex() noexcept = default;
  StripeMutex(const StripeMutex&) = delete;
  StripeMutex& operator=(const StripeMutex&) = delete;

  void lock() noexcept {
    if (!try_lock()) LockContended();
  }

  bool try_lock() noexcept {
    const uintptr_t self = Self();
    uintptr_t seen = 0;
    if (m_owner.compare_exchange_strong(seen, self, std::memory_order_acquire, std::memory_order_relaxed)) return true;
    if (seen != self) return false;
    ++m_depth;  // only the owner reads or writes it
    return true;
  }

  void unlock() noexcept {
    if (m_depth != 0) {
      --m_depth;
      return;
    }
    m_owner.store(0, std::memory_order_release);
  }

 private:
  static uintptr_t Self() noexcept {
#if defined(__GNUC__) && !defined(__clang__) && (defined(__x86_64__) || defined(__aarch64__))
    return reinterpret_cast<uintptr_t>(__builtin_thread_pointer());
#else
    return reinterpret_cast<uintptr_t>(pthread_self());
#endif
  }

  static void Pause() noexcept {
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#endif
  }

  // Waits for the owner (never this thread: try_lock has answered that) to
  // let go, reading the word until it looks free before trying to take it.
  void LockContended() noexcept {
    const uintptr_t self = Self();
    std::chrono::microseconds nap{1};
    for (int attempt = 0;; ++attempt) {
      uintptr_t seen = m_owner.load(std::memory_order_relaxed);
      if (seen == 0 &&
          m_owner.compare_exchange_weak(seen, self, std::memory_order_acquire, std::memory_order_relaxed)) {
        return;
      }
      if (attempt < 128) {
        Pause();
      } else if (attempt < 192) {
        sched_yield();
      } else {
        std::this_thread::sleep_for(nap);
        nap = std::min(nap * 2, kLongestNap);
      }
    }
  }

  std::atomic<uintptr_t> m_owner{0};  // 0: free
  uint32_t m_depth = 0;               // nested locks beyond the first
};
