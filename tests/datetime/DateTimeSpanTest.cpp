// DateTimeSpan: construction, totals and components with their signs, OLE
// spans, comparison and arithmetic.

#include <cmath>

#include <gtest/gtest.h>

#include "velcoredata/datetime/DateTimeSpan.h"

namespace {

constexpr long long kDay = 864000000LL;
constexpr long long kHour = 36000000LL;
constexpr long long kMinute = 600000LL;
constexpr long long kSecond = 10000LL;

TEST(DateTimeSpanTest, ComponentsCarryTheSignAndTotalsTruncateTowardZero) {
  struct Case {
    long long units;
    long long days;
    int hours, minutes, seconds;
    double fraction;
    long long totalHours, totalMinutes, totalSeconds, totalMs;
  };
  const long long v = 2 * kDay + 3 * kHour + 4 * kMinute + 5 * kSecond + 6789;
  const Case cases[] = {
      {v, 2, 3, 4, 5, 0.6789, 51, 51 * 60 + 4, (51 * 60 + 4) * 60 + 5, ((51 * 60 + 4) * 60 + 5) * 1000 + 678},
      {-v, -2, -3, -4, -5, -0.6789, -51, -(51 * 60 + 4), -((51 * 60 + 4) * 60 + 5),
       -(((51 * 60 + 4) * 60 + 5) * 1000 + 678)},
      {kDay - 1, 0, 23, 59, 59, 0.9999, 23, 23 * 60 + 59, 86399, 86399999},
      {-1, 0, 0, 0, 0, -0.0001, 0, 0, 0, 0},
      {0, 0, 0, 0, 0, 0.0, 0, 0, 0, 0},
  };
  for (const Case& c : cases) {
    const DateTimeSpan span(c.units);
    SCOPED_TRACE(c.units);
    EXPECT_EQ(span.GetRepresentation(), c.units);
    EXPECT_EQ(span.GetDays(), c.days);
    EXPECT_EQ(span.GetTotalDays(), c.days);
    EXPECT_EQ(span.GetHours(), c.hours);
    EXPECT_EQ(span.GetMinutes(), c.minutes);
    EXPECT_EQ(span.GetSeconds(), c.seconds);
    EXPECT_DOUBLE_EQ(span.GetFraction(), c.fraction);
    EXPECT_EQ(span.GetTotalHours(), c.totalHours);
    EXPECT_EQ(span.GetTotalMinutes(), c.totalMinutes);
    EXPECT_EQ(span.GetTotalSeconds(), c.totalSeconds);
    EXPECT_EQ(span.GetTotalMilliseconds(), c.totalMs);
  }
}

TEST(DateTimeSpanTest, FieldConstructorSumsMagnitudesAndAppliesOneSign) {
  EXPECT_EQ(DateTimeSpan(1LL, 2, 3, 4, 0.5).GetRepresentation(), kDay + 2 * kHour + 3 * kMinute + 4 * kSecond + 5000);
  // Any negative component makes the whole span negative.
  EXPECT_EQ(DateTimeSpan(1LL, -2, 3, 4, 0.0).GetRepresentation(), -(kDay + 2 * kHour + 3 * kMinute + 4 * kSecond));
  EXPECT_EQ(DateTimeSpan(-1LL, 2, 0, 0, 0.0).GetRepresentation(), -(kDay + 2 * kHour));
  EXPECT_EQ(DateTimeSpan(0LL, 0, 0, 0, -0.25).GetRepresentation(), -2499);  // trunc(-2500 + 0.5)
  EXPECT_EQ(DateTimeSpan(0LL, 0, 0, 0, 0.00005).GetRepresentation(), 1);   // rounded half up
  EXPECT_EQ(DateTimeSpan(0LL, 25, 61, 0, 0.0).GetRepresentation(), 25 * kHour + 61 * kMinute);
  DateTimeSpan span;
  span.SetDateTimeSpan(0, 1, 0, 0, 0.0);
  EXPECT_EQ(span.GetRepresentation(), kHour);
  span = 42LL;
  EXPECT_EQ(span.GetRepresentation(), 42);
  EXPECT_EQ(DateTimeSpan::FromMilliseconds(-1500).GetRepresentation(), -15000);
  EXPECT_EQ(DateTimeSpan::Days(-3).GetRepresentation(), -3 * kDay);
}

TEST(DateTimeSpanTest, OleSpansAreDaysTruncatedTowardZero) {
  EXPECT_EQ(DateTimeSpan(1.5).GetRepresentation(), kDay + 12 * kHour);
  EXPECT_EQ(DateTimeSpan(-1.5).GetRepresentation(), -(kDay + 12 * kHour));
  EXPECT_EQ(DateTimeSpan::OleSpanToFixedPrecision(1.9 / 864000000.0), 1);
  EXPECT_EQ(DateTimeSpan::OleSpanToFixedPrecision(-1.9 / 864000000.0), -1);
  EXPECT_EQ(DateTimeSpan::OleSpanToFixedPrecision(std::nan("")), 0);
  EXPECT_EQ(DateTimeSpan::OleSpanToFixedPrecision(-1e300), -INT64_MAX);
  EXPECT_EQ(DateTimeSpan(-kDay - 12 * kHour).ToOleSpan(), -1.5);
  EXPECT_EQ(DateTimeSpan(0LL).ToOleSpan(), 0.0);
  EXPECT_DOUBLE_EQ(DateTimeSpan::OleSpanFromFixedPrecision(-(kSecond + 9999), true), -1.0 / 86400.0);
  EXPECT_DOUBLE_EQ(DateTimeSpan::OleSpanFromFixedPrecision(kSecond + 9999, false), 19999.0 / 864000000.0);
}

TEST(DateTimeSpanTest, ComparisonAndArithmetic) {
  const DateTimeSpan a(10LL);
  const DateTimeSpan b(-3LL);
  EXPECT_EQ(a.Compare(b), 1);
  EXPECT_EQ(b.Compare(a), -1);
  EXPECT_EQ(a.Compare(DateTimeSpan(10LL)), 0);
  EXPECT_TRUE(b < a && b <= a && a > b && a >= b && a != b && !(a == b));
  EXPECT_EQ((a + b).GetRepresentation(), 7);
  EXPECT_EQ((a - b).GetRepresentation(), 13);
  EXPECT_EQ((-a).GetRepresentation(), -10);
  DateTimeSpan c = a;
  c += b;
  EXPECT_EQ(c.GetRepresentation(), 7);
  c -= a;
  EXPECT_EQ(c.GetRepresentation(), -3);
  EXPECT_EQ(a / b, -3);  // truncating
  EXPECT_EQ(DateTimeSpan(-7LL) / 2, DateTimeSpan(-3LL));
  EXPECT_EQ(a * -4, DateTimeSpan(-40LL));
  EXPECT_EQ(DateTimeSpan::Days(7) / DateTimeSpan::Days(2), 3);
}

}  // namespace
