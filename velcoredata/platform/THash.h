// The platform hashes, on xxHash.
//
//   THash32  = XXH32 with a 32-bit seed
//   THash64  = XXH64 with a 64-bit seed
//   THash128 = XXH3 128-bit; its two 32-bit seeds are folded into XXH3's 64-bit
//              seed as (seed1 << 32) | seed2
//   THashCombine32 mixes a second 32-bit value into a hash (see below)
//
// Hash values live only in memory: they are never persisted, so the functions
// may change between versions of the library.
#pragma once

#include <cstddef>
#include <cstdint>

#include "velcoredata/platform/Export.h"

struct THash128Value {
  uint64_t low;
  uint64_t high;
  friend bool operator==(const THash128Value&, const THash128Value&) = default;
};

VELCOREDATA_EXPORT uint32_t THash32(const void* data, size_t length, uint32_t seed) noexcept;
VELCOREDATA_EXPORT uint64_t THash64(const void* data, size_t length, uint64_t seed) noexcept;
VELCOREDATA_EXPORT THash128Value THash128(const void* data, size_t length, uint32_t seed1,
                                          uint32_t seed2) noexcept;

// Combines `value` into `hash`: the boost::hash_combine step widened to the
// 32-bit golden-ratio constant, followed by the murmur3 finaliser so that
// every input bit reaches every output bit. Not commutative.
constexpr uint32_t THashCombine32(uint32_t hash, uint32_t value) noexcept {
  uint32_t h = hash ^ (value + 0x9E3779B9u + (hash << 6) + (hash >> 2));
  h ^= h >> 16;
  h *= 0x85EBCA6Bu;
  h ^= h >> 13;
  h *= 0xC2B2AE35u;
  h ^= h >> 16;
  return h;
}
