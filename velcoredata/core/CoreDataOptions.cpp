#include "velcoredata/core/CoreDataOptions.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "velcoredata/core/internal/StringPoolHooks.h"

namespace {
std::atomic<uint32_t> g_defaultLocale{0};
std::atomic<bool> g_ignoreSessionLocale{false};
std::atomic<int> g_stringPoolWidth{10000};
std::atomic<unsigned long> g_stringPoolCacheSize{1000};
}  // namespace

namespace StringPoolHooks {

constinit CounterHook g_entries, g_weakEntries, g_totalBytes;

CounterHook::Function CounterHook::Swap(Function hook) {
  // Every function ever installed, kept for readers that may still call it.
  static std::mutex* const mutex = new std::mutex();
  static auto* const installed = new std::vector<std::unique_ptr<const Function>>();
  const Function* added;
  {
    std::lock_guard<std::mutex> lock(*mutex);
    installed->push_back(std::make_unique<const Function>(std::move(hook)));
    added = installed->back().get();
  }
  const Function* previous = m_current.exchange(added, std::memory_order_acq_rel);
  return previous ? *previous : Function([](long long) {});
}

}  // namespace StringPoolHooks

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

using CounterFunction = CoreDataOptions::StringPoolCounterFunction;

CounterFunction CoreDataOptions::SetUpdateStringPoolEntryCounter(CounterFunction hook) {
  return StringPoolHooks::g_entries.Swap(std::move(hook));
}
CounterFunction CoreDataOptions::SetUpdateStringPoolWeakEntryCounter(CounterFunction hook) {
  return StringPoolHooks::g_weakEntries.Swap(std::move(hook));
}
CounterFunction CoreDataOptions::SetUpdateStringPoolTotalBytesCounter(CounterFunction hook) {
  return StringPoolHooks::g_totalBytes.Swap(std::move(hook));
}
void CoreDataOptions::UpdateStringPoolEntryCounter(long long delta) { StringPoolHooks::Entries(delta); }
void CoreDataOptions::UpdateStringPoolWeakEntryCounter(long long delta) { StringPoolHooks::WeakEntries(delta); }
void CoreDataOptions::UpdateStringPoolTotalBytesCounter(long long delta) { StringPoolHooks::TotalBytes(delta); }
