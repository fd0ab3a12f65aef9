#include "velcoredata/platform/THash.h"

// xxHash is compiled into this file only; hosts do not need its headers.
#define XXH_INLINE_ALL
#include <xxhash.h>

uint32_t THash32(const void* data, size_t length, uint32_t seed) noexcept {
  return XXH32(length ? data : "", length, seed);
}

uint64_t THash64(const void* data, size_t length, uint64_t seed) noexcept {
  return XXH64(length ? data : "", length, seed);
}

THash128Value THash128(const void* data, size_t length, uint32_t seed1, uint32_t seed2) noexcept {
  const uint64_t seed = (static_cast<uint64_t>(seed1) << 32) | seed2;
  const XXH128_hash_t h = XXH3_128bits_withSeed(length ? data : "", length, seed);
  return THash128Value{h.low64, h.high64};
}
