// DateTimeParseOptions: which parts of a date-time a text may carry when it
// is parsed, and which parts are written when a DateTime is formatted.
//
// DateAndTime (3) is the default everywhere. Parsing with Date accepts only
// texts that are a date ("2020-01-05", "1/5/2020"), with Time only texts
// that are a time of day ("10:30"), with DateAndTime both of those and texts
// that carry a date and a time. Formatting with Date writes the locale's
// short date, with Time its long time, with DateAndTime the short date and
// the long time. A value with neither bit (None) is read as DateAndTime.
#pragma once

#include <cstdint>

enum class DateTimeParseOptions : uint32_t {
  None = 0,
  Date = 1,
  Time = 2,
  DateAndTime = 3,
};

constexpr DateTimeParseOptions operator|(DateTimeParseOptions a, DateTimeParseOptions b) noexcept {
  return static_cast<DateTimeParseOptions>(static_cast<uint32_t>(a) | static_cast<uint32_t>(b));
}

constexpr DateTimeParseOptions operator&(DateTimeParseOptions a, DateTimeParseOptions b) noexcept {
  return static_cast<DateTimeParseOptions>(static_cast<uint32_t>(a) & static_cast<uint32_t>(b));
}

// The options with None read as DateAndTime and unknown bits dropped.
constexpr DateTimeParseOptions NormalizeDateTimeParseOptions(DateTimeParseOptions options) noexcept {
  const DateTimeParseOptions parts = options & DateTimeParseOptions::DateAndTime;
  return parts == DateTimeParseOptions::None ? DateTimeParseOptions::DateAndTime : parts;
}
