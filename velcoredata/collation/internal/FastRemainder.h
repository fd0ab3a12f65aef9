// a % d for 64-bit a and d without a division: one 128-bit multiply by a
// constant precomputed for d, then two 64x64 multiplies (Lemire, Kaser,
// Kurz, "Faster remainder by direct computation", 2019). With
// M = ceil(2^128 / d), the remainder is the high 64 bits of
// ((M * a) mod 2^128) * d.
#pragma once

#include <cstdint>

namespace FastRemainder {

__extension__ typedef unsigned __int128 Uint128;

inline Uint128 Magic(uint64_t d) { return ~static_cast<Uint128>(0) / d + 1; }

inline uint64_t Of(uint64_t a, Uint128 magic, uint64_t d) {
  const Uint128 lowBits = magic * a;
  const Uint128 bottom = ((lowBits & ~0ull) * d) >> 64;
  const Uint128 top = (lowBits >> 64) * d;
  return static_cast<uint64_t>((bottom + top) >> 64);
}

}  // namespace FastRemainder
