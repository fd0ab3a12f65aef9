// One immortal Collation object per distinct collation (name and charset),
// so that interned strings carry a pointer instead of a copy and compare
// collations by pointer.
//
// Lookups take no lock: the table is replaced by a larger copy when it
// fills, old tables stay valid (they are never freed, like the collations
// they point to), and a miss is confirmed under the registry's mutex
// before anything is added.
#pragma once

#include "velcoredata/collation/Collation.h"

namespace CanonicalCollations {

// The canonical object equal to `collation` (same name and charset),
// created on first request. Safe from any thread; the object lives until
// the process ends.
const Collation* Get(const Collation& collation);

}  // namespace CanonicalCollations
