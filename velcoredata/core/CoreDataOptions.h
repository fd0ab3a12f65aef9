// CoreDataOptions: process options a host may set, usually once at start-up
// and before other threads use the library. Every option is safe to read
// from any thread.
#pragma once

#include <cstdint>
#include <functional>

#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT CoreDataOptions {
 public:
  // The locale (a Windows LCID) that stands for the user's locale: what the
  // pseudo-LCID 1024 resolves to and the session locale's fallback.
  // 0 (the default) means "take it from the environment, as ICU sees it".
  static void SetDefaultLocale(uint32_t lcid) noexcept;
  static uint32_t GetDefaultLocale() noexcept;

  // When set, LocaleHelper::GetSessionLCID ignores a thread's session locale
  // and answers with the default locale.
  static void SetIgnoreSessionLocale(bool ignore) noexcept;
  static bool GetIgnoreSessionLocale() noexcept;

  // --- the string pool -------------------------------------------------------
  // Read when the global string pool or a lookup cache is created; set them
  // before that. IndirectStringConfig and IndirectStringLookupCache offer
  // the same settings under their own names.

  // Number of independently locked stripes of the global pool (default
  // 10000). A width below 1 is a logic error when the pool is created.
  static void SetStringPoolGlobalStripedMapWidth(int width) noexcept;
  static int GetStringPoolGlobalStripedMapWidth() noexcept;
  // Capacity of a lookup cache made with the default size (default 1000).
  static void SetStringPoolThreadLocalCacheSize(unsigned long size) noexcept;
  static unsigned long GetStringPoolThreadLocalCacheSize() noexcept;

  // Statistics hooks of the string pool. Each receives signed deltas:
  //   entry counter       +1 per entry added to the pool's maps, -1 per
  //                       entry collected;
  //   weak-entry counter  +1 when an entry's last user lets go, -1 when
  //                       the dead entry is collected;
  //   total-bytes counter + the text's bytes (UTF-16) when an entry is
  //                       added, - them when its last user lets go.
  // Each setter swaps the new function in and returns the previous one.
  // The defaults do nothing. An empty function is refused: the setter throws
  // std::bad_function_call and the previous hook stays. The hook machinery
  // keeps only the installed functions, however often they are swapped (a
  // setter waits for calls already running the previous function to end).
  // Hooks are called from any thread, sometimes while a stripe of the pool
  // is locked: they must not throw, must not call back into the pool and
  // must not set hooks.
  using StringPoolCounterFunction = std::function<void(long long)>;
  static StringPoolCounterFunction SetUpdateStringPoolEntryCounter(StringPoolCounterFunction hook);
  static StringPoolCounterFunction SetUpdateStringPoolWeakEntryCounter(StringPoolCounterFunction hook);
  static StringPoolCounterFunction SetUpdateStringPoolTotalBytesCounter(StringPoolCounterFunction hook);
  // Call the installed hooks (one atomic load each).
  static void UpdateStringPoolEntryCounter(long long delta);
  static void UpdateStringPoolWeakEntryCounter(long long delta);
  static void UpdateStringPoolTotalBytesCounter(long long delta);
};
