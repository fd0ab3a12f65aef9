// Helpers shared by the date tests: an independent Gregorian calendar to
// check against, and checks for the library's errors.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/VelmoraException.h"

namespace datetest {

inline constexpr unsigned long long kUnitsPerDay = 864000000ULL;

// The proleptic Gregorian calendar, written plainly (no day-number formula).
inline bool IsLeap(long long y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }
inline int DaysInMonth(long long y, int m) {
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && IsLeap(y) ? 29 : kDays[m - 1];
}

// Midnight of a date, built through the field constructor.
inline DateTime D(int y, int m, int d, int hh = 0, int mm = 0, int ss = 0, double f = 0.0) {
  return DateTime(y, m, d, hh, mm, ss, f);
}

// The day number of a DateTime.
inline long long DayOf(const DateTime& dt) { return static_cast<long long>(dt.GetRepresentation() / kUnitsPerDay); }

inline std::string Ymd(const DateTime& dt) {
  const DateTime::YearMonthDay ymd = dt.GetYearMonthDay();
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", ymd.year, ymd.month, ymd.day, dt.GetHour(),
                dt.GetMinute(), dt.GetSecond());
  return buffer;
}

// Runs `f` and expects a VelmoraException with error id `id`; returns its message.
inline std::string ExpectVelmoraError(uint32_t id, const std::function<void()>& f) {
  try {
    f();
  } catch (const VelmoraException& e) {
    EXPECT_EQ(e.GetErrorId(), id) << FormatErrorId(e.GetErrorId());
    EXPECT_EQ(e.GetError().GetName(), "VelmoraException_AutoGen_" + FormatErrorId(id));
    return e.GetMessage().toUtf8();
  }
  ADD_FAILURE() << "expected VelmoraException " << FormatErrorId(id);
  return {};
}

// Runs `f` and expects the logic exception with that source and condition.
inline void ExpectLogicError(const std::string& source, const std::string& condition, const std::function<void()>& f) {
  try {
    f();
  } catch (const VelmoraLogicException& e) {
    EXPECT_EQ(e.GetSourceName(), source);
    EXPECT_EQ(e.GetCondition(), condition);
    EXPECT_GT(e.GetLine(), 0);
    return;
  }
  ADD_FAILURE() << "expected the logic error \"" << condition << "\"";
}

}  // namespace datetest
