#include "velcoredata/datetime/DateTimeRange.h"

#include <algorithm>

#include "velcoredata/platform/LogicException.h"

constinit const DateTimeRange DateTimeRange::EMPTY_RANGE;

DateTimeRange::DateTimeRange(const DateTime& start, const DateTime& end) : m_empty(false), m_start(start), m_end(end) {
  if (!(start <= end)) VEL_FAIL_IN("data/DateTimeRange", "Range DateTimes are out of order");
}

DateTimeRange DateTimeRange::Intersect(const DateTimeRange& other) const {
  if (m_end < other.m_start || other.m_end < m_start) return EMPTY_RANGE;
  return DateTimeRange(std::max(m_start, other.m_start), std::min(m_end, other.m_end));
}
