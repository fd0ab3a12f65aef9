// Day-number arithmetic behind DateTime, date and the date arithmetic.
//
// A day number N is the day whose chronological Julian Day Number is N + 1
// (2000-01-01 is day 2,451,544). The reference definition of the calendar is
// a pair of double-precision Julian-Day formulas (FormulaDayNumber and
// FormulaCivil below): whatever else computes a date must give their answers
// exactly. They are slow (several dependent divisions in double precision),
// so the hot paths use integer algorithms on the domain where those have been
// proven to agree with the formulas, and fall back to the formulas elsewhere:
//
// - civil -> day: the integer count of days since 0000-03-01 equals the
//   formula for every year >= 1 and month 1-12, whatever the day (both are
//   linear in the day and have the same month offsets).
// - day -> civil: the Euclidean-affine algorithm of Neri and Schneider
//   (2022) equals the formula on every day of the valid DateTime range except
//   day 1,830,691, which the formula reads as 0300-02-29 (its century
//   correction truncates toward zero below 0400-03-01); the fast path, inline
//   in DateTime.h so that callers of the getters avoid a call, returns that
//   reading too.
//
// Both claims are checked over every day of the valid range by the tests.
// Never build this with value-changing floating-point options (-ffast-math):
// they change the formulas' answers.
#pragma once

#include <cmath>
#include <cstdint>

#include "velcoredata/datetime/DateTime.h"

