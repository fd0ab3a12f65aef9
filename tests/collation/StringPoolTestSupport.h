// String-pool test helpers: hooks that count into atomics, and a private
// pool put in place of the global one.
#pragma once

#include <malloc.h>

#include <atomic>
#include <cstddef>
#include <memory>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// The sanitizer runtimes export it; GCC ships no header that declares it.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

#include "velcoredata/collation/IndirectStringConfig.h"
#include "velcoredata/collation/IndirectStringFactoryMT.h"

// Bytes of heap the process has allocated and not freed: the sanitizers
// keep their own allocator, which mallinfo2 does not see.
inline size_t HeapInUse() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  return __sanitizer_get_current_allocated_bytes();
#else
  return mallinfo2().uordblks;
#endif
}

// Installs the three statistics hooks, adding their deltas to the counters;
// puts the previous hooks back when destroyed.
class CountingHooks {
 public:
  CountingHooks() {
    m_previousEntries = IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(
        [this](long long d) { entries += d; });
    m_previousWeak = IndirectStringConfig::SetUpdateStringPoolWeakEntryCounterFunction(
        [this](long long d) { weakEntries += d; });
    m_previousBytes = IndirectStringConfig::SetUpdateStringPoolTotalBytesCounterFunction(
        [this](long long d) { bytes += d; });
  }
  ~CountingHooks() {
    IndirectStringConfig::SetUpdateStringPoolEntryCounterFunction(m_previousEntries);
    IndirectStringConfig::SetUpdateStringPoolWeakEntryCounterFunction(m_previousWeak);
    IndirectStringConfig::SetUpdateStringPoolTotalBytesCounterFunction(m_previousBytes);
  }
  CountingHooks(const CountingHooks&) = delete;
  CountingHooks& operator=(const CountingHooks&) = delete;

  std::atomic<long long> entries{0}, weakEntries{0}, bytes{0};

 private:
  IndirectStringConfig::CounterFunction m_previousEntries, m_previousWeak, m_previousBytes;
};

// While it lives, IndirectString::Lookup interns into its own pool and the
// hooks count into `counters`. The pool is destroyed before the hooks are
// put back.
class PoolUnderTest {
 public:
  explicit PoolUnderTest(int width = 64) : m_pool(new IndirectStringFactoryMT(width)), m_scope(m_pool.get()) {}

  IndirectStringFactoryMT& pool() { return *m_pool; }
  CountingHooks counters;

 private:
  std::unique_ptr<IndirectStringFactoryMT> m_pool;
  GlobalIndirectStringPoolScope m_scope;
};
