// Interval: a signed span of time in microseconds.
//
// Intervals are what times of day are moved by and what their difference
// is. The time part is what remains below one whole day; it carries the
// interval's sign.
//
// Thread-safety: a plain value.
#pragma once

#include <compare>

#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT Interval {
 public:
  static constexpr long long kMicrosecondsPerSecond = 1000000LL;
  static constexpr long long kMicrosecondsPerMinute = 60 * kMicrosecondsPerSecond;
  static constexpr long long kMicrosecondsPerHour = 60 * kMicrosecondsPerMinute;
  static constexpr long long kMicrosecondsPerDay = 24 * kMicrosecondsPerHour;

  constexpr Interval() noexcept = default;
  constexpr explicit Interval(long long microseconds) noexcept : m_microseconds(microseconds) {}

  static constexpr Interval FromDays(long long n) noexcept { return Interval(n * kMicrosecondsPerDay); }
  static constexpr Interval FromHours(long long n) noexcept { return Interval(n * kMicrosecondsPerHour); }
  static constexpr Interval FromMinutes(long long n) noexcept { return Interval(n * kMicrosecondsPerMinute); }
  static constexpr Interval FromSeconds(long long n) noexcept { return Interval(n * kMicrosecondsPerSecond); }

  constexpr long long GetTotalMicroseconds() const noexcept { return m_microseconds; }
  // Totals, truncated toward zero.
  constexpr long long GetTotalDays() const noexcept { return m_microseconds / kMicrosecondsPerDay; }
  constexpr long long GetTotalHours() const noexcept { return m_microseconds / kMicrosecondsPerHour; }
  constexpr long long GetTotalMinutes() const noexcept { return m_microseconds / kMicrosecondsPerMinute; }
  constexpr long long GetTotalSeconds() const noexcept { return m_microseconds / kMicrosecondsPerSecond; }

  // The microseconds below one whole day, with the interval's sign:
  // |GetTimePart()| < one day.
  constexpr long long GetTimePart() const noexcept { return m_microseconds % kMicrosecondsPerDay; }
  // The fields of the time part, each with the interval's sign.
  constexpr int GetHours() const noexcept { return static_cast<int>(GetTimePart() / kMicrosecondsPerHour); }  // [-23, 23]
  constexpr int GetMinutes() const noexcept { return static_cast<int>(m_microseconds / kMicrosecondsPerMinute % 60); }
  constexpr int GetSeconds() const noexcept { return static_cast<int>(m_microseconds / kMicrosecondsPerSecond % 60); }
  constexpr int GetMicroseconds() const noexcept { return static_cast<int>(m_microseconds % kMicrosecondsPerSecond); }

  friend constexpr bool operator==(const Interval&, const Interval&) noexcept = default;
  friend constexpr std::strong_ordering operator<=>(const Interval&, const Interval&) noexcept = default;

  constexpr Interval& operator+=(const Interval& other) noexcept {
    m_microseconds += other.m_microseconds;
    return *this;
  }
  constexpr Interval& operator-=(const Interval& other) noexcept {
    m_microseconds -= other.m_microseconds;
    return *this;
  }
  friend constexpr Interval operator+(Interval a, const Interval& b) noexcept { return a += b; }
  friend constexpr Interval operator-(Interval a, const Interval& b) noexcept { return a -= b; }
  constexpr Interval operator-() const noexcept { return Interval(-m_microseconds); }

 private:
  long long m_microseconds = 0;
};
