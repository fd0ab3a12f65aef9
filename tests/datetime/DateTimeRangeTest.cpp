// DateTimeRange: the empty range, ordering of the ends, intersection.

#include <gtest/gtest.h>

#include "DateTestSupport.h"
#include "velcoredata/datetime/DateTimeRange.h"

namespace {

using datetest::D;

TEST(DateTimeRangeTest, EmptyRangeHasOleEpochEnds) {
  const DateTimeRange empty;
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_EQ(empty.GetStart(), DateTime());
  EXPECT_EQ(empty.GetEnd(), DateTime());
  EXPECT_EQ(empty, DateTimeRange::EMPTY_RANGE);
  // A one-instant range at the epoch is not the empty range.
  EXPECT_NE(DateTimeRange(DateTime(), DateTime()), DateTimeRange::EMPTY_RANGE);
}

TEST(DateTimeRangeTest, EndsMustBeInOrder) {
  const DateTimeRange r(D(2021, 1, 1), D(2021, 2, 1));
  EXPECT_FALSE(r.IsEmpty());
  EXPECT_EQ(r.GetStart(), D(2021, 1, 1));
  EXPECT_EQ(r.GetEnd(), D(2021, 2, 1));
  datetest::ExpectLogicError("data/DateTimeRange", "Range DateTimes are out of order",
                             [] { DateTimeRange(D(2021, 2, 1), D(2021, 1, 1)); });
}

TEST(DateTimeRangeTest, IntersectionIsTheOverlapOrEmpty) {
  const DateTimeRange jan(D(2021, 1, 1), D(2021, 1, 31));
  const DateTimeRange midJanToFeb(D(2021, 1, 15), D(2021, 2, 15));
  const DateTimeRange feb(D(2021, 2, 1), D(2021, 2, 28));
  const DateTimeRange lastDayOfJan(D(2021, 1, 31), D(2021, 2, 5));
  EXPECT_EQ(jan.Intersect(midJanToFeb), DateTimeRange(D(2021, 1, 15), D(2021, 1, 31)));
  EXPECT_EQ(midJanToFeb.Intersect(jan), DateTimeRange(D(2021, 1, 15), D(2021, 1, 31)));
  EXPECT_EQ(jan.Intersect(feb), DateTimeRange::EMPTY_RANGE);
  EXPECT_EQ(feb.Intersect(jan), DateTimeRange::EMPTY_RANGE);
  // Touching ranges meet in one instant.
  EXPECT_EQ(jan.Intersect(lastDayOfJan), DateTimeRange(D(2021, 1, 31), D(2021, 1, 31)));
  EXPECT_EQ(jan.Intersect(DateTimeRange(D(2020, 1, 1), D(2022, 1, 1))), jan);
  // The empty flag is not consulted: the empty range takes part as the
  // instant 1899-12-30.
  const DateTimeRange around1900(D(1899, 1, 1), D(1900, 6, 1));
  EXPECT_EQ(DateTimeRange::EMPTY_RANGE.Intersect(around1900), DateTimeRange(DateTime(), DateTime()));
  EXPECT_EQ(DateTimeRange::EMPTY_RANGE.Intersect(jan), DateTimeRange::EMPTY_RANGE);
}

}  // namespace
