#include "velcoredata/datetime/DateTime.h"

#include <sys/time.h>

#include <cfloat>
#include <cmath>
#include <ctime>
#include <mutex>
#include <ostream>

#include <QDateTime>

#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/datetime/DayNumber.h"
#include "velcoredata/datetime/FiscalConversions.h"
#include "velcoredata/datetime/GregorianDateOptions.h"
#include "velcoredata/datetime/internal/DayNumberMath.h"
#include "velcoredata/datetime/internal/InvalidTime.h"
#include "velcoredata/platform/LogMessage.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/VelmoraException.h"

namespace dnm = DayNumberMath;

const DateTime DateTime::OLEEpoch(DateTime::s_OLEEpoch);
const DateTime DateTime::BaseDateEpoch(DateTime::s_baseDateEpoch);
const DateTime DateTime::UnixEpoch(2440587ULL * DateTime::s_scaling);

namespace {

constexpr uint64_t kDay = dnm::kUnitsPerDay;
constexpr uint64_t kHour = dnm::kUnitsPerHour;
constexpr uint64_t kMinute = dnm::kUnitsPerMinute;
constexpr uint64_t kSecond = dnm::kUnitsPerSecond;

// The year LastISO8601Week (and FirstISO8601Week) assume when none is given:
// one with 53 ISO weeks.
constexpr int kDefaultISOYear = 2015;

// Time fields beyond their range move into the fraction (seconds), in this
// order, so 25:00:00 is 23:00:00 plus 7,200 s.
void FoldOverflow(int& hour, int& minute, int& second, double& fraction) {
  if (second >= 60) {
    fraction += static_cast<double>(second) - 59.0;
    second = 59;
  }
  if (minute >= 60) {
    fraction += (static_cast<double>(minute) - 59.0) * 60.0;
    minute = 59;
  }
  if (hour >= 24) {
    fraction += (static_cast<double>(hour) - 23.0) * 3600.0;
    hour = 23;
  }
}

uint64_t Magnitude(long long x) { return x < 0 ? 0 - static_cast<uint64_t>(x) : static_cast<uint64_t>(x); }

// A time of day as units: days +/- tod, where the sign is that of the
// fields (any negative field makes the whole time of day negative).
struct TimeOfDay {
  uint64_t units;  // (|h| x 60 + |m|) x 60 + |s| seconds, in units
  bool negative;
};

TimeOfDay MakeTimeOfDay(int hour, int minute, int second) {
  const uint64_t seconds = (Magnitude(hour) * 60 + Magnitude(minute)) * 60 + Magnitude(second);
  return TimeOfDay{seconds * kSecond, hour < 0 || minute < 0 || second < 0};
}

bool TimeFieldsRoundTrip(uint64_t t, int hour, int minute, int second) {
  return static_cast<int>(t / kSecond % 60) == second && static_cast<int>(t / kHour % 24) == hour &&
         static_cast<int>(t / kMinute % 60) == minute;
}

// The final value: the time of day plus the rounded fraction, negated as a
// whole when a field or the fraction is negative, added to the date.
uint64_t ComposeValue(uint64_t days, const TimeOfDay& tod, double fraction) {
  const long long f = dnm::SaturatingTrunc(fraction * 10000.0 + 0.5);  // half up
  const uint64_t time = tod.units + Magnitude(f);
  return (tod.negative || f < 0) ? days - time : days + time;
}

// Whether fields that SetDateTime has folded name a real date-time: they
// must come back unchanged from the value they make (so no 30 February, no
// month 13, no negative field).
bool DateTimeRoundTrips(int year, int month, int day, int hour, int minute, int second, uint64_t t) {
  const dnm::Civil c = dnm::CivilFromDayNumber(t / kDay);
  return TimeFieldsRoundTrip(t, hour, minute, second) && c.day == day && c.month == month && c.year == year;
}

void LogInvalidDateTime(int year, int month, int day, int hour, int minute, int second, double fraction) {
  if (!IsLogEnabled(LogArea::DateTime, LogSeverity::Warning)) return;
  const TString text = TString(u"DateTime::SetDateTime: invalid datetime #%1-%2-%3T%4:%5:%6.%7#")
                           .arg(year, 4, 10, u'0')
                           .arg(month, 2, 10, u'0')
                           .arg(day, 2, 10, u'0')
                           .arg(hour, 2, 10, u'0')
                           .arg(minute, 2, 10, u'0')
                           .arg(second, 2, 10, u'0')
                           .arg(dnm::SaturatingTrunc(std::round(fraction / 1e-5)), 6, 10, u'0');  // tens of microseconds
  LogMessage(LogArea::DateTime, LogSeverity::Warning, text);
}

// tzset() once per process before the first break-down of a time.
void EnsureTimeZoneSet() {
  static std::once_flag once;
  std::call_once(once, [] { tzset(); });
}

bool BreakDown(time_t seconds, bool utc, std::tm& out) {
  EnsureTimeZoneSet();
  return (utc ? gmtime_r(&seconds, &out) : localtime_r(&seconds, &out)) != nullptr;
}

DateTime CurrentTime(bool utc) {
  timeval now{};
  gettimeofday(&now, nullptr);
  const long microseconds = now.tv_usec / 1000 * 1000;  // whole milliseconds
  std::tm parts{};
  if (!BreakDown(now.tv_sec, utc, parts)) return DateTime();
  DateTime result;
  result.SetDateTime(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                     parts.tm_sec, static_cast<double>(microseconds) / 1e6);
  return result;
}

// Midnight of a day number, wrapped to 32 bits as a `date` holds it.
DateTime Midnight(long long dayNumber) {
  return DateTime::FromValue(static_cast<uint32_t>(dayNumber) * kDay);
}

DateTime FromQDateTimeFields(const QDateTime& qdt) {
  int year = 0;
  int month = 0;
  int day = 0;
  qdt.date().getDate(&year, &month, &day);
  const QTime time = qdt.time();
  DateTime result;
  result.SetDateTime(year, month, day, time.hour(), time.minute(), time.second(), time.msec() / 1000.0);
  return result;
}

int StartOfWeek(const IDateOptions& options) { return static_cast<int>(options.GetStartOfWeek()); }

}  // namespace

