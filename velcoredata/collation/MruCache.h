// MruCache: a fixed-capacity map that keeps the most recently used entries.
//
//   MruCache<uint64_t, Value, 1> cache(1000);
//   Value v;
//   if (!cache.Find(key, v)) cache.Insert(key, v = Make());
//
// Find promotes the entry to most recently used; Insert adds or replaces
// an entry as most recently used and, when the cache is full, evicts the
// least recently used one (one per insert, so the cache never exceeds its
// capacity). The evicted value is handed back to the caller, to be dropped
// after the cache's lock is released.
//
// Locked: 1 guards every operation with the cache's own mutex, held only
// inside the operation; 0 leaves synchronisation to the owner.
// Capacity 0 caches nothing. Keys are hashed with std::hash<Key>.
//
// Memory grows with the entries held, not with the capacity: the capacity
// is a bound, so a large one costs nothing until it is used. Per entry held
// there is a node (the key, the value and two 32-bit links) and up to
// sixteen 8-byte index slots; Clear gives the memory back. The index is kept
// at most one eighth full because a lookup is short enough that probing a
// longer run of slots (and mispredicting where it ends) shows: that sparse,
// a probe nearly always ends at its first slot. Capacities beyond
// 4,294,967,294 entries hold that many.
#pragma once

#include <sched.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <type_traits>
#include <vector>

template <class Key, class Value, int Locked>
class MruCache {
 public:
  explicit MruCache(size_t capacity) : m_capacity(std::min<size_t>(capacity, kNone - 1)) {
    m_maxSlots = kInitialSlots;
    while (m_maxSlots < m_capacity * 8) m_maxSlots *= 2;
    ResetIndex();
  }
  MruCache(const MruCache&) = delete;
  MruCache& operator=(const MruCache&) = delete;

  // Copies the value of `key` into `value` and promotes the entry. On a
  // miss in a full cache, starts loading the entry the next Insert will
  // evict (and what its value points to), so that dropping it is cheap.
  bool Find(const Key& key, Value& value) {
    const uint32_t mix = Mix(key);
    Guard guard(m_mutex);
    const uint32_t node = m_index[FindSlot(key, mix)].node;
    if (node == kNone) {
      if (m_size == m_capacity && m_tail != kNone) {
        __builtin_prefetch(&m_nodes[m_tail]);
        if constexpr (requires(const Value& v) { v.get(); }) __builtin_prefetch(m_nodes[m_tail].value.get());
      }
      return false;
    }
    value = m_nodes[node].value;
    MoveToFront(node);
    return true;
  }

  // Sets `key` to `value` as most recently used; returns the value evicted
  // to make room (a default Value when nothing was evicted).
  Value Insert(const Key& key, Value value) { return InsertImpl(key, std::move(value)); }

  // Drops every entry and gives their memory back; the values are dropped
  // after the lock is released.
  void Clear() {
    std::vector<Node> dropped;
    std::vector<Slot> droppedIndex;
    {
      Guard guard(m_mutex);
      dropped.swap(m_nodes);
      droppedIndex.swap(m_index);
      ResetIndex();
      m_head = m_tail = kNone;
      m_size = 0;
    }
  }

  size_t Size() const {
    Guard guard(m_mutex);
    return m_size;
  }
  size_t Capacity() const noexcept { return m_capacity; }

 private:
  static constexpr uint32_t kNone = 0xFFFFFFFFu;
  static constexpr size_t kInitialSlots = 16;
  struct NoMutex {
    void lock() noexcept {}
    void unlock() noexcept {}
  };
  // The cache's mutex. Nothing runs under it but the cache's own few dozen
  // instructions (values are dropped after it is released), so a thread
  // that finds it taken spins, then yields, rather than sleeping until
  // woken; in exchange releasing it is a plain store, not a second atomic
  // read-modify-write on every lookup.
  class ShortMutex {
   public:
    void lock() noexcept {
      for (int attempt = 0; !TryLock(); ++attempt) {
        if (attempt < 128) {
#if defined(__x86_64__) || defined(__i386__)
          __builtin_ia32_pause();
#endif
        } else {
          sched_yield();
        }
      }
    }
    void unlock() noexcept { m_locked.store(false, std::memory_order_release); }

   private:
    bool TryLock() noexcept {
      return !m_locked.load(std::memory_order_relaxed) && !m_locked.exchange(true, std::memory_order_acquire);
    }
    std::atomic<bool> m_locked{false};
  };
  using Mutex = std::conditional_t<Locked != 0, ShortMutex, NoMutex>;
  using Guard = std::lock_guard<Mutex>;

  struct Node {
    Key key{};
    Value value{};
    uint32_t prev = kNone, next = kNone;
  };
  // An index slot keeps 32 bits of its key's mixed hash beside the node:
  // probing and moving slots compare and place by it without reading the
  // nodes, which are read only to confirm a match.
  struct Slot {
    uint32_t mix = 0;
    uint32_t node = kNone;  // kNone: empty
  };

