// DateTime: construction, validity, setting with its folding and failures,
// the parts, weeks, fiscal and ISO-8601 periods, and the conversions.

#include <QDateTime>
#include <QLoggingCategory>
#include <QTimeZone>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DateTestSupport.h"
#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/datetime/DayNumber.h"
#include "velcoredata/datetime/GregorianDateOptions.h"
#include "velcoredata/platform/Messages.h"

namespace {

using datetest::D;
using datetest::DayOf;
using datetest::ExpectLogicError;
using datetest::ExpectVelmoraError;
using datetest::kUnitsPerDay;
using datetest::Ymd;

constexpr unsigned long long kMinValid = 1518552576000000ULL;
constexpr unsigned long long kMaxValid = 4642690175990000ULL;

FYSValues Fys(int month) { return static_cast<FYSValues>(month); }
SOWValue Sow(int day) { return static_cast<SOWValue>(day); }

std::string InvalidTimeText() { return CoreData::GetString(CoreData::StringId::IDS_ERR_INVALID_TIME).toUtf8(); }

TEST(DateTimeTest, DefaultValueAndEpochsAreTheOleEpochFamily) {
  const DateTime dt;
  EXPECT_EQ(dt.GetRepresentation(), 2086575552000000ULL);
  EXPECT_EQ(Ymd(dt), "1899-12-30 00:00:00");
  EXPECT_FALSE(dt.HasDate());
  EXPECT_FALSE(dt.HasTime());
  EXPECT_EQ(dt.GetDaysSinceOLEEpoch(), 0);
  EXPECT_EQ(dt.GetDaysSinceBaseDateEpoch(), -2);
  EXPECT_TRUE(dt.IsValid());
  // The constant epochs are what SetDateTime makes of their dates.
  EXPECT_EQ(DateTime::OLEEpoch, D(1899, 12, 30));
  EXPECT_EQ(DateTime::BaseDateEpoch, D(1900, 1, 1));
  EXPECT_EQ(DateTime::UnixEpoch, D(1970, 1, 1));
  EXPECT_EQ(DateTime::BaseDateEpoch.GetRepresentation(), DateTime::s_baseDateEpoch);
  EXPECT_EQ(DayOf(DateTime::UnixEpoch), 2440587);
  EXPECT_EQ(DayOf(D(2000, 1, 1)), 2451544);
  EXPECT_EQ(DateTime::FromValue(12345).GetRepresentation(), 12345u);
  DateTime a = D(2001, 2, 3);
  DateTime b = D(2004, 5, 6);
  swap(a, b);
  EXPECT_EQ(a, D(2004, 5, 6));
  EXPECT_EQ(b, D(2001, 2, 3));
}

TEST(DateTimeTest, ValidRangeRunsFromYear100ToTheLastWholeSecondOf9999) {
  EXPECT_EQ(D(9999, 12, 31, 23, 59, 59).GetRepresentation(), kMaxValid);
  EXPECT_EQ(DateTime::FromValue(kMinValid).GetYearMonthDay(), (DateTime::YearMonthDay(100, 1, 1)));
  EXPECT_TRUE(DateTime::FromValue(kMinValid).IsValid());
  EXPECT_TRUE(DateTime::FromValue(kMaxValid).IsValid());
  EXPECT_FALSE(DateTime::FromValue(kMinValid - 1).IsValid());
  // 23:59:59.0001 on the last day is outside: the bound is the whole second.
  EXPECT_FALSE(DateTime::FromValue(kMaxValid + 1).IsValid());
  EXPECT_FALSE(DateTime::FromValue(0).IsValid());
  EXPECT_FALSE(DateTime::FromValue(~0ULL).IsValid());
  EXPECT_NO_THROW(DateTime::FromValue(kMaxValid).Validate());
  EXPECT_EQ(ExpectVelmoraError(0xE154043D, [] { DateTime::FromValue(kMaxValid + 1).Validate(); }), InvalidTimeText());
  ExpectVelmoraError(0xE154043D, [] { DateTime::FromValue(0).Validate(); });
}

TEST(DateTimeTest, SetDateTimeRejectsFieldsThatNameNoDateAndKeepsTheValue) {
  struct Case {
    int y, m, d, hh, mm, ss;
  };
  const Case cases[] = {
      {2019, 2, 29, 0, 0, 0},  {2100, 2, 29, 0, 0, 0},   {2021, 4, 31, 0, 0, 0},  {2021, 0, 10, 0, 0, 0},
      {2021, 13, 1, 0, 0, 0},  {2021, 1, 0, 0, 0, 0},    {2021, 1, 32, 0, 0, 0},  {2021, 1, 1, -1, 0, 0},
      {2021, 1, 1, 0, -1, 0},  {2021, 1, 1, 0, 0, -1},   {399, 12, 31, 0, 0, 0},  {300, 2, 29, 0, 0, 0},
      {100, 1, 1, 0, 0, 0},    {-5, 1, 1, 0, 0, 0},      {2021, 257, 1, 0, 0, 0}, {2021, 1, 257, 0, 0, 0},
      {2021, -11, 1, 0, 0, 0}, {12000, 2, 30, 0, 0, 0},
  };
  for (const Case& c : cases) {
    DateTime dt = D(2000, 6, 15, 12, 0, 0);
    const std::string message =
        ExpectVelmoraError(0xDD90F63D, [&] { dt.SetDateTime(c.y, c.m, c.d, c.hh, c.mm, c.ss, 0.0); });
    EXPECT_EQ(message, InvalidTimeText());
    EXPECT_EQ(dt, D(2000, 6, 15, 12, 0, 0)) << c.y << "-" << c.m << "-" << c.d;
    ExpectVelmoraError(0xDD90F63D, [&] { DateTime(c.y, c.m, c.d, c.hh, c.mm, c.ss, 0.0); });
  }
  DateTime leap;
  EXPECT_TRUE(leap.SetDateTime(2020, 2, 29, 0, 0, 0, 0.0));
  EXPECT_EQ(Ymd(leap), "2020-02-29 00:00:00");
  EXPECT_EQ(Ymd(D(2000, 2, 29)), "2000-02-29 00:00:00");
  EXPECT_EQ(Ymd(D(400, 1, 1)), "0400-01-01 00:00:00");
  // Years past 9999 are set although the value is not valid.
  EXPECT_EQ(Ymd(D(12000, 2, 29)), "12000-02-29 00:00:00");
  EXPECT_FALSE(D(12000, 2, 29).IsValid());
}

TEST(DateTimeTest, SetDateTimeFoldsOverflowingTimeFieldsIntoTheNextDays) {
  struct Case {
    int y, m, d, hh, mm, ss;
    const char* expected;
  };
  const Case cases[] = {
      {2020, 1, 1, 24, 0, 0, "2020-01-02 00:00:00"},   {2020, 12, 31, 23, 59, 60, "2021-01-01 00:00:00"},
      {2020, 1, 1, 25, 0, 0, "2020-01-02 01:00:00"},   {2020, 1, 1, 10, 61, 0, "2020-01-01 11:01:00"},
      {2020, 1, 1, 0, 0, 3600, "2020-01-01 01:00:00"}, {2020, 2, 28, 48, 0, 0, "2020-03-01 00:00:00"},
      {2020, 1, 1, 23, 60, 60, "2020-01-02 00:01:00"},
  };
  for (const Case& c : cases) EXPECT_EQ(Ymd(D(c.y, c.m, c.d, c.hh, c.mm, c.ss)), c.expected);
}

TEST(DateTimeTest, FractionIsRoundedHalfUpAndNotRangeChecked) {
  const unsigned long long midnight = D(2020, 5, 5).GetRepresentation();
  struct Case {
    double fraction;
    long long units;
  };
  const Case cases[] = {{0.00005, 1}, {0.00004, 0}, {0.5, 5000}, {0.12345, 1235}, {0.99999, 10000},
                        {1.5, 15000}, {2.0, 20000}};
  for (const Case& c : cases) {
    EXPECT_EQ(static_cast<long long>(D(2020, 5, 5, 0, 0, 0, c.fraction).GetRepresentation() - midnight), c.units)
        << c.fraction;
  }
  // NaN rounds to no units.
  EXPECT_EQ(D(2020, 5, 5, 0, 0, 0, std::nan("")).GetRepresentation(), midnight);
  // A negative fraction makes the whole time of day count back from midnight.
  const DateTime negative = D(2020, 5, 5, 10, 0, 0, -0.5);
  EXPECT_EQ(static_cast<long long>(negative.GetRepresentation() - midnight), -(10LL * 36000000 + 4999));
  EXPECT_EQ(D(2020, 5, 5, 10, 0, 0, 0.25).GetFraction(), 0.25);
  EXPECT_EQ(D(2020, 5, 5, 10, 0, 0, 0.25).GetMilliseconds(), 250);
  EXPECT_EQ(D(2020, 5, 5, 10, 0, 0, 0.0019).GetMilliseconds(), 1);
}

struct CapturedLog {
  std::string category;
  QtMsgType type;
  std::string text;
};
std::vector<CapturedLog>* g_log = nullptr;
void CaptureLog(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (g_log) g_log->push_back({context.category ? context.category : "", type, message.toStdString()});
}

TEST(DateTimeTest, SetDateTimeLogsTheRejectedFieldsBeforeThrowing) {
  std::vector<CapturedLog> log;
  g_log = &log;
  const QtMessageHandler previous = qInstallMessageHandler(&CaptureLog);
  DateTime dt;
  ExpectVelmoraError(0xDD90F63D, [&] { dt.SetDateTime(2019, 2, 29, 7, 5, 3, 0.25); });
  ExpectVelmoraError(0xDD90F63D, [&] { dt.SetDateTime(399, 1, 2, 0, 0, 0, 0.123456); });
  // Folded fields are logged as folded: 25:00 is 23:00 plus 7,200 s.
  ExpectVelmoraError(0xDD90F63D, [&] { dt.SetDateTime(2019, 2, 30, 25, 0, 0, 0.0); });
  qInstallMessageHandler(previous);
  g_log = nullptr;
  ASSERT_EQ(log.size(), 3u);
  EXPECT_EQ(log[0].category, "velcoredata.datetime");
  EXPECT_EQ(log[0].type, QtWarningMsg);
  EXPECT_EQ(log[0].text, "DateTime::SetDateTime: invalid datetime #2019-02-29T07:05:03.025000#");
  EXPECT_EQ(log[1].text, "DateTime::SetDateTime: invalid datetime #0399-01-02T00:00:00.012346#");
  EXPECT_EQ(log[2].text, "DateTime::SetDateTime: invalid datetime #2019-02-30T23:00:00.720000000#");
}

TEST(DateTimeTest, SetTimeReplacesTheTimeOfDayAndKeepsTheDate) {
  DateTime dt = D(2021, 3, 14, 15, 9, 26, 0.5);
  EXPECT_TRUE(dt.SetTime(1, 2, 3, 0.25));
  EXPECT_EQ(Ymd(dt), "2021-03-14 01:02:03");
  EXPECT_EQ(dt.GetFraction(), 0.25);
  EXPECT_TRUE(dt.SetTime(24, 0, 0, 0.0));  // folds into the next day
  EXPECT_EQ(Ymd(dt), "2021-03-15 00:00:00");
  for (const int bad : {-1, -60}) {
    DateTime before = D(2021, 3, 14, 15, 0, 0);
    EXPECT_EQ(ExpectVelmoraError(0x87C06BF7, [&] { before.SetTime(bad, 0, 0, 0.0); }), InvalidTimeText());
    ExpectVelmoraError(0x87C06BF7, [&] { before.SetTime(0, bad, 0, 0.0); });
    ExpectVelmoraError(0x87C06BF7, [&] { before.SetTime(0, 0, bad, 0.0); });
    EXPECT_EQ(before, D(2021, 3, 14, 15, 0, 0));
  }
}

TEST(DateTimeTest, PartsOfKnownDates) {
  struct Case {
    DateTime dt;
    int dayOfWeek, isoDayOfWeek, dayOfYear, week, quarter, isoYear, isoWeek, isoQuarter;
  };
  const Case cases[] = {
      {D(2021, 1, 1), 6, 5, 1, 1, 1, 2020, 53, 4},       {D(2021, 1, 3), 1, 7, 3, 2, 1, 2020, 53, 4},
      {D(2021, 1, 4), 2, 1, 4, 2, 1, 2021, 1, 1},        {D(2019, 12, 30), 2, 1, 364, 53, 4, 2020, 1, 1},
      {D(2020, 12, 31), 5, 4, 366, 53, 4, 2020, 53, 4},  {D(2020, 4, 1), 4, 3, 92, 14, 2, 2020, 14, 2},
      {D(2015, 12, 31), 5, 4, 365, 53, 4, 2015, 53, 4},  {D(2016, 1, 3), 1, 7, 3, 2, 1, 2015, 53, 4},
      {D(2023, 7, 1), 7, 6, 182, 26, 3, 2023, 26, 2},    {D(2023, 9, 30), 7, 6, 273, 39, 3, 2023, 39, 3},
      {D(2026, 12, 28), 2, 1, 362, 53, 4, 2026, 53, 4},  {D(1899, 12, 30), 7, 6, 364, 52, 4, 1899, 52, 4},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Ymd(c.dt));
    EXPECT_EQ(c.dt.GetDayOfWeek(), c.dayOfWeek);
    EXPECT_EQ(c.dt.GetISO8601DayOfWeek(), c.isoDayOfWeek);
    EXPECT_EQ(c.dt.GetDayOfYear(), c.dayOfYear);
    EXPECT_EQ(c.dt.GetWeek(), c.week);
    EXPECT_EQ(c.dt.GetQuarter(), c.quarter);
    EXPECT_EQ(c.dt.GetISO8601Year(), c.isoYear);
    EXPECT_EQ(c.dt.GetISO8601Week(), c.isoWeek);
    EXPECT_EQ(c.dt.GetISO8601Quarter(), c.isoQuarter);
  }
  const DateTime t = D(2024, 2, 29, 13, 45, 30, 0.1234);
  EXPECT_EQ(t.GetYear(), 2024);
  EXPECT_EQ(t.GetMonth(), 2);
  EXPECT_EQ(t.GetDay(), 29);
  EXPECT_EQ(t.GetHour(), 13);
  EXPECT_EQ(t.GetMinute(), 45);
  EXPECT_EQ(t.GetSecond(), 30);
  EXPECT_DOUBLE_EQ(t.GetFraction(), 0.1234);
  EXPECT_EQ(t.GetMilliseconds(), 123);
  EXPECT_TRUE(t.HasDate());
  EXPECT_TRUE(t.HasTime());
  EXPECT_EQ(t.GetDate(), D(2024, 2, 29));
  EXPECT_FALSE(D(2024, 2, 29).HasTime());
  // HasDate looks at the date only.
  EXPECT_FALSE(D(1899, 12, 30, 12, 0, 0).HasDate());
}

