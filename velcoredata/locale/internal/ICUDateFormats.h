// Private helpers of the locale code: the ICU calendars and date formats that
// TLocale formats and parses with, and the bridge between a DateTime's raw
// value and ICU's UDate.
#pragma once

#include <memory>

#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/VelICU.h"

namespace LocaleInternal {

// Every calendar TLocale uses: the locale's calendar system, in UTC (a
// DateTime has no zone, so its fields are read and written as they are,
// with no daylight-saving gaps), proleptic (DateTime is Gregorian all the
// way back, so no Julian cut-over in 1582), and strict about field ranges
// (so "2/30/2020" is rejected instead of rolling into March).
// Fails with a logic error when ICU cannot make it.
std::unique_ptr<VelICU::ICUCalendar> MakeCalendar(const VelICU::ICULocale& locale);

// A SimpleDateFormat of `pattern` under `locale`, on such a calendar, with
// the parse attributes used throughout: white space is lenient, numeric
// input is accepted for text fields, literals must match in full.
// Fails with a logic error when ICU cannot make it.
std::unique_ptr<VelICU::ICUSimpleDateFormat> MakeDateFormat(const TString& pattern,
                                                            const VelICU::ICULocale& locale);

// The raw DateTime value of 1970-01-01 00:00 (day number 2,440,587).
inline constexpr unsigned long long kUnixEpochValue = 2440587ull * 864000000ull;
// The valid DateTime range, 0100-01-01 00:00:00 to 9999-12-31 23:59:59, in
// milliseconds from 1970-01-01.
inline constexpr double kMinValidUDate = -59011459200000.0;
inline constexpr double kMaxValidUDate = 253402300799000.0;

// UDate (milliseconds since 1970 UTC) to a raw DateTime value; false when
// the instant lies outside the valid DateTime range.
bool UDateToValue(double udate, unsigned long long& value) noexcept;
// A raw DateTime value to UDate, rounded down to the millisecond (ICU's
// resolution).
double ValueToUDate(unsigned long long value) noexcept;

}  // namespace LocaleInternal
