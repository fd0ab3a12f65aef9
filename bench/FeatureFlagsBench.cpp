// Testing a feature flag against a bare hash-set lookup: the difference is
// the cost of finding the object in force (the thread's context, then the
// process-wide fallback), paid on every test.
#include <unordered_set>

#include <benchmark/benchmark.h>

#include "velcoredata/util/FeatureFlags.h"
#include "velcoredata/util/FeatureInfo.h"
#include "velcoredata/util/ScopedFeatureFlags.h"

namespace {

void BM_FeatureFlags_IsOn(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(FeatureFlags::IsOn(FeatureFlagId::MarkFormattedValues));
}
BENCHMARK(BM_FeatureFlags_IsOn);

void BM_FeatureFlags_IsOnWithThreadObject(benchmark::State& state) {
  ScopedFeatureFlags scope;
  for (auto _ : state) benchmark::DoNotOptimize(FeatureFlags::IsOn(FeatureFlagId::MarkFormattedValues));
}
BENCHMARK(BM_FeatureFlags_IsOnWithThreadObject);

void BM_FeatureFlags_IsOn_PeerUnorderedSetFind(benchmark::State& state) {
  const std::unordered_set<FeatureFlagId> enabled(GetDefaultEnabledFeatureIds().begin(),
                                                  GetDefaultEnabledFeatureIds().end());
  for (auto _ : state) benchmark::DoNotOptimize(enabled.count(FeatureFlagId::MarkFormattedValues));
}
BENCHMARK(BM_FeatureFlags_IsOn_PeerUnorderedSetFind);

}  // namespace