// Week numbers with any start of week against a count of week starts: week 1
// holds 1 January, and each start-of-week day after it opens a new week.
TEST(DateTimeTest, WeekNumbersCountWeekStartsSinceJanuary1) {
  for (int year : {2019, 2020, 2021, 2022, 2023, 1900, 2000}) {
    for (int sow = 1; sow <= 7; ++sow) {
      int week = 1;
      for (DateTime dt = D(year, 1, 1); dt.GetYear() == year; dt += DateTimeSpan::Days(1)) {
        if (dt.GetDayOfWeek() == sow && dt.GetDayOfYear() != 1) ++week;
        ASSERT_EQ(dt.GetWeek(sow), week) << Ymd(dt) << " sow " << sow;
        if (sow == 1) {
          ASSERT_EQ(dt.GetWeek(), week);
        }
      }
    }
  }
}

TEST(DateTimeTest, DaysSinceStartOfWeekFollowTheOptions) {
  const DateTime wednesday = D(2021, 6, 16);
  ASSERT_EQ(wednesday.GetDayOfWeek(), 4);
  for (int sow = 1; sow <= 7; ++sow) {
    const GregorianDateOptions options(Sow(sow));
    const int days = wednesday.GetDaysSinceStartOfWeek(options);
    EXPECT_EQ((wednesday - DateTimeSpan::Days(days)).GetDayOfWeek(), sow);
    EXPECT_GE(days, 0);
    EXPECT_LE(days, 6);
    EXPECT_EQ(DateTime::GetDaysSinceStartOfWeek(4, options), days);
  }
}

