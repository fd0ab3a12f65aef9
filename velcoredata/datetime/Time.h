// Time: a time of day in microseconds since midnight.
//
// Values lie below one day (86,400,000,000 us), except the one value the
// field constructors admit at 23:59:59 plus 1,000,000 microseconds: exactly
// one day, which reads as 00:00:00 (GetHour() is 0). Moving a time by an
// interval wraps around midnight.
//
// Every failure is a VelmoraException with the localised message
// IDS_ERR_INVALID_TIME (0xB744EDD2).
//
// Thread-safety: a plain value.
#pragma once

#include <compare>
#include <cstdint>

#include "velcoredata/datetime/Interval.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT Time {
 public:
  static constexpr unsigned long long kMicrosecondsPerDay = 86400000000ULL;

  // Midnight.
  constexpr Time() noexcept = default;
  // Microseconds since midnight, reduced modulo one day.
  constexpr explicit Time(unsigned long long microseconds) noexcept : m_microseconds(microseconds % kMicrosecondsPerDay) {}
  // Requires hour < 24, minute < 60, second < 60 and microsecond <=
  // 1,000,000 (one million itself is accepted: it reaches the next second,
  // and at 23:59:59 the value of one whole day); otherwise throws 0x5A975297.
  // Not reduced modulo one day. (Pass the microseconds as unsigned, 0u, and
  // fractions as double, 0.0: a plain 0 fits both overloads.)
  Time(unsigned hour, unsigned minute, unsigned second, unsigned microsecond);
  // The same with a fraction of a second rounded half up to microseconds,
  // which must come to 0 ... 1,000,000; otherwise throws 0x22D59FE2.
  Time(unsigned hour, unsigned minute, unsigned second, double fraction);

  // Whether a fraction of a second carries digits below one microsecond.
  // Throws 0xBE17C602 unless 0 <= fraction < 1.
  static bool IsFractionRounded(double fraction);

  constexpr unsigned long long GetRepresentation() const noexcept { return m_microseconds; }
  constexpr unsigned GetHour() const noexcept { return static_cast<unsigned>(m_microseconds / 3600000000ULL % 24); }
  constexpr unsigned GetMinute() const noexcept { return static_cast<unsigned>(m_microseconds / 60000000ULL % 60); }
  constexpr unsigned GetSecond() const noexcept { return static_cast<unsigned>(m_microseconds / 1000000ULL % 60); }
  constexpr unsigned GetMicrosecond() const noexcept { return static_cast<unsigned>(m_microseconds % 1000000ULL); }

  // The time as "HH:mm:ss" (the time-of-day entry, 65, of the parsing-format
  // table) through the user default locale. TLocale formatting is safe from
  // any thread, so the shared default locale is used rather than a copy.
  TString Format() const;

  // The interval of the time itself (since midnight).
  constexpr operator Interval() const noexcept { return Interval(static_cast<long long>(m_microseconds)); }  // NOLINT
  // The signed difference.
  friend constexpr Interval operator-(const Time& a, const Time& b) noexcept {
    return Interval(static_cast<long long>(a.m_microseconds - b.m_microseconds));
  }

  // Only the interval's time part counts, taken modulo one day into
  // [0, one day) (so adding -1 hour is adding 23 hours); the result wraps
  // around midnight.
  Time& operator+=(const Interval& interval) noexcept;
  Time& operator-=(const Interval& interval) noexcept;
  friend Time operator+(Time t, const Interval& interval) noexcept { return t += interval; }
  friend Time operator-(Time t, const Interval& interval) noexcept { return t -= interval; }

  friend constexpr bool operator==(const Time&, const Time&) noexcept = default;
  friend constexpr std::strong_ordering operator<=>(const Time&, const Time&) noexcept = default;

 private:
  unsigned long long m_microseconds = 0;
};
