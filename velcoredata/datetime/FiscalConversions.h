// Conversions between calendar and fiscal years, months and quarters.
//
// `fys` is the month (1-12) in which the fiscal year starts. The fiscal year
// is named after the calendar year in which it ends: with fys other than 1,
// the months from fys on belong to the next fiscal year; with fys = 1 fiscal
// and calendar years coincide. Example with fys = 4 (April): May 2020 is
// fiscal year 2021, fiscal month 2, fiscal quarter 1.
//
// Pure integer functions; months outside 1-12 are not checked.
#pragma once

#include "velcoredata/datetime/DateTypes.h"
#include "velcoredata/platform/Export.h"

VELCOREDATA_EXPORT int ConvertToFiscalYear(int year, int month, FYSValues fys) noexcept;
VELCOREDATA_EXPORT int ConvertToCalendarYear(int fiscalYear, int month, FYSValues fys) noexcept;
VELCOREDATA_EXPORT int ConvertToFiscalMonth(int month, FYSValues fys) noexcept;           // [1, 12]
VELCOREDATA_EXPORT int ConvertToCalendarMonth(int fiscalMonth, FYSValues fys) noexcept;   // [1, 12]
VELCOREDATA_EXPORT int ConvertToFiscalQuarter(int month, FYSValues fys) noexcept;         // [1, 4]
// The calendar months that open and close fiscal quarter q.
VELCOREDATA_EXPORT int GetFirstMonthInQuarter(int quarter, FYSValues fys) noexcept;
VELCOREDATA_EXPORT int GetLastMonthInQuarter(int quarter, FYSValues fys) noexcept;
// The fiscal months that open and close fiscal quarter q: 3q - 2 and 3q.
VELCOREDATA_EXPORT int GetFirstFiscalMonthInFiscalQuarter(int quarter) noexcept;
VELCOREDATA_EXPORT int GetLastFiscalMonthInFiscalQuarter(int quarter) noexcept;