TEST(DateTimeTest, DaysSinceEpochsCountCalendarDays) {
  EXPECT_EQ(D(1899, 12, 29, 23, 0, 0).GetDaysSinceOLEEpoch(), -1);
  EXPECT_EQ(D(1899, 12, 29).GetDaysSinceOLEEpoch(), -1);
  EXPECT_EQ(D(1899, 12, 28, 0, 0, 1).GetDaysSinceOLEEpoch(), -2);
  EXPECT_EQ(D(1899, 12, 30, 23, 59, 59).GetDaysSinceOLEEpoch(), 0);
  EXPECT_EQ(D(1900, 1, 1, 12, 0, 0).GetDaysSinceOLEEpoch(), 2);
  EXPECT_EQ(D(1900, 1, 1).GetDaysSinceBaseDateEpoch(), 0);
  EXPECT_EQ(D(2000, 1, 1).GetDaysSinceOLEEpoch(), 36526);
  EXPECT_EQ(DateTime::FromValue(kMinValid).GetDaysSinceOLEEpoch(), 1757584 - 2415018);
}

TEST(DateTimeTest, GetDateRebuildsTheDateAndRejectsYearsBefore400) {
  EXPECT_EQ(D(2021, 3, 4, 5, 6, 7, 0.8).GetDate(), D(2021, 3, 4));
  EXPECT_EQ(D(400, 1, 1, 5, 0, 0).GetDate(), D(400, 1, 1));
  const DateTime year300 = DateTime::FromValue(1830691ULL * kUnitsPerDay + 5);
  ExpectVelmoraError(0xDD90F63D, [&] { year300.GetDate(); });
  EXPECT_EQ(D(12000, 1, 1, 5, 0, 0).GetDate(), D(12000, 1, 1));
}

