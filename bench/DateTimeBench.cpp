// DateTime's calendar getters and setters against the fastest public integer
// calendar algorithms, written here as peers: Howard Hinnant's
// civil_from_days / days_from_civil and Neri & Schneider's Euclidean-affine
// algorithms (2022). Every case reads a shuffled array of valid values, so
// neither branch prediction nor caching favours one side.
//
// The SetDateTime peers do the same job as SetDateTime, not less: the same
// fields in, the same value out, with the same validity check of the fields
// (day within its month, time fields in range, year from 400 on) and the same
// rounding of the fraction.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "velcoredata/datetime/DateTime.h"

namespace {

// The peers are inlined into their loops, as a caller of them would have them.
#define VCD_PEER [[gnu::always_inline]] inline

constexpr uint64_t kUnitsPerDay = 864000000ULL;
constexpr uint32_t kFirstDay = 1867216;  // 0400-01-01, so SetDateTime accepts every sample
constexpr uint32_t kLastDay = 5373483;   // 9999-12-31
constexpr size_t kCount = 1 << 16;
constexpr size_t kMask = kCount - 1;

// Day numbers count from the day whose Julian Day Number is 1; the peers
// count from 1970-01-01 (Hinnant) or 0000-03-01 (Neri-Schneider).
constexpr int64_t kUnixEpochDay = 2440587;
constexpr uint32_t kMarch1Year0Day = 1721119;

struct Civil {
  int32_t y;
  uint32_t m;
  uint32_t d;
};

// --- Hinnant, chrono-compatible low-level date algorithms ---------------------

VCD_PEER Civil HinnantCivilFromDays(int64_t z) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const uint32_t doe = static_cast<uint32_t>(z - era * 146097);                // [0, 146096]
  const uint32_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;  // [0, 399]
  const int64_t y = static_cast<int64_t>(yoe) + era * 400;
  const uint32_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);                // [0, 365]
  const uint32_t mp = (5 * doy + 2) / 153;                                     // [0, 11]
  const uint32_t d = doy - (153 * mp + 2) / 5 + 1;                             // [1, 31]
  const uint32_t m = mp < 10 ? mp + 3 : mp - 9;                                // [1, 12]
  return Civil{static_cast<int32_t>(y + (m <= 2)), m, d};
}

VCD_PEER int64_t HinnantDaysFromCivil(int64_t y, uint32_t m, uint32_t d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const uint32_t yoe = static_cast<uint32_t>(y - era * 400);             // [0, 399]
  const uint32_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;  // [0, 365]
  const uint32_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;            // [0, 146096]
  return era * 146097 + static_cast<int64_t>(doe) - 719468;
}

// --- Neri-Schneider, Euclidean affine functions ---------------------------------

VCD_PEER Civil NeriSchneiderToDate(uint32_t n) {  // n: days since 0000-03-01
  const uint32_t n1 = 4 * n + 3;
  const uint32_t c = n1 / 146097;
  const uint32_t nc = n1 % 146097 / 4;
  const uint32_t n2 = 4 * nc + 3;
  const uint64_t p2 = uint64_t{2939745} * n2;
  const uint32_t z = static_cast<uint32_t>(p2 >> 32);
  const uint32_t ny = static_cast<uint32_t>(p2) / 2939745 / 4;
  const uint32_t n3 = 2141 * ny + 197913;
  const uint32_t j = ny >= 306;
  return Civil{static_cast<int32_t>(100 * c + z + j), j ? (n3 >> 16) - 12 : n3 >> 16, (n3 & 0xFFFF) / 2141 + 1};
}

VCD_PEER uint32_t NeriSchneiderToRataDie(uint32_t y, uint32_t m, uint32_t d) {  // days since 0000-03-01
  const uint32_t j = m <= 2;
  const uint32_t yy = y - j;
  const uint32_t mm = j ? m + 12 : m;
  const uint32_t c = yy / 100;
  return 1461 * yy / 4 - c + c / 4 + (979 * mm - 2919) / 32 + d - 1;
}

// --- Shared pieces of the SetDateTime peers --------------------------------------