namespace DayNumberMath {

inline constexpr uint64_t kUnitsPerDay = 864000000ULL;       // 86,400 s x 10,000
inline constexpr uint64_t kUnitsPerHour = 36000000ULL;
inline constexpr uint64_t kUnitsPerMinute = 600000ULL;
inline constexpr uint64_t kUnitsPerSecond = 10000ULL;

inline constexpr uint32_t kFirstValidDay = 1757584;          // 0100-01-01
inline constexpr uint32_t kLastValidDay = 5373483;           // 9999-12-31
inline constexpr uint32_t kFirstDayOf400 = 1867216;          // 0400-01-01
inline constexpr uint32_t kOleEpochDay = 2415018;            // 1899-12-30
inline constexpr uint32_t kMarch1Year0 = 1721119;            // 0000-03-01

struct Civil {
  int year;
  int month;  // [1, 12]
  int day;    // [1, 31]
};

// Algorithm 1, literally: the Julian-Day formula applied proleptically.
// Month and day are signed 8-bit values; the result wraps to 32 bits.
inline uint32_t FormulaDayNumber(long long year, int8_t month8, int8_t day8) {
  long long y = year;
  int m = month8;
  if (y < 0) y += 1;  // there is no year 0 before year 1
  if (m < 3) {
    y -= 1;
    m += 12;
  }
  const long long a = y / 100;
  const long long b = 2 - a + a / 4;
  const double x = std::trunc(static_cast<double>(day8 + b) + std::trunc(365.25 * (static_cast<double>(y) + 4716.0)) +
                              std::trunc(30.6001 * (m + 1)) - 1524.5);
  // Wrap to 32 bits as an integer conversion would, without undefined casts.
  double r = std::fmod(x, 4294967296.0);
  if (r < 0) r += 4294967296.0;
  return static_cast<uint32_t>(r);
}

// Algorithm 2, literally, on any day number a 64-bit value can hold.
inline Civil FormulaCivil(uint64_t dayNumber) {
  const double z = static_cast<double>(dayNumber) + 1.0;
  const long long alpha = static_cast<long long>(std::trunc((z - 1867216.25) / 36524.25));
  const long long bq = static_cast<long long>(dayNumber) + alpha + 1526 - alpha / 4;
  const long long c = static_cast<long long>(std::trunc((static_cast<double>(bq) - 122.1) / 365.25));
  const long long dd = static_cast<long long>(std::trunc(365.25 * static_cast<double>(c)));
  const long long e = static_cast<long long>(std::trunc(static_cast<double>(bq - dd) / 30.6001));
  Civil out;
  out.day = static_cast<int>(bq - dd - static_cast<long long>(std::trunc(30.6001 * static_cast<double>(e))));
  out.month = static_cast<int>(e - 1 > 12 ? e - 13 : e - 1);
  out.year = static_cast<int>(out.month <= 2 ? c - 4715 : c - 4716);
  return out;
}

// Civil date -> day number with the formula's answers.
inline uint32_t DayNumberFromCivil(long long year, int8_t month, int8_t day) {
  int m = month;
  long long y = year;
  // Months 13 and 14 are January and February of the next year in the
  // formula (the ISO week code asks for "month 13 of year - 1").
  if (m > 12 && m <= 14 && y >= 0) {
    y += 1;
    m -= 12;
  }
  if (y < 1 || y > 1000000 || m < 1 || m > 12) return FormulaDayNumber(year, month, day);
  // Days since 0000-03-01 in the March-based year (Neri-Schneider's rata die).
  const long long ym = y - (m <= 2);                  // [0, 1000000]
  const long long mm = m <= 2 ? m + 12 : m;           // [3, 14]
  const long long c = ym / 100;
  const long long n = 1461 * ym / 4 - c + c / 4 + (979 * mm - 2919) / 32 + day - 1;
  return static_cast<uint32_t>(n + kMarch1Year0);
}

// Day number -> civil date with the formula's answers (the valid range
// through DateTime's fast path).
inline Civil CivilFromDayNumber(uint64_t dayNumber) {
  if (dayNumber < kFirstValidDay || dayNumber > kLastValidDay) return FormulaCivil(dayNumber);
  const DateTime::YearMonthDay ymd = DateTime::YearMonthDayOfValidDay(static_cast<uint32_t>(dayNumber));
  return Civil{ymd.year, ymd.month, ymd.day};
}

// trunc(x) as a 64-bit integer, saturating beyond the range; NaN gives 0.
// (A plain cast would be undefined there.)
inline long long SaturatingTrunc(double x) {
  if (!(x == x)) return 0;
  if (x >= 9223372036854775807.0) return INT64_MAX;
  if (x <= -9223372036854775808.0) return INT64_MIN;
  return static_cast<long long>(x);
}

// Day number of January 1 of a year (year >= 1 is the fast path).
inline uint32_t January1(long long year) { return DayNumberFromCivil(year, 1, 1); }

// Weekday index 0 = Sunday ... 6 = Saturday.
inline int WeekdayIndex(uint64_t dayNumber) { return static_cast<int>((dayNumber + 2) % 7); }

// ISO weekday 1 = Monday ... 7 = Sunday.
inline int IsoWeekday(uint64_t dayNumber) { return static_cast<int>((dayNumber + 1) % 7) + 1; }

struct IsoParts {
  long long isoYear;
  int isoWeek;     // [1, 53]
  int isoWeekday;  // [1, 7], 1 = Monday
};

// The ISO-8601 year, week and weekday of a day, on the formula's calendar.
inline IsoParts IsoPartsOf(uint64_t dayNumber) {
  const long long d = static_cast<long long>(dayNumber);
  const long long y = CivilFromDayNumber(dayNumber).year;
  const long long o = d - static_cast<long long>(January1(y)) + 1;  // ordinal day
  const int wd = IsoWeekday(dayNumber);
  long long week = (o - wd + 10) / 7;
  long long isoYear = y;
  if (week == 53) {
    // Monday of week 1 of the next year: the Monday on or before its 4 January.
    const long long jan4 = DayNumberFromCivil(y + 1, 1, 4);
    const long long m1 = 7 * ((jan4 + 1) / 7) - 1;
    if (d >= m1) {
      isoYear = y + 1;
      week = 1;
    }
  } else if (week == 0) {
    isoYear = y - 1;
    const long long oPrev = d - static_cast<long long>(January1(y - 1)) + 1;
    week = (oPrev - wd + 10) / 7;
  }
  return IsoParts{isoYear, static_cast<int>(week), wd};
}

// Day number of the Monday of ISO week 1 of an ISO year.
inline long long IsoYearStart(long long isoYear) {
  const long long j4 = DayNumberFromCivil(isoYear - 1, 13, 4);  // 4 January of isoYear
  return j4 - ((j4 + 1) % 7);
}

}  // namespace DayNumberMath