// --- Construction and setting ----------------------------------------------

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second, double fraction) : m_value(0) {
  SetDateTime(year, month, day, hour, minute, second, fraction);
}

bool DateTime::SetDateTimeChecked(int year, int month, int day, int hour, int minute, int second, double fraction) {
  FoldOverflow(hour, minute, second, fraction);
  // Years 100-399 are valid values but cannot be set here.
  if (year >= 400) {
    const uint64_t days =
        uint64_t{dnm::DayNumberFromCivil(year, static_cast<int8_t>(month), static_cast<int8_t>(day))} * kDay;
    const TimeOfDay tod = MakeTimeOfDay(hour, minute, second);
    const uint64_t t = tod.negative ? days - tod.units : days + tod.units;
    if (DateTimeRoundTrips(year, month, day, hour, minute, second, t)) {
      m_value = ComposeValue(days, tod, fraction);
      return true;
    }
  }
  LogInvalidDateTime(year, month, day, hour, minute, second, fraction);
  ThrowInvalidTime(&VelErrorsError::AutoGen_0xDD90F63D);
}

bool DateTime::SetTime(int hour, int minute, int second, double fraction) {
  FoldOverflow(hour, minute, second, fraction);
  const uint64_t days = m_value / kDay * kDay;
  const TimeOfDay tod = MakeTimeOfDay(hour, minute, second);
  const uint64_t t = tod.negative ? days - tod.units : days + tod.units;
  if (!TimeFieldsRoundTrip(t, hour, minute, second)) ThrowInvalidTime(&VelErrorsError::AutoGen_0x87C06BF7);
  m_value = ComposeValue(days, tod, fraction);
  return true;
}

bool DateTime::SetUnixTime(long seconds, bool utc) { return SetUnixTime(seconds, 0, utc); }

bool DateTime::SetUnixTime(long seconds, unsigned long long microseconds, bool utc) {
  std::tm parts{};
  if (!BreakDown(static_cast<time_t>(seconds), utc, parts)) return false;
  // SetDateTime cannot set years before 400; this operation reports failures
  // with its result instead of an exception.
  if (parts.tm_year + 1900 < 400) return false;
  SetDateTime(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec,
              static_cast<double>(microseconds) / 1e6);
  return true;
}

DateTime DateTime::FromUnixTime(long seconds, bool utc) { return FromUnixTime(seconds, 0, utc); }

DateTime DateTime::FromUnixTime(long seconds, unsigned long long microseconds, bool utc) {
  DateTime result;
  result.SetUnixTime(seconds, microseconds, utc);
  return result;
}

