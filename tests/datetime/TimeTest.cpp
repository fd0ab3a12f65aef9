// Time and Interval: the field constructors and their limits, the parts,
// wrap-around arithmetic, and the intervals times make.

#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "DateTestSupport.h"
#include "velcoredata/datetime/Time.h"
#include "velcoredata/platform/Messages.h"

namespace {

using datetest::ExpectVelmoraError;

constexpr unsigned long long kHourUs = 3600000000ULL;
constexpr unsigned long long kDayUs = 86400000000ULL;

std::string InvalidTimeText() { return CoreData::GetString(CoreData::StringId::IDS_ERR_INVALID_TIME).toUtf8(); }

TEST(TimeTest, FieldConstructorsComposeMicrosecondsAndAdmitOneMillion) {
  EXPECT_EQ(Time().GetRepresentation(), 0u);
  EXPECT_EQ(Time(1u, 2u, 3u, 4u).GetRepresentation(), (3600ULL + 120 + 3) * 1000000 + 4);
  EXPECT_EQ(Time(1u, 2u, 3u, 0.25).GetRepresentation(), (3600ULL + 120 + 3) * 1000000 + 250000);
  // One million reaches the next second and, at 23:59:59, one whole day,
  // which is not reduced and reads as midnight.
  const Time endOfDay(23u, 59u, 59u, 1000000u);
  EXPECT_EQ(endOfDay.GetRepresentation(), kDayUs);
  EXPECT_EQ(endOfDay.GetHour(), 0u);
  EXPECT_EQ(endOfDay.GetMinute(), 0u);
  EXPECT_EQ(Time(23u, 59u, 59u, 0.9999996).GetRepresentation(), kDayUs);  // rounds up to one million
  EXPECT_EQ(Time(0u, 0u, 0u, 0.0000004).GetRepresentation(), 0u);         // rounds down
  EXPECT_EQ(Time(0u, 0u, 0u, -0.0000004).GetRepresentation(), 0u);        // still rounds to 0
  // The raw constructor reduces modulo one day.
  EXPECT_EQ(Time(kDayUs + 5).GetRepresentation(), 5u);
  EXPECT_EQ(Time(kDayUs).GetRepresentation(), 0u);
}

TEST(TimeTest, FieldsOutOfRangeThrowTheirOwnErrors) {
  struct Case {
    unsigned h, m, s;
  };
  const Case badFields[] = {{24, 0, 0}, {0, 60, 0}, {0, 0, 60}, {static_cast<unsigned>(-1), 0, 0}};
  for (const Case& c : badFields) {
    EXPECT_EQ(ExpectVelmoraError(0x5A975297, [&] { Time(c.h, c.m, c.s, 0u); }), InvalidTimeText());
    EXPECT_EQ(ExpectVelmoraError(0x22D59FE2, [&] { Time(c.h, c.m, c.s, 0.0); }), InvalidTimeText());
  }
  ExpectVelmoraError(0x5A975297, [] { Time(0u, 0u, 0u, 1000001u); });
  for (double f : {1.0000006, 2.0, -0.0000016, -1.0, std::nan("")}) {
    ExpectVelmoraError(0x22D59FE2, [f] { Time(0u, 0u, 0u, f); });
  }
}

TEST(TimeTest, IsFractionRoundedSpotsDigitsBelowOneMicrosecond) {
  EXPECT_FALSE(Time::IsFractionRounded(0.5));
  EXPECT_FALSE(Time::IsFractionRounded(0.0));
  EXPECT_FALSE(Time::IsFractionRounded(0.25));
  EXPECT_TRUE(Time::IsFractionRounded(0.0000005));
  EXPECT_TRUE(Time::IsFractionRounded(0.1234567));
  for (double bad : {1.0, -0.5, 3.0, std::nan("")}) {
    EXPECT_EQ(ExpectVelmoraError(0xBE17C602, [bad] { Time::IsFractionRounded(bad); }), InvalidTimeText()) << bad;
  }
}

TEST(TimeTest, Parts) {
  const Time t(13u, 45u, 30u, 123456u);
  EXPECT_EQ(t.GetHour(), 13u);
  EXPECT_EQ(t.GetMinute(), 45u);
  EXPECT_EQ(t.GetSecond(), 30u);
  EXPECT_EQ(t.GetMicrosecond(), 123456u);
  EXPECT_EQ(Time(0u, 0u, 59u, 1000000u).GetMinute(), 1u);
  EXPECT_EQ(Time(0u, 0u, 59u, 1000000u).GetSecond(), 0u);
}

TEST(TimeTest, FormatWritesHoursMinutesAndSeconds) {
  EXPECT_EQ(Time(13u, 45u, 30u, 999999u).Format(), TString(u"13:45:30"));
  EXPECT_EQ(Time().Format(), TString(u"00:00:00"));
  EXPECT_EQ(Time(9u, 5u, 7u, 0.5).Format(), TString(u"09:05:07"));
}

TEST(TimeTest, MovingByIntervalsWrapsAroundMidnight) {
  struct Case {
    unsigned startHour;
    long long intervalUs;
    unsigned long long plus;   // start + interval
    unsigned long long minus;  // start - interval
  };
  const long long h = static_cast<long long>(kHourUs);
  const Case cases[] = {
      {23, 2 * h, 1 * kHourUs, 21 * kHourUs},
      {1, 2 * h, 3 * kHourUs, 23 * kHourUs},
      {0, 0, 0, 0},
      // Whole days in the interval do not count.
      {10, 3 * 24 * h + 5 * h, 15 * kHourUs, 5 * kHourUs},
      // A negative interval moves the other way.
      {1, -2 * h, 23 * kHourUs, 3 * kHourUs},
      {12, -24 * h, 12 * kHourUs, 12 * kHourUs},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.startHour) + " and " + std::to_string(c.intervalUs));
    const Time start(c.startHour, 0u, 0u, 0u);
    const Interval interval(c.intervalUs);
    EXPECT_EQ((start + interval).GetRepresentation(), c.plus);
    EXPECT_EQ((start - interval).GetRepresentation(), c.minus);
    Time t = start;
    t += interval;
    t -= interval;
    EXPECT_EQ(t, start);
  }
  // The one-day value moves like midnight of the next day.
  EXPECT_EQ((Time(23u, 59u, 59u, 1000000u) + Interval::FromHours(1)).GetRepresentation(), kHourUs);
  EXPECT_EQ((Time(23u, 59u, 59u, 1000000u) - Interval::FromHours(1)).GetRepresentation(), 23 * kHourUs);
}

