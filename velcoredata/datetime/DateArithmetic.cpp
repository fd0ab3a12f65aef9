#include "velcoredata/datetime/DateArithmetic.h"

#include <climits>

#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/datetime/internal/DayNumberMath.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/VelmoraException.h"

namespace dnm = DayNumberMath;

namespace {

constexpr unsigned long long kDay = dnm::kUnitsPerDay;
constexpr unsigned long long kSignBit = 1ULL << 63;

[[noreturn]] void ThrowUnexpectedPeriod(VelmoraError (*factory)(const TString&)) {
  throw VelmoraException(factory(TString(u"unexpected DatePeriodType")));
}

// n x units with the wrap-around of the raw 64-bit arithmetic (no range
// check anywhere in date arithmetic; this keeps huge counts defined).
long long Times(long long n, long long units) {
  return static_cast<long long>(static_cast<unsigned long long>(n) * static_cast<unsigned long long>(units));
}

DateTime PlusDays(const DateTime& dt, long long days) { return dt + DateTimeSpan(Times(days, kDay)); }

// Whole calendar days from b to a, times of day dropped (through GetDate, so
// dates before the year 400 throw as it does).
long long WholeDaysBetween(const DateTime& a, const DateTime& b) { return (a.GetDate() - b.GetDate()).GetTotalDays(); }

// Moves by calendar months and clamps the day to the end of a shorter month.
DateTime AdjustByMonths(const DateTime& dt, long long n) {
  const DateTime::YearMonthDay ymd = dt.GetYearMonthDay();
  long long year = ymd.year;
  if (n >= 13 || n <= -13) {
    year += n / 12;
    n %= 12;
  }
  long long month = ymd.month + n;  // [-11, 24]
  if (month >= 13) {
    ++year;
    month -= 12;
  } else if (month < 1) {
    --year;
    month += 12;
  }
  // Not validated: 31 April is 1 May here, and the loop below steps back.
  const unsigned long long day = dnm::DayNumberFromCivil(year, static_cast<int8_t>(month), static_cast<int8_t>(ymd.day));
  DateTime result = DateTime::FromValue(day * kDay);
  // The time of day of dt. SetTime of dt's own fields puts back exactly the
  // remainder of a day, unless the value reads as negative, where SetTime
  // refuses it.
  if (dt.GetRepresentation() < kSignBit) {
    result += DateTimeSpan(static_cast<long long>(dt.GetRepresentation() % kDay));
  } else {
    result.SetTime(dt.GetHour(), dt.GetMinute(), dt.GetSecond(), dt.GetFraction());
  }
  while (result.GetMonth() > month) result -= DateTimeSpan::Days(1);
  return result;
}

// dt with the fields finer than `unit` cleared, as rebuilding it with the
// field constructor does. That rebuild is the identity on the truncated
// count from the year 400 to the end of the valid range; elsewhere it is
// done literally (and throws for years before 400).
DateTime Truncate(const DateTime& dt, DatePeriodType unit) {
  const unsigned long long v = dt.GetRepresentation();
  const unsigned long long day = v / kDay;
  const unsigned long long units = unit == DatePeriodType::Hour     ? dnm::kUnitsPerHour
                                   : unit == DatePeriodType::Minute ? dnm::kUnitsPerMinute
                                                                    : dnm::kUnitsPerSecond;
  if (day >= dnm::kFirstDayOf400 && day <= dnm::kLastValidDay) return DateTime::FromValue(v - v % units);
  const DateTime::YearMonthDay ymd = dt.GetYearMonthDay();
  const int minute = unit == DatePeriodType::Hour ? 0 : dt.GetMinute();
  const int second = unit == DatePeriodType::Second ? dt.GetSecond() : 0;
  return DateTime(ymd.year, ymd.month, ymd.day, dt.GetHour(), minute, second, 0.0);
}

// 00:00 of the Monday of dt's ISO week: FindStartOfPeriod by week with
// ISO-8601 options, whose weeks start on Monday.
DateTime IsoWeekStart(const DateTime& dt) { return PlusDays(dt.GetDate(), 1 - dt.GetISO8601DayOfWeek()); }

DateTime WeekStart(const DateTime& dt, const IDateOptions& options) {
  return PlusDays(dt.GetDate(), -dt.GetDaysSinceStartOfWeek(options));
}

// Moves dt to the same day count from `targetStart` as it has from
// `start`, keeping its time of day.
DateTime MoveRelativeTo(const DateTime& dt, const DateTime& start, const DateTime& targetStart, long long maxDays) {
  long long offset = WholeDaysBetween(dt, start);
  while (offset > maxDays) offset -= 7;
  return PlusDays(dt, WholeDaysBetween(PlusDays(targetStart, offset), dt));
}

long long FloorDiv(long long a, long long b) { return a / b - (a % b != 0 && (a < 0) != (b < 0)); }

}  // namespace