TEST(DateTimeTest, FiscalPartsOfAnAprilFiscalYear) {
  const DateTime dt = D(2020, 5, 10);
  EXPECT_EQ(dt.GetFiscalYear(Fys(4)), 2021);
  EXPECT_EQ(dt.GetFiscalMonth(Fys(4)), 2);
  EXPECT_EQ(dt.GetFiscalQuarter(Fys(4)), 1);
  EXPECT_EQ(dt.GetFiscalYearMonthDay(Fys(4)), (DateTime::YearMonthDay(2021, 2, 10)));
  EXPECT_EQ(DateTime::FiscalYearStart(2021, Fys(4)), D(2020, 4, 1));
  EXPECT_EQ(DateTime::FiscalYearEnd(2021, Fys(4)), D(2021, 3, 31));
  EXPECT_EQ(DateTime::FiscalYearStart(2021, Fys(1)), D(2021, 1, 1));
  EXPECT_EQ(DateTime::FiscalYearEnd(2021, Fys(1)), D(2021, 12, 31));
  EXPECT_EQ(D(2020, 3, 31).GetFiscalYear(Fys(4)), 2020);
  EXPECT_EQ(D(2020, 12, 31).GetFiscalYear(Fys(1)), 2020);
  EXPECT_EQ(DateTime::FromFiscalYear(2021, Fys(4), 5, 10, 1, 2, 3, 0.0), D(2020, 5, 10, 1, 2, 3));
  EXPECT_EQ(DateTime::FromFiscalYear(2021, Fys(4), 2, 28, 0, 0, 0, 0.0), D(2021, 2, 28));
}

// For every fiscal start: the quarters and months of a fiscal year tile it
// without gaps, each period's days report that period, and the bounds agree
// with the year's.
TEST(DateTimeTest, FiscalPeriodsTileTheFiscalYear) {
  for (int fys = 1; fys <= 12; ++fys) {
    for (int fy : {2000, 2021, 2024}) {
      SCOPED_TRACE("fys " + std::to_string(fys) + " fy " + std::to_string(fy));
      const DateTime yearStart = DateTime::FiscalYearStart(fy, Fys(fys));
      const DateTime yearEnd = DateTime::FiscalYearEnd(fy, Fys(fys));
      EXPECT_EQ(yearStart.GetFiscalYear(Fys(fys)), fy);
      EXPECT_EQ(yearEnd.GetFiscalYear(Fys(fys)), fy);
      EXPECT_EQ((yearStart - DateTimeSpan::Days(1)).GetFiscalYear(Fys(fys)), fy - 1);
      EXPECT_EQ((yearEnd + DateTimeSpan::Days(1)), DateTime::FiscalYearStart(fy + 1, Fys(fys)));
      DateTime next = yearStart;
      for (int q = 1; q <= 4; ++q) {
        const DateTime start = DateTime::FiscalQuarterStart(fy, q, Fys(fys));
        const DateTime end = DateTime::FiscalQuarterEnd(fy, q, Fys(fys));
        EXPECT_EQ(start, next) << "quarter " << q;
        EXPECT_EQ(start.GetFiscalQuarter(Fys(fys)), q);
        EXPECT_EQ(end.GetFiscalQuarter(Fys(fys)), q);
        EXPECT_EQ(end.GetFiscalYear(Fys(fys)), fy);
        next = end + DateTimeSpan::Days(1);
      }
      EXPECT_EQ(next, yearEnd + DateTimeSpan::Days(1));
      next = yearStart;
      for (int fm = 1; fm <= 12; ++fm) {
        const DateTime start = DateTime::FiscalMonthStart(fy, fm, Fys(fys));
        const DateTime end = DateTime::FiscalMonthEnd(fy, fm, Fys(fys));
        EXPECT_EQ(start, next) << "month " << fm;
        EXPECT_EQ(start.GetFiscalMonth(Fys(fys)), fm);
        EXPECT_EQ(end.GetFiscalYearMonthDay(Fys(fys)).month, fm);
        EXPECT_EQ(end.GetDay(), datetest::DaysInMonth(end.GetYear(), end.GetMonth()));
        next = end + DateTimeSpan::Days(1);
      }
    }
  }
  EXPECT_EQ(DateTime::LastDay(2024, 2), D(2024, 2, 29));
  EXPECT_EQ(DateTime::LastDay(2023, 2), D(2023, 2, 28));
  EXPECT_EQ(DateTime::LastDay(2023, 12), D(2023, 12, 31));
  ExpectVelmoraError(0xDD90F63D, [] { DateTime::LastDay(2023, 13); });
}

