// Every day of the valid range, 0100-01-01 to 9999-12-31, in both directions:
// day number -> calendar date (DateTime's getters) and calendar date -> day
// number (date::gregoriandate, SetDateTime). Checked against two oracles:
// a plain Gregorian calendar walked day by day, and the double-precision
// Julian-Day formulas that define the library's calendar, written out here
// straight from their definition. The two oracles differ on exactly one day.

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "DateTestSupport.h"
#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/datetime/DayNumber.h"

namespace {

using datetest::kUnitsPerDay;

constexpr long long kFirstDay = 1757584;  // 0100-01-01
constexpr long long kLastDay = 5373483;   // 9999-12-31
constexpr long long kQuirkDay = 1830691;  // the formula reads 0300-02-29 here
constexpr long long kKnownMonday = 2451546;  // 2000-01-03

struct Ymd {
  long long y;
  int m;
  int d;
  bool operator==(const Ymd& o) const { return y == o.y && m == o.m && d == o.d; }
};

// Calendar date -> day number, the Julian-Day formula literally.
uint32_t FormulaDayNumber(long long year, int month, int day) {
  month = static_cast<int8_t>(month);
  day = static_cast<int8_t>(day);
  if (year < 0) ++year;
  if (month < 3) {
    --year;
    month += 12;
  }
  const long long a = year / 100;
  const long long b = 2 - a + a / 4;
  const double jd = std::trunc(day + b + std::trunc(365.25 * static_cast<double>(year + 4716)) +
                               std::trunc(30.6001 * (month + 1)) - 1524.5);
  return static_cast<uint32_t>(static_cast<long long>(jd));
}

// Day number -> calendar date, the formula literally.
Ymd FormulaCivil(long long dayNumber) {
  const long long z = dayNumber + 1;
  const long long alpha = static_cast<long long>(std::trunc((static_cast<double>(z) - 1867216.25) / 36524.25));
  const long long bq = dayNumber + alpha + 1526 - alpha / 4;
  const long long c = static_cast<long long>(std::trunc((static_cast<double>(bq) - 122.1) / 365.25));
  const long long dd = static_cast<long long>(std::trunc(365.25 * static_cast<double>(c)));
  const long long e = static_cast<long long>(std::trunc(static_cast<double>(bq - dd) / 30.6001));
  const int day = static_cast<int>(bq - dd - static_cast<long long>(std::trunc(30.6001 * static_cast<double>(e))));
  const int month = static_cast<int>(e - 1 > 12 ? e - 13 : e - 1);
  return Ymd{month <= 2 ? c - 4715 : c - 4716, month, day};
}

// The plain calendar, walked once over the whole range (shared by the tests).
struct Walk {
  std::vector<Ymd> dates;  // index: day number - kFirstDay
  std::vector<int> dayOfYear;
};

const Walk& Calendar() {
  static const Walk walk = [] {
    Walk w;
    w.dates.reserve(kLastDay - kFirstDay + 1);
    w.dayOfYear.reserve(kLastDay - kFirstDay + 1);
    Ymd c{100, 1, 1};
    int doy = 1;
    for (long long dn = kFirstDay; dn <= kLastDay; ++dn) {
      w.dates.push_back(c);
      w.dayOfYear.push_back(doy);
      if (++c.d > datetest::DaysInMonth(c.y, c.m)) {
        c.d = 1;
        if (++c.m > 12) {
          c.m = 1;
          ++c.y;
          doy = 0;
        }
      }
      ++doy;
    }
    return w;
  }();
  return walk;
}

TEST(DayNumberExhaustiveTest, TheWalkedCalendarCoversTheValidRangeExactly) {
  const Walk& w = Calendar();
  EXPECT_EQ(w.dates.front(), (Ymd{100, 1, 1}));
  EXPECT_EQ(w.dates.back(), (Ymd{9999, 12, 31}));
  EXPECT_EQ(w.dates.size(), static_cast<size_t>(kLastDay - kFirstDay + 1));
}

TEST(DayNumberExhaustiveTest, EveryDayReadsAsTheFormulaSaysAndAsTheCalendarSaysButOnce) {
  const Walk& w = Calendar();
  long long disagreements = 0;
  for (long long dn = kFirstDay; dn <= kLastDay; ++dn) {
    const Ymd& expected = w.dates[dn - kFirstDay];
    // Any time of day reads the same date; vary it so no single offset is special.
    const unsigned long long timeOfDay = static_cast<unsigned long long>(dn * 7919) % kUnitsPerDay;
    const DateTime dt = DateTime::FromValue(static_cast<unsigned long long>(dn) * kUnitsPerDay + timeOfDay);
    const DateTime::YearMonthDay got = dt.GetYearMonthDay();
    const Ymd actual{got.year, got.month, got.day};
    const Ymd formula = FormulaCivil(dn);
    if (!(actual == formula)) {
      ADD_FAILURE() << "day " << dn << ": got " << actual.y << "-" << actual.m << "-" << actual.d << ", formula "
                    << formula.y << "-" << formula.m << "-" << formula.d;
      if (++disagreements > 10) return;
    }
    if (!(actual == expected)) {
      EXPECT_EQ(dn, kQuirkDay) << actual.y << "-" << actual.m << "-" << actual.d;
    }
    if (dt.GetYear() != got.year || dt.GetMonth() != got.month || dt.GetDay() != got.day) {
      ADD_FAILURE() << "GetYear/GetMonth/GetDay disagree with GetYearMonthDay on day " << dn;
      if (++disagreements > 10) return;
    }
    if (dt.GetDayOfYear() != w.dayOfYear[dn - kFirstDay]) {
      ADD_FAILURE() << "day of year of day " << dn << ": " << dt.GetDayOfYear();
      if (++disagreements > 10) return;
    }
  }
  const DateTime quirk = DateTime::FromValue(kQuirkDay * kUnitsPerDay);
  EXPECT_EQ(quirk.GetYearMonthDay(), (DateTime::YearMonthDay(300, 2, 29)));
  EXPECT_EQ(DateTime::FromValue((kQuirkDay + 1) * kUnitsPerDay).GetYearMonthDay(), (DateTime::YearMonthDay(300, 3, 2)));
}

TEST(DayNumberExhaustiveTest, EveryDateMapsToItsDayNumber) {
  const Walk& w = Calendar();
  long long failures = 0;
  for (long long dn = kFirstDay; dn <= kLastDay; ++dn) {
    const Ymd& c = w.dates[dn - kFirstDay];
    const uint32_t got = date::gregoriandate(static_cast<long>(c.y), static_cast<char>(c.m), static_cast<char>(c.d)).dayNumber;
    if (got != dn || FormulaDayNumber(c.y, c.m, c.d) != dn) {
      ADD_FAILURE() << c.y << "-" << c.m << "-" << c.d << ": got " << got << ", expected " << dn;
      if (++failures > 10) return;
    }
  }
  // Both readings of the one odd day map to it.
  EXPECT_EQ(date::gregoriandate(300, 2, 29).dayNumber, kQuirkDay);
  EXPECT_EQ(date::gregoriandate(300, 3, 1).dayNumber, kQuirkDay);
}

TEST(DayNumberExhaustiveTest, SetDateTimeBuildsEveryDateFrom400On) {
  const Walk& w = Calendar();
  long long failures = 0;
  DateTime dt;
  for (long long dn = 1867216 /* 0400-01-01 */; dn <= kLastDay; ++dn) {
    const Ymd& c = w.dates[dn - kFirstDay];
    const int hour = static_cast<int>(dn % 24);
    const int second = static_cast<int>(dn % 60);
    dt.SetDateTime(static_cast<int>(c.y), c.m, c.d, hour, 0, second, 0.0);
    const unsigned long long expected = static_cast<unsigned long long>(dn) * kUnitsPerDay +
                                        (hour * 3600ULL + second) * 10000ULL;
    if (dt.GetRepresentation() != expected) {
      ADD_FAILURE() << c.y << "-" << c.m << "-" << c.d;
      if (++failures > 10) return;
    }
  }
}

// ISO-8601 weeks computed from the Thursday of each week: the week belongs to
// the year of its Thursday, and its number counts Thursdays of that year.
TEST(DayNumberExhaustiveTest, IsoWeeksOfEveryDayFollowTheirThursday) {
  const Walk& w = Calendar();
  long long failures = 0;
  for (long long dn = kFirstDay + 3; dn <= kLastDay - 3; ++dn) {
    const int weekday = static_cast<int>(((dn - kKnownMonday) % 7 + 7) % 7) + 1;  // 1 = Monday
    const long long thursday = dn - weekday + 4;
    const Ymd& t = w.dates[thursday - kFirstDay];
    const int expectedWeek = (w.dayOfYear[thursday - kFirstDay] - 1) / 7 + 1;
    const DateTime dt = DateTime::FromValue(static_cast<unsigned long long>(dn) * kUnitsPerDay);
    long isoYear = 0;
    char isoWeek = 0;
    char isoWeekday = 0;
    date::iso8601parts(isoYear, isoWeek, isoWeekday, date{static_cast<uint32_t>(dn)});
    const bool ok = dt.GetISO8601Year() == t.y && dt.GetISO8601Week() == expectedWeek &&
                    dt.GetISO8601DayOfWeek() == weekday && isoYear == t.y && isoWeek == expectedWeek &&
                    isoWeekday == weekday && dt.GetDayOfWeek() == weekday % 7 + 1 &&
                    date::iso8601date(isoYear, isoWeek, isoWeekday).dayNumber == dn;
    if (!ok) {
      ADD_FAILURE() << "day " << dn << ": ISO " << dt.GetISO8601Year() << "-W" << dt.GetISO8601Week() << "-"
                    << dt.GetISO8601DayOfWeek() << ", expected " << t.y << "-W" << expectedWeek << "-" << weekday;
      if (++failures > 10) return;
    }
  }
}

// Outside the calendar's usual inputs (days 0, negative or past the month,
// months 0 and 13, years before 1 and far after 9999) date::gregoriandate
// still answers exactly what the formula does.
TEST(DayNumberExhaustiveTest, UnusualFieldsFollowTheFormula) {
  std::mt19937_64 random(20240229);
  std::uniform_int_distribution<int> byte(-128, 127);
  std::uniform_int_distribution<long long> year(-6000, 1200000);
  for (int i = 0; i < 400000; ++i) {
    const long long y = i % 4 == 0 ? year(random) % 12000 : year(random);
    const int m = i % 3 == 0 ? byte(random) : (byte(random) & 15);
    const int d = byte(random);
    ASSERT_EQ(date::gregoriandate(static_cast<long>(y), static_cast<char>(m), static_cast<char>(d)).dayNumber,
              FormulaDayNumber(y, m, d))
        << y << "-" << m << "-" << d;
  }
}

// Days outside the valid range (value 0, the year 0 and before, far future)
// read as the formula says too.
TEST(DayNumberExhaustiveTest, DaysOutsideTheValidRangeFollowTheFormula) {
  std::mt19937_64 random(7);
  std::uniform_int_distribution<long long> before(0, kFirstDay - 1);
  std::uniform_int_distribution<long long> after(kLastDay + 1, 400000000);
  for (int i = 0; i < 200000; ++i) {
    const long long dn = i % 2 ? before(random) : after(random);
    const DateTime::YearMonthDay got = DateTime::FromValue(static_cast<unsigned long long>(dn) * kUnitsPerDay).GetYearMonthDay();
    const Ymd formula = FormulaCivil(dn);
    ASSERT_EQ((Ymd{got.year, got.month, got.day}), formula) << "day " << dn;
  }
}

}  // namespace