DateTime DateTime::FromMillisecondsAfterUnixEpoch(long long ms) noexcept {
  return UnixEpoch + DateTimeSpan::FromMilliseconds(ms);
}

DateTime DateTime::FromQDateTime(const QDateTime& qdt) { return FromQDateTimeFields(qdt); }

DateTime DateTime::FromFiscalYear(int fiscalYear, FYSValues fys, int month, int day, int hour, int minute,
                                  int second, double fraction) {
  DateTime result;
  result.SetDateTime(ConvertToCalendarYear(fiscalYear, month, fys), month, day, hour, minute, second, fraction);
  return result;
}

DateTime DateTime::FromISO8601Date(int isoYear, int isoWeek, int isoWeekday) noexcept {
  const date d = date::iso8601date(isoYear, static_cast<char>(isoWeek), static_cast<char>(isoWeekday));
  return FromValue(d.dayNumber * kDay);
}

void DateTime::Validate() const {
  if (!IsValid()) ThrowInvalidTime(&VelErrorsError::AutoGen_0xE154043D);
}

// --- Parts -------------------------------------------------------------------

DateTime::YearMonthDay DateTime::YearMonthDayByFormula(unsigned long long day) noexcept {
  const dnm::Civil c = dnm::FormulaCivil(day);
  return YearMonthDay(c.year, c.month, c.day);
}

namespace {
// A time field of the value read as signed: (|v| / unit) mod modulus, with
// the sign of v.
int SignedField(unsigned long long value, uint64_t unit, uint64_t modulus) {
  const long long v = static_cast<long long>(value);
  const int field = static_cast<int>(Magnitude(v) / unit % modulus);
  return v < 0 ? -field : field;
}
}  // namespace

int DateTime::GetHour() const noexcept { return SignedField(m_value, kHour, 24); }
int DateTime::GetMinute() const noexcept { return SignedField(m_value, kMinute, 60); }
int DateTime::GetSecond() const noexcept { return SignedField(m_value, kSecond, 60); }

double DateTime::GetFraction() const noexcept {
  const long long v = static_cast<long long>(m_value);
  const long long units = static_cast<long long>(Magnitude(v) % kSecond);
  return static_cast<double>(v < 0 ? -units : units) / 10000.0;
}

int DateTime::GetMilliseconds() const noexcept { return static_cast<int>(std::trunc(GetFraction() * 1000.0)); }

int DateTime::GetISO8601DayOfWeek() const noexcept { return dnm::IsoWeekday(m_value / kDay); }

int DateTime::GetDayOfYear() const noexcept {
  const uint64_t day = m_value / kDay;
  const int year = dnm::CivilFromDayNumber(day).year;
  return static_cast<int>(static_cast<long long>(day) - static_cast<long long>(dnm::January1(year)) + 1);
}

int DateTime::GetWeek() const noexcept { return GetWeek(1); }

int DateTime::GetWeek(int startOfWeek) const noexcept {
  const uint64_t day = m_value / kDay;
  const uint32_t jan1 = dnm::January1(dnm::CivilFromDayNumber(day).year);
  const long long dayOfYear = static_cast<long long>(day) - jan1 + 1;
  const int offset = (dnm::WeekdayIndex(jan1) + 8 - startOfWeek) % 7;  // days of week 1 before 1 January
  return static_cast<int>(1 + (dayOfYear - 1 + offset) / 7);
}

int DateTime::GetQuarter() const noexcept { return (GetMonth() - 1) / 3 + 1; }

int DateTime::GetISO8601Week() const noexcept { return dnm::IsoPartsOf(m_value / kDay).isoWeek; }

int DateTime::GetISO8601Year() const noexcept { return static_cast<int>(dnm::IsoPartsOf(m_value / kDay).isoYear); }

int DateTime::GetISO8601Quarter() const noexcept {
  const int week = GetISO8601Week();
  return week < 53 ? (week - 1) / 13 + 1 : 4;  // week 53 closes quarter 4
}

int DateTime::GetDaysSinceStartOfWeek(const IDateOptions& options) const {
  return GetDaysSinceStartOfWeek(GetDayOfWeek(), options);
}

int DateTime::GetDaysSinceStartOfWeek(int dayOfWeek, const IDateOptions& options) {
  return (dayOfWeek + 7 - StartOfWeek(options)) % 7;
}

