// Date arithmetic: moving a DateTime by periods, counting the periods between
// two, and finding the start of the period that holds one.
//
// Calendar periods (years, quarters, months) move by months with the day
// clamped to the end of a shorter month; weeks, days and time periods move
// by fixed spans. The time of day is always kept. Nothing here checks the
// valid DateTime range. Unknown period types raise VelmoraException with the
// text "unexpected DatePeriodType".
//
// Pure functions; any thread. None of them allocates unless it throws.
#pragma once

#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/datetime/DateTypes.h"
#include "velcoredata/datetime/IDateOptions.h"
#include "velcoredata/platform/Export.h"

// Moves `dt` by `n` periods. Years, quarters and months add 12n, 3n or n
// months to the calendar month and clamp the day (31 January + 1 month is
// 28 or 29 February); weeks, days, hours, minutes and seconds add fixed
// spans; ISO years, quarters and weeks as the functions below. Throws
// 0xD0038968 for another type.
VELCOREDATA_EXPORT DateTime AdjustByDatePeriod(const DateTime& dt, DatePeriodType type, long long n);

// The number of period boundaries between b and a (a later: positive), not
// the number of whole periods elapsed: 2020-12-31 23:59 to 2021-01-01 00:00
// is one year. Years, quarters and months are counted in fiscal years of
// the options' fiscal start, weeks from the options' start of week, ISO
// periods on ISO-8601 weeks. Antisymmetric: swapping a and b negates it.
// Throws 0xADE0C173 for an unknown type.
VELCOREDATA_EXPORT long long DatePeriodDifference(const DateTime& a, const DateTime& b, DatePeriodType type,
                                                  const IDateOptions& options);

// 00:00:00 of the first day of the period holding `dt` (hours, minutes and
// seconds: dt with the finer fields cleared). Years and quarters are fiscal
// periods of the options' fiscal start; weeks start on the options' start of
// week, and so do ISO weeks: pass ISO8601DateOptions for Monday weeks.
// Throws 0x16E59994 for an unknown type.
VELCOREDATA_EXPORT DateTime FindStartOfPeriod(const DateTime& dt, DatePeriodType type, const IDateOptions& options);

// Moves by ISO-8601 years: the same day count from the start of the ISO year,
// so the ISO week and weekday are kept. Days of week 53 spill into the next
// ISO year when the target year has 52 weeks (no clamping).
VELCOREDATA_EXPORT DateTime AdjustByIsoYears(const DateTime& dt, int n);
// Moves by ISO-8601 quarters of 13 weeks: the same day count from the start
// of the ISO quarter. A day of week 53 (the fourth quarter's 14th week) that
// lands in a 13-week quarter is clamped to the same weekday of that
// quarter's last week, as months clamp their last days, so the result always
// lies in the target quarter.
VELCOREDATA_EXPORT DateTime AdjustByIsoQuarters(const DateTime& dt, int n);
// Moves by ISO-8601 weeks: always seven days each, so week 53 needs no
// special case and moving back by the same count returns to the start.
VELCOREDATA_EXPORT DateTime AdjustByIsoWeeks(const DateTime& dt, int n);
