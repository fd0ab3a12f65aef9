#include "velcoredata/collation/IGlobalIndirectStringPool.h"

#include <atomic>

#include "velcoredata/collation/IndirectStringConfig.h"
#include "velcoredata/collation/IndirectStringFactoryMT.h"
#include "velcoredata/collation/internal/GlobalPoolAccess.h"
#include "velcoredata/platform/InitOnce.h"

namespace {

// The pool a scope put in place of the default one, or null.
std::atomic<IGlobalIndirectStringPool*> g_replacement{nullptr};

// Never destroyed: strings are released during static destruction too.
IndirectStringFactoryMT& DefaultPool() {
  static InitOnceValue<IndirectStringFactoryMT> pool;
  return pool.Get([] { return new IndirectStringFactoryMT(IndirectStringConfig::GetStringPoolGlobalStripedMapWidth()); });
}

}  // namespace

IGlobalIndirectStringPool::~IGlobalIndirectStringPool() = default;

IGlobalIndirectStringPool& GetGlobalIndirectStringPool() {
  if (IGlobalIndirectStringPool* replacement = g_replacement.load(std::memory_order_acquire)) return *replacement;
  return DefaultPool();
}

// Defined here, beside the default pool, so that it reaches the pool's
// lookup in one direct call.
IndirectString::Ptr IndirectString::Lookup(const Collation& collation, const char16_t* text) {
  if (IGlobalIndirectStringPool* replacement = g_replacement.load(std::memory_order_acquire)) {
    return replacement->Lookup(collation, text);
  }
  return DefaultPool().LookupText(collation, text);
}

std::pair<IndirectString::Ptr, IndirectString::Ptr> GlobalPoolAccess::LookupTwice(const Collation& collation,
                                                                                  const char16_t* text, int length,
                                                                                  THash128Value hash) {
  if (IGlobalIndirectStringPool* replacement = g_replacement.load(std::memory_order_acquire)) {
    IndirectString::Ptr found = replacement->Lookup(collation, text);
    return {found, found};
  }
  IndirectString* found = DefaultPool().LookupImpl(collation, text, length, hash, 2);
  return {IndirectString::Ptr(found, AdoptRef), IndirectString::Ptr(found, AdoptRef)};
}

GlobalIndirectStringPoolScope::GlobalIndirectStringPoolScope(IGlobalIndirectStringPool* pool)
    : m_previous(g_replacement.exchange(pool, std::memory_order_acq_rel)) {}

GlobalIndirectStringPoolScope::~GlobalIndirectStringPoolScope() {
  g_replacement.store(m_previous, std::memory_order_release);
}

IGlobalIndirectStringPool* MakeDefaultGlobalIndirectStringPool(int width) {
  return new IndirectStringFactoryMT(width);
}

GlobalIndirectStringPoolScope ReplaceGlobalIndirectStringPoolInScope(IGlobalIndirectStringPool* pool) {
  return GlobalIndirectStringPoolScope(pool);
}
