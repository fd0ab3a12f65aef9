#include "velcoredata/core/CoreDataOptions.h"

#include <atomic>

namespace {
std::atomic<uint32_t> g_defaultLocale{0};
std::atomic<bool> g_ignoreSessionLocale{false};
}  // namespace

void CoreDataOptions::SetDefaultLocale(uint32_t lcid) noexcept { g_defaultLocale.store(lcid); }
uint32_t CoreDataOptions::GetDefaultLocale() noexcept { return g_defaultLocale.load(); }
void CoreDataOptions::SetIgnoreSessionLocale(bool ignore) noexcept { g_ignoreSessionLocale.store(ignore); }
bool CoreDataOptions::GetIgnoreSessionLocale() noexcept { return g_ignoreSessionLocale.load(); }
