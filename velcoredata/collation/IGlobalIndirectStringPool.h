// IGlobalIndirectStringPool: the pool behind IndirectString::Lookup.
//
// The process has one global pool, an IndirectStringFactoryMT created on
// first use with the configured striped-map width
// (IndirectStringConfig::GetStringPoolGlobalStripedMapWidth) and kept until
// the process ends. A scope may put another pool in its place:
//
//   std::unique_ptr<IGlobalIndirectStringPool> pool(MakeDefaultGlobalIndirectStringPool(16));
//   {
//     auto scope = ReplaceGlobalIndirectStringPoolInScope(pool.get());
//     IndirectString::Lookup(...);   // interned in `pool`
//   }
//
// Replacing is meant for start-up and tests: it is not synchronised with
// lookups that are running on other threads at that moment.
#pragma once

#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT IGlobalIndirectStringPool {
 public:
  virtual ~IGlobalIndirectStringPool();
  // The string for `text` (null: the empty text) under `collation`; never null.
  virtual IndirectString::Ptr Lookup(const Collation& collation, const char16_t* text) = 0;
};

// Puts a pool in place of the global one until it is destroyed, then puts
// the previous one back. Scopes nest; destroy them in reverse order.
class VELCOREDATA_EXPORT GlobalIndirectStringPoolScope {
 public:
  explicit GlobalIndirectStringPoolScope(IGlobalIndirectStringPool* pool);
  ~GlobalIndirectStringPoolScope();
  GlobalIndirectStringPoolScope(const GlobalIndirectStringPoolScope&) = delete;
  GlobalIndirectStringPoolScope& operator=(const GlobalIndirectStringPoolScope&) = delete;

 private:
  IGlobalIndirectStringPool* m_previous;
};

// The pool IndirectString::Lookup uses now.
VELCOREDATA_EXPORT IGlobalIndirectStringPool& GetGlobalIndirectStringPool();
// A new IndirectStringFactoryMT(width), owned by the caller.
VELCOREDATA_EXPORT IGlobalIndirectStringPool* MakeDefaultGlobalIndirectStringPool(int width);
// GlobalIndirectStringPoolScope(pool).
[[nodiscard]] VELCOREDATA_EXPORT GlobalIndirectStringPoolScope ReplaceGlobalIndirectStringPoolInScope(
    IGlobalIndirectStringPool* pool);
