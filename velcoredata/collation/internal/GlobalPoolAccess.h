// Interning through the global pool with the text's hash already known:
// the lookup cache hashes a text once for itself and for the pool.
#pragma once

#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/platform/THash.h"

namespace GlobalPoolAccess {

// The seeds of the pool's text hash: THash128(text bytes, kSeed1, kSeed2).
inline constexpr uint32_t kSeed1 = 0xDEADBEEF;
inline constexpr uint32_t kSeed2 = 0xCAFEBABE;

// IndirectString::Lookup(collation, text) for a null-terminated text of
// `length` code units whose THash128 is `hash`. A pool put in place by a
// scope is asked through its Lookup (and hashes for itself).
IndirectString::Ptr Lookup(const Collation& collation, const char16_t* text, int length,
                           const THash128Value& hash);

}  // namespace GlobalPoolAccess
