// CollatorRef: a collator borrowed from a pool for one operation.
//
//   CollatorRef collator(pool);
//   int order = collator->Compare(a, b);
//
// Construction acquires a collator for the calling thread, destruction
// releases it. A copy acquires its own collator from the same pool. Keep a
// CollatorRef on the stack for the length of one operation: it must not be
// handed to another thread.
#pragma once

#include <utility>

#include "velcoredata/collation/Collator.h"
#include "velcoredata/collation/CollatorPool.h"

class CollatorRef {
 public:
  explicit CollatorRef(CollatorPool& pool) : m_pool(&pool), m_collator(pool.AcquireCollator()) {}
  CollatorRef(const CollatorRef& other) : CollatorRef(*other.m_pool) {}
  CollatorRef& operator=(const CollatorRef& other) {
    if (this != &other) {
      CollatorRef copy(other);
      std::swap(m_pool, copy.m_pool);
      std::swap(m_collator, copy.m_collator);
    }
    return *this;
  }
  ~CollatorRef() { m_pool->ReleaseCollator(m_collator); }

  Collator* operator->() const noexcept { return m_collator; }
  Collator& operator*() const noexcept { return *m_collator; }
  Collator* get() const noexcept { return m_collator; }
  CollatorPool& GetPool() const noexcept { return *m_pool; }

 private:
  CollatorPool* m_pool;
  Collator* m_collator;
};
