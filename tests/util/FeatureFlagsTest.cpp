// FeatureFlags: enabled sets, the object in force, tracing, asserts,
// overrides and the scoped helper. Tests that change flags do it inside a
// ScopedFeatureFlags, or put the process-wide object back, so that every
// test starts from the defaults.

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/platform/CoreThreadContext.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/util/FeatureFlags.h"
#include "velcoredata/util/FeatureInfo.h"
#include "velcoredata/util/FeatureOverrides.h"
#include "velcoredata/util/ScopedFeatureFlags.h"

namespace {

constexpr FeatureFlagId kOff = FeatureFlagId::DummyFeature1;  // off by default
constexpr FeatureFlagId kOn = FeatureFlagId::DummyFeature2;   // on by default

FeatureFlagIdSet DefaultSet() {
  return FeatureFlagIdSet(GetDefaultEnabledFeatureIds().begin(), GetDefaultEnabledFeatureIds().end());
}

TEST(FeatureFlagsTest, NewObjectsHoldTheDefaultsAndChangeOnlyTheirOwnSet) {
  FeatureFlags flags;
  for (const FeatureInfo& info : GetFeatureInfos()) EXPECT_EQ(flags.Contains(info.id), info.enabledByDefault);
  EXPECT_EQ(*FeatureFlags::FeatureFlagsFactoryMethod(), flags);

  FeatureFlags copy(flags);
  copy.Enable(kOff);
  copy.Enable(kOff);  // enabling twice is enabling once
  copy.Disable(kOn);
  copy.Disable(kOn);
  EXPECT_TRUE(copy.Contains(kOff));
  EXPECT_FALSE(copy.Contains(kOn));
  EXPECT_FALSE(flags.Contains(kOff));
  EXPECT_NE(copy, flags);
  copy.Disable(kOff);
  copy.Enable(kOn);
  EXPECT_EQ(copy, flags);

  // Same size, different ids: not equal.
  FeatureFlags swapped;
  swapped.Disable(kOn);
  swapped.Enable(kOff);
  EXPECT_NE(swapped, flags);
  EXPECT_NE(flags, swapped);

  copy.Clear();
  for (FeatureFlagId id : GetAllFeatureFlagIds()) EXPECT_FALSE(copy.Contains(id));
  copy = swapped;
  EXPECT_EQ(copy, swapped);
  // The process-wide object was never touched.
  EXPECT_EQ(FeatureFlags::GetEnabled(), DefaultSet());
}

TEST(FeatureFlagsTest, ThreadContextObjectIsInForceByPointerOrByValueAndAnythingElseIsIgnored) {
  CoreThreadContext& context = CoreThreadContext::Current();
  const FeatureFlags* processWide = &FeatureFlags::Get();
  ASSERT_FALSE(context.Has(FeatureFlags::kThreadContextName));

  auto own = std::make_shared<FeatureFlags>();
  own->Enable(kOff);
  context.Set(FeatureFlags::kThreadContextName, own);
  EXPECT_EQ(&FeatureFlags::GetMutable(), own.get());
  EXPECT_TRUE(FeatureFlags::IsOn(kOff));
  EXPECT_FALSE(processWide->Contains(kOff));

  // A FeatureFlags held by value is in force just as well.
  FeatureFlags byValue;
  byValue.Enable(kOff);
  context.Set(FeatureFlags::kThreadContextName, byValue);
  EXPECT_EQ(&FeatureFlags::Get(), context.Get<FeatureFlags>(FeatureFlags::kThreadContextName));
  EXPECT_TRUE(FeatureFlags::IsOn(kOff));
  FeatureFlags::GetMutable().Disable(kOff);
  EXPECT_FALSE(FeatureFlags::IsOn(kOff));
  EXPECT_FALSE(processWide->Contains(kOff));

  // A null pointer or another type are not a flags object: the process-wide
  // object answers.
  context.Set(FeatureFlags::kThreadContextName, std::shared_ptr<FeatureFlags>());
  EXPECT_EQ(&FeatureFlags::Get(), processWide);
  context.Set(FeatureFlags::kThreadContextName, 42);
  EXPECT_EQ(&FeatureFlags::Get(), processWide);
  EXPECT_FALSE(FeatureFlags::IsOn(kOff));
  context.Take(FeatureFlags::kThreadContextName);

  // Changing the process-wide object is seen while no context object is set.
  FeatureFlags& global = FeatureFlags::GetMutable();
  const FeatureFlags saved(global);
  global.Enable(kOff);
  EXPECT_TRUE(FeatureFlags::IsOn(kOff));
  global = saved;
  EXPECT_FALSE(FeatureFlags::IsOn(kOff));
}

TEST(FeatureFlagsTest, ScopesInstallAndRestoreExactlyWhatWasThere) {
  CoreThreadContext& context = CoreThreadContext::Current();
  {
    ScopedFeatureFlags outer;
    EXPECT_EQ(outer.Get(), FeatureFlags::Get());  // a copy of what was in force
    outer->Enable(kOff);
    EXPECT_TRUE(FeatureFlags::IsOn(kOff));
    {
      auto inner = std::make_shared<FeatureFlags>();
      inner->Clear();
      ScopedFeatureFlags scope(inner);
      EXPECT_EQ(&FeatureFlags::Get(), inner.get());
      EXPECT_FALSE(FeatureFlags::IsOn(kOn));
    }
    EXPECT_EQ(&FeatureFlags::Get(), &outer.Get());
    EXPECT_TRUE(FeatureFlags::IsOn(kOff));
  }
  EXPECT_FALSE(context.Has(FeatureFlags::kThreadContextName));
  EXPECT_FALSE(FeatureFlags::IsOn(kOff));

  // Something that was not a FeatureFlags comes back as it was.
  context.Set(FeatureFlags::kThreadContextName, std::string("host data"));
  { ScopedFeatureFlags scope; }
  const std::string* restored = context.Get<std::string>(FeatureFlags::kThreadContextName);
  ASSERT_NE(restored, nullptr);
  EXPECT_EQ(*restored, "host data");
  context.Take(FeatureFlags::kThreadContextName);
}

TEST(FeatureFlagsTest, ClearTurnsEveryFlagOffAndOverridesListTheDefaults) {
  EXPECT_TRUE(GetFeatureFlagOverrides().IsEmpty());
  ScopedFeatureFlags scope;
  scope->Clear();
  for (FeatureFlagId id : GetAllFeatureFlagIds()) EXPECT_FALSE(FeatureFlags::IsOn(id));
  EXPECT_TRUE(FeatureFlags::GetEnabled().empty());

  std::vector<FeatureOverrides::Override> expected;
  for (FeatureFlagId id : GetDefaultEnabledFeatureIds()) expected.push_back({id, false});
  EXPECT_EQ(GetFeatureFlagOverrides().GetOverrides(), expected);

  scope->Enable(kOff);
  expected.insert(expected.begin(), FeatureOverrides::Override{kOff, true});  // DummyFeature1 is the first row
  const FeatureOverrides overrides = GetFeatureFlagOverrides();
  EXPECT_EQ(overrides.GetOverrides(), expected);

  // Applying the overrides to defaults rebuilds the state they came from.
  FeatureFlags rebuilt;
  const FeatureOverrides copy = overrides;
  copy.ApplyTo(rebuilt);
  EXPECT_EQ(rebuilt, scope.Get());
  EXPECT_EQ(FeatureFlags::GetEnabled(), FeatureFlagIdSet{kOff});
}

TEST(FeatureFlagsTest, OverridesRecordOneStatePerId) {
  FeatureOverrides overrides;
  overrides.Add(kOff, true);
  overrides.Add(kOn, false);
  overrides.Add(kOff, false);
  const std::vector<FeatureOverrides::Override> expected = {{kOff, false}, {kOn, false}};
  EXPECT_EQ(overrides.GetOverrides(), expected);
  FeatureFlags flags;
  flags.Enable(kOff);
  overrides.ApplyTo(flags);
  EXPECT_FALSE(flags.Contains(kOff));
  EXPECT_FALSE(flags.Contains(kOn));
}

TEST(FeatureFlagsTest, MemberTestAsksTheObjectInForceAndTracesEveryId) {
  FeatureFlags tracer;
  tracer.Clear();  // its own set does not matter
  EXPECT_TRUE(tracer.IsFeatureFlagOn(kOn));
  EXPECT_TRUE(tracer.GetVisitedFlags().empty());  // not tracing yet

  tracer.EnableFeatureFlagTracing();
  EXPECT_TRUE(tracer.IsFeatureFlagTracingEnabled());
  EXPECT_FALSE(tracer.IsFeatureFlagOn(kOff));
  EXPECT_TRUE(tracer.IsFeatureFlagOn(kOn));
  tracer.AssertFeatureFlagOn(FeatureFlagId::ISO8601DateAggregations);
  EXPECT_EQ(tracer.GetVisitedFlags(), (FeatureFlagIdSet{kOff, kOn, FeatureFlagId::ISO8601DateAggregations}));

  // A copy starts with its own, empty record; assignment keeps the target's.
  FeatureFlags copy(tracer);
  EXPECT_FALSE(copy.IsFeatureFlagTracingEnabled());
  EXPECT_TRUE(copy.GetVisitedFlags().empty());
  FeatureFlags assigned;
  assigned = tracer;
  EXPECT_TRUE(assigned.GetVisitedFlags().empty());

  tracer.DisableFeatureFlagTracing();
  EXPECT_FALSE(tracer.IsFeatureFlagTracingEnabled());
  EXPECT_TRUE(tracer.GetVisitedFlags().empty());
  tracer.IsFeatureFlagOn(kOff);
  EXPECT_TRUE(tracer.GetVisitedFlags().empty());
}

TEST(FeatureFlagsTest, AssertsNameTheFailedCondition) {
  struct Case {
    void (*check)();
    const char* condition;  // empty: must pass
  };
  const Case cases[] = {
      {[] { FeatureFlags::AssertOn(kOn); }, ""},
      {[] { FeatureFlags::AssertOff(kOff); }, ""},
      {[] { FeatureFlags::AssertOn(kOff); }, "FeatureFlags::IsOn(featureFlagId)"},
      {[] { FeatureFlags::AssertOff(kOn); }, "!FeatureFlags::IsOn(featureFlagId)"},
      {[] { FeatureFlags().AssertFeatureFlagOn(kOff); }, "FeatureFlags::IsOn(featureFlagId)"},
      {[] { FeatureFlags().AssertFeatureFlagOff(kOn); }, "!FeatureFlags::IsOn(featureFlagId)"},
  };
  for (const Case& c : cases) {
    if (*c.condition == '\0') {
      EXPECT_NO_THROW(c.check());
      continue;
    }
    try {
      c.check();
      ADD_FAILURE() << "no logic error for " << c.condition;
    } catch (const VelmoraLogicException& e) {
      EXPECT_EQ(e.GetCondition(), c.condition);
    }
  }
  // The asserts follow the object in force, not the defaults.
  ScopedFeatureFlags scope;
  scope->Enable(kOff);
  EXPECT_NO_THROW(FeatureFlags::AssertOn(kOff));
  EXPECT_THROW(FeatureFlags::AssertOff(kOff), VelmoraLogicException);
}

TEST(FeatureFlagsConcurrencyTest, ThreadContextObjectIsInvisibleToOtherThreads) {
  ScopedFeatureFlags scope;
  scope->Enable(kOff);
  scope->Disable(kOn);
  bool otherSawOff = true, otherSawOn = false, otherUsedProcessWide = false;
  std::thread other([&] {
    otherSawOff = FeatureFlags::IsOn(kOff);
    otherSawOn = FeatureFlags::IsOn(kOn);
    otherUsedProcessWide = !CoreThreadContext::Current().Has(FeatureFlags::kThreadContextName);
    // Its own scope does not leak back to the first thread either.
    ScopedFeatureFlags its;
    its->Clear();
  });
  other.join();
  EXPECT_FALSE(otherSawOff);
  EXPECT_TRUE(otherSawOn);
  EXPECT_TRUE(otherUsedProcessWide);
  EXPECT_TRUE(FeatureFlags::IsOn(kOff));
  EXPECT_FALSE(FeatureFlags::IsOn(kOn));
}

TEST(FeatureFlagsConcurrencyTest, TracingWhileOtherThreadsTestFlagsAndOneSwapsTheVisitedSet) {
  FeatureFlags tracer;
  tracer.EnableFeatureFlagTracing();
  const std::vector<FeatureFlagId>& ids = GetAllFeatureFlagIds();
  const FeatureFlagIdSet defaults = DefaultSet();
  std::atomic<bool> stop{false};
  std::atomic<int> wrongAnswers{0}, strangeVisits{0};

  std::vector<std::thread> readers;
  for (int t = 0; t < 3; ++t) {
    readers.emplace_back([&] {
      while (!stop.load()) {
        for (FeatureFlagId id : ids) {
          if (tracer.IsFeatureFlagOn(id) != (defaults.count(id) != 0)) ++wrongAnswers;
        }
      }
    });
  }
  std::thread swapper([&] {
    for (int i = 0; i < 500; ++i) {
      tracer.DisableFeatureFlagTracing();
      tracer.EnableFeatureFlagTracing();
      for (FeatureFlagId id : tracer.GetVisitedFlags()) {
        if (std::find(ids.begin(), ids.end(), id) == ids.end()) ++strangeVisits;
      }
    }
    stop.store(true);
  });
  swapper.join();
  for (std::thread& reader : readers) reader.join();

  EXPECT_EQ(wrongAnswers.load(), 0);
  EXPECT_EQ(strangeVisits.load(), 0);
  tracer.DisableFeatureFlagTracing();
  tracer.EnableFeatureFlagTracing();
  for (FeatureFlagId id : ids) tracer.IsFeatureFlagOn(id);
  EXPECT_EQ(tracer.GetVisitedFlags(), FeatureFlagIdSet(ids.begin(), ids.end()));
}

}  // namespace