TEST(TimeTest, DifferencesAndConversionGiveIntervals) {
  const Time a(10u, 0u, 0u, 0u);
  const Time b(12u, 30u, 0u, 5u);
  EXPECT_EQ(b - a, Interval(static_cast<long long>(2 * kHourUs + 1800000000ULL + 5)));
  EXPECT_EQ(a - b, -(b - a));
  const Interval self = b;
  EXPECT_EQ(self.GetTotalMicroseconds(), static_cast<long long>(b.GetRepresentation()));
  EXPECT_TRUE(a < b);
  EXPECT_TRUE(a == Time(10u, 0u, 0u, 0.0));
}

TEST(IntervalTest, TotalsTruncateAndTheTimePartKeepsTheSign) {
  const Interval i = Interval::FromDays(2) + Interval::FromHours(3) + Interval::FromMinutes(4) +
                     Interval::FromSeconds(5) + Interval(6);
  EXPECT_EQ(i.GetTotalDays(), 2);
  EXPECT_EQ(i.GetTotalHours(), 51);
  EXPECT_EQ(i.GetTotalMinutes(), 51 * 60 + 4);
  EXPECT_EQ(i.GetTotalSeconds(), (51 * 60 + 4) * 60 + 5);
  EXPECT_EQ(i.GetTimePart(), static_cast<long long>(3 * kHourUs + 4 * 60000000ULL + 5000006ULL));
  EXPECT_EQ(i.GetHours(), 3);
  EXPECT_EQ(i.GetMinutes(), 4);
  EXPECT_EQ(i.GetSeconds(), 5);
  EXPECT_EQ(i.GetMicroseconds(), 6);
  const Interval n = -i;
  EXPECT_EQ(n.GetTotalDays(), -2);
  EXPECT_EQ(n.GetTimePart(), -i.GetTimePart());
  EXPECT_EQ(n.GetHours(), -3);
  EXPECT_EQ(n.GetMicroseconds(), -6);
  EXPECT_TRUE(n < i);
  Interval sum = i;
  sum -= i;
  EXPECT_EQ(sum, Interval());
  sum += Interval(7);
  EXPECT_EQ((sum - Interval(2)).GetTotalMicroseconds(), 5);
}

}  // namespace