DateTime AdjustByIsoYears(const DateTime& dt, int n) {
  const int isoYear = dt.GetISO8601Year();
  // No clamping: days beyond the target year's last week spill into the next.
  const int targetYear = static_cast<int>(static_cast<long long>(isoYear) + n);  // wraps, never overflows
  return MoveRelativeTo(dt, DateTime::ISO8601YearStart(isoYear), DateTime::ISO8601YearStart(targetYear), LLONG_MAX);
}

DateTime AdjustByIsoQuarters(const DateTime& dt, int n) {
  const int isoYear = dt.GetISO8601Year();
  const int quarter = dt.GetISO8601Quarter();
  const long long target = isoYear * 4LL + (quarter - 1) + n;
  const int targetYear = static_cast<int>(FloorDiv(target, 4));
  const int targetQuarter = static_cast<int>(target - targetYear * 4LL) + 1;
  const DateTime targetStart = DateTime::ISO8601QuarterStart(targetYear, targetQuarter);
  // Week 53 onto a 13-week quarter: the same weekday of its last week.
  const long long lastDay = WholeDaysBetween(DateTime::ISO8601QuarterEnd(targetYear, targetQuarter), targetStart);
  return MoveRelativeTo(dt, DateTime::ISO8601QuarterStart(isoYear, quarter), targetStart, lastDay);
}

DateTime AdjustByIsoWeeks(const DateTime& dt, int n) { return PlusDays(dt, 7LL * n); }

DateTime AdjustByDatePeriod(const DateTime& dt, DatePeriodType type, long long n) {
  switch (type) {
    case DatePeriodType::Year:
      return AdjustByMonths(dt, Times(n, 12));
    case DatePeriodType::Quarter:
      return AdjustByMonths(dt, Times(n, 3));
    case DatePeriodType::Month:
      return AdjustByMonths(dt, n);
    case DatePeriodType::Week:
      return PlusDays(dt, Times(n, 7));
    case DatePeriodType::Day:
      return PlusDays(dt, n);
    case DatePeriodType::Hour:
      return dt + DateTimeSpan(Times(n, dnm::kUnitsPerHour));
    case DatePeriodType::Minute:
      return dt + DateTimeSpan(Times(n, dnm::kUnitsPerMinute));
    case DatePeriodType::Second:
      return dt + DateTimeSpan(Times(n, dnm::kUnitsPerSecond));
    case DatePeriodType::ISOYear:
      return AdjustByIsoYears(dt, static_cast<int>(n));
    case DatePeriodType::ISOQuarter:
      return AdjustByIsoQuarters(dt, static_cast<int>(n));
    case DatePeriodType::ISOWeek:
      return AdjustByIsoWeeks(dt, static_cast<int>(n));
  }
  ThrowUnexpectedPeriod(&VelErrorsError::AutoGen_0xD0038968);
}