long long DateTime::GetDaysSinceOLEEpoch() const noexcept {
  if (m_value >= s_OLEEpoch) return static_cast<long long>((m_value - s_OLEEpoch) / kDay);
  // Counts calendar days: the time of day moves an earlier instant to the
  // start of its day first.
  return -static_cast<long long>((m_value % kDay + (s_OLEEpoch - m_value)) / kDay);
}

int DateTime::GetDaysSinceBaseDateEpoch() const noexcept { return static_cast<int>(GetDaysSinceOLEEpoch() - 2); }

bool DateTime::HasDate() const noexcept { return m_value / kDay != dnm::kOleEpochDay; }

bool DateTime::HasTime() const noexcept { return m_value % kDay != 0; }

DateTime DateTime::GetDate() const {
  const uint64_t day = m_value / kDay;
  // From 400 on, rebuilding the date through SetDateTime is the identity on
  // the day number; below and beyond the range it is done literally.
  if (day >= dnm::kFirstDayOf400 && day <= dnm::kLastValidDay) return FromValue(day * kDay);
  const YearMonthDay ymd = GetYearMonthDay();
  return DateTime(ymd.year, ymd.month, ymd.day, 0, 0, 0, 0.0);
}

// --- Fiscal parts --------------------------------------------------------------

int DateTime::GetFiscalYear(FYSValues fys) const noexcept {
  const YearMonthDay ymd = GetYearMonthDay();
  return ConvertToFiscalYear(ymd.year, ymd.month, fys);
}

int DateTime::GetFiscalQuarter(FYSValues fys) const noexcept { return ConvertToFiscalQuarter(GetMonth(), fys); }

int DateTime::GetFiscalMonth(FYSValues fys) const noexcept { return ConvertToFiscalMonth(GetMonth(), fys); }

DateTime::YearMonthDay DateTime::GetFiscalYearMonthDay(FYSValues fys) const noexcept {
  const YearMonthDay ymd = GetYearMonthDay();
  return YearMonthDay(ConvertToFiscalYear(ymd.year, ymd.month, fys), ConvertToFiscalMonth(ymd.month, fys), ymd.day);
}

int DateTime::GetFiscalWeek(const IDateOptions& options) const {
  const FYSValues fys = options.GetFiscalYearStart();
  const YearMonthDay ymd = GetYearMonthDay();
  const DateTime start = FiscalYearStart(ConvertToFiscalYear(ymd.year, ymd.month, fys), fys);
  const uint64_t startDay = start.m_value / kDay;
  // Whole days from the start of the fiscal year (the day of the year - 1
  // when it starts in January).
  const long long days = static_cast<long long>(m_value / kDay) - static_cast<long long>(startDay);
  const int offset = (dnm::WeekdayIndex(startDay) + 8 - StartOfWeek(options)) % 7;
  return static_cast<int>(1 + (days + offset) / 7);
}

// --- Period bounds -------------------------------------------------------------

DateTime DateTime::FiscalYearStart(int fiscalYear, FYSValues fys) {
  return DateTime(fys == 1 ? fiscalYear : fiscalYear - 1, static_cast<int>(fys), 1);
}

DateTime DateTime::FiscalYearEnd(int fiscalYear, FYSValues fys) {
  return DateTime(fys == 1 ? fiscalYear + 1 : fiscalYear, static_cast<int>(fys), 1) - DateTimeSpan::Days(1);
}

DateTime DateTime::FiscalQuarterStart(int fiscalYear, int quarter, FYSValues fys) {
  const int month = GetFirstMonthInQuarter(quarter, fys);
  return DateTime(ConvertToCalendarYear(fiscalYear, month, fys), month, 1);
}

DateTime DateTime::FiscalQuarterEnd(int fiscalYear, int quarter, FYSValues fys) {
  const int month = GetLastMonthInQuarter(quarter, fys);
  return LastDay(ConvertToCalendarYear(fiscalYear, month, fys), month);
}

DateTime DateTime::FiscalMonthStart(int fiscalYear, int fiscalMonth, FYSValues fys) {
  const int month = ConvertToCalendarMonth(fiscalMonth, fys);
  return DateTime(ConvertToCalendarYear(fiscalYear, month, fys), month, 1);
}

DateTime DateTime::FiscalMonthEnd(int fiscalYear, int fiscalMonth, FYSValues fys) {
  const int month = ConvertToCalendarMonth(fiscalMonth, fys);
  return LastDay(ConvertToCalendarYear(fiscalYear, month, fys), month);
}

