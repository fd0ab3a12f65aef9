#include "velcoredata/datetime/DayNumber.h"

#include "velcoredata/datetime/internal/DayNumberMath.h"

namespace {
uint64_t Magnitude(long long x) { return x < 0 ? 0 - static_cast<uint64_t>(x) : static_cast<uint64_t>(x); }
}  // namespace

date date::gregoriandate(long year, char month, char day) {
  return date{DayNumberMath::DayNumberFromCivil(year, static_cast<int8_t>(month), static_cast<int8_t>(day))};
}

date date::iso8601date(long isoYear, char isoWeek, char isoWeekday) {
  const long long monday = DayNumberMath::IsoYearStart(isoYear);
  const long long day = monday + (static_cast<int8_t>(isoWeek) - 1) * 7LL + (static_cast<int8_t>(isoWeekday) - 1);
  return date{static_cast<uint32_t>(day)};
}

int date::iso8601weekday(const date& d) { return DayNumberMath::IsoWeekday(d.dayNumber); }

void date::iso8601parts(long& isoYear, char& isoWeek, char& isoWeekday, const date& d) {
  const DayNumberMath::IsoParts parts = DayNumberMath::IsoPartsOf(d.dayNumber);
  isoYear = static_cast<long>(parts.isoYear);
  isoWeek = static_cast<char>(parts.isoWeek);
  isoWeekday = static_cast<char>(parts.isoWeekday);
}

duration duration::hmsduration(long long days, long long hours, long long minutes, long long seconds,
                               long long units) {
  const uint64_t magnitude =
      (((Magnitude(days) * 24 + Magnitude(hours)) * 60 + Magnitude(minutes)) * 60 + Magnitude(seconds)) * 10000 +
      Magnitude(units);
  const bool negative = days < 0 || hours < 0 || minutes < 0 || seconds < 0 || units < 0;
  return duration{static_cast<int64_t>(negative ? 0 - magnitude : magnitude)};
}