long long DatePeriodDifference(const DateTime& a, const DateTime& b, DatePeriodType type, const IDateOptions& options) {
  if (a < b) return -DatePeriodDifference(b, a, type, options);
  const DateTimeSpan diff = a - b;
  VEL_ASSERT_IN("data/DateTimeUtils", 0.0 <= diff.ToOleSpan());
  switch (type) {
    case DatePeriodType::Year:
    case DatePeriodType::Quarter:
    case DatePeriodType::Month: {
      // Shifting both dates so that the fiscal year starts in January lines
      // fiscal years up with calendar years.
      const long long shift = 1 - static_cast<int>(options.GetFiscalYearStart());
      const DateTime a2 = AdjustByMonths(a, shift);
      const DateTime b2 = AdjustByMonths(b, shift);
      const long long years = a2.GetYear() - b2.GetYear();
      if (type == DatePeriodType::Year) return years;
      if (type == DatePeriodType::Quarter) return years * 4 + a2.GetQuarter() - b2.GetQuarter();
      return years * 12 + a2.GetMonth() - b2.GetMonth();
    }
    case DatePeriodType::Week:
      if (static_cast<int>(options.GetStartOfWeek()) == 0) return WholeDaysBetween(a, b) / 7;
      return WholeDaysBetween(WeekStart(a, options), WeekStart(b, options)) / 7;
    case DatePeriodType::Day:
      return WholeDaysBetween(a, b);
    case DatePeriodType::Hour:
      return (Truncate(a, type) - Truncate(b, type)).GetTotalHours();
    case DatePeriodType::Minute:
      return (Truncate(a, type) - Truncate(b, type)).GetTotalMinutes();
    case DatePeriodType::Second:
      return (Truncate(a, type) - Truncate(b, type)).GetTotalSeconds();
    case DatePeriodType::ISOYear:
      return a.GetISO8601Year() - b.GetISO8601Year();
    case DatePeriodType::ISOQuarter:
      return (a.GetISO8601Year() - b.GetISO8601Year()) * 4LL + a.GetISO8601Quarter() - b.GetISO8601Quarter();
    case DatePeriodType::ISOWeek:
      return WholeDaysBetween(IsoWeekStart(a), IsoWeekStart(b)) / 7;
  }
  ThrowUnexpectedPeriod(&VelErrorsError::AutoGen_0xADE0C173);
}

DateTime FindStartOfPeriod(const DateTime& dt, DatePeriodType type, const IDateOptions& options) {
  switch (type) {
    case DatePeriodType::Year:
    case DatePeriodType::Quarter: {
      const int fys = static_cast<int>(options.GetFiscalYearStart());
      const DateTime::YearMonthDay ymd = dt.GetYearMonthDay();
      const int y0 = ymd.month < fys ? ymd.year - 1 : ymd.year;  // calendar year the fiscal year starts in
      if (type == DatePeriodType::Year) return DateTime(y0, fys, 1);
      int u = ymd.month + (ymd.year - y0) * 12 - fys;  // months since the fiscal year started, [0, 11]
      u = u - u % 3 - 1 + fys;
      return DateTime(y0 + u / 12, u % 12 + 1, 1);
    }
    case DatePeriodType::Month: {
      const DateTime::YearMonthDay ymd = dt.GetYearMonthDay();
      return DateTime(ymd.year, ymd.month, 1);
    }
    case DatePeriodType::Day:
      return dt.GetDate();
    case DatePeriodType::Week:
    case DatePeriodType::ISOWeek:
      // Both use the options' start of week; ISO8601DateOptions start on Monday.
      return WeekStart(dt, options);
    case DatePeriodType::Hour:
    case DatePeriodType::Minute:
    case DatePeriodType::Second:
      return Truncate(dt, type);
    case DatePeriodType::ISOYear:
      return DateTime::ISO8601YearStart(dt.GetISO8601Year());
    case DatePeriodType::ISOQuarter:
      return DateTime::ISO8601QuarterStart(dt.GetISO8601Year(), dt.GetISO8601Quarter());
  }
  ThrowUnexpectedPeriod(&VelErrorsError::AutoGen_0x16E59994);
}
