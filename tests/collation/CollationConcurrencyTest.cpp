// Collators across threads: one collator per thread and pool, nothing left
// behind when a thread ends, and many threads comparing through shared
// collations (run under ThreadSanitizer in CI).

#include <atomic>
#include <barrier>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "collation/CollationTestSupport.h"
#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/platform/TSystem.h"

namespace {

using CollationTestSupport::Sign;

ICUCollatorPool& PoolOf(const Collation& c) { return dynamic_cast<ICUCollatorPool&>(c.GetPool()); }

TEST(CollationConcurrencyTest, EachThreadHasItsOwnCollatorAndAlwaysTheSame) {
  const Collation shared(u"LIT_RIT_S2");
  std::barrier bothHoldTheirs(2);
  Collator* first[2] = {};
  Collator* again[2] = {};
  uint64_t ids[2] = {};
  auto work = [&](int i) {
    ids[i] = TSystem::ThreadID();
    first[i] = shared.GetCollator().get();
    again[i] = shared.GetCollator().get();
    bothHoldTheirs.arrive_and_wait();  // both collators alive at once
  };
  std::thread a(work, 0), b(work, 1);
  a.join();
  b.join();
  EXPECT_EQ(first[0], again[0]);
  EXPECT_EQ(first[1], again[1]);
  EXPECT_NE(first[0], first[1]);
  EXPECT_NE(ids[0], ids[1]);
}

TEST(CollationConcurrencyTest, AThreadThatEndsLeavesNoCollatorInAnyPool) {
  // More pools than the per-thread fast path has slots.
  std::vector<Collation> collations;
  for (const char16_t* name : {u"LEN_RGB", u"LEN_RGB_S1", u"LEN_RGB_S2", u"LEN_RGB_WO", u"LES_RES",
                               u"LES_RES_S2", u"LPT_RBR", u"LPT_RBR_S2", u"LPL_RPL", u"LPL_RPL_S1",
                               u"LCS_RCZ", u"LCS_RCZ_XO"}) {
    collations.emplace_back(name);
  }
  std::vector<size_t> before;
  for (const Collation& c : collations) before.push_back(PoolOf(c).GetThreadCollatorCount());

  uint64_t threadId = 0;
  bool heldInEveryPool = true;
  std::thread worker([&] {
    threadId = TSystem::ThreadID();
    for (int round = 0; round < 2; ++round) {
      for (const Collation& c : collations) {
        (void)c.Compare(u"a", u"b");
        heldInEveryPool = heldInEveryPool && PoolOf(c).HasCollatorForThread(threadId);
      }
    }
  });
  worker.join();
  EXPECT_TRUE(heldInEveryPool);
  for (size_t i = 0; i < collations.size(); ++i) {
    EXPECT_FALSE(PoolOf(collations[i]).HasCollatorForThread(threadId)) << collations[i].GetName().toUtf8();
    EXPECT_EQ(PoolOf(collations[i]).GetThreadCollatorCount(), before[i]) << collations[i].GetName().toUtf8();
  }
}

TEST(CollationConcurrencyTest, ThreadsRacingForANewNameShareOnePool) {
  constexpr int kThreads = 8;
  std::barrier start(kThreads);
  std::vector<CollatorPool*> pools(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      pools[static_cast<size_t>(i)] = &Collation(u"LHU_RHU_S1_WO").GetPool();
    });
  }
  for (auto& t : threads) t.join();
  for (CollatorPool* pool : pools) EXPECT_EQ(pool, pools.front());
  EXPECT_EQ(ICUCollatorPool::Find({u"LHU_RHU_S1_WO", 0u}), pools.front());
}

TEST(CollationConcurrencyTest, ThirtyTwoThreadsCompareAndHashThroughSharedCollations) {
  const std::vector<Collation> collations = {Collation(u"LEN_RUS_S2"), Collation(u"LDE_RDE"),
                                             Collation(u"LSV_RSE_S1_WO"), Collation(u"binary"),
                                             Collation(u"LEN_RUS_XO"), Collation(0x409u, 0x80000004u, 0)};
  const std::vector<std::u16string> words = {u"apple", u"Apple", u"\u00E4pple", u"co-op", u"coop",
                                             u"a1b",   u"ab",    u"#x",         u"@x",    u"\u00E5r",
                                             u"ar",    u"Zebra", u"zebra",      u""};
  // Expected answers, computed on this thread before any other starts.
  std::vector<int> expectedSigns;
  std::vector<uint32_t> expectedHashes;
  for (const Collation& c : collations) {
    for (const auto& a : words) {
      expectedHashes.push_back(c.Hash(a.c_str()));
      for (const auto& b : words) expectedSigns.push_back(Sign(c.Compare(a.c_str(), b.c_str())));
    }
  }

  constexpr int kThreads = 32;
  std::atomic<int> mismatches{0};
  std::barrier start(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      start.arrive_and_wait();
      for (int round = 0; round < 3; ++round) {
        size_t s = 0, h = 0;
        for (size_t ci = 0; ci < collations.size(); ++ci) {
          // Threads walk the collations from different starting points.
          const Collation& c = collations[(ci + static_cast<size_t>(t)) % collations.size()];
          const size_t base = ((ci + static_cast<size_t>(t)) % collations.size());
          s = base * words.size() * words.size();
          h = base * words.size();
          for (const auto& a : words) {
            if (c.Hash(a.c_str()) != expectedHashes[h++]) ++mismatches;
            for (const auto& b : words) {
              if (Sign(c.Compare(a.c_str(), b.c_str())) != expectedSigns[s++]) ++mismatches;
            }
          }
        }
        if (t % 4 == 0) ICUCollatorPool::FreeOnThread();  // some threads start over mid-way
      }
    });
  }
  for (auto& t : threads) t.join();
  EXPECT_EQ(mismatches.load(), 0);
}

}  // namespace
