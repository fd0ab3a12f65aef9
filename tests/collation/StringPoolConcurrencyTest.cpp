// The string pool under churn: many threads intern, release and re-intern
// the same small set of texts at once. Nobody sees a freed string (the
// sanitizers watch every read), a text pinned by one thread is the object
// every other thread gets, and the counters match a recount at the end.

#include <atomic>
#include <barrier>
#include <chrono>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "collation/StringPoolTestSupport.h"
#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/collation/IndirectStringLookupCache.h"
#include "velcoredata/collation/internal/StripeMutex.h"

namespace {

TEST(StringPoolConcurrencyTest, ChurnKeepsIdentityAndExactCounters) {
  PoolUnderTest pool(7);  // few stripes: threads meet on the same locks
  const std::vector<Collation> collations = {Collation(u"LEN_RUS_S2"), Collation(u"LEN_RUS_S2", 1252)};
  std::vector<std::u16string> texts;
  for (int i = 0; i < 24; ++i) texts.push_back(u"text-" + TString::number(i * 7919).str());

  // Every fourth text stays pinned by this thread for the whole run: every
  // lookup of it, on any thread, must return the pinned object.
  std::vector<IndirectString::Ptr> pinned(texts.size() * collations.size());
  for (size_t t = 0; t < texts.size(); t += 4) {
    for (size_t c = 0; c < collations.size(); ++c) {
      pinned[t * collations.size() + c] = IndirectString::Lookup(collations[c], texts[t].c_str());
    }
  }

  constexpr int kThreads = 8;
  const auto runFor = std::chrono::seconds(3);
  std::atomic<long long> lookups{0}, wrongText{0}, wrongCollation{0}, wrongIdentity{0};
  std::barrier start(kThreads);
  std::vector<std::thread> threads;
  for (int id = 0; id < kThreads; ++id) {
    threads.emplace_back([&, id] {
      std::mt19937 rng(static_cast<unsigned>(id));
      std::vector<IndirectString::Ptr> held(6);  // a few references kept across steps
      IndirectStringLookupCache cache(collations[static_cast<size_t>(id) % collations.size()], 5);
      start.arrive_and_wait();
      const auto end = std::chrono::steady_clock::now() + runFor;
      long long mine = 0;
      while (std::chrono::steady_clock::now() < end) {
        for (int burst = 0; burst < 64; ++burst, ++mine) {
          const size_t t = rng() % texts.size(), c = rng() % collations.size();
          const bool viaCache = id % 2 == 1 && c == static_cast<size_t>(id) % collations.size();
          IndirectString::Ptr s = viaCache ? cache.Lookup(texts[t].c_str())
                                           : IndirectString::Lookup(collations[c], texts[t].c_str());
          if (s->View() != texts[t]) ++wrongText;
          if (s->GetCollation() != collations[c]) ++wrongCollation;
          if (const auto& pin = pinned[t * collations.size() + c]; pin && pin.get() != s.get()) ++wrongIdentity;
          // Two live references to one (text, collation) are one object.
          for (const auto& h : held) {
            if (h && h->View() == s->View() && h->GetCollation() == s->GetCollation() && h.get() != s.get()) {
              ++wrongIdentity;
            }
          }
          held[rng() % held.size()] = std::move(s);  // drops whatever was there
          if (rng() % 16 == 0) cache.Clear();
        }
      }
      lookups += mine;
    });
  }
  for (auto& t : threads) t.join();

  EXPECT_GT(lookups.load(), 10000);
  EXPECT_EQ(wrongText.load(), 0);
  EXPECT_EQ(wrongCollation.load(), 0);
  EXPECT_EQ(wrongIdentity.load(), 0);

  // Recount: only the pinned strings are alive now.
  long long liveBytes = 0, live = 0;
  for (const auto& p : pinned) {
    if (!p) continue;
    ++live;
    liveBytes += p->GetLength() * 2;
  }
  const long long inMaps = static_cast<long long>(pool.pool().GetEntryCount());
  EXPECT_EQ(pool.counters.entries.load(), inMaps);
  EXPECT_EQ(pool.counters.weakEntries.load(), inMaps - live);
  EXPECT_EQ(pool.counters.bytes.load(), liveBytes);
  pool.pool().ForceCollectAllGarbage();
  EXPECT_EQ(pool.counters.entries.load(), live);
  EXPECT_EQ(pool.counters.weakEntries.load(), 0);
  EXPECT_EQ(static_cast<long long>(pool.pool().GetEntryCount()), live);
}

// Hooks swapped while other threads intern and release: every delta
// reaches one of the hooks (no call lost, none through a freed function).
TEST(StringPoolConcurrencyTest, SwappingHooksWhileThePoolIsBusyLosesNoCall) {
  PoolUnderTest pool(7);
  const Collation c(u"LEN_RUS");
  std::atomic<long long> bytes{0};
  std::atomic<bool> done{false};
  std::vector<std::thread> workers;
  for (int t = 0; t < 3; ++t) {
    workers.emplace_back([&, t] {
      for (int i = 0; i < 3000; ++i) {
        const std::u16string text = u"w" + std::u16string(1, static_cast<char16_t>(u'a' + (i + t) % 20));
        (void)IndirectString::Lookup(c, text.c_str());
      }
    });
  }
  std::thread swapper([&] {
    auto previous = IndirectStringConfig::SetUpdateStringPoolTotalBytesCounterFunction(
        [&bytes](long long d) { bytes += d; });
    for (int i = 0; !done.load(); ++i) {
      (void)IndirectStringConfig::SetUpdateStringPoolTotalBytesCounterFunction(
          [&bytes, tag = std::vector<int>(8, i)](long long d) { bytes += d + (tag[0] - tag[7]); });
    }
    (void)IndirectStringConfig::SetUpdateStringPoolTotalBytesCounterFunction(previous);
  });
  for (auto& w : workers) w.join();
  done = true;
  swapper.join();
  // Every string has died: the bytes it added were taken away again, by
  // whichever hook was in place (the pool's own counter before the first swap).
  EXPECT_EQ(bytes.load() + pool.counters.bytes.load(), 0);
}

TEST(StringPoolConcurrencyTest, AStripeMutexExcludesOtherThreadsAndLetsItsOwnerIn) {
  StripeMutex mutex;
  mutex.lock();
  mutex.lock();  // the owner again
  EXPECT_TRUE(mutex.try_lock());
  std::thread([&] { EXPECT_FALSE(mutex.try_lock()); }).join();
  mutex.unlock();
  mutex.unlock();
  std::thread([&] { EXPECT_FALSE(mutex.try_lock()); }).join();  // still held once
  mutex.unlock();
  std::thread([&] {
    EXPECT_TRUE(mutex.try_lock());
    mutex.unlock();
  }).join();

  // Threads that queue up behind a holder that sleeps (long enough for the
  // waiters to stop spinning and nap) all get in, one at a time.
  constexpr int kThreads = 6, kRounds = 20000;
  long long counter = 0;  // guarded by the mutex alone: the sanitizers see any overlap
  int inside = 0, overlaps = 0;
  std::vector<std::thread> threads;
  for (int id = 0; id < kThreads; ++id) {
    threads.emplace_back([&, id] {
      for (int round = 0; round < kRounds; ++round) {
        std::lock_guard<StripeMutex> outer(mutex);
        std::lock_guard<StripeMutex> inner(mutex);
        if (++inside != 1) ++overlaps;
        ++counter;
        if (id == 0 && round % 2000 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(2));
        --inside;
      }
    });
  }
  for (auto& t : threads) t.join();
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(counter, static_cast<long long>(kThreads) * kRounds);
}

}  // namespace
