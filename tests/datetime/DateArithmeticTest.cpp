// Date arithmetic: moving by periods with month clamping, counting period
// boundaries, starts of periods, ISO-8601 moves, unknown types; then
// properties over many random dates that tie the three operations together.

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DateTestSupport.h"
#include "velcoredata/datetime/DateArithmetic.h"
#include "velcoredata/datetime/GregorianDateOptions.h"

namespace {

using datetest::D;
using datetest::ExpectLogicError;
using datetest::ExpectVelmoraError;
using datetest::Ymd;
using P = DatePeriodType;

const P kAllTypes[] = {P::Year, P::Quarter, P::Month, P::Week, P::Day, P::Hour,
                       P::Minute, P::Second, P::ISOYear, P::ISOQuarter, P::ISOWeek};

std::string Name(P type) { return "type " + std::to_string(static_cast<int>(type)); }

TEST(DateArithmeticTest, MonthsClampTheDayAndKeepTheTime) {
  struct Case {
    DateTime from;
    P type;
    long long n;
    DateTime expected;
  };
  const Case cases[] = {
      {D(2020, 1, 31, 10, 20, 30, 0.5), P::Month, 1, D(2020, 2, 29, 10, 20, 30, 0.5)},
      {D(2020, 1, 31, 10, 20, 30, 0.5), P::Month, 13, D(2021, 2, 28, 10, 20, 30, 0.5)},
      {D(2020, 3, 31), P::Month, -1, D(2020, 2, 29)},
      {D(2021, 3, 31), P::Month, -1, D(2021, 2, 28)},
      {D(2021, 5, 31), P::Month, -1, D(2021, 4, 30)},
      {D(2021, 12, 31), P::Month, 1, D(2022, 1, 31)},
      {D(2021, 1, 15), P::Month, -1, D(2020, 12, 15)},
      {D(2021, 1, 15), P::Month, -13, D(2019, 12, 15)},
      {D(2021, 1, 15), P::Month, -12, D(2020, 1, 15)},
      {D(2021, 1, 15), P::Month, 12, D(2022, 1, 15)},
      {D(2021, 11, 30), P::Month, 25, D(2023, 12, 30)},
      {D(2021, 3, 10), P::Month, -26, D(2019, 1, 10)},
      {D(2020, 2, 29), P::Year, 1, D(2021, 2, 28)},
      {D(2020, 2, 29), P::Year, 4, D(2024, 2, 29)},
      {D(2020, 2, 29), P::Year, -100, D(1920, 2, 29)},
      {D(2021, 8, 31), P::Quarter, 2, D(2022, 2, 28)},
      {D(2021, 11, 30), P::Quarter, -3, D(2021, 2, 28)},
      {D(2021, 1, 1, 23, 0, 0), P::Week, 2, D(2021, 1, 15, 23, 0, 0)},
      {D(2021, 1, 1, 23, 0, 0), P::Day, -1, D(2020, 12, 31, 23, 0, 0)},
      {D(2021, 1, 1, 23, 0, 0), P::Hour, 2, D(2021, 1, 2, 1, 0, 0)},
      {D(2021, 1, 1), P::Minute, -1, D(2020, 12, 31, 23, 59, 0)},
      {D(2021, 1, 1), P::Second, 86400, D(2021, 1, 2)},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(AdjustByDatePeriod(c.from, c.type, c.n), c.expected)
        << Ymd(c.from) << " " << Name(c.type) << " n " << c.n << ": " << Ymd(AdjustByDatePeriod(c.from, c.type, c.n));
  }
}

TEST(DateArithmeticTest, IsoMovesCountFromTheStartOfTheIsoPeriod) {
  // 2020-12-31 is Thursday of 2020-W53; 2021 has 52 weeks.
  const DateTime w53 = D(2020, 12, 31, 8, 0, 0);
  ASSERT_EQ(w53.GetISO8601Week(), 53);
  // Years spill: day 368 of ISO 2020 is beyond ISO 2021's 364 days.
  EXPECT_EQ(AdjustByIsoYears(w53, 1), D(2022, 1, 6, 8, 0, 0));
  EXPECT_EQ(AdjustByDatePeriod(w53, P::ISOYear, 1), AdjustByIsoYears(w53, 1));
  EXPECT_EQ(AdjustByIsoYears(D(2021, 6, 16, 7, 0, 0), 1).GetISO8601Week(), D(2021, 6, 16).GetISO8601Week());
  EXPECT_EQ(AdjustByIsoYears(D(2021, 6, 16, 7, 0, 0), -1), D(2020, 6, 10, 7, 0, 0));  // W24-3 both
  // Quarters clamp week 53 onto the last week of a 13-week quarter ...
  EXPECT_EQ(AdjustByIsoQuarters(w53, 1), D(2021, 4, 1, 8, 0, 0));  // Thursday of 2021-W13
  EXPECT_EQ(AdjustByIsoQuarters(w53, 4), D(2021, 12, 30, 8, 0, 0));  // Thursday of 2021-W52
  EXPECT_EQ(AdjustByIsoQuarters(w53, -1), D(2020, 9, 24, 8, 0, 0));  // Thursday of 2020-W39
  // ... and keep it where the target quarter has 14 weeks (2026 has 53).
  EXPECT_EQ(AdjustByIsoQuarters(w53, 24).GetISO8601Week(), 53);
  EXPECT_EQ(AdjustByIsoQuarters(w53, 24).GetISO8601Year(), 2026);
  EXPECT_EQ(AdjustByIsoQuarters(D(2021, 1, 4), 1), D(2021, 4, 5));
  EXPECT_EQ(AdjustByIsoQuarters(D(2021, 1, 4), -1), D(2020, 9, 28));
  EXPECT_EQ(AdjustByDatePeriod(D(2021, 1, 4), P::ISOQuarter, -5), D(2019, 9, 30));
  // Weeks are seven days, week 53 included.
  EXPECT_EQ(AdjustByIsoWeeks(w53, 1), D(2021, 1, 7, 8, 0, 0));
  EXPECT_EQ(AdjustByDatePeriod(w53, P::ISOWeek, -53), D(2019, 12, 26, 8, 0, 0));
}

TEST(DateArithmeticTest, DifferencesCountBoundariesNotElapsedPeriods) {
  const GregorianDateOptions gregorian;
  const DateTime newYear = D(2021, 1, 1);
  const DateTime justBefore = D(2020, 12, 31, 23, 59, 0);
  struct Case {
    P type;
    long long expected;
  };
  const Case cases[] = {{P::Year, 1}, {P::Quarter, 1}, {P::Month, 1}, {P::Day, 1}, {P::Hour, 1},
                        {P::Minute, 1}, {P::Second, 60}, {P::Week, 0}, {P::ISOYear, 0}, {P::ISOQuarter, 0},
                        {P::ISOWeek, 0}};
  for (const Case& c : cases) {
    EXPECT_EQ(DatePeriodDifference(newYear, justBefore, c.type, gregorian), c.expected) << Name(c.type);
    EXPECT_EQ(DatePeriodDifference(justBefore, newYear, c.type, gregorian), -c.expected) << Name(c.type);
  }
  // 23:59 to 00:01 of the next day is one day; 00:01 to 23:59 is none.
  EXPECT_EQ(DatePeriodDifference(D(2021, 1, 2, 0, 1, 0), D(2021, 1, 1, 23, 59, 0), P::Day, gregorian), 1);
  EXPECT_EQ(DatePeriodDifference(D(2021, 1, 1, 23, 59, 0), D(2021, 1, 1, 0, 1, 0), P::Day, gregorian), 0);
  EXPECT_EQ(DatePeriodDifference(D(2021, 1, 1, 10, 59, 59, 0.9), D(2021, 1, 1, 10, 0, 0), P::Hour, gregorian), 0);
}

TEST(DateArithmeticTest, FiscalYearsAndWeekStartsShiftTheBoundaries) {
  const GregorianDateOptions april(FYSValues::April);
  EXPECT_EQ(DatePeriodDifference(D(2021, 4, 1), D(2021, 3, 31), P::Year, april), 1);
  EXPECT_EQ(DatePeriodDifference(D(2021, 3, 31), D(2020, 4, 1), P::Year, april), 0);
  EXPECT_EQ(DatePeriodDifference(D(2021, 4, 1), D(2021, 3, 31), P::Quarter, april), 1);
  EXPECT_EQ(DatePeriodDifference(D(2021, 6, 30), D(2021, 4, 1), P::Quarter, april), 0);
  EXPECT_EQ(DatePeriodDifference(D(2021, 7, 1), D(2021, 4, 1), P::Quarter, april), 1);
  EXPECT_EQ(DatePeriodDifference(D(2022, 3, 31), D(2021, 4, 1), P::Month, april), 11);
  // 2021-06-13 is a Sunday, 2021-06-14 a Monday.
  const DateTime sunday = D(2021, 6, 13, 12, 0, 0);
  const DateTime monday = D(2021, 6, 14, 1, 0, 0);
  EXPECT_EQ(DatePeriodDifference(monday, sunday, P::Week, GregorianDateOptions(SOWValue::Monday)), 1);
  EXPECT_EQ(DatePeriodDifference(monday, sunday, P::Week, GregorianDateOptions(SOWValue::Sunday)), 0);
  EXPECT_EQ(DatePeriodDifference(monday, sunday, P::ISOWeek, GregorianDateOptions(SOWValue::Sunday)), 1);
  // A start of week of 0 counts whole weeks of days instead.
  const GregorianDateOptions noStart(static_cast<SOWValue>(0));
  EXPECT_EQ(DatePeriodDifference(D(2021, 6, 20), D(2021, 6, 14), P::Week, noStart), 0);
  EXPECT_EQ(DatePeriodDifference(D(2021, 6, 21), D(2021, 6, 14), P::Week, noStart), 1);
  EXPECT_EQ(DatePeriodDifference(D(2021, 1, 4), D(2020, 12, 31), P::ISOYear, april), 1);
  EXPECT_EQ(DatePeriodDifference(D(2021, 4, 5), D(2020, 12, 31), P::ISOQuarter, april), 2);
}

TEST(DateArithmeticTest, StartsOfPeriods) {
  const DateTime dt = D(2021, 5, 17, 13, 45, 30, 0.25);  // a Monday
  struct Case {
    P type;
    int fys;
    int sow;
    DateTime expected;
  };
  const Case cases[] = {
      {P::Year, 1, 1, D(2021, 1, 1)},          {P::Year, 6, 1, D(2020, 6, 1)},
      {P::Year, 5, 1, D(2021, 5, 1)},          {P::Quarter, 1, 1, D(2021, 4, 1)},
      {P::Quarter, 2, 1, D(2021, 5, 1)},       {P::Quarter, 12, 1, D(2021, 3, 1)},
      {P::Quarter, 7, 1, D(2021, 4, 1)},       {P::Month, 4, 1, D(2021, 5, 1)},
      {P::Day, 1, 1, D(2021, 5, 17)},          {P::Week, 1, 1, D(2021, 5, 16)},
      {P::Week, 1, 2, D(2021, 5, 17)},         {P::Week, 1, 4, D(2021, 5, 12)},
      {P::ISOWeek, 1, 1, D(2021, 5, 16)},      {P::Hour, 1, 1, D(2021, 5, 17, 13, 0, 0)},
      {P::Minute, 1, 1, D(2021, 5, 17, 13, 45, 0)}, {P::Second, 1, 1, D(2021, 5, 17, 13, 45, 30)},
      {P::ISOYear, 1, 1, D(2021, 1, 4)},       {P::ISOQuarter, 1, 1, D(2021, 4, 5)},
  };
  for (const Case& c : cases) {
    const GregorianDateOptions options(static_cast<SOWValue>(c.sow), static_cast<FYSValues>(c.fys));
    EXPECT_EQ(FindStartOfPeriod(dt, c.type, options), c.expected)
        << Name(c.type) << " fys " << c.fys << " sow " << c.sow << ": " << Ymd(FindStartOfPeriod(dt, c.type, options));
  }
  EXPECT_EQ(FindStartOfPeriod(D(2021, 1, 2), P::ISOYear, GregorianDateOptions()), D(2019, 12, 30));
  EXPECT_EQ(FindStartOfPeriod(D(2021, 1, 2), P::ISOQuarter, GregorianDateOptions()), D(2020, 9, 28));
}

TEST(DateArithmeticTest, UnknownPeriodTypesAndBrokenOrderingFail) {
  const GregorianDateOptions options;
  for (const int bad : {-1, 11, 99}) {
    const auto type = static_cast<P>(bad);
    EXPECT_EQ(ExpectVelmoraError(0xD0038968, [&] { AdjustByDatePeriod(D(2021, 1, 1), type, 1); }),
              "unexpected DatePeriodType");
    EXPECT_EQ(ExpectVelmoraError(0xADE0C173, [&] { DatePeriodDifference(D(2021, 1, 2), D(2021, 1, 1), type, options); }),
              "unexpected DatePeriodType");
    EXPECT_EQ(ExpectVelmoraError(0x16E59994, [&] { FindStartOfPeriod(D(2021, 1, 1), type, options); }),
              "unexpected DatePeriodType");
  }
  // A raw difference of 2^63 or more reads as a negative span.
  ExpectLogicError("data/DateTimeUtils", "0.0 <= diff.ToOleSpan()", [&] {
    DatePeriodDifference(DateTime::FromValue(~0ULL), DateTime::FromValue(0), P::Day, options);
  });
  // Counting days rebuilds dates through SetDateTime, which refuses years before 400.
  ExpectVelmoraError(0xDD90F63D, [&] {
    DatePeriodDifference(D(2021, 1, 1), DateTime::FromValue(1830000ULL * DateTime::s_scaling), P::Day, options);
  });
  EXPECT_TRUE(IsTimePeriod(P::Hour) && IsTimePeriod(P::Minute) && IsTimePeriod(P::Second));
  EXPECT_FALSE(IsTimePeriod(P::Day) || IsTimePeriod(P::Year) || IsTimePeriod(P::ISOWeek));
}

// --- Properties over random dates ---------------------------------------------

struct Sample {
  DateTime dt;
  GregorianDateOptions options;
};

std::vector<Sample> RandomSamples(int count, unsigned seed) {
  std::mt19937_64 random(seed);
  // From 0500 to 9900, so that moving by a few dozen years stays in range.
  std::uniform_int_distribution<unsigned long long> day(1903741, 5337324);
  std::uniform_int_distribution<unsigned long long> time(0, DateTime::s_scaling - 1);
  std::uniform_int_distribution<int> sow(1, 7);
  std::uniform_int_distribution<int> fys(1, 12);
  std::vector<Sample> samples;
  for (int i = 0; i < count; ++i) {
    samples.push_back(Sample{DateTime::FromValue(day(random) * DateTime::s_scaling + time(random)),
                             GregorianDateOptions(static_cast<SOWValue>(sow(random)), static_cast<FYSValues>(fys(random)))});
  }
  return samples;
}

// Moving by n and back by -n returns to the start whenever nothing was
// clamped (months: the day survived the move; ISO quarters: the date was not
// in week 53; ISO years: the week number survived). Calendar moves keep the
// time of day.
TEST(DateArithmeticPropertyTest, MovingThereAndBackReturnsUnlessClamped) {
  std::mt19937 random(3);
  std::uniform_int_distribution<long long> count(-30, 30);
  for (const Sample& s : RandomSamples(3000, 11)) {
    for (P type : kAllTypes) {
      const long long n = count(random);
      const DateTime moved = AdjustByDatePeriod(s.dt, type, n);
      if (!IsTimePeriod(type)) {
        ASSERT_EQ(moved.GetRepresentation() % DateTime::s_scaling, s.dt.GetRepresentation() % DateTime::s_scaling)
            << Ymd(s.dt) << " " << Name(type);
      }
      const bool monthLike = type == P::Year || type == P::Quarter || type == P::Month;
      const bool clamped = (monthLike && moved.GetDay() != s.dt.GetDay()) ||
                           (type == P::ISOQuarter && s.dt.GetISO8601Week() == 53) ||
                           (type == P::ISOYear && moved.GetISO8601Week() != s.dt.GetISO8601Week());
      if (!clamped) {
        ASSERT_EQ(AdjustByDatePeriod(moved, type, -n), s.dt) << Ymd(s.dt) << " " << Name(type) << " n " << n;
      }
    }
  }
}

// The difference is antisymmetric, and moving by n periods crosses exactly n
// boundaries, in any fiscal year and week (ISO years: unless a day of week
// 53 spilled into the next year).
TEST(DateArithmeticPropertyTest, DifferencesAreAntisymmetricAndCountMoves) {
  std::mt19937 random(5);
  std::uniform_int_distribution<long long> count(-40, 40);
  const std::vector<Sample> samples = RandomSamples(3000, 12);
  for (size_t i = 0; i + 1 < samples.size(); ++i) {
    const Sample& s = samples[i];
    const DateTime other = samples[i + 1].dt;
    for (P type : kAllTypes) {
      ASSERT_EQ(DatePeriodDifference(s.dt, other, type, s.options), -DatePeriodDifference(other, s.dt, type, s.options))
          << Ymd(s.dt) << " " << Ymd(other) << " " << Name(type);
      const long long n = count(random);
      const DateTime moved = AdjustByDatePeriod(s.dt, type, n);
      if (type == P::ISOYear && moved.GetISO8601Week() != s.dt.GetISO8601Week()) continue;
      ASSERT_EQ(DatePeriodDifference(moved, s.dt, type, s.options), n) << Ymd(s.dt) << " " << Name(type) << " n " << n;
    }
  }
}

// For the date periods, the difference equals the number of days after the
// earlier date up to the later one on which a period begins, each such day
// recognised from its own fields.
TEST(DateArithmeticPropertyTest, DifferencesCountTheDaysThatOpenAPeriod) {
  std::mt19937 random(9);
  std::uniform_int_distribution<long long> span(0, 800);
  const P types[] = {P::Year, P::Quarter, P::Month, P::Week, P::Day, P::ISOYear, P::ISOQuarter, P::ISOWeek};
  for (const Sample& s : RandomSamples(400, 14)) {
    const int fys = static_cast<int>(s.options.GetFiscalYearStart());
    const int sow = static_cast<int>(s.options.GetStartOfWeek());
    const DateTime later = s.dt + DateTimeSpan(static_cast<long long>(span(random)) * 864000000LL / 3);
    long long counts[8] = {};
    for (DateTime d = s.dt.GetDate() + DateTimeSpan::Days(1); d <= later; d += DateTimeSpan::Days(1)) {
      const bool first = d.GetDay() == 1;
      const bool isoMonday = d.GetISO8601DayOfWeek() == 1;
      const int isoWeek = d.GetISO8601Week();
      counts[0] += first && d.GetMonth() == fys;
      counts[1] += first && (d.GetMonth() - fys + 12) % 3 == 0;
      counts[2] += first;
      counts[3] += d.GetDayOfWeek() == sow;
      counts[4] += 1;
      counts[5] += isoMonday && isoWeek == 1;
      counts[6] += isoMonday && (isoWeek == 1 || isoWeek == 14 || isoWeek == 27 || isoWeek == 40);
      counts[7] += isoMonday;
    }
    for (int t = 0; t < 8; ++t) {
      ASSERT_EQ(DatePeriodDifference(later, s.dt, types[t], s.options), counts[t])
          << Ymd(s.dt) << " to " << Ymd(later) << " " << Name(types[t]) << " fys " << fys << " sow " << sow;
    }
  }
}

// FindStartOfPeriod is idempotent, never later than the date, lies in the
// same period (no boundary between them) and one period on lies beyond it.
TEST(DateArithmeticPropertyTest, StartsOfPeriodsAreIdempotentAndOpenTheirPeriod) {
  const GregorianDateOptions monday(SOWValue::Monday);
  for (const Sample& s : RandomSamples(3000, 13)) {
    for (P type : kAllTypes) {
      // ISO periods are counted on Monday weeks; use Monday options for them.
      const IDateOptions& options = (type == P::ISOWeek) ? static_cast<const IDateOptions&>(monday) : s.options;
      const DateTime start = FindStartOfPeriod(s.dt, type, options);
      ASSERT_LE(start, s.dt) << Ymd(s.dt) << " " << Name(type);
      ASSERT_EQ(FindStartOfPeriod(start, type, options), start) << Ymd(s.dt) << " " << Name(type);
      ASSERT_EQ(DatePeriodDifference(s.dt, start, type, options), 0) << Ymd(s.dt) << " " << Name(type);
      const DateTime next = AdjustByDatePeriod(start, type, 1);
      ASSERT_GT(next, s.dt) << Ymd(s.dt) << " " << Name(type);
      ASSERT_EQ(DatePeriodDifference(next, start, type, options), 1) << Ymd(s.dt) << " " << Name(type);
    }
  }
}

}  // namespace
