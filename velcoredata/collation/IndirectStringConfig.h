// IndirectStringConfig: the string pool's process options and statistics
// hooks, under the pool's own names. The settings are shared with
// CoreDataOptions (see there for the contract of each): setting either name
// changes both.
#pragma once

#include "velcoredata/core/CoreDataOptions.h"
#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT IndirectStringConfig {
 public:
  using CounterFunction = CoreDataOptions::StringPoolCounterFunction;

  // Stripes of the global pool, read when it is created (default 10000).
  static void SetStringPoolGlobalStripedMapWidth(int width) noexcept;
  static int GetStringPoolGlobalStripedMapWidth() noexcept;

  // Each swaps the new hook in and returns the previous one.
  static CounterFunction SetUpdateStringPoolEntryCounterFunction(CounterFunction hook);
  static CounterFunction SetUpdateStringPoolWeakEntryCounterFunction(CounterFunction hook);
  static CounterFunction SetUpdateStringPoolTotalBytesCounterFunction(CounterFunction hook);
};
