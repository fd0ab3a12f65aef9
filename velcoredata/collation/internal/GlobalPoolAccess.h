// The lookup cache's way into the global pool. While no scope has replaced
// it, it calls the default pool's lookup directly (no virtual call, no call
// through the symbol table), so that the cache hashes a text once for
// itself and for the pool. IndirectString::Lookup reaches the pool the same
// way (see IGlobalIndirectStringPool.cpp).
#pragma once

#include <utility>

#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/platform/THash.h"

struct GlobalPoolAccess {
  // The seeds of the pool's text hash: THash128(text bytes, kSeed1, kSeed2).
  static constexpr uint32_t kSeed1 = 0xDEADBEEF;
  static constexpr uint32_t kSeed2 = 0xCAFEBABE;
  // The pool's hash of a text of `length` code units.
  static THash128Value HashOf(const char16_t* text, int length) noexcept {
    return THash128(text, static_cast<size_t>(length) * sizeof(char16_t), kSeed1, kSeed2);
  }

  // Two references to what IndirectString::Lookup(collation, text) returns,
  // for a caller that keeps one and hands out the other, given the text's
  // length and THash128. The default pool takes both in one atomic step; a
  // pool put in place by a scope is asked through its Lookup (and hashes
  // for itself).
  static std::pair<IndirectString::Ptr, IndirectString::Ptr> LookupTwice(const Collation& collation,
                                                                         const char16_t* text, int length,
                                                                         THash128Value hash);
};
