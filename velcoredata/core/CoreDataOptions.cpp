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

// One statistics hook: null while the default (doing nothing) is in place,
// so that a pool without hooks pays one load and a branch. Readers load the
// current function and call it; a setter publishes a new one and keeps the
// old one alive (a reader may still be calling it), so installed functions
// are never freed. Hosts set hooks a handful of times per process.
class CounterHook {
 public:
  void Call(long long delta) const {
    if (const CounterFunction* hook = m_current.load(std::memory_order_acquire)) (*hook)(delta);
  }

  CounterFunction Swap(CounterFunction hook);

 private:
  std::atomic<const CounterFunction*> m_current{nullptr};
};

constinit CounterHook g_entryHook, g_weakEntryHook, g_totalBytesHook;

CounterFunction CounterHook::Swap(CounterFunction hook) {
  // Every function ever installed, kept for readers that may still call it.
  static std::mutex* const mutex = new std::mutex();
  static auto* const installed = new std::vector<std::unique_ptr<const CounterFunction>>();
  const CounterFunction* added;
  {
    std::lock_guard<std::mutex> lock(*mutex);
    installed->push_back(std::make_unique<const CounterFunction>(std::move(hook)));
    added = installed->back().get();
  }
  const CounterFunction* previous = m_current.exchange(added, std::memory_order_acq_rel);
  return previous ? *previous : CounterFunction([](long long) {});
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
  return g_entryHook.Swap(std::move(hook));
}
CounterFunction CoreDataOptions::SetUpdateStringPoolWeakEntryCounter(CounterFunction hook) {
  return g_weakEntryHook.Swap(std::move(hook));
}
CounterFunction CoreDataOptions::SetUpdateStringPoolTotalBytesCounter(CounterFunction hook) {
  return g_totalBytesHook.Swap(std::move(hook));
}
void CoreDataOptions::UpdateStringPoolEntryCounter(long long delta) { g_entryHook.Call(delta); }
void CoreDataOptions::UpdateStringPoolWeakEntryCounter(long long delta) { g_weakEntryHook.Call(delta); }
void CoreDataOptions::UpdateStringPoolTotalBytesCounter(long long delta) { g_totalBytesHook.Call(delta); }