VCD_PEER bool IsLeap(uint32_t y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

VCD_PEER uint32_t LastDayOfMonth(uint32_t y, uint32_t m) {
  static constexpr uint8_t kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && IsLeap(y) ? 29 : kDays[m - 1];
}

VCD_PEER bool FieldsValid(int y, int m, int d, int hh, int mm, int ss) {
  return y >= 400 && m >= 1 && m <= 12 && d >= 1 &&
         (d <= 28 || static_cast<uint32_t>(d) <= LastDayOfMonth(static_cast<uint32_t>(y), static_cast<uint32_t>(m))) &&
         hh >= 0 &&
         hh < 24 && mm >= 0 && mm < 60 && ss >= 0 && ss < 60;
}

VCD_PEER uint64_t TimeUnits(int hh, int mm, int ss, double fraction) {
  return (static_cast<uint64_t>(hh) * 3600 + static_cast<uint64_t>(mm) * 60 + static_cast<uint64_t>(ss)) * 10000 +
         static_cast<uint64_t>(static_cast<int64_t>(fraction * 10000.0 + 0.5));  // the cast truncates
}

// --- Samples ------------------------------------------------------------------

struct Fields {
  int y, m, d, hh, mm, ss;
  double fraction;
};

const std::vector<DateTime>& Values() {
  static const std::vector<DateTime> values = [] {
    std::mt19937_64 random(20240229);
    std::uniform_int_distribution<uint64_t> day(kFirstDay, kLastDay);
    std::uniform_int_distribution<uint64_t> time(0, kUnitsPerDay / 10000 - 1);
    std::vector<DateTime> v(kCount);
    for (DateTime& dt : v) dt = DateTime::FromValue(day(random) * kUnitsPerDay + time(random) * 10000);
    std::shuffle(v.begin(), v.end(), random);
    return v;
  }();
  return values;
}

const std::vector<Fields>& FieldSamples() {
  static const std::vector<Fields> fields = [] {
    std::vector<Fields> out;
    for (const DateTime& dt : Values()) {
      const DateTime::YearMonthDay ymd = dt.GetYearMonthDay();
      out.push_back(Fields{ymd.year, ymd.month, ymd.day, dt.GetHour(), dt.GetMinute(), dt.GetSecond(), 0.25});
    }
    return out;
  }();
  return fields;
}

const std::vector<double>& OleSamples() {
  static const std::vector<double> ole = [] {
    std::vector<double> out;
    for (const DateTime& dt : Values()) out.push_back(dt.ToOleDate());
    return out;
  }();
  return ole;
}

// Runs `f` on one sample per iteration, cycling through the shuffled array.
template <class Sample, class F>
void Over(benchmark::State& state, const std::vector<Sample>& samples, F f) {
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(f(samples[i++ & kMask]));
}

VCD_PEER uint32_t DayOf(const DateTime& dt) { return static_cast<uint32_t>(dt.GetRepresentation() / kUnitsPerDay); }

// --- GetYearMonthDay -----------------------------------------------------------

void BM_DateTime_GetYearMonthDay(benchmark::State& state) {
  Over(state, Values(), [](const DateTime& dt) { return dt.GetYearMonthDay(); });
}
BENCHMARK(BM_DateTime_GetYearMonthDay);

void BM_DateTime_GetYearMonthDay_PeerNeriSchneider(benchmark::State& state) {
  Over(state, Values(), [](const DateTime& dt) { return NeriSchneiderToDate(DayOf(dt) - kMarch1Year0Day); });
}
BENCHMARK(BM_DateTime_GetYearMonthDay_PeerNeriSchneider);

void BM_DateTime_GetYearMonthDay_PeerHinnant(benchmark::State& state) {
  Over(state, Values(), [](const DateTime& dt) { return HinnantCivilFromDays(DayOf(dt) - kUnixEpochDay); });
}
BENCHMARK(BM_DateTime_GetYearMonthDay_PeerHinnant);

// --- SetDateTime ---------------------------------------------------------------

void BM_DateTime_SetDateTime(benchmark::State& state) {
  DateTime dt;
  Over(state, FieldSamples(), [&dt](const Fields& f) {
    dt.SetDateTime(f.y, f.m, f.d, f.hh, f.mm, f.ss, f.fraction);
    return dt;
  });
}
BENCHMARK(BM_DateTime_SetDateTime);

void BM_DateTime_SetDateTime_PeerNeriSchneider(benchmark::State& state) {
  Over(state, FieldSamples(), [&state](const Fields& f) {
    if (!FieldsValid(f.y, f.m, f.d, f.hh, f.mm, f.ss)) state.SkipWithError("invalid fields");
    const uint64_t day = NeriSchneiderToRataDie(static_cast<uint32_t>(f.y), static_cast<uint32_t>(f.m),
                                                static_cast<uint32_t>(f.d)) + kMarch1Year0Day;
    return day * kUnitsPerDay + TimeUnits(f.hh, f.mm, f.ss, f.fraction);
  });
}
BENCHMARK(BM_DateTime_SetDateTime_PeerNeriSchneider);

void BM_DateTime_SetDateTime_PeerHinnant(benchmark::State& state) {
  Over(state, FieldSamples(), [&state](const Fields& f) {
    if (!FieldsValid(f.y, f.m, f.d, f.hh, f.mm, f.ss)) state.SkipWithError("invalid fields");
    const int64_t day = HinnantDaysFromCivil(f.y, static_cast<uint32_t>(f.m), static_cast<uint32_t>(f.d)) + kUnixEpochDay;
    return static_cast<uint64_t>(day) * kUnitsPerDay + TimeUnits(f.hh, f.mm, f.ss, f.fraction);
  });
}
BENCHMARK(BM_DateTime_SetDateTime_PeerHinnant);

// --- GetISO8601Week --------------------------------------------------------------
// The peers take the ISO week from the Thursday of the day's week: its year
// is the ISO year, and the week counts Thursdays since that year began.

void BM_DateTime_GetISO8601Week(benchmark::State& state) {
  Over(state, Values(), [](const DateTime& dt) { return dt.GetISO8601Week(); });
}
BENCHMARK(BM_DateTime_GetISO8601Week);

void BM_DateTime_GetISO8601Week_PeerNeriSchneider(benchmark::State& state) {
  Over(state, Values(), [](const DateTime& dt) {
    const uint32_t n = DayOf(dt) - kMarch1Year0Day;
    const uint32_t thursday = n - (n + 2) % 7 + 3;  // 0000-03-01 was a Wednesday
    const uint32_t jan1 = NeriSchneiderToRataDie(static_cast<uint32_t>(NeriSchneiderToDate(thursday).y), 1, 1);
    return (thursday - jan1) / 7 + 1;
  });
}
BENCHMARK(BM_DateTime_GetISO8601Week_PeerNeriSchneider);

void BM_DateTime_GetISO8601Week_PeerHinnant(benchmark::State& state) {
  Over(state, Values(), [](const DateTime& dt) {
    const int64_t z = static_cast<int64_t>(DayOf(dt)) - kUnixEpochDay;
    const int64_t weekday = z >= -3 ? (z + 3) % 7 : (z + 4) % 7 + 6;  // 0 = Monday; 1970-01-01 was a Thursday
    const int64_t thursday = z - weekday + 3;
    const int64_t jan1 = HinnantDaysFromCivil(HinnantCivilFromDays(thursday).y, 1, 1);
    return (thursday - jan1) / 7 + 1;
  });
}
BENCHMARK(BM_DateTime_GetISO8601Week_PeerHinnant);

// --- GetDayOfWeek ------------------------------------------------------------------

void BM_DateTime_GetDayOfWeek(benchmark::State& state) {
  Over(state, Values(), [](const DateTime& dt) { return dt.GetDayOfWeek(); });
}
BENCHMARK(BM_DateTime_GetDayOfWeek);

void BM_DateTime_GetDayOfWeek_PeerHinnant(benchmark::State& state) {
  Over(state, Values(), [](const DateTime& dt) {
    const int64_t z = static_cast<int64_t>(DayOf(dt)) - kUnixEpochDay;
    return static_cast<unsigned>(z >= -4 ? (z + 4) % 7 : (z + 5) % 7 + 6) + 1;  // weekday_from_days, 1 = Sunday
  });
}
BENCHMARK(BM_DateTime_GetDayOfWeek_PeerHinnant);

// --- FromOleDate --------------------------------------------------------------------
// No calendar is involved; the peer is the bare conversion of the double.

void BM_DateTime_FromOleDate(benchmark::State& state) {
  Over(state, OleSamples(), [](double ole) { return DateTime::FromOleDate(ole); });
}
BENCHMARK(BM_DateTime_FromOleDate);

void BM_DateTime_FromOleDate_PeerRawConversion(benchmark::State& state) {
  Over(state, OleSamples(), [](double ole) {
    const auto units = static_cast<int64_t>(ole * 864000000.0);  // truncates toward zero
    return DateTime::s_OLEEpoch + static_cast<uint64_t>(units);
  });
}
BENCHMARK(BM_DateTime_FromOleDate_PeerRawConversion);

}  // namespace
