// The string pool's statistics hooks, for the library's own calls: the
// pool reports from inside its lookups, where a call through the exported
// CoreDataOptions functions would cost more than the check itself while no
// hook is installed (the common case).
#pragma once

#include <atomic>

#include "velcoredata/core/CoreDataOptions.h"

namespace StringPoolHooks {

// One hook: null while the default (doing nothing) is in place. Readers
// load the current function and call it; Swap publishes a new one and keeps
// the old one alive (a reader may still be calling it), so installed
// functions are never freed. Hosts set hooks a handful of times per process.
class CounterHook {
 public:
  using Function = CoreDataOptions::StringPoolCounterFunction;

  void Call(long long delta) const {
    if (const Function* hook = m_current.load(std::memory_order_acquire)) (*hook)(delta);
  }
  // Installs `hook`, returns the previous one (a function doing nothing for
  // the default).
  Function Swap(Function hook);

 private:
  std::atomic<const Function*> m_current{nullptr};
};

// Live entries in the maps, entries dead but not collected, bytes of text held.
extern CounterHook g_entries, g_weakEntries, g_totalBytes;

inline void Entries(long long delta) { g_entries.Call(delta); }
inline void WeakEntries(long long delta) { g_weakEntries.Call(delta); }
inline void TotalBytes(long long delta) { g_totalBytes.Call(delta); }

}  // namespace StringPoolHooks
