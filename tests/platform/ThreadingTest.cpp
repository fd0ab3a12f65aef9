// Reference counting, once-only initialisation, locks, per-thread context and
// thread-exit hooks. Suites named *Concurrency* run under ThreadSanitizer in CI.

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/platform/CoreThreadContext.h"
#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/platform/Locks.h"
#include "velcoredata/platform/RefCnt.h"
#include "velcoredata/platform/TSystem.h"

namespace {

std::atomic<int> g_liveTracked{0};

class Tracked : public RefCntObject {
 public:
  Tracked() { ++g_liveTracked; }
  ~Tracked() override { --g_liveTracked; }
  void ForceCount(int32_t n) { SetRefCountForTesting(n); }
};

TEST(RefCntTest, PointersShareOneObjectAndFreeItWithTheLastReference) {
  {
    RefCntPtr<Tracked> a = MakeRefCnt<Tracked>();
    EXPECT_EQ(a->GetRefCount(), 1);
    RefCntPtr<Tracked> b = a;
    EXPECT_EQ(a->GetRefCount(), 2);
    RefCntPtr<Tracked> c = std::move(b);
    EXPECT_FALSE(b);
    EXPECT_EQ(c.get(), a.get());
    EXPECT_EQ(a->GetRefCount(), 2);
    c = a;  // assigning the same object keeps the count
    EXPECT_EQ(a->GetRefCount(), 2);
    c.reset();
    EXPECT_EQ(a->GetRefCount(), 1);
    EXPECT_EQ(g_liveTracked.load(), 1);
  }
  EXPECT_EQ(g_liveTracked.load(), 0);
}

TEST(RefCntTest, AdoptTakesOverAnExistingReference) {
  Tracked* raw = new Tracked();
  raw->AddRef();
  {
    RefCntPtr<Tracked> p(raw, AdoptRef);
    EXPECT_EQ(raw->GetRefCount(), 1);
  }
  EXPECT_EQ(g_liveTracked.load(), 0);
}

TEST(RefCntTest, DereferencingNullIsALogicError) {
  RefCntPtr<Tracked> empty;
  try {
    (void)empty->GetRefCount();
    FAIL() << "no exception";
  } catch (const VelmoraLogicException& e) {
    EXPECT_EQ(e.GetCondition(), "m_ptr");
  }
}

TEST(RefCntDeathTest, AnIncrementAtTheLimitAbortsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  auto* object = new Tracked();
  object->ForceCount(0x7FFFFFFD);
  object->AddRef();  // 0x7FFFFFFD -> 0x7FFFFFFE is still allowed
  EXPECT_EQ(object->GetRefCount(), 0x7FFFFFFE);
  EXPECT_DEATH(object->AddRef(), "reference count overflow");
  object->ForceCount(1);
  object->Release();
}

TEST(RefCntConcurrencyTest, ManyThreadsCopyingAndDroppingFreeExactlyOnce) {
  for (int round = 0; round < 20; ++round) {
    RefCntPtr<Tracked> shared = MakeRefCnt<Tracked>();
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
      threads.emplace_back([copy = shared] {
        for (int i = 0; i < 2000; ++i) {
          RefCntPtr<Tracked> local = copy;
          RefCntPtr<Tracked> moved = std::move(local);
        }
      });
    }
    shared.reset();
    for (auto& t : threads) t.join();
    EXPECT_EQ(g_liveTracked.load(), 0);
  }
}

TEST(InitOnceConcurrencyTest, CreatesTheValueOnceWhateverTheRace) {
  static std::atomic<int> constructions{0};
  struct Value {
    Value() { ++constructions; }
    int answer = 42;
  };
  for (int round = 0; round < 10; ++round) {
    InitOnceValue<Value>* once = new InitOnceValue<Value>();
    constructions = 0;
    std::vector<std::thread> threads;
    std::atomic<int> sum{0};
    for (int t = 0; t < 8; ++t) threads.emplace_back([&] { sum += once->Get().answer; });
    for (auto& t : threads) t.join();
    EXPECT_EQ(constructions.load(), 1);
    EXPECT_EQ(sum.load(), 8 * 42);
    delete &once->Get();
    delete once;
  }
  InitOnce flag;
  int runs = 0;
  flag.Run([&] { ++runs; });
  flag.Run([&] { ++runs; });
  EXPECT_EQ(runs, 1);
}

