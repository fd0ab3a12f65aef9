#include "velcoredata/core/CoreDataOptions.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
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
  if (!hook) throw std::bad_function_call();
  static std::mutex* const mutex = new std::mutex();  // one swap at a time
  auto added = std::make_unique<const Function>(std::move(hook));
  std::unique_ptr<const Function> previous;
  {
    std::lock_guard<std::mutex> lock(*mutex);
    previous.reset(m_current.exchange(added.release()));
    // Readers that announced themselves before the flip may still hold the
    // previous function; later ones load the new one.
    const unsigned old = m_generation.fetch_add(1) & 1;
    while (m_readers[old].load() != 0) std::this_thread::yield();
  }
  if (!previous) return Function([](long long) {});
  return std::move(*const_cast<Function*>(previous.get()));
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
