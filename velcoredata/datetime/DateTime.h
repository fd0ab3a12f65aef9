// DateTime: the library's date-and-time value.
//
// A calendar date in the proleptic Gregorian calendar with a time of day,
// held as one unsigned 64-bit count of 1/10,000-second units since the start
// of day number 0 (see velcoredata/datetime/DayNumber.h: day N is the day
// whose chronological Julian Day Number is N + 1). The value carries no time
// zone; "local" and "UTC" are the caller's convention, and explicit
// conversions exist between the two.
//
// Valid values run from 0100-01-01 00:00:00.0000 to 9999-12-31 23:59:59.0000
// (the upper bound stops at 23:59:59 exactly). Arithmetic, the OLE
// converters and the raw constructors never check the range; call
// Validate() or IsValid() where a valid value is needed. Every getter
// recomputes from the raw count (no tables, no caches, no allocation).
//
// The calendar is defined by the Julian-Day formulas of the astronomical
// literature, applied to every year: on one valid day, day number 1,830,691,
// they read 0300-02-29 (the true calendar has 0300-03-01 there), and that is
// the reading this class gives.
//
// Thread-safety: a plain value; the only shared state is the once-only
// tzset() call made before the first local-time break-down.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <utility>

#include "velcoredata/datetime/DateTimeParseOptions.h"
#include "velcoredata/datetime/DateTimeSpan.h"
#include "velcoredata/datetime/DateTypes.h"
#include "velcoredata/platform/Export.h"

class IDateOptions;
class QDate;
class QDateTime;
class TLocale;
class TString;

class VELCOREDATA_EXPORT DateTime {
 public:
  struct YearMonthDay {
    constexpr YearMonthDay(int32_t y, int32_t m, int32_t d) noexcept : year(y), month(m), day(d) {}
    int32_t year;
    int32_t month;  // [1, 12]
    int32_t day;    // [1, 31]
    friend constexpr bool operator==(const YearMonthDay& a, const YearMonthDay& b) noexcept {
      return a.year == b.year && a.month == b.month && a.day == b.day;
    }
  };

  // Units per day; 1899-12-30 (the OLE automation epoch, day 2,415,018) and
  // 1900-01-01 (day 2,415,020) as raw values.
  static constexpr unsigned long long s_scaling = 864000000ULL;
  static constexpr unsigned long long s_OLEEpoch = 2086575552000000ULL;
  static constexpr unsigned long long s_baseDateEpoch = 2086577280000000ULL;

  // 1899-12-30, 1900-01-01 and 1970-01-01 at midnight. Constant-initialised,
  // so that static constructors elsewhere may use them.
  static const DateTime OLEEpoch;
  static const DateTime BaseDateEpoch;
  static const DateTime UnixEpoch;

  // --- Construction and raw access ----------------------------------------

