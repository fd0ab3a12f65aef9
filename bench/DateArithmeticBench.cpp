// Date arithmetic over random valid dates. There is no peer with the same
// semantics (month clamping, boundary counting, fiscal shifts), so each case
// reports what the bar is: the heap allocations per call (counted by the
// binary's operator new), which must be zero.

#include <algorithm>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "AllocationCounter.h"
#include "velcoredata/datetime/DateArithmetic.h"
#include "velcoredata/datetime/GregorianDateOptions.h"

namespace {

constexpr size_t kCount = 1 << 14;
constexpr size_t kMask = kCount - 1;

// Random instants from 0400-01-01 to 9998-12-31, so that moving by a few
// years stays in range and every rebuild through SetDateTime succeeds.
const std::vector<DateTime>& Dates() {
  static const std::vector<DateTime> dates = [] {
    std::mt19937_64 random(17);
    std::uniform_int_distribution<unsigned long long> day(1867216, 5373117);
    std::uniform_int_distribution<unsigned long long> time(0, DateTime::s_scaling - 1);
    std::vector<DateTime> v(kCount);
    for (DateTime& dt : v) dt = DateTime::FromValue(day(random) * DateTime::s_scaling + time(random));
    return v;
  }();
  return dates;
}

void ReportAllocations(benchmark::State& state, uint64_t before) {
  state.counters["allocs_per_call"] =
      benchmark::Counter(static_cast<double>(bench::AllocationCount() - before), benchmark::Counter::kAvgIterations);
}

void AdjustBy(benchmark::State& state, DatePeriodType type) {
  const auto& dates = Dates();
  size_t i = 0;
  long long n = -25;
  const uint64_t before = bench::AllocationCount();
  for (auto _ : state) {
    benchmark::DoNotOptimize(AdjustByDatePeriod(dates[i++ & kMask], type, n));
    n = n == 25 ? -25 : n + 1;
  }
  ReportAllocations(state, before);
}

void Difference(benchmark::State& state, DatePeriodType type) {
  const auto& dates = Dates();
  // A fiscal year from April and weeks from Monday, so the fiscal shift and
  // the week starts are exercised.
  const GregorianDateOptions options(SOWValue::Monday, FYSValues::April);
  size_t i = 0;
  const uint64_t before = bench::AllocationCount();
  for (auto _ : state) {
    benchmark::DoNotOptimize(DatePeriodDifference(dates[i & kMask], dates[(i + 1) & kMask], type, options));
    ++i;
  }
  ReportAllocations(state, before);
}

void BM_DateArithmetic_AdjustByDatePeriod_Month(benchmark::State& state) { AdjustBy(state, DatePeriodType::Month); }
BENCHMARK(BM_DateArithmetic_AdjustByDatePeriod_Month);
void BM_DateArithmetic_AdjustByDatePeriod_Quarter(benchmark::State& state) { AdjustBy(state, DatePeriodType::Quarter); }
BENCHMARK(BM_DateArithmetic_AdjustByDatePeriod_Quarter);
void BM_DateArithmetic_AdjustByDatePeriod_Year(benchmark::State& state) { AdjustBy(state, DatePeriodType::Year); }
BENCHMARK(BM_DateArithmetic_AdjustByDatePeriod_Year);

void BM_DateArithmetic_DatePeriodDifference_Day(benchmark::State& state) { Difference(state, DatePeriodType::Day); }
BENCHMARK(BM_DateArithmetic_DatePeriodDifference_Day);
void BM_DateArithmetic_DatePeriodDifference_Week(benchmark::State& state) { Difference(state, DatePeriodType::Week); }
BENCHMARK(BM_DateArithmetic_DatePeriodDifference_Week);
void BM_DateArithmetic_DatePeriodDifference_Month(benchmark::State& state) { Difference(state, DatePeriodType::Month); }
BENCHMARK(BM_DateArithmetic_DatePeriodDifference_Month);
void BM_DateArithmetic_DatePeriodDifference_ISOWeek(benchmark::State& state) {
  Difference(state, DatePeriodType::ISOWeek);
}
BENCHMARK(BM_DateArithmetic_DatePeriodDifference_ISOWeek);

}  // namespace