// Fiscal weeks for every fiscal start and start of week, over whole fiscal
// years: each day lies in the week FiscalWeekStart/End give for its number,
// weeks open on the start-of-week day, and week 1 holds the first day of the
// fiscal year.
TEST(DateTimeTest, FiscalWeeksAgreeWithTheirStartsAndEnds) {
  for (int fys = 1; fys <= 12; ++fys) {
    for (int sow = 1; sow <= 7; ++sow) {
      const GregorianDateOptions options(Sow(sow), Fys(fys));
      for (int fy : {2021, 2022}) {
        const DateTime first = DateTime::FiscalYearStart(fy, Fys(fys));
        EXPECT_EQ(first.GetFiscalWeek(options), 1);
        int previousWeek = 1;
        for (DateTime dt = first; dt <= DateTime::FiscalYearEnd(fy, Fys(fys)); dt += DateTimeSpan::Days(1)) {
          const DateTime noon = dt + DateTimeSpan(0LL, 12, 0, 0, 0.0);
          const int week = noon.GetFiscalWeek(options);
          const DateTime start = DateTime::FiscalWeekStart(fy, week, options);
          const DateTime end = DateTime::FiscalWeekEnd(fy, week, options);
          ASSERT_LE(start, dt) << Ymd(dt) << " fys " << fys << " sow " << sow;
          ASSERT_GE(end, dt) << Ymd(dt);
          ASSERT_EQ(start.GetDayOfWeek(), sow);
          ASSERT_EQ(end - start, DateTimeSpan::Days(6));
          ASSERT_TRUE(week == previousWeek || (week == previousWeek + 1 && dt.GetDayOfWeek() == sow)) << Ymd(dt);
          previousWeek = week;
        }
        // The period weeks are those of the period's first and last days.
        EXPECT_EQ(DateTime::FirstWeek(fy, -1, -1, options), 1);
        EXPECT_EQ(DateTime::LastWeek(fy, -1, -1, options), previousWeek);
        for (int q = 1; q <= 4; ++q) {
          const int firstWeek = DateTime::FirstWeek(fy, q, -1, options);
          const int lastWeek = DateTime::LastWeek(fy, q, -1, options);
          EXPECT_LE(DateTime::FiscalWeekStart(fy, firstWeek, options), DateTime::FiscalQuarterStart(fy, q, Fys(fys)));
          EXPECT_GT(DateTime::FiscalWeekEnd(fy, firstWeek, options), DateTime::FiscalQuarterStart(fy, q, Fys(fys)) - DateTimeSpan::Days(1));
          EXPECT_GE(DateTime::FiscalWeekEnd(fy, lastWeek, options), DateTime::FiscalQuarterEnd(fy, q, Fys(fys)));
          EXPECT_LT(DateTime::FiscalWeekStart(fy, lastWeek, options), DateTime::FiscalQuarterEnd(fy, q, Fys(fys)) + DateTimeSpan::Days(1));
        }
        for (int fm = 1; fm <= 12; ++fm) {
          EXPECT_EQ(DateTime::FirstWeek(fy, -1, fm, options), DateTime::FiscalMonthStart(fy, fm, Fys(fys)).GetFiscalWeek(options));
          EXPECT_EQ(DateTime::LastWeek(fy, 4, fm, options), DateTime::FiscalMonthEnd(fy, fm, Fys(fys)).GetFiscalWeek(options));
        }
      }
    }
  }
  const GregorianDateOptions options;
  ExpectLogicError("data/DateTime", "1 <= fiscalMonth && fiscalMonth <= 12", [&] { DateTime::FirstWeek(2021, -1, 13, options); });
  ExpectLogicError("data/DateTime", "1 <= fiscalQuarter && fiscalQuarter <= 4", [&] { DateTime::LastWeek(2021, 0, -1, options); });
}

TEST(DateTimeTest, FiscalDayOfWeekCountsFromSundayWhateverTheOptionsSay) {
  const GregorianDateOptions mondayApril(SOWValue::Monday, FYSValues::April);
  const GregorianDateOptions sundayApril(SOWValue::Sunday, FYSValues::April);
  for (int week = 1; week <= 53; week += 13) {
    for (int day = 1; day <= 7; ++day) {
      const DateTime dt = DateTime::FiscalDayOfWeek(2022, week, day, mondayApril);
      EXPECT_EQ(dt, DateTime::FiscalWeekStart(2022, week, sundayApril) + DateTimeSpan::Days(day - 1));
      EXPECT_EQ(dt.GetDayOfWeek(), day);
    }
  }
  // Fiscal 2022 starts on Thursday 2021-04-01; Sunday-based week 1 opens on 2021-03-28.
  EXPECT_EQ(DateTime::FiscalDayOfWeek(2022, 1, 1, mondayApril), D(2021, 3, 28));
  EXPECT_EQ(DateTime::FiscalWeekStart(2022, 1, mondayApril), D(2021, 3, 29));
}

