// The fiscal conversions, for every fiscal start and month, against a
// fiscal calendar counted out month by month from the start of the year.

#include <gtest/gtest.h>

#include "velcoredata/datetime/FiscalConversions.h"

namespace {

FYSValues Fys(int month) { return static_cast<FYSValues>(month); }

TEST(FiscalConversionsTest, EveryMonthOfEveryFiscalStartAgreesWithACountedCalendar) {
  for (int fys = 1; fys <= 12; ++fys) {
    // Walk fiscal year 2021 month by month from its first calendar month.
    int year = fys == 1 ? 2021 : 2020;
    int month = fys;
    for (int fiscalMonth = 1; fiscalMonth <= 12; ++fiscalMonth) {
      SCOPED_TRACE("fys " + std::to_string(fys) + " month " + std::to_string(month));
      const int quarter = (fiscalMonth - 1) / 3 + 1;
      EXPECT_EQ(ConvertToFiscalYear(year, month, Fys(fys)), 2021);
      EXPECT_EQ(ConvertToCalendarYear(2021, month, Fys(fys)), year);
      EXPECT_EQ(ConvertToFiscalMonth(month, Fys(fys)), fiscalMonth);
      EXPECT_EQ(ConvertToCalendarMonth(fiscalMonth, Fys(fys)), month);
      EXPECT_EQ(ConvertToFiscalQuarter(month, Fys(fys)), quarter);
      if (fiscalMonth % 3 == 1) {
        EXPECT_EQ(GetFirstMonthInQuarter(quarter, Fys(fys)), month);
        EXPECT_EQ(GetFirstFiscalMonthInFiscalQuarter(quarter), fiscalMonth);
      }
      if (fiscalMonth % 3 == 0) {
        EXPECT_EQ(GetLastMonthInQuarter(quarter, Fys(fys)), month);
        EXPECT_EQ(GetLastFiscalMonthInFiscalQuarter(quarter), fiscalMonth);
      }
      if (++month > 12) {
        month = 1;
        ++year;
      }
    }
  }
}

TEST(FiscalConversionsTest, AprilStartExampleAndIntegerComparisons) {
  EXPECT_EQ(ConvertToFiscalYear(2020, 5, FYSValues::April), 2021);
  EXPECT_EQ(ConvertToFiscalYear(2020, 3, FYSValues::April), 2020);
  EXPECT_EQ(ConvertToFiscalMonth(5, FYSValues::April), 2);
  EXPECT_EQ(ConvertToFiscalQuarter(5, FYSValues::April), 1);
  EXPECT_TRUE(FYSValues::April == 4);
  EXPECT_TRUE(4 == FYSValues::April);
  EXPECT_TRUE(FYSValues::April != 5);
  EXPECT_FALSE(FYSValues::January != 1);
}

}  // namespace