  // 1899-12-30 00:00:00, the OLE epoch (not raw 0, which is not valid).
  constexpr DateTime() noexcept : m_value(s_OLEEpoch) {}
  // The raw count, unchanged.
  constexpr explicit DateTime(unsigned long long value) noexcept : m_value(value) {}
  // An OLE date (days since 1899-12-30 as a double); see OleDateToFixedPrecision.
  explicit DateTime(double oleDate) noexcept : m_value(OleDateToFixedPrecision(oleDate)) {}
  // From calendar fields; see SetDateTime. Throws VelmoraException 0xDD90F63D
  // when the fields do not name a date-time of year 400 or later.
  DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, double fraction = 0.0);

  static constexpr DateTime FromValue(unsigned long long value) noexcept { return DateTime(value); }
  static DateTime FromOleDate(double oleDate) noexcept { return DateTime(oleDate); }
  constexpr unsigned long long GetRepresentation() const noexcept { return m_value; }

  void swap(DateTime& other) noexcept { std::swap(m_value, other.m_value); }

  // --- Text: parsing and formatting through a TLocale ---
  //
  // Where no locale is given, the user default locale
  // (TLocale::GetUserDefaultLocale()) is used; options default to
  // DateTimeParseOptions::DateAndTime. See TLocale for the forms a text may
  // take.

  // Parses the text [begin, end), which must be a date-time as a whole.
  // Throws VelmoraException 0x2CE8742C (user default locale) or 0x8E8A7D12
  // (given locale) with the localised message 0x92B2281F naming the text (cut
  // at its first zero) when it is not.
  DateTime(const char16_t* begin, const char16_t* end);
  DateTime(const char16_t* begin, const char16_t* end, const TLocale& locale);
  // Parses a zero-terminated text with every form. Never throws: a text that
  // does not parse leaves the raw value 0, which is not valid (IsValid() is
  // false). Deliberately unlike the two-pointer forms.
  explicit DateTime(const char16_t* text);
  DateTime(const char16_t* text, DateTimeParseOptions options);
  DateTime(const char16_t* text, DateTimeParseOptions options, const TLocale& locale);

  // Parses [begin, end) as a whole. On success stores the value and returns
  // true; on failure returns false and leaves the target untouched.
  static bool ParseDateTime(const char16_t* begin, const char16_t* end, unsigned long long* out);
  static bool ParseDateTime(const char16_t* begin, const char16_t* end, DateTime& out);
  // With `stop`, the longest date-time at the start of the text is taken and
  // *stop is set just after it.
  static bool ParseDateTime(const char16_t* begin, const char16_t* end, DateTime& out, const TLocale& locale,
                            const char16_t** stop = nullptr);
  // The parsed value, or the OLE epoch (DateTime()) when the text does not
  // parse; callers that need to know use the forms that return bool.
  static DateTime ParseDateTime(const char16_t* begin, const char16_t* end);
  static DateTime ParseDateTime(const char16_t* begin, const char16_t* end, const TLocale& locale);
  // The parsed value of a zero-terminated text, or raw 0 (not valid) when it
  // does not parse. With a reference, the parts the text lacks come from the
  // reference's date ("10:30" on that day, "Jan 5" of that year).
  static DateTime ParseDateTimeTryAllFormats(const char16_t* text);
  static DateTime ParseDateTimeTryAllFormats(const char16_t* text, const TLocale& locale);
  static DateTime ParseDateTimeTryAllFormats(const char16_t* text, const TLocale& locale, const DateTime& reference);
  // Parses a time of day alone; on success this value becomes that time on
  // 1899-12-30 and true is returned, otherwise it is unchanged.
  bool ParseTimeTryAllFormats(const TString& text, const TLocale& locale);

  // The value written with an ICU pattern, or with the locale's short date
  // and long time (Format() and the options forms; see TLocale::Format).
  TString Format(const char16_t* pattern) const;
  TString Format(const char16_t* pattern, const TLocale& locale) const;
  TString Format() const;
  TString Format(DateTimeParseOptions options) const;
  TString Format(DateTimeParseOptions options, const TLocale& locale) const;

  // --- Setting -------------------------------------------------------------

  // Sets the value from calendar fields; returns true or throws.
  // Overflowing time fields fold into the fraction first (second >= 60,
  // then minute >= 60, then hour >= 24), so 24:00:00 is midnight of the next
  // day and 23:59:60 the first instant of the next day. The fields must then
  // round-trip through the calendar exactly (no 30 February, no month 13, no
  // negative field) and the year must be at least 400; otherwise a warning
  // "DateTime::SetDateTime: invalid datetime #...#" is logged and
  // VelmoraException 0xDD90F63D is thrown, the value unchanged. `fraction`
  // is in seconds, rounded half up to whole units and not range-checked (1.5
  // adds 15,000 units); a negative fraction makes the whole time of day count
  // backwards from midnight.
  //
  // Inline: fields of a real date-time from 400 to 9999 with a fraction in
  // [0, 2^62) units need no folding and round-trip by construction, so their
  // value is composed here; everything else goes to the full check.
  bool SetDateTime(int year, int month, int day, int hour, int minute, int second, double fraction) {
    const long long units = FractionUnits(fraction);
    if (units >= 0 && IsPlainDateTime(year, month, day, hour, minute, second)) {
      const unsigned long long seconds = static_cast<unsigned long long>(hour) * 3600 +
                                         static_cast<unsigned long long>(minute) * 60 +
                                         static_cast<unsigned long long>(second);
      m_value = DayNumberOfPlainDate(static_cast<uint32_t>(year), static_cast<uint32_t>(month),
                                     static_cast<uint32_t>(day)) * s_scaling +
                seconds * 10000 + static_cast<unsigned long long>(units);
      return true;
    }
    return SetDateTimeChecked(year, month, day, hour, minute, second, fraction);
  }
  // Keeps the date, replaces the time of day (same folding and checks);
  // throws VelmoraException 0x87C06BF7, value unchanged.
  bool SetTime(int hour, int minute, int second, double fraction);

  // Breaks a Unix time (seconds since 1970-01-01 UTC) down as UTC or as the
  // process's local time and sets the value from it. Returns false, the value
  // untouched, when the system cannot break the time down or it falls before
  // the year 400 (which SetDateTime cannot set).
  bool SetUnixTime(long seconds, bool utc);
  bool SetUnixTime(long seconds, unsigned long long microseconds, bool utc);
  // The OLE epoch on which SetUnixTime was called.
  static DateTime FromUnixTime(long seconds, bool utc);
  static DateTime FromUnixTime(long seconds, unsigned long long microseconds, bool utc);
  // UnixEpoch plus `ms` milliseconds; no range check.
  static DateTime FromMillisecondsAfterUnixEpoch(long long ms) noexcept;
  // Year, month, day, hour, minute, second and msec of the QDateTime through
  // SetDateTime (throws like it for an invalid QDateTime).
  static DateTime FromQDateTime(const QDateTime& qdt);
  // Calendar fields with the year given as a fiscal year.
  static DateTime FromFiscalYear(int fiscalYear, FYSValues fys, int month, int day, int hour, int minute,
                                 int second, double fraction);
  // Midnight of an ISO-8601 date; no range check.
  static DateTime FromISO8601Date(int isoYear, int isoWeek, int isoWeekday) noexcept;

  // --- Validity ------------------------------------------------------------

  constexpr bool IsValid() const noexcept { return m_value - kMinValid < kValidSpan; }
  // Throws VelmoraException 0xE154043D when !IsValid().
  void Validate() const;

  // --- Parts (recomputed from the value on every call) ---------------------

  // The date of a day number of the valid range (days 1,757,584 to
  // 5,373,483; outside it the result means nothing). Neri and Schneider's
  // Euclidean-affine algorithm (2022) on the calendar that starts on
  // 0000-03-01, which agrees there with the Julian-Day formula that defines
  // the calendar except on day 1,830,691: the formula reads it as 0300-02-29
  // (its century correction truncates toward zero before 0400-03-01), and so
  // does this. Proven on every valid day by the tests.
  static constexpr YearMonthDay YearMonthDayOfValidDay(uint32_t day) noexcept {
    const uint32_t n = day - 1721119;                   // days since 0000-03-01
    const uint32_t n1 = 4 * n + 3;
    const uint32_t century = n1 / 146097;
    const uint32_t n2 = n1 % 146097 / 4 * 4 + 3;
    const uint64_t p2 = uint64_t{2939745} * n2;
    const uint32_t yearOfCentury = static_cast<uint32_t>(p2 >> 32);
    const uint32_t dayOfYear = static_cast<uint32_t>(p2) / 2939745 / 4;  // [0, 365], from 1 March
    const uint32_t n3 = 2141 * dayOfYear + 197913;
    const uint32_t januaryOrFebruary = dayOfYear >= 306;
    if (day == 1830691) return YearMonthDay(300, 2, 29);
    return YearMonthDay(static_cast<int32_t>(100 * century + yearOfCentury + januaryOrFebruary),
                        static_cast<int32_t>(januaryOrFebruary ? (n3 >> 16) - 12 : n3 >> 16),  // [1, 12]
                        static_cast<int32_t>((n3 & 0xFFFF) / 2141 + 1));                        // [1, 31]
  }
  // Inline: the calendar of the valid range is a few integer operations.
  YearMonthDay GetYearMonthDay() const noexcept {
    const unsigned long long day = m_value / s_scaling;
    return day - kFirstValidDay <= kLastValidDay - kFirstValidDay ? YearMonthDayOfValidDay(static_cast<uint32_t>(day))
                                                                   : YearMonthDayByFormula(day);
  }
  int GetYear() const noexcept { return GetYearMonthDay().year; }
  int GetMonth() const noexcept { return GetYearMonthDay().month; }  // [1, 12]
  int GetDay() const noexcept { return GetYearMonthDay().day; }      // [1, 31]
  // Time fields carry the sign of the value read as signed (always + for a
  // valid value).
  int GetHour() const noexcept;    // [0, 23]
  int GetMinute() const noexcept;  // [0, 59]
  int GetSecond() const noexcept;  // [0, 59]
  double GetFraction() const noexcept;  // seconds in [0, 1)
  int GetMilliseconds() const noexcept;  // [0, 999], truncated
  // 1 = Sunday ... 7 = Saturday.
  int GetDayOfWeek() const noexcept { return static_cast<int>((m_value / s_scaling + 2) % 7) + 1; }
  int GetISO8601DayOfWeek() const noexcept;  // 1 = Monday ... 7 = Sunday
  int GetDayOfYear() const noexcept;  // [1, 366]
  // Week 1 holds 1 January; weeks start on Sunday (or on `startOfWeek`,
  // 1 = Sunday ... 7 = Saturday); the last days of December stay in the
  // year's last week.
  int GetWeek() const noexcept;
  int GetWeek(int startOfWeek) const noexcept;
  int GetQuarter() const noexcept;  // [1, 4]
  int GetISO8601Week() const noexcept;  // [1, 53]
  int GetISO8601Year() const noexcept;
  // Quarters of 13 ISO weeks; week 53 belongs to quarter 4.
  int GetISO8601Quarter() const noexcept;
  // Days since the start of the week of the options, [0, 6].
  int GetDaysSinceStartOfWeek(const IDateOptions& options) const;
  static int GetDaysSinceStartOfWeek(int dayOfWeek, const IDateOptions& options);
  // Whole calendar days since 1899-12-30 (any time on 1899-12-29 gives -1).
  long long GetDaysSinceOLEEpoch() const noexcept;
  // The same counted from 1900-01-01.
  int GetDaysSinceBaseDateEpoch() const noexcept;
  // False exactly when the date is 1899-12-30, whatever the time.
  bool HasDate() const noexcept;
  bool HasTime() const noexcept;
  // The same date at 00:00:00, built through SetDateTime (so it throws for a
  // date before the year 400).
  DateTime GetDate() const;

  // --- Fiscal parts --------------------------------------------------------

  int GetFiscalYear(FYSValues fys) const noexcept;
  int GetFiscalQuarter(FYSValues fys) const noexcept;  // [1, 4]
  int GetFiscalMonth(FYSValues fys) const noexcept;    // [1, 12]
  // Fiscal year, fiscal month and calendar day.
  YearMonthDay GetFiscalYearMonthDay(FYSValues fys) const noexcept;
  // Week 1 is the week (starting on the options' start of week) that holds
  // the first day of the fiscal year, however few of its days fall in it.
  int GetFiscalWeek(const IDateOptions& options) const;

  // --- Period bounds: 00:00:00 of the first or last day --------------------
  // They are built through SetDateTime and throw like it for years before
  // 400, except the ISO-8601 bounds, which are computed on day numbers.

  static DateTime FiscalYearStart(int fiscalYear, FYSValues fys);
  static DateTime FiscalYearEnd(int fiscalYear, FYSValues fys);
  static DateTime FiscalQuarterStart(int fiscalYear, int quarter, FYSValues fys);
  static DateTime FiscalQuarterEnd(int fiscalYear, int quarter, FYSValues fys);
  static DateTime FiscalMonthStart(int fiscalYear, int fiscalMonth, FYSValues fys);
  static DateTime FiscalMonthEnd(int fiscalYear, int fiscalMonth, FYSValues fys);
  // Week 1 begins on the start-of-week day on or before the first day of the
  // fiscal year; the end is six days after the start.
  static DateTime FiscalWeekStart(int fiscalYear, int week, const IDateOptions& options);
  static DateTime FiscalWeekEnd(int fiscalYear, int week, const IDateOptions& options);
  // Day `day` (1-7) of fiscal week `week`, counted from a Sunday-based week:
  // the start of week of `options` is not used, only its fiscal year start.
  static DateTime FiscalDayOfWeek(int fiscalYear, int week, int day, const IDateOptions& options);
  static DateTime ISO8601YearStart(int isoYear) noexcept;
  static DateTime ISO8601YearEnd(int isoYear) noexcept;
  static DateTime ISO8601QuarterStart(int isoYear, int quarter) noexcept;
  static DateTime ISO8601QuarterEnd(int isoYear, int quarter) noexcept;
  static DateTime ISO8601WeekStart(int isoYear, int week) noexcept;
  static DateTime ISO8601WeekEnd(int isoYear, int week) noexcept;
  // The last day of a month.
  static DateTime LastDay(int year, int month);

  // --- Week numbers of periods ----------------------------------------------

  // The fiscal weeks (GetFiscalWeek) of the first and the last day of a
  // period of fiscal year `fiscalYear`: fiscal month `fiscalMonth` (1-12)
  // when it is given, otherwise fiscal quarter `fiscalQuarter` (1-4) when it
  // is given, otherwise the whole fiscal year; -1 means "not given". The
  // fiscal week start of FirstWeek is on or before the period's first day,
  // and FiscalWeekEnd of LastWeek on or after its last day.
  static int FirstWeek(int fiscalYear, int fiscalQuarter, int fiscalMonth, const IDateOptions& options);
  static int LastWeek(int fiscalYear, int fiscalQuarter, int fiscalMonth, const IDateOptions& options);
  // 13q - 12; an ISO quarter given as -1 is quarter 1. The year only has to
  // be valid: -1 (not given) or >= 0.
  static int FirstISO8601Week(int isoYear, int isoQuarter);
  // 13q for quarters 1-3; for quarter 4 the ISO week of 28 December (52 or
  // 53). -1 means not given: the quarter is then 4 and the year 2015 (a year
  // of 53 weeks).
  static int LastISO8601Week(int isoYear, int isoQuarter);

  // --- Conversions ----------------------------------------------------------

  // Days since 1899-12-30 as a double, symmetric about the epoch.
  double ToOleDate() const noexcept;
  // A QDateTime of the same fields (to the millisecond) in UTC or local time.
  QDateTime ToQDateTime(bool utc) const;
  QDate ToQDate(bool utc) const;
  // QDateTime::toTime_t() of ToQDateTime(utc): an unsigned 32-bit count
  // (0xFFFFFFFF outside 1970-2106), widened. Always returns true.
  bool GetAsUnixTime(long& out, bool utc) const;
  // Between UTC and the process's local time zone, through QDateTime;
  // sub-millisecond digits are lost.
  static DateTime LocalFromUTC(const DateTime& utc);
  static DateTime UTCFromLocal(const DateTime& local);
  // The current time, to the millisecond; the OLE epoch when the system
  // cannot break the time down.
  static DateTime GetLocalTime();
  static DateTime GetUniversalTime();
  // Milliseconds from 1899-12-30 00:00 (the OLE epoch, despite the name) to
  // now in UTC.
  static long long TotalMillisecondsFromMinDateTimeUTC();

  // Whether a fraction of a second carries digits below 1/10,000 s that a
  // value would lose. Throws VelmoraException 0x47EE95FC unless 0 <= f < 1.
  static bool IsFractionTruncated(double fraction);
  // s_OLEEpoch + sign(d) x trunc(|d| x 864,000,000): symmetric about the
  // epoch (-1.25 is 1899-12-28 18:00), not OLE's own reading of negative
  // dates. NaN, the infinities and distances beyond the 64-bit count give
  // raw 0, the invalid value (IsValid() is false), never a wrapped date.
  static unsigned long long OleDateToFixedPrecision(double oleDate) noexcept;
  // The signed distance from the OLE epoch in days; truncateToSeconds drops
  // the units below one second first.
  static double OleDateFromFixedPrecision(unsigned long long value, bool truncateToSeconds) noexcept;

  // --- Comparison and arithmetic (raw counts; no range check) --------------

  friend constexpr bool operator==(const DateTime& a, const DateTime& b) noexcept { return a.m_value == b.m_value; }
  friend constexpr bool operator!=(const DateTime& a, const DateTime& b) noexcept { return a.m_value != b.m_value; }
  friend constexpr bool operator<(const DateTime& a, const DateTime& b) noexcept { return a.m_value < b.m_value; }
  friend constexpr bool operator>(const DateTime& a, const DateTime& b) noexcept { return a.m_value > b.m_value; }
  friend constexpr bool operator<=(const DateTime& a, const DateTime& b) noexcept { return a.m_value <= b.m_value; }
  friend constexpr bool operator>=(const DateTime& a, const DateTime& b) noexcept { return a.m_value >= b.m_value; }

  constexpr DateTime& operator+=(const DateTimeSpan& span) noexcept {
    m_value += static_cast<unsigned long long>(span.GetRepresentation());
    return *this;
  }
  constexpr DateTime& operator-=(const DateTimeSpan& span) noexcept {
    m_value -= static_cast<unsigned long long>(span.GetRepresentation());
    return *this;
  }
  friend constexpr DateTime operator+(DateTime dt, const DateTimeSpan& span) noexcept { return dt += span; }
  friend constexpr DateTime operator-(DateTime dt, const DateTimeSpan& span) noexcept { return dt -= span; }
  friend constexpr DateTimeSpan operator-(const DateTime& a, const DateTime& b) noexcept {
    return DateTimeSpan(static_cast<long long>(a.m_value - b.m_value));
  }

 private:
  static constexpr unsigned long long kMinValid = 1518552576000000ULL;  // 0100-01-01 00:00:00
  static constexpr unsigned long long kValidSpan = 3124137599990001ULL;  // up to 9999-12-31 23:59:59
  static constexpr unsigned long long kFirstValidDay = 1757584;  // 0100-01-01
  static constexpr unsigned long long kLastValidDay = 5373483;   // 9999-12-31

  // The Julian-Day formula itself, for days outside the valid range.
  static YearMonthDay YearMonthDayByFormula(unsigned long long day) noexcept;

  // SetDateTime for every input: folding, the round trip, the failure.
  bool SetDateTimeChecked(int year, int month, int day, int hour, int minute, int second, double fraction);

  // Fields of a real date-time of the years 400 to 9999.
  static constexpr bool IsPlainDateTime(int year, int month, int day, int hour, int minute, int second) noexcept {
    return static_cast<unsigned>(year - 400) <= 9599u && static_cast<unsigned>(month - 1) < 12u && day >= 1 &&
           (day <= 28 || day <= DaysInMonth(year, month)) && static_cast<unsigned>(hour) < 24u &&
           static_cast<unsigned>(minute) < 60u && static_cast<unsigned>(second) < 60u;
  }
  static constexpr int DaysInMonth(int year, int month) noexcept {  // month in [1, 12]
    constexpr int8_t kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
  }
  // The day number of a real date of the years 1 to 1,000,000: Neri and
  // Schneider's rata die, counted from 0000-03-01, in 32-bit arithmetic. The
  // formula's day numbers agree with it there.
  static constexpr uint32_t DayNumberOfPlainDate(uint32_t year, uint32_t month, uint32_t day) noexcept {
    const uint32_t janOrFeb = month <= 2;
    const uint32_t y = year - janOrFeb;                  // March-based year
    const uint32_t m = janOrFeb ? month + 12 : month;    // [3, 14]
    const uint32_t century = y / 100;
    return 1461 * y / 4 - century + century / 4 + (979 * m - 2919) / 32 + day - 1 + 1721119;
  }
  // trunc(fraction x 10,000 + 0.5), the fraction in whole units rounded half
  // up, or -1 outside [0, 2^62) and for NaN. The product is kept rounded on
  // its own, as the library computes it, even where a caller's build would
  // fuse the multiply and the add (which can move a half-way case).
  static long long FractionUnits(double fraction) noexcept {
    double scaled = fraction * 10000.0;
#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
    __asm__("" : "+x"(scaled));
#elif defined(__GNUC__) && defined(__aarch64__)
    __asm__("" : "+w"(scaled));
#else
    volatile double kept = scaled;
    scaled = kept;
#endif
    const double rounded = scaled + 0.5;
    return rounded >= 0.0 && rounded < 4611686018427387904.0 ? static_cast<long long>(rounded) : -1;
  }

  unsigned long long m_value;
};

inline void swap(DateTime& a, DateTime& b) noexcept { a.swap(b); }

// Writes ToOleDate() as a double.
VELCOREDATA_EXPORT std::ostream& operator<<(std::ostream& os, const DateTime& dt);
