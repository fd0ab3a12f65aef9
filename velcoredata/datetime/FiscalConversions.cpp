#include "velcoredata/datetime/FiscalConversions.h"

namespace {
int Month(FYSValues fys) { return static_cast<int>(fys); }
}  // namespace

int ConvertToFiscalYear(int year, int month, FYSValues fys) noexcept {
  return (month >= Month(fys) && fys != 1) ? year + 1 : year;
}

int ConvertToCalendarYear(int fiscalYear, int month, FYSValues fys) noexcept {
  return (month >= Month(fys) && fys != 1) ? fiscalYear - 1 : fiscalYear;
}

int ConvertToFiscalMonth(int month, FYSValues fys) noexcept { return (month + 12 - Month(fys)) % 12 + 1; }

int ConvertToCalendarMonth(int fiscalMonth, FYSValues fys) noexcept { return (fiscalMonth + Month(fys) + 10) % 12 + 1; }

int ConvertToFiscalQuarter(int month, FYSValues fys) noexcept { return (month + 12 - Month(fys)) % 12 / 3 + 1; }

int GetFirstMonthInQuarter(int quarter, FYSValues fys) noexcept { return (Month(fys) + 3 * quarter - 4) % 12 + 1; }

int GetLastMonthInQuarter(int quarter, FYSValues fys) noexcept { return (Month(fys) + 3 * quarter - 2) % 12 + 1; }

int GetFirstFiscalMonthInFiscalQuarter(int quarter) noexcept { return 3 * quarter - 2; }

int GetLastFiscalMonthInFiscalQuarter(int quarter) noexcept { return 3 * quarter; }
