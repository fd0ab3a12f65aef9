// CollationConflictResolver: picks one collation when data of different
// origin meet (a join, a union, a blend) and each side declares its own.
//
// The rules, first that applies, for a pair (a, b):
//   1. a has no source and b has one           -> b
//   2. a is the root ordering and b is not      -> b
//   3. exactly one is case-sensitive            -> the case-insensitive one
//   4. same non-empty source and the host's callback prefers b -> b
//   5. b has no character set                   -> a
//   6. a has a character set                    -> a
//   7. (only b has one) same name               -> b, otherwise a
// A list is folded left to right with these rules.
//
// The resolver holds the host's callback by pointer and never owns it.
#pragma once

#include <memory>
#include <vector>

#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/SourcedCollation.h"
#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT CollationConflictResolver {
 public:
  // The host's say in rule 4.
  class VELCOREDATA_EXPORT Callback {
   public:
    virtual ~Callback();
    // True to choose `second` over `first`; both came from `source`.
    virtual bool PreferSecond(const Collation& first, const Collation& second,
                              const TString& source) = 0;
  };

  explicit CollationConflictResolver(Callback* callback = nullptr) noexcept : m_callback(callback) {}

  // The winner of the pair: a reference to `a` or to `b`.
  const SourcedCollation& ResolveCollationPair(const SourcedCollation& a,
                                               const SourcedCollation& b) const;
  // A copy of the winner of the whole list; null for an empty list. The
  // list's pointers must not be null.
  std::unique_ptr<SourcedCollation> ResolveSourcedCollation(
      std::vector<const SourcedCollation*>& collations) const;

  Callback* GetCallback() const noexcept { return m_callback; }

 private:
  Callback* m_callback;
};
