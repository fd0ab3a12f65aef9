// Registries that live until the process ends are not leaks, but oneTBB's
// concurrent_unordered_map keeps its bucket segments through offset
// pointers that LeakSanitizer cannot follow. Allocations made while an
// IgnoreLeaksScope exists on the thread are not reported. Does nothing in
// builds without AddressSanitizer.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define VCD_HAS_LEAK_CHECKER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VCD_HAS_LEAK_CHECKER 1
#endif
#endif

#if defined(VCD_HAS_LEAK_CHECKER)
#include <sanitizer/lsan_interface.h>
#endif

class IgnoreLeaksScope {
 public:
#if defined(VCD_HAS_LEAK_CHECKER)
  IgnoreLeaksScope() noexcept { __lsan_disable(); }
  ~IgnoreLeaksScope() { __lsan_enable(); }
#else
  IgnoreLeaksScope() noexcept {}
#endif
  IgnoreLeaksScope(const IgnoreLeaksScope&) = delete;
  IgnoreLeaksScope& operator=(const IgnoreLeaksScope&) = delete;
};
