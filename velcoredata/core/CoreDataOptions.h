// CoreDataOptions: process options a host may set, usually once at start-up
// and before other threads use the library. Every option is safe to read
// from any thread.
#pragma once

#include <cstdint>

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
};