TEST(DateTimeTest, Iso8601PeriodBounds) {
  for (int y = 1990; y <= 2040; ++y) {
    SCOPED_TRACE(y);
    const DateTime start = DateTime::ISO8601YearStart(y);
    const DateTime end = DateTime::ISO8601YearEnd(y);
    EXPECT_EQ(start.GetISO8601DayOfWeek(), 1);
    EXPECT_EQ(start.GetISO8601Year(), y);
    EXPECT_EQ(start.GetISO8601Week(), 1);
    EXPECT_EQ(end.GetISO8601DayOfWeek(), 7);
    EXPECT_EQ(end.GetISO8601Year(), y);
    EXPECT_EQ(end + DateTimeSpan::Days(1), DateTime::ISO8601YearStart(y + 1));
    // Week 1 holds 4 January.
    EXPECT_LE(start, D(y, 1, 4));
    EXPECT_GT(start + DateTimeSpan::Days(7), D(y, 1, 4));
    const int lastWeek = DateTime::LastISO8601Week(y, 4);
    EXPECT_EQ(end.GetISO8601Week(), lastWeek);
    EXPECT_EQ(DateTime::ISO8601QuarterEnd(y, 4), end);
    EXPECT_EQ(DateTime::ISO8601QuarterStart(y, 1), start);
    for (int q = 1; q <= 4; ++q) {
      const DateTime qs = DateTime::ISO8601QuarterStart(y, q);
      const DateTime qe = DateTime::ISO8601QuarterEnd(y, q);
      EXPECT_EQ(qs.GetISO8601Quarter(), q);
      EXPECT_EQ(qe.GetISO8601Quarter(), q);
      EXPECT_EQ(qs.GetISO8601Week(), DateTime::FirstISO8601Week(y, q));
      EXPECT_EQ(qe.GetISO8601Week(), DateTime::LastISO8601Week(y, q));
      if (q < 4) {
        EXPECT_EQ(qe + DateTimeSpan::Days(1), DateTime::ISO8601QuarterStart(y, q + 1));
      }
    }
    for (int w = 1; w <= lastWeek; ++w) {
      const DateTime ws = DateTime::ISO8601WeekStart(y, w);
      EXPECT_EQ(ws.GetISO8601Week(), w);
      EXPECT_EQ(ws.GetISO8601DayOfWeek(), 1);
      EXPECT_EQ(DateTime::ISO8601WeekEnd(y, w), ws + DateTimeSpan::Days(6));
      EXPECT_EQ(DateTime::FromISO8601Date(y, w, 3), ws + DateTimeSpan::Days(2));
    }
  }
  EXPECT_EQ(DateTime::ISO8601YearStart(2021), D(2021, 1, 4));
  EXPECT_EQ(DateTime::ISO8601YearStart(2020), D(2019, 12, 30));
  EXPECT_EQ(DateTime::ISO8601YearEnd(2020), D(2021, 1, 3));
}

TEST(DateTimeTest, Iso8601WeekRangesOfQuartersWithDefaultsAndChecks) {
  EXPECT_EQ(DateTime::FirstISO8601Week(2021, 1), 1);
  EXPECT_EQ(DateTime::FirstISO8601Week(2021, 4), 40);
  EXPECT_EQ(DateTime::FirstISO8601Week(-1, -1), 1);
  EXPECT_EQ(DateTime::FirstISO8601Week(0, 2), 14);
  EXPECT_EQ(DateTime::LastISO8601Week(2021, 1), 13);
  EXPECT_EQ(DateTime::LastISO8601Week(2021, 3), 39);
  EXPECT_EQ(DateTime::LastISO8601Week(2021, 4), 52);
  EXPECT_EQ(DateTime::LastISO8601Week(2020, 4), 53);
  EXPECT_EQ(DateTime::LastISO8601Week(-1, -1), 53);  // the 2015 default
  EXPECT_EQ(DateTime::LastISO8601Week(2021, -1), 52);
  EXPECT_EQ(DateTime::LastISO8601Week(-1, 2), 26);
  ExpectLogicError("data/DateTime", "isoYear >= 0", [] { DateTime::FirstISO8601Week(-2, 1); });
  ExpectLogicError("data/DateTime", "isoYear >= 0", [] { DateTime::LastISO8601Week(-2, 4); });
  for (int q : {0, 5, -2}) {
    ExpectLogicError("data/DateTime", "1 <= isoQuarter && isoQuarter <= 4", [q] { DateTime::FirstISO8601Week(2021, q); });
    ExpectLogicError("data/DateTime", "1 <= isoQuarter && isoQuarter <= 4", [q] { DateTime::LastISO8601Week(2021, q); });
  }
}

