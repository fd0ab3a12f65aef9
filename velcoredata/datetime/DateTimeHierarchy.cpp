#include "velcoredata/datetime/DateTimeHierarchy.h"

#include <algorithm>

#include "velcoredata/platform/LogicException.h"

namespace {
constexpr const char* kSource = "data/DateTimeHierarchy";
}  // namespace

DateTimeHierarchy::DateTimeHierarchy(const std::vector<AggType>& dateAggregationsSortedFromCoarsestToFinest)
    : m_dateAggregationsSortedFromCoarsestToFinest(dateAggregationsSortedFromCoarsestToFinest) {}

bool DateTimeHierarchy::Contains(AggType dateAggregation) const noexcept {
  const auto& dateAggregations = m_dateAggregationsSortedFromCoarsestToFinest;
  return std::find(dateAggregations.cbegin(), dateAggregations.cend(), dateAggregation) != dateAggregations.cend();
}

int DateTimeHierarchy::GetPositionOfDateAggregation(AggType dateAggregation) const {
  const auto& dateAggregations = m_dateAggregationsSortedFromCoarsestToFinest;
  const auto positionInHierarchy = std::find(dateAggregations.cbegin(), dateAggregations.cend(), dateAggregation);
  VEL_ASSERT_IN(kSource, positionInHierarchy != dateAggregations.cend());
  return static_cast<int>(positionInHierarchy - dateAggregations.cbegin());
}

bool DateTimeHierarchy::HasNestedDateAggregation(AggType dateAggregation) const {
  return GetPositionOfDateAggregation(dateAggregation) + 1 <
         static_cast<int>(m_dateAggregationsSortedFromCoarsestToFinest.size());
}

AggType DateTimeHierarchy::GetNestedDateAggregation(AggType dateAggregation) const {
  const auto positionInHierarchy =
      m_dateAggregationsSortedFromCoarsestToFinest.cbegin() + GetPositionOfDateAggregation(dateAggregation) + 1;
  VEL_ASSERT_IN(kSource, positionInHierarchy != m_dateAggregationsSortedFromCoarsestToFinest.cend());
  return *positionInHierarchy;
}

bool DateTimeHierarchy::HasContainingDateAggregation(AggType dateAggregation) const {
  return GetPositionOfDateAggregation(dateAggregation) > 0;
}

AggType DateTimeHierarchy::GetContainingDateAggregation(AggType dateAggregation) const {
  const auto positionInHierarchy =
      m_dateAggregationsSortedFromCoarsestToFinest.cbegin() + GetPositionOfDateAggregation(dateAggregation);
  VEL_ASSERT_IN(kSource, positionInHierarchy != m_dateAggregationsSortedFromCoarsestToFinest.cbegin());
  return *(positionInHierarchy - 1);
}

DateTimeHierarchyAggPredicates DateTimeHierarchy::Is(AggType dateAggregation) const noexcept {
  return DateTimeHierarchyAggPredicates(*this, dateAggregation);
}

bool DateTimeHierarchyAggPredicates::MoreDetailedThan(AggType lessDetailedDateAggregation) const {
  const int position = m_hierarchy.GetPositionOfDateAggregation(m_dateAggregation);
  VEL_ASSERT_IN(kSource, m_hierarchy.Contains(lessDetailedDateAggregation));
  return m_hierarchy.GetPositionOfDateAggregation(lessDetailedDateAggregation) < position;
}
