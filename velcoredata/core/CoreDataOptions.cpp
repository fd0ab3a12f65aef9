#include "velcoredata/core/CoreDataOptions.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace {
std::atomic<uint32_t> g_defaultLocale{0};
std::atomic<bool> g_ignoreSessionLocale{false};
std::atomic<int> g_stringPoolWidth{10000};
std::atomic<unsigned long> g_stringPoolCacheSize{1000};

using CounterFunction = CoreDataOptions::StringPoolCounterFunction;

// One statistics hook. Readers load the current function with one atomic
// load and call it; a setter publishes a new function and keeps the old one
// alive (a reader may still be calling it), so functions are never freed.
// Hosts set hooks a handful of times per process.
class CounterHook {
 public:
  CounterHook() : m_current(Keep(std::make_unique<const CounterFunction>([](long long) {}))) {}

  void Call(long long delta) const { (*m_current.load(std::memory_order_acquire))(delta); }

  CounterFunction Swap(CounterFunction hook) {
    const CounterFunction* installed = Keep(std::make_unique<const CounterFunction>(std::move(hook)));
    return *m_current.exchange(installed, std::memory_order_acq_rel);
  }

 private:
  const CounterFunction* Keep(std::unique_ptr<const CounterFunction> function) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_all.push_back(std::move(function));
    return m_all.back().get();
  }

  std::mutex m_mutex;
  std::vector<std::unique_ptr<const CounterFunction>> m_all;
  std::atomic<const CounterFunction*> m_current;
};

// Never destroyed: strings are released during static destruction too.
struct StringPoolHooks {
  CounterHook entries, weakEntries, totalBytes;
};
StringPoolHooks& Hooks() {
  static StringPoolHooks* const hooks = new StringPoolHooks();
  return *hooks;
}

}  // namespace

void CoreDataOptions::SetDefaultLocale(uint32_t lcid) noexcept { g_defaultLocale.store(lcid); }
uint32_t CoreDataOptions::GetDefaultLocale() noexcept { return g_defaultLocale.load(); }
void CoreDataOptions::SetIgnoreSessionLocale(bool ignore) noexcept { g_ignoreSessionLocale.store(ignore); }
bool CoreDataOptions::GetIgnoreSessionLocale() noexcept { return g_ignoreSessionLocale.load(); }

void CoreDataOptions::SetStringPoolGlobalStripedMapWidth(int width) noexcept { g_stringPoolWidth.store(width); }
int CoreDataOptions::GetStringPoolGlobalStripedMapWidth() noexcept { return g_stringPoolWidth.load(); }
void CoreDataOptions::SetStringPoolThreadLocalCacheSize(unsigned long size) noexcept {
  g_stringPoolCacheSize.store(size);
}
unsigned long CoreDataOptions::GetStringPoolThreadLocalCacheSize() noexcept { return g_stringPoolCacheSize.load(); }

CounterFunction CoreDataOptions::SetUpdateStringPoolEntryCounter(CounterFunction hook) {
  return Hooks().entries.Swap(std::move(hook));
}
CounterFunction CoreDataOptions::SetUpdateStringPoolWeakEntryCounter(CounterFunction hook) {
  return Hooks().weakEntries.Swap(std::move(hook));
}
CounterFunction CoreDataOptions::SetUpdateStringPoolTotalBytesCounter(CounterFunction hook) {
  return Hooks().totalBytes.Swap(std::move(hook));
}
void CoreDataOptions::UpdateStringPoolEntryCounter(long long delta) { Hooks().entries.Call(delta); }
void CoreDataOptions::UpdateStringPoolWeakEntryCounter(long long delta) { Hooks().weakEntries.Call(delta); }
void CoreDataOptions::UpdateStringPoolTotalBytesCounter(long long delta) { Hooks().totalBytes.Call(delta); }