TEST(DateTimeTest, OleDatesAreSymmetricAboutTheEpochAndTruncated) {
  struct Case {
    double ole;
    const char* expected;
  };
  const Case cases[] = {
      {0.0, "1899-12-30 00:00:00"},   {-1.25, "1899-12-28 18:00:00"}, {1.25, "1899-12-31 06:00:00"},
      {-0.5, "1899-12-29 12:00:00"},  {36526.5, "2000-01-01 12:00:00"}, {2958465.0, "9999-12-31 00:00:00"},
      {-657434.0, "0100-01-01 00:00:00"},
  };
  for (const Case& c : cases) {
    const DateTime dt = DateTime::FromOleDate(c.ole);
    EXPECT_EQ(Ymd(dt), c.expected) << c.ole;
    EXPECT_EQ(dt.ToOleDate(), c.ole);
    EXPECT_EQ(DateTime(c.ole), dt);
  }
  // Truncated toward the epoch, not rounded: one unit is 1/864,000,000 day.
  EXPECT_EQ(DateTime::OleDateToFixedPrecision(1.9 / 864000000.0), DateTime::s_OLEEpoch + 1);
  EXPECT_EQ(DateTime::OleDateToFixedPrecision(-1.9 / 864000000.0), DateTime::s_OLEEpoch - 1);
  // Beyond the 64-bit count the value is the invalid one, never a wrapped date.
  const double inf = std::numeric_limits<double>::infinity();
  for (double outside : {1e20, -1e20, 1e300, inf, -inf, std::nan("")}) {
    EXPECT_EQ(DateTime::OleDateToFixedPrecision(outside), 0ULL) << outside;
    EXPECT_FALSE(DateTime::FromOleDate(outside).IsValid()) << outside;
  }
  // The largest distances that still fit are kept, not refused.
  EXPECT_EQ(DateTime::OleDateToFixedPrecision(-static_cast<double>(DateTime::s_OLEEpoch) / 864000000.0), 0ULL);
  EXPECT_NE(DateTime::OleDateToFixedPrecision(1e10), 0ULL);
  EXPECT_GT(DateTime::OleDateToFixedPrecision(1e10), DateTime::s_OLEEpoch);
  const unsigned long long withUnits = D(2000, 1, 1, 0, 0, 1).GetRepresentation() + 9999;
  EXPECT_DOUBLE_EQ(DateTime::OleDateFromFixedPrecision(withUnits, true), 36526.0 + 1.0 / 86400.0);
  EXPECT_DOUBLE_EQ(DateTime::OleDateFromFixedPrecision(withUnits, false), (36526.0 * 864000000.0 + 19999.0) / 864000000.0);
  // The raw count is cut to whole seconds, not the distance from the epoch.
  EXPECT_DOUBLE_EQ(DateTime::OleDateFromFixedPrecision(DateTime::s_OLEEpoch - 10001, true), -2.0 / 86400.0);
  std::ostringstream out;
  out << DateTime::FromOleDate(-1.25);
  EXPECT_EQ(out.str(), "-1.25");
}

TEST(DateTimeTest, IsFractionTruncatedSpotsDigitsBelowTheUnit) {
  EXPECT_TRUE(DateTime::IsFractionTruncated(0.00005));
  EXPECT_TRUE(DateTime::IsFractionTruncated(0.12345678));
  EXPECT_FALSE(DateTime::IsFractionTruncated(0.5));
  EXPECT_FALSE(DateTime::IsFractionTruncated(0.0));
  EXPECT_FALSE(DateTime::IsFractionTruncated(0.25));
  for (double bad : {1.0, -0.1, 7.0, std::nan("")}) {
    EXPECT_EQ(ExpectVelmoraError(0x47EE95FC, [bad] { DateTime::IsFractionTruncated(bad); }), InvalidTimeText()) << bad;
  }
}

TEST(DateTimeTest, UnixTimesBreakDownAsUtc) {
  EXPECT_EQ(DateTime::FromUnixTime(0, true), DateTime::UnixEpoch);
  EXPECT_EQ(DateTime::FromUnixTime(951782400L, true), D(2000, 2, 29));
  EXPECT_EQ(DateTime::FromUnixTime(951782400L + 3661, 250000, true), D(2000, 2, 29, 1, 1, 1, 0.25));
  DateTime dt = D(2010, 1, 1);
  EXPECT_TRUE(dt.SetUnixTime(-86400L, true));
  EXPECT_EQ(dt, D(1969, 12, 31));
  // Before the year 400 SetDateTime cannot set the value: false, untouched.
  DateTime untouched = D(2010, 1, 1);
  EXPECT_FALSE(untouched.SetUnixTime(-60000000000L, true));
  EXPECT_EQ(untouched, D(2010, 1, 1));
  EXPECT_EQ(DateTime::FromUnixTime(-60000000000L, true), DateTime());
  EXPECT_EQ(DateTime::FromMillisecondsAfterUnixEpoch(1500), D(1970, 1, 1, 0, 0, 1, 0.5));
  EXPECT_EQ(DateTime::FromMillisecondsAfterUnixEpoch(-1), DateTime::UnixEpoch - DateTimeSpan(10LL));
  long seconds = 0;
  EXPECT_TRUE(D(2000, 2, 29, 0, 0, 7).GetAsUnixTime(seconds, true));
  EXPECT_EQ(seconds, 951782407L);
  // Before 1970 QDateTime's unsigned count is all bits set.
  EXPECT_TRUE(D(1960, 1, 1).GetAsUnixTime(seconds, true));
  EXPECT_EQ(seconds, 4294967295L);
}

TEST(DateTimeTest, QtConversionsKeepTheFieldsToTheMillisecond) {
  const DateTime dt = D(2022, 8, 9, 10, 11, 12, 0.3456);
  const QDateTime utc = dt.ToQDateTime(true);
  EXPECT_EQ(utc.timeSpec(), Qt::UTC);
  EXPECT_EQ(utc.date(), QDate(2022, 8, 9));
  EXPECT_EQ(utc.time(), QTime(10, 11, 12, 345));
  EXPECT_EQ(dt.ToQDateTime(false).timeSpec(), Qt::LocalTime);
  EXPECT_EQ(dt.ToQDate(true), QDate(2022, 8, 9));
  EXPECT_EQ(DateTime::FromQDateTime(utc), D(2022, 8, 9, 10, 11, 12, 0.345));
  ExpectVelmoraError(0xDD90F63D, [] { DateTime::FromQDateTime(QDateTime()); });
  // Local and UTC differ by the zone's offset at that instant, and convert back.
  const DateTime local = DateTime::LocalFromUTC(dt);
  const int offset = utc.toLocalTime().offsetFromUtc();
  EXPECT_EQ(local - D(2022, 8, 9, 10, 11, 12, 0.345), DateTimeSpan(0LL, 0, 0, offset, 0.0));
  EXPECT_EQ(DateTime::UTCFromLocal(local), D(2022, 8, 9, 10, 11, 12, 0.345));
}

