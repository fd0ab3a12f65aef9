// DateTimeRange: a closed range of date-times, or the empty range.
//
// The empty range has both ends at the OLE epoch. A range is made with its
// ends in order (start <= end); a range out of order is a programming error
// (logic exception "Range DateTimes are out of order", source
// "data/DateTimeRange").
//
// Thread-safety: a plain value; EMPTY_RANGE is constant-initialised.
#pragma once

#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT DateTimeRange {
 public:
  static const DateTimeRange EMPTY_RANGE;

  constexpr DateTimeRange() noexcept = default;
  DateTimeRange(const DateTime& start, const DateTime& end);

  constexpr bool IsEmpty() const noexcept { return m_empty; }
  constexpr const DateTime& GetStart() const noexcept { return m_start; }
  constexpr const DateTime& GetEnd() const noexcept { return m_end; }

  // The overlap (later start, earlier end) when the ranges touch or overlap,
  // otherwise EMPTY_RANGE. The empty flags are not consulted: an empty range
  // takes part with its OLE-epoch ends.
  DateTimeRange Intersect(const DateTimeRange& other) const;

  friend constexpr bool operator==(const DateTimeRange& a, const DateTimeRange& b) noexcept {
    return a.m_empty == b.m_empty && a.m_start == b.m_start && a.m_end == b.m_end;
  }
  friend constexpr bool operator!=(const DateTimeRange& a, const DateTimeRange& b) noexcept { return !(a == b); }

 private:
  bool m_empty = true;
  DateTime m_start;
  DateTime m_end;
};