DateTime DateTime::FiscalWeekStart(int fiscalYear, int week, const IDateOptions& options) {
  const FYSValues fys = options.GetFiscalYearStart();
  const DateTime start(fys == 1 ? fiscalYear : fiscalYear - 1, static_cast<int>(fys), 1);
  const int offset = (dnm::WeekdayIndex(start.m_value / kDay) + 8 - StartOfWeek(options)) % 7;
  return start + DateTimeSpan::Days(7LL * (week - 1) - offset);
}

DateTime DateTime::FiscalWeekEnd(int fiscalYear, int week, const IDateOptions& options) {
  return FiscalWeekStart(fiscalYear, week, options) + DateTimeSpan::Days(6);
}

DateTime DateTime::FiscalDayOfWeek(int fiscalYear, int week, int day, const IDateOptions& options) {
  // Sunday-based weeks whatever the options say; only the fiscal start is taken.
  const GregorianDateOptions sundayWeeks(options.GetFiscalYearStart());
  return FiscalWeekStart(fiscalYear, week, sundayWeeks) + DateTimeSpan::Days(day - 1LL);
}

DateTime DateTime::ISO8601YearStart(int isoYear) noexcept { return Midnight(dnm::IsoYearStart(isoYear)); }

DateTime DateTime::ISO8601YearEnd(int isoYear) noexcept { return Midnight(dnm::IsoYearStart(isoYear + 1LL) - 1); }

DateTime DateTime::ISO8601WeekStart(int isoYear, int week) noexcept {
  return Midnight(dnm::IsoYearStart(isoYear) + 7LL * (week - 1));
}

DateTime DateTime::ISO8601WeekEnd(int isoYear, int week) noexcept {
  return Midnight(dnm::IsoYearStart(isoYear) + 7LL * (week - 1) + 6);
}

DateTime DateTime::ISO8601QuarterStart(int isoYear, int quarter) noexcept {
  return ISO8601WeekStart(isoYear, 13 * quarter - 12);
}

DateTime DateTime::ISO8601QuarterEnd(int isoYear, int quarter) noexcept {
  // The fourth quarter ends with the year's last week, 52 or 53.
  const int lastWeek = quarter == 4 ? dnm::IsoPartsOf(dnm::DayNumberFromCivil(isoYear, 12, 28)).isoWeek : 13 * quarter;
  return ISO8601WeekEnd(isoYear, lastWeek);
}

DateTime DateTime::LastDay(int year, int month) {
  const long long days = static_cast<long long>(dnm::DayNumberFromCivil(year, static_cast<int8_t>(month + 1), 1)) -
                         dnm::DayNumberFromCivil(year, static_cast<int8_t>(month), 1);
  return DateTime(year, month, static_cast<int>(days));
}

// --- Week numbers of periods -----------------------------------------------------

namespace {

// The first and last day of a fiscal month, quarter or year (-1 = not given).
std::pair<DateTime, DateTime> FiscalPeriod(int fiscalYear, int fiscalQuarter, int fiscalMonth, FYSValues fys) {
  if (fiscalMonth != -1) {
    VEL_ASSERT_IN("data/DateTime", 1 <= fiscalMonth && fiscalMonth <= 12);
    return {DateTime::FiscalMonthStart(fiscalYear, fiscalMonth, fys),
            DateTime::FiscalMonthEnd(fiscalYear, fiscalMonth, fys)};
  }
  if (fiscalQuarter != -1) {
    VEL_ASSERT_IN("data/DateTime", 1 <= fiscalQuarter && fiscalQuarter <= 4);
    return {DateTime::FiscalQuarterStart(fiscalYear, fiscalQuarter, fys),
            DateTime::FiscalQuarterEnd(fiscalYear, fiscalQuarter, fys)};
  }
  return {DateTime::FiscalYearStart(fiscalYear, fys), DateTime::FiscalYearEnd(fiscalYear, fys)};
}

}  // namespace

int DateTime::FirstWeek(int fiscalYear, int fiscalQuarter, int fiscalMonth, const IDateOptions& options) {
  return FiscalPeriod(fiscalYear, fiscalQuarter, fiscalMonth, options.GetFiscalYearStart()).first.GetFiscalWeek(options);
}

