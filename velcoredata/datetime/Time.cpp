#include "velcoredata/datetime/Time.h"

#include <cfloat>
#include <cmath>

#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/datetime/DateTimeParsingFormats.h"
#include "velcoredata/datetime/internal/DayNumberMath.h"
#include "velcoredata/datetime/internal/InvalidTime.h"
#include "velcoredata/locale/TLocale.h"

namespace {

bool FieldsInRange(unsigned hour, unsigned minute, unsigned second) { return hour < 24 && minute < 60 && second < 60; }

unsigned long long Compose(unsigned hour, unsigned minute, unsigned second, unsigned long long microsecond) {
  return (hour * 3600ULL + minute * 60ULL + second) * 1000000ULL + microsecond;
}

// An interval's time part as microseconds in [0, one day).
unsigned long long DayOffset(const Interval& interval) {
  const long long day = static_cast<long long>(Time::kMicrosecondsPerDay);
  const long long part = interval.GetTotalMicroseconds() % day;
  return static_cast<unsigned long long>(part < 0 ? part + day : part);
}

}  // namespace

Time::Time(unsigned hour, unsigned minute, unsigned second, unsigned microsecond) {
  // One million microseconds is admitted: it reaches the next second.
  if (!FieldsInRange(hour, minute, second) || microsecond > 1000000u) {
    ThrowInvalidTime(&VelErrorsError::AutoGen_0x5A975297);
  }
  m_microseconds = Compose(hour, minute, second, microsecond);
}

Time::Time(unsigned hour, unsigned minute, unsigned second, double fraction) {
  const long long microsecond = DayNumberMath::SaturatingTrunc(fraction * 1e6 + 0.5);  // half up
  if (!FieldsInRange(hour, minute, second) || std::isnan(fraction) || microsecond < 0 || microsecond > 1000000) {
    ThrowInvalidTime(&VelErrorsError::AutoGen_0x22D59FE2);
  }
  m_microseconds = Compose(hour, minute, second, static_cast<unsigned long long>(microsecond));
}

bool Time::IsFractionRounded(double fraction) {
  if (!(fraction >= 0.0 && fraction < 1.0)) ThrowInvalidTime(&VelErrorsError::AutoGen_0xBE17C602);
  return std::fmod(fraction * 1e6, 1.0) > DBL_EPSILON;
}

TString Time::Format() const {
  constexpr int kTimeOfDayFormat = 65;
  return TLocale::GetUserDefaultLocale().Format(*this, LookupDateTimeParsingFormatString(kTimeOfDayFormat));
}

Time& Time::operator+=(const Interval& interval) noexcept {
  m_microseconds = (m_microseconds + DayOffset(interval)) % kMicrosecondsPerDay;
  return *this;
}

Time& Time::operator-=(const Interval& interval) noexcept {
  const unsigned long long d = DayOffset(interval);
  m_microseconds = d > m_microseconds ? m_microseconds + kMicrosecondsPerDay - d : m_microseconds - d;
  return *this;
}
