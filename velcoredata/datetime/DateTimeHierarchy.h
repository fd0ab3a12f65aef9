// DateTimeHierarchy: date aggregations nested from coarsest to finest.
//
// A hierarchy is the order in which a calendar's date parts (or truncations)
// nest, for example year > quarter > month > day. Queries about a code that
// is not in the hierarchy, or about a level beyond either end, are
// programming errors and raise the logic exception (source name
// "data/DateTimeHierarchy").
//
// Thread-safety: immutable after construction.
#pragma once

#include <vector>

#include "velcoredata/datetime/DateTypes.h"
#include "velcoredata/platform/Export.h"

class DateTimeHierarchyAggPredicates;

class VELCOREDATA_EXPORT DateTimeHierarchy {
 public:
  // Copies the list; it must be ordered from coarsest to finest.
  explicit DateTimeHierarchy(const std::vector<AggType>& dateAggregationsSortedFromCoarsestToFinest);

  const std::vector<AggType>& GetDateAggregations() const noexcept {
    return m_dateAggregationsSortedFromCoarsestToFinest;
  }

  bool Contains(AggType dateAggregation) const noexcept;
  // The 0-based position, coarsest first.
  int GetPositionOfDateAggregation(AggType dateAggregation) const;
  // Whether a finer level follows, and that level.
  bool HasNestedDateAggregation(AggType dateAggregation) const;
  AggType GetNestedDateAggregation(AggType dateAggregation) const;
  // Whether a coarser level precedes, and that level.
  bool HasContainingDateAggregation(AggType dateAggregation) const;
  AggType GetContainingDateAggregation(AggType dateAggregation) const;

  // Is(a).MoreDetailedThan(b): whether a is finer than b in this hierarchy.
  DateTimeHierarchyAggPredicates Is(AggType dateAggregation) const noexcept;

  friend bool operator==(const DateTimeHierarchy& a, const DateTimeHierarchy& b) noexcept {
    return a.m_dateAggregationsSortedFromCoarsestToFinest == b.m_dateAggregationsSortedFromCoarsestToFinest;
  }

 private:
  std::vector<AggType> m_dateAggregationsSortedFromCoarsestToFinest;
};

// A code seen through a hierarchy. Holds a reference: it must not outlive the
// hierarchy it came from.
class VELCOREDATA_EXPORT DateTimeHierarchyAggPredicates {
 public:
  DateTimeHierarchyAggPredicates(const DateTimeHierarchy& hierarchy, AggType dateAggregation) noexcept
      : m_hierarchy(hierarchy), m_dateAggregation(dateAggregation) {}

  // Whether `lessDetailedDateAggregation` stands strictly before the held code
  // (is coarser). Both must be in the hierarchy.
  bool MoreDetailedThan(AggType lessDetailedDateAggregation) const;

 private:
  const DateTimeHierarchy& m_hierarchy;
  AggType m_dateAggregation;
};
