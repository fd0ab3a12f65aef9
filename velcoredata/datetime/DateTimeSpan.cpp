#include "velcoredata/datetime/DateTimeSpan.h"

#include <cmath>

#include "velcoredata/datetime/DayNumber.h"
#include "velcoredata/datetime/internal/DayNumberMath.h"

DateTimeSpan::DateTimeSpan(long long days, long long hours, long long minutes, long long seconds,
                           double fraction) noexcept {
  SetDateTimeSpan(days, hours, minutes, seconds, fraction);
}

void DateTimeSpan::SetDateTimeSpan(long long days, long long hours, long long minutes, long long seconds,
                                   double fraction) noexcept {
  const long long units = DayNumberMath::SaturatingTrunc(fraction * 10000.0 + 0.5);  // half up
  m_span = duration::hmsduration(days, hours, minutes, seconds, units).units;
}

double DateTimeSpan::OleSpanFromFixedPrecision(long long units, bool truncateToSeconds) noexcept {
  uint64_t magnitude = units < 0 ? 0 - static_cast<uint64_t>(units) : static_cast<uint64_t>(units);
  if (truncateToSeconds) magnitude = magnitude / 10000 * 10000;
  const double days = static_cast<double>(magnitude) / 864000000.0;
  return units < 0 ? -days : days;
}

long long DateTimeSpan::OleSpanToFixedPrecision(double oleSpan) noexcept {
  const long long magnitude = DayNumberMath::SaturatingTrunc(std::fabs(oleSpan) * 864000000.0);
  return oleSpan < 0 ? -magnitude : magnitude;
}
