#include "velcoredata/collation/internal/CanonicalCollations.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "velcoredata/collation/internal/ShortText.h"

namespace CanonicalCollations {
namespace {

struct Table {
  explicit Table(size_t capacity) : slots(capacity), mask(capacity - 1) {}
  std::vector<std::atomic<const Collation*>> slots;
  size_t mask;
  size_t used = 0;  // written under the registry mutex only
};

size_t HashOf(const Collation& c) {
  return (static_cast<size_t>(c.GetHashCode()) * 0x9E3779B97F4A7C15ull) ^ c.GetCharsetID();
}

// Collation's operator== (same charset, same name), comparing the names
// as bytes.
bool SameCollation(const Collation& a, const Collation& b) {
  const TString& x = a.GetName();
  const TString& y = b.GetName();
  return a.GetCharsetID() == b.GetCharsetID() && x.size() == y.size() &&
         ShortText::Equal(x.data(), y.data(), static_cast<size_t>(x.size()));
}

const Collation* Find(const Table& table, const Collation& c, size_t hash) {
  for (size_t i = hash & table.mask;; i = (i + 1) & table.mask) {
    const Collation* slot = table.slots[i].load(std::memory_order_acquire);
    if (!slot) return nullptr;
    if (slot == &c || SameCollation(*slot, c)) return slot;
  }
}

void Insert(Table& table, const Collation* c) {
  for (size_t i = HashOf(*c) & table.mask;; i = (i + 1) & table.mask) {
    if (!table.slots[i].load(std::memory_order_relaxed)) {
      table.slots[i].store(c, std::memory_order_release);
      ++table.used;
      return;
    }
  }
}

class Registry {
 public:
  Registry() { m_current.store(Keep(std::make_unique<Table>(64)), std::memory_order_release); }

  const Collation* Get(const Collation& c) {
    const size_t hash = HashOf(c);
    if (const Collation* found = Find(*m_current.load(std::memory_order_acquire), c, hash)) return found;
    std::lock_guard<std::mutex> lock(m_mutex);
    Table* table = m_current.load(std::memory_order_relaxed);
    if (const Collation* found = Find(*table, c, hash)) return found;
    m_collations.push_back(std::make_unique<const Collation>(c));
    const Collation* added = m_collations.back().get();
    if ((table->used + 1) * 2 > table->slots.size()) {
      // Half full: readers move to a copy twice the size.
      Table* bigger = Keep(std::make_unique<Table>(table->slots.size() * 2));
      for (const auto& slot : table->slots) {
        if (const Collation* old = slot.load(std::memory_order_relaxed)) Insert(*bigger, old);
      }
      Insert(*bigger, added);
      m_current.store(bigger, std::memory_order_release);
    } else {
      Insert(*table, added);
    }
    return added;
  }

 private:
  Table* Keep(std::unique_ptr<Table> table) {
    m_tables.push_back(std::move(table));
    return m_tables.back().get();
  }

  std::mutex m_mutex;
  std::vector<std::unique_ptr<const Collation>> m_collations;
  std::vector<std::unique_ptr<Table>> m_tables;
  std::atomic<Table*> m_current{nullptr};
};

}  // namespace

const Collation* Get(const Collation& collation) {
  static Registry* const registry = new Registry();
  return registry->Get(collation);
}

}  // namespace CanonicalCollations