  static uint32_t Mix(const Key& key) noexcept {
    return static_cast<uint32_t>(static_cast<uint64_t>(std::hash<Key>{}(key)) * 0x9E3779B97F4A7C15ull >> 32);
  }
  size_t Home(uint32_t mix) const noexcept { return mix & m_mask; }

  // The index slot of `key` (whose Mix is `mix`), or the empty slot where it
  // would go.
  size_t FindSlot(const Key& key, uint32_t mix) const noexcept {
    size_t i = Home(mix);
    while (m_index[i].node != kNone && !(m_index[i].mix == mix && m_nodes[m_index[i].node].key == key)) {
      i = (i + 1) & m_mask;
    }
    return i;
  }

  Value InsertImpl(const Key& key, Value value) {
    Value evicted{};
    if (m_capacity == 0) return value;  // capacity 0: the value is dropped at once
    const uint32_t mix = Mix(key);
    Guard guard(m_mutex);
    size_t slot = FindSlot(key, mix);
    uint32_t node = m_index[slot].node;
    if (node != kNone) {
      evicted = std::move(m_nodes[node].value);
    } else {
      if (m_size == m_capacity) {
        // Full: the least recently used entry makes room.
        node = m_tail;
        evicted = std::move(m_nodes[node].value);
        Unlink(node);
        const Key& old = m_nodes[node].key;
        RemoveIndex(FindSlot(old, Mix(old)));
        --m_size;
        slot = FindSlot(key, mix);
      } else {
        // Not full: the first unused node, growing the nodes and the index
        // as the entries come.
        node = static_cast<uint32_t>(m_size);
        if (node == m_nodes.size()) GrowNodes();
        if ((m_size + 1) * 8 > m_index.size() && m_index.size() < m_maxSlots) {
          Rehash(m_index.size() * 2);
          slot = FindSlot(key, mix);
        }
      }
      ++m_size;
      m_nodes[node].key = key;
      m_index[slot] = Slot{mix, node};
      LinkFront(node);
    }
    m_nodes[node].value = std::move(value);
    MoveToFront(node);
    return evicted;
  }

  void ResetIndex() {
    m_index.assign(std::min(kInitialSlots, m_maxSlots), Slot{});
    m_mask = m_index.size() - 1;
  }

  // Doubles the nodes (within the capacity); entries keep their node numbers.
  void GrowNodes() {
    m_nodes.resize(std::min(m_capacity, std::max<size_t>(m_nodes.size() * 2, 8)));
  }

  // Rebuilds the index at `slots` slots from the nodes in use (the first
  // m_size: an eviction reuses its node, so they never have holes).
  void Rehash(size_t slots) {
    std::vector<Slot> index(slots, Slot{});
    m_index.swap(index);
    m_mask = slots - 1;
    for (uint32_t node = 0; node < m_size; ++node) {
      const uint32_t mix = Mix(m_nodes[node].key);
      size_t i = Home(mix);
      while (m_index[i].node != kNone) i = (i + 1) & m_mask;
      m_index[i] = Slot{mix, node};
    }
  }

  void Unlink(uint32_t node) noexcept {
    Node& n = m_nodes[node];
    (n.prev != kNone ? m_nodes[n.prev].next : m_head) = n.next;
    (n.next != kNone ? m_nodes[n.next].prev : m_tail) = n.prev;
    n.prev = n.next = kNone;
  }

  void LinkFront(uint32_t node) noexcept {
    Node& n = m_nodes[node];
    n.prev = kNone;
    n.next = m_head;
    if (m_head != kNone) m_nodes[m_head].prev = node;
    m_head = node;
    if (m_tail == kNone) m_tail = node;
  }

  void MoveToFront(uint32_t node) noexcept {
    if (m_head == node) return;
    Unlink(node);
    LinkFront(node);
  }

  // Backward-shift deletion from the linear-probing index.
  void RemoveIndex(size_t hole) noexcept {
    for (size_t i = (hole + 1) & m_mask; m_index[i].node != kNone; i = (i + 1) & m_mask) {
      const size_t home = Home(m_index[i].mix);
      const bool homeAfterHole = hole <= i ? (home > hole && home <= i) : (home > hole || home <= i);
      if (homeAfterHole) continue;
      m_index[hole] = m_index[i];
      hole = i;
    }
    m_index[hole] = Slot{};
  }

  mutable Mutex m_mutex;
  size_t m_capacity;
  size_t m_maxSlots;             // the index size at full capacity
  std::vector<Node> m_nodes;     // up to capacity nodes; the first m_size are in use
  std::vector<Slot> m_index;     // open addressing over the nodes
  size_t m_mask = 0;
  size_t m_size = 0;
  uint32_t m_head = kNone, m_tail = kNone;
};