TEST(LocksConcurrencyTest, WritersExcludeReadersAndEachOther) {
  TReadWriteLock lock;
  long long a = 0, b = 0;  // written together under the write lock
  std::atomic<bool> torn{false};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        AutoWriteLock w(lock);
        ++a;
        ++b;
      }
    });
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        AutoReadLock r(lock);
        if (a != b) torn = true;
      }
    });
  }
  for (auto& t : threads) t.join();
  EXPECT_FALSE(torn.load());
  EXPECT_EQ(a, 4 * 5000);
}

TEST(LocksConcurrencyTest, RecursiveMutexIsReentrantAndExclusive) {
  TRecursiveMutex mutex;
  int counter = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        AutoSynchronize outer(mutex);
        AutoSynchronize inner(mutex);
        ++counter;
      }
    });
  }
  for (auto& t : threads) t.join();
  EXPECT_EQ(counter, 4 * 5000);
}

TEST(ThreadIdConcurrencyTest, EachThreadHasItsOwnStableNeverReusedId) {
  const uint64_t mine = TSystem::ThreadID();
  EXPECT_EQ(TSystem::ThreadID(), mine);
  std::vector<uint64_t> ids(16);
  for (int round = 0; round < 2; ++round) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
      threads.emplace_back([&ids, round, t] {
        const uint64_t id = TSystem::ThreadID();
        EXPECT_EQ(TSystem::ThreadID(), id);
        ids[static_cast<size_t>(round * 8 + t)] = id;
      });
    }
    for (auto& t : threads) t.join();
  }
  std::set<uint64_t> unique(ids.begin(), ids.end());
  unique.insert(mine);
  EXPECT_EQ(unique.size(), ids.size() + 1);  // ended threads' ids are not handed out again
}

TEST(CoreThreadContextTest, StoresTypedObjectsByName) {
  CoreThreadContext& context = CoreThreadContext::Current();
  EXPECT_EQ(&context, &CoreThreadContext::Current());
  EXPECT_FALSE(context.Set("answer", 42).has_value());
  ASSERT_NE(context.Get<int>("answer"), nullptr);
  EXPECT_EQ(*context.Get<int>("answer"), 42);
  EXPECT_EQ(context.Get<std::string>("answer"), nullptr);  // type-checked
  EXPECT_EQ(context.Get<int>("missing"), nullptr);
  std::any previous = context.Set("answer", std::string("x"));
  EXPECT_EQ(std::any_cast<int>(previous), 42);
  EXPECT_EQ(*context.Get<std::string>("answer"), "x");
  EXPECT_TRUE(context.Take("answer").has_value());
  EXPECT_FALSE(context.Has("answer"));
  EXPECT_FALSE(context.Take("answer").has_value());
}

TEST(CoreThreadContextConcurrencyTest, OneThreadsObjectsAreInvisibleToAnother) {
  CoreThreadContext::Current().Set("probe", 1);
  std::vector<std::thread> threads;
  std::atomic<int> sawForeign{0};
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t, &sawForeign] {
      CoreThreadContext& mine = CoreThreadContext::Current();
      if (mine.Has("probe")) ++sawForeign;
      mine.Set("probe", t + 100);
      for (int i = 0; i < 1000; ++i) {
        if (*mine.Get<int>("probe") != t + 100) ++sawForeign;
      }
    });
  }
  for (auto& t : threads) t.join();
  EXPECT_EQ(sawForeign.load(), 0);
  EXPECT_EQ(*CoreThreadContext::Current().Get<int>("probe"), 1);
  CoreThreadContext::Current().Take("probe");
}

std::atomic<int> g_exitRuns{0};
std::atomic<int> g_exitSawContext{0};

void CountThreadExit() {
  ++g_exitRuns;
  // The context is still usable while the hooks run.
  if (int* marker = CoreThreadContext::Current().Get<int>("exit-marker"); marker && *marker == 7) {
    ++g_exitSawContext;
  }
}

TEST(ThreadExitConcurrencyTest, HooksRunOnceOnEveryEndingThreadThatUsedTheLibrary) {
  AddGlobalThreadExitFunc(&CountThreadExit);
  AddGlobalThreadExitFunc(&CountThreadExit);  // a second registration changes nothing
  g_exitRuns = 0;
  g_exitSawContext = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 6; ++t) {
    threads.emplace_back([] {
      (void)TSystem::ThreadID();
      CoreThreadContext::Current().Set("exit-marker", 7);
    });
  }
  for (auto& t : threads) t.join();
  EXPECT_EQ(g_exitRuns.load(), 6);
  EXPECT_EQ(g_exitSawContext.load(), 6);

  // A thread that never touched the library runs no hooks.
  std::thread([] {}).join();
  EXPECT_EQ(g_exitRuns.load(), 6);
}

}  // namespace
