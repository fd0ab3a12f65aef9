// DateTimeHierarchy: positions, nesting in both directions, the predicates,
// and the logic errors for codes outside the hierarchy or beyond its ends.

#include <vector>

#include <gtest/gtest.h>

#include "DateTestSupport.h"
#include "velcoredata/datetime/DateTimeHierarchy.h"

namespace {

using A = AggType;
using datetest::ExpectLogicError;

const DateTimeHierarchy& YearToDay() {
  static const DateTimeHierarchy h({A::DatePartYear, A::DatePartQuarter, A::DatePartMonth, A::DatePartDay});
  return h;
}

constexpr const char* kSource = "data/DateTimeHierarchy";
constexpr const char* kAbsent = "positionInHierarchy != dateAggregations.cend()";

TEST(DateTimeHierarchyTest, PositionsAndNeighboursFollowTheListOrder) {
  const DateTimeHierarchy& h = YearToDay();
  const std::vector<A> levels{A::DatePartYear, A::DatePartQuarter, A::DatePartMonth, A::DatePartDay};
  for (size_t i = 0; i < levels.size(); ++i) {
    EXPECT_TRUE(h.Contains(levels[i]));
    EXPECT_EQ(h.GetPositionOfDateAggregation(levels[i]), static_cast<int>(i));
    EXPECT_EQ(h.HasNestedDateAggregation(levels[i]), i + 1 < levels.size());
    EXPECT_EQ(h.HasContainingDateAggregation(levels[i]), i > 0);
    if (i + 1 < levels.size()) {
      EXPECT_EQ(h.GetNestedDateAggregation(levels[i]), levels[i + 1]);
    }
    if (i > 0) {
      EXPECT_EQ(h.GetContainingDateAggregation(levels[i]), levels[i - 1]);
    }
  }
  EXPECT_FALSE(h.Contains(A::DatePartWeek));
  EXPECT_FALSE(h.Contains(static_cast<A>(3)));
}

TEST(DateTimeHierarchyTest, QueriesBeyondTheEndsOrOnAbsentCodesAreLogicErrors) {
  const DateTimeHierarchy& h = YearToDay();
  ExpectLogicError(kSource, "positionInHierarchy != m_dateAggregationsSortedFromCoarsestToFinest.cend()",
                   [&] { h.GetNestedDateAggregation(A::DatePartDay); });
  ExpectLogicError(kSource, "positionInHierarchy != m_dateAggregationsSortedFromCoarsestToFinest.cbegin()",
                   [&] { h.GetContainingDateAggregation(A::DatePartYear); });
  ExpectLogicError(kSource, kAbsent, [&] { h.GetPositionOfDateAggregation(A::DatePartWeek); });
  ExpectLogicError(kSource, kAbsent, [&] { h.HasNestedDateAggregation(A::DatePartWeek); });
  ExpectLogicError(kSource, kAbsent, [&] { h.GetNestedDateAggregation(A::DatePartWeek); });
  ExpectLogicError(kSource, kAbsent, [&] { h.HasContainingDateAggregation(A::DatePartWeek); });
  ExpectLogicError(kSource, kAbsent, [&] { h.GetContainingDateAggregation(A::DatePartWeek); });
}

TEST(DateTimeHierarchyTest, MoreDetailedThanIsStrictlyFinerAndChecksBothCodes) {
  const DateTimeHierarchy& h = YearToDay();
  EXPECT_TRUE(h.Is(A::DatePartDay).MoreDetailedThan(A::DatePartYear));
  EXPECT_TRUE(h.Is(A::DatePartMonth).MoreDetailedThan(A::DatePartQuarter));
  EXPECT_FALSE(h.Is(A::DatePartMonth).MoreDetailedThan(A::DatePartMonth));
  EXPECT_FALSE(h.Is(A::DatePartYear).MoreDetailedThan(A::DatePartDay));
  ExpectLogicError(kSource, kAbsent, [&] { h.Is(A::DatePartWeek).MoreDetailedThan(A::DatePartYear); });
  ExpectLogicError(kSource, "m_hierarchy.Contains(lessDetailedDateAggregation)",
                   [&] { h.Is(A::DatePartDay).MoreDetailedThan(A::DatePartWeek); });
}

TEST(DateTimeHierarchyTest, TheListIsCopied) {
  std::vector<A> list{A::TruncYear, A::TruncDay};
  const DateTimeHierarchy h(list);
  list.push_back(A::TruncHour);
  EXPECT_EQ(h.GetDateAggregations().size(), 2u);
  EXPECT_FALSE(h.Contains(A::TruncHour));
  EXPECT_TRUE(h == DateTimeHierarchy({A::TruncYear, A::TruncDay}));
}

}  // namespace