TEST(DateTimeTest, CurrentTimeIsNowToTheMillisecond) {
  const qint64 before = QDateTime::currentMSecsSinceEpoch();
  const DateTime utc = DateTime::GetUniversalTime();
  const DateTime local = DateTime::GetLocalTime();
  const long long total = DateTime::TotalMillisecondsFromMinDateTimeUTC();
  const qint64 after = QDateTime::currentMSecsSinceEpoch();
  const long long utcMs = (utc - DateTime::UnixEpoch).GetTotalMilliseconds();
  EXPECT_GE(utcMs, before - 1000);
  EXPECT_LE(utcMs, after + 1000);
  EXPECT_EQ((utc.GetRepresentation() % 10), 0u);  // whole milliseconds
  const long long oleMs = (DateTime::UnixEpoch - DateTime::OLEEpoch).GetTotalMilliseconds();
  EXPECT_GE(total, before + oleMs - 1000);
  EXPECT_LE(total, after + oleMs + 1000);
  // Local time is UTC moved by the zone's offset at that instant.
  const long long offsetMs = static_cast<long long>(QDateTime::currentDateTime().offsetFromUtc()) * 1000;
  EXPECT_NEAR(static_cast<double>((local - utc).GetTotalMilliseconds()), static_cast<double>(offsetMs), 60000.0);
}

TEST(DateTimeTest, ComparisonAndArithmeticUseTheRawCount) {
  const DateTime a = D(2021, 1, 1);
  const DateTime b = D(2021, 1, 2, 6, 0, 0);
  EXPECT_TRUE(a < b && a <= b && b > a && b >= a && a != b && !(a == b));
  EXPECT_EQ(b - a, DateTimeSpan(1LL, 6, 0, 0, 0.0));
  EXPECT_EQ(a - b, -DateTimeSpan(1LL, 6, 0, 0, 0.0));
  EXPECT_EQ(a + DateTimeSpan(1LL, 6, 0, 0, 0.0), b);
  EXPECT_EQ(b - DateTimeSpan(1LL, 6, 0, 0, 0.0), a);
  DateTime c = a;
  c += DateTimeSpan::Days(31);
  EXPECT_EQ(c, D(2021, 2, 1));
  c -= DateTimeSpan::Days(32);
  EXPECT_EQ(c, D(2020, 12, 31));
  // Unsigned: a value read as negative still compares above every valid one.
  EXPECT_LT(D(9999, 12, 31), DateTime::FromValue(~0ULL));
  // No range check: arithmetic may leave the valid range.
  EXPECT_FALSE((D(9999, 12, 31) + DateTimeSpan::Days(1)).IsValid());
}

TEST(DateTimeTest, DateAndDurationFreeFunctions) {
  EXPECT_EQ(date::gregoriandate(2000, 1, 1).dayNumber, 2451544u);
  EXPECT_EQ(date::gregoriandate(2021, 4, 31).dayNumber, date::gregoriandate(2021, 5, 1).dayNumber);
  EXPECT_EQ(date::gregoriandate(2020, 13, 1).dayNumber, date::gregoriandate(2021, 1, 1).dayNumber);
  EXPECT_EQ(date::gregoriandate(2021, 0, 1).dayNumber, date::gregoriandate(2020, 12, 1).dayNumber);
  EXPECT_EQ(date::iso8601date(2021, 1, 1).dayNumber, date::gregoriandate(2021, 1, 4).dayNumber);
  EXPECT_EQ(date::iso8601date(2020, 53, 7).dayNumber, date::gregoriandate(2021, 1, 3).dayNumber);
  EXPECT_EQ(date::iso8601date(2020, 54, 1).dayNumber, date::iso8601date(2021, 1, 1).dayNumber);
  EXPECT_EQ(date::iso8601weekday(date::gregoriandate(2021, 6, 16)), 3);
  long y = 0;
  char w = 0;
  char wd = 0;
  date::iso8601parts(y, w, wd, date::gregoriandate(2008, 12, 29));
  EXPECT_EQ(y, 2009);
  EXPECT_EQ(w, 1);
  EXPECT_EQ(wd, 1);
  struct Case {
    long long d, h, m, s, u;
    long long expected;
  };
  const Case cases[] = {
      {1, 2, 3, 4, 5, ((((24LL + 2) * 60 + 3) * 60 + 4) * 10000 + 5)},
      {-1, 2, 3, 4, 5, -((((24LL + 2) * 60 + 3) * 60 + 4) * 10000 + 5)},
      {1, -2, 3, 4, 5, -((((24LL + 2) * 60 + 3) * 60 + 4) * 10000 + 5)},
      {0, 0, 0, 0, -5, -5},
      {0, 0, 1, -1, 0, -(61LL * 10000)},
      {0, 0, 0, 0, 0, 0},
  };
  for (const Case& c : cases) EXPECT_EQ(duration::hmsduration(c.d, c.h, c.m, c.s, c.u).units, c.expected);
}

}  // namespace
