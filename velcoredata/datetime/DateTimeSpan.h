// DateTimeSpan: a signed span of time in 1/10,000-second units, the unit of
// DateTime (864,000,000 units a day).
//
// Arithmetic on spans is plain 64-bit integer arithmetic: nothing is range
// checked, division by zero is not guarded (a hardware fault) and neither is
// the one overflowing quotient of the most negative span by -1.
//
// Thread-safety: a plain value.
#pragma once

#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT DateTimeSpan {
 public:
  constexpr DateTimeSpan() noexcept = default;
  constexpr explicit DateTimeSpan(long long units) noexcept : m_span(units) {}
  // A span given in days as a double (an OLE span), truncated toward zero to
  // whole units.
  explicit DateTimeSpan(double oleSpan) noexcept : m_span(OleSpanToFixedPrecision(oleSpan)) {}
  // Magnitudes are summed; the whole span is negative when days is negative
  // or any other component is. The fraction (seconds) is rounded half up to
  // whole units.
  DateTimeSpan(long long days, long long hours, long long minutes, long long seconds, double fraction) noexcept;

  DateTimeSpan& operator=(long long units) noexcept {
    m_span = units;
    return *this;
  }
  void SetDateTimeSpan(long long days, long long hours, long long minutes, long long seconds,
                       double fraction) noexcept;

  static constexpr DateTimeSpan FromMilliseconds(long long ms) noexcept { return DateTimeSpan(ms * 10); }
  static constexpr DateTimeSpan Days(long long n) noexcept { return DateTimeSpan(n * kUnitsPerDay); }

  constexpr long long GetRepresentation() const noexcept { return m_span; }

  // Totals, truncated toward zero.
  constexpr long long GetTotalDays() const noexcept { return m_span / kUnitsPerDay; }
  constexpr long long GetTotalHours() const noexcept { return m_span / kUnitsPerHour; }
  constexpr long long GetTotalMinutes() const noexcept { return m_span / kUnitsPerMinute; }
  constexpr long long GetTotalSeconds() const noexcept { return m_span / kUnitsPerSecond; }
  constexpr long long GetTotalMilliseconds() const noexcept { return m_span / 10; }

  // Components, each carrying the sign of the span.
  constexpr long long GetDays() const noexcept { return m_span / kUnitsPerDay; }
  constexpr int GetHours() const noexcept { return static_cast<int>(m_span / kUnitsPerHour % 24); }      // [-23, 23]
  constexpr int GetMinutes() const noexcept { return static_cast<int>(m_span / kUnitsPerMinute % 60); }  // [-59, 59]
  constexpr int GetSeconds() const noexcept { return static_cast<int>(m_span / kUnitsPerSecond % 60); }  // [-59, 59]
  // Seconds below one, in (-1, 1).
  double GetFraction() const noexcept { return static_cast<double>(m_span % kUnitsPerSecond) / 10000.0; }

  // Days as a double (an OLE span).
  double ToOleSpan() const noexcept { return OleSpanFromFixedPrecision(m_span, false); }
  // Days as a double; with truncateToSeconds the magnitude is first cut to
  // whole seconds.
  static double OleSpanFromFixedPrecision(long long units, bool truncateToSeconds) noexcept;
  // sign(d) x trunc(|d| x 864,000,000); saturates beyond the 64-bit range,
  // NaN gives 0.
  static long long OleSpanToFixedPrecision(double oleSpan) noexcept;

  // -1, 0 or 1.
  constexpr int Compare(const DateTimeSpan& other) const noexcept {
    return m_span < other.m_span ? -1 : (m_span > other.m_span ? 1 : 0);
  }
  friend constexpr bool operator==(const DateTimeSpan& a, const DateTimeSpan& b) noexcept { return a.m_span == b.m_span; }
  friend constexpr bool operator!=(const DateTimeSpan& a, const DateTimeSpan& b) noexcept { return a.m_span != b.m_span; }
  friend constexpr bool operator<(const DateTimeSpan& a, const DateTimeSpan& b) noexcept { return a.m_span < b.m_span; }
  friend constexpr bool operator>(const DateTimeSpan& a, const DateTimeSpan& b) noexcept { return a.m_span > b.m_span; }
  friend constexpr bool operator<=(const DateTimeSpan& a, const DateTimeSpan& b) noexcept { return a.m_span <= b.m_span; }
  friend constexpr bool operator>=(const DateTimeSpan& a, const DateTimeSpan& b) noexcept { return a.m_span >= b.m_span; }

  constexpr DateTimeSpan& operator+=(const DateTimeSpan& other) noexcept {
    m_span += other.m_span;
    return *this;
  }
  constexpr DateTimeSpan& operator-=(const DateTimeSpan& other) noexcept {
    m_span -= other.m_span;
    return *this;
  }
  friend constexpr DateTimeSpan operator+(DateTimeSpan a, const DateTimeSpan& b) noexcept { return a += b; }
  friend constexpr DateTimeSpan operator-(DateTimeSpan a, const DateTimeSpan& b) noexcept { return a -= b; }
  constexpr DateTimeSpan operator-() const noexcept { return DateTimeSpan(-m_span); }

  // The quotient of two spans, truncated toward zero.
  friend constexpr long long operator/(const DateTimeSpan& a, const DateTimeSpan& b) noexcept { return a.m_span / b.m_span; }
  friend constexpr DateTimeSpan operator/(const DateTimeSpan& a, int n) noexcept { return DateTimeSpan(a.m_span / n); }
  friend constexpr DateTimeSpan operator*(const DateTimeSpan& a, int n) noexcept { return DateTimeSpan(a.m_span * n); }

 private:
  static constexpr long long kUnitsPerDay = 864000000LL;
  static constexpr long long kUnitsPerHour = 36000000LL;
  static constexpr long long kUnitsPerMinute = 600000LL;
  static constexpr long long kUnitsPerSecond = 10000LL;

  long long m_span = 0;
};