int DateTime::LastWeek(int fiscalYear, int fiscalQuarter, int fiscalMonth, const IDateOptions& options) {
  return FiscalPeriod(fiscalYear, fiscalQuarter, fiscalMonth, options.GetFiscalYearStart()).second.GetFiscalWeek(options);
}

int DateTime::FirstISO8601Week(int isoYear, int isoQuarter) {
  if (isoYear == -1) isoYear = kDefaultISOYear;
  if (isoQuarter == -1) isoQuarter = 1;
  VEL_ASSERT_IN("data/DateTime", isoYear >= 0);
  VEL_ASSERT_IN("data/DateTime", 1 <= isoQuarter && isoQuarter <= 4);
  return 13 * isoQuarter - 12;
}

int DateTime::LastISO8601Week(int isoYear, int isoQuarter) {
  if (isoYear == -1) isoYear = kDefaultISOYear;
  if (isoQuarter == -1) isoQuarter = 4;
  VEL_ASSERT_IN("data/DateTime", isoYear >= 0);
  VEL_ASSERT_IN("data/DateTime", 1 <= isoQuarter && isoQuarter <= 4);
  if (isoQuarter < 4) return 13 * isoQuarter;
  // 28 December always lies in the year's last ISO week.
  return dnm::IsoPartsOf(dnm::DayNumberFromCivil(isoYear, 12, 28)).isoWeek;
}

// --- Conversions -------------------------------------------------------------------

double DateTime::ToOleDate() const noexcept { return OleDateFromFixedPrecision(m_value, false); }

QDateTime DateTime::ToQDateTime(bool utc) const {
  const YearMonthDay ymd = GetYearMonthDay();
  return QDateTime(QDate(ymd.year, ymd.month, ymd.day), QTime(GetHour(), GetMinute(), GetSecond(), GetMilliseconds()),
                   utc ? Qt::UTC : Qt::LocalTime);
}

QDate DateTime::ToQDate(bool utc) const { return ToQDateTime(utc).date(); }

bool DateTime::GetAsUnixTime(long& out, bool utc) const {
  out = static_cast<long>(ToQDateTime(utc).toTime_t());
  return true;
}

DateTime DateTime::LocalFromUTC(const DateTime& utc) {
  return FromQDateTimeFields(utc.ToQDateTime(true).toTimeSpec(Qt::LocalTime));
}

DateTime DateTime::UTCFromLocal(const DateTime& local) {
  return FromQDateTimeFields(local.ToQDateTime(false).toTimeSpec(Qt::UTC));
}

DateTime DateTime::GetLocalTime() { return CurrentTime(false); }

DateTime DateTime::GetUniversalTime() { return CurrentTime(true); }

long long DateTime::TotalMillisecondsFromMinDateTimeUTC() {
  return (GetUniversalTime() - OLEEpoch).GetTotalMilliseconds();
}

bool DateTime::IsFractionTruncated(double fraction) {
  if (!(fraction >= 0.0 && fraction < 1.0)) ThrowInvalidTime(&VelErrorsError::AutoGen_0x47EE95FC);
  return std::fmod(fraction * 10000.0, 1.0) > DBL_EPSILON;
}

unsigned long long DateTime::OleDateToFixedPrecision(double oleDate) noexcept {
  // NaN and distances the 64-bit count cannot hold would wrap around to a
  // valid-looking date; they give raw 0, which IsValid() rejects.
  if (std::isnan(oleDate)) return 0;
  // The magnitude is truncated, so the conversion is symmetric about the epoch.
  const double magnitude = std::trunc(std::fabs(oleDate) * 864000000.0);
  const uint64_t room = oleDate < 0 ? s_OLEEpoch : UINT64_MAX - s_OLEEpoch;
  if (!(magnitude <= static_cast<double>(room))) return 0;
  const uint64_t units = static_cast<uint64_t>(magnitude);
  if (units > room) return 0;  // the double nearest `room` may round above it
  return oleDate < 0 ? s_OLEEpoch - units : s_OLEEpoch + units;
}

double DateTime::OleDateFromFixedPrecision(unsigned long long value, bool truncateToSeconds) noexcept {
  if (truncateToSeconds) value = value / kSecond * kSecond;
  if (value >= s_OLEEpoch) return static_cast<double>(value - s_OLEEpoch) / 864000000.0;
  return -(static_cast<double>(s_OLEEpoch - value) / 864000000.0);
}

std::ostream& operator<<(std::ostream& os, const DateTime& dt) { return os << dt.ToOleDate(); }
