// The string pool's statistics hooks, for the library's own calls: the
// pool reports from inside its lookups, where a call through the exported
// CoreDataOptions functions would cost more than the check itself while no
// hook is installed (the common case).
#pragma once

#include <atomic>

#include "velcoredata/core/CoreDataOptions.h"

namespace StringPoolHooks {

// One hook: null while the default (doing nothing) is in place, so the
// common case costs one load. A reader that finds a function announces
// itself in the reader count of the current generation before it loads the
// function again and calls it (see Call). Swap publishes the new function, flips the
// generation and waits until the readers of the old generation are gone;
// then no reader can still hold the old function, which is handed back to
// the caller. Only the installed function is ever kept, however often hooks
// are swapped.
class CounterHook {
 public:
  using Function = CoreDataOptions::StringPoolCounterFunction;

  void Call(long long delta) const {
    if (!m_current.load(std::memory_order_acquire)) return;
    // Joins the reader count of the generation in force. A reader that read
    // the generation just before a swap flipped it counts itself again in
    // the new one: a later swap waits only for the new one's count. The
    // count is left even when the hook throws.
    struct Reader {
      std::atomic<long>* count;
      explicit Reader(const CounterHook& hook) {
        for (;;) {
          const unsigned generation = hook.m_generation.load();
          count = &hook.m_readers[generation & 1];
          count->fetch_add(1);
          if (hook.m_generation.load() == generation) return;
          count->fetch_sub(1);
        }
      }
      ~Reader() { count->fetch_sub(1, std::memory_order_release); }
    } reader(*this);
    if (const Function* hook = m_current.load()) (*hook)(delta);
  }
  // Installs `hook` and returns the previous one (a function doing nothing
  // for the default). An empty hook is refused with std::bad_function_call
  // and the previous one stays. Must not be called from inside a hook.
  Function Swap(Function hook);

 private:
  std::atomic<const Function*> m_current{nullptr};
  std::atomic<unsigned> m_generation{0};
  mutable std::atomic<long> m_readers[2] = {0, 0};
};

// Live entries in the maps, entries dead but not collected, bytes of text held.
extern CounterHook g_entries, g_weakEntries, g_totalBytes;

inline void Entries(long long delta) { g_entries.Call(delta); }
inline void WeakEntries(long long delta) { g_weakEntries.Call(delta); }
inline void TotalBytes(long long delta) { g_totalBytes.Call(delta); }

}  // namespace StringPoolHooks
