// Enumerations shared by the date options, DateTime and the date arithmetic.
//
// Every enumeration here is a 32-bit integer whose numbers are stored and
// compared by hosts: never renumber them.
#pragma once

#include <cstdint>

// The calendar a date is read in.
enum class CalendarType : int32_t {
  Gregorian = 0,
  ISO8601 = 1,
};

// The first day of the week.
enum class SOWValue : int32_t {
  Sunday = 1,
  Monday = 2,
  Tuesday = 3,
  Wednesday = 4,
  Thursday = 5,
  Friday = 6,
  Saturday = 7,
};

// The month in which the fiscal year starts. The fiscal year is named after
// the calendar year in which it ends.
enum class FYSValues : int32_t {
  January = 1,
  February = 2,
  March = 3,
  April = 4,
  May = 5,
  June = 6,
  July = 7,
  August = 8,
  September = 9,
  October = 10,
  November = 11,
  December = 12,
};

// Hosts keep fiscal starts as plain month numbers and compare them directly.
constexpr bool operator==(FYSValues fys, int month) noexcept { return static_cast<int>(fys) == month; }
constexpr bool operator!=(FYSValues fys, int month) noexcept { return static_cast<int>(fys) != month; }

// How the first week of a year is chosen. The locale data map each locale to
// one of the codes 1-3 (TLocale::GetFirstWeekBehaviour); 0 is what the
// Gregorian date options answer: their own rule, week 1 being the week that
// holds 1 January (DateTime::GetWeek).
enum class FirstWeekBehaviour : int32_t {
  CalendarDefault = 0,
  FirstPartialWeek = 1,  // week 1 holds 1 January, however few of its days
  FirstFourDayWeek = 2,  // week 1 holds at least four days (ISO-8601)
  FirstFullWeek = 3,     // week 1 holds seven days
};

// A date aggregation of the host's data model. Only the date codes are named
// here; the host's other aggregations use codes below 14 and above 41, and
// the date options pass them through unchanged (any 32-bit code may be held).
enum class AggType : int32_t {
  // Date parts (bins).
  DatePartYear = 14,
  DatePartQuarter = 15,
  DatePartMonth = 16,
  DatePartDay = 17,
  DatePartHour = 18,
  DatePartMinute = 19,
  DatePartSecond = 20,
  // Uncommon date parts.
  DatePartWeek = 21,
  DatePartWeekday = 22,
  DatePartDayOfYear = 23,
  DatePartMonthDay = 24,
  DatePartExactDate = 25,
  // ISO-8601 date parts.
  DatePartISOYear = 26,
  DatePartISOQuarter = 27,
  DatePartISOWeek = 28,
  DatePartISOWeekday = 29,
  // Truncations.
  TruncYear = 30,
  TruncQuarter = 31,
  TruncMonth = 32,
  TruncWeek = 33,
  TruncDay = 34,
  TruncHour = 35,
  TruncMinute = 36,
  TruncSecond = 37,
  // ISO-8601 truncations.
  TruncISOYear = 38,
  TruncISOQuarter = 39,
  TruncISOWeek = 40,
  TruncISODay = 41,
};

// Whether a field holds dates or date-times.
enum class DateDataType : int32_t {
  Date = 0,
  DateTime = 1,
};

// Whether an aggregation extracts a date part (a bin) or truncates.
enum class DateComputationKind : int32_t {
  DatePart = 0,
  Truncation = 1,
};

// A period that dates are moved by, counted in, or truncated to.
enum class DatePeriodType : int32_t {
  Year = 0,
  Quarter = 1,
  Month = 2,
  Week = 3,
  Day = 4,
  Hour = 5,
  Minute = 6,
  Second = 7,
  ISOYear = 8,
  ISOQuarter = 9,
  ISOWeek = 10,
};

// Hour, minute and second.
constexpr bool IsTimePeriod(DatePeriodType type) noexcept {
  return type == DatePeriodType::Hour || type == DatePeriodType::Minute || type == DatePeriodType::Second;
}
