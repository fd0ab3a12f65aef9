// IDateOptions: which calendar dates are read in, and its settings.
//
// Date options say whether dates are plain Gregorian or ISO-8601 weeks, on
// which day a week starts, in which month the fiscal year starts and how the
// first week of a year is chosen; they also list the date aggregations the
// calendar offers and how they nest. DateTime and the date arithmetic take an
// IDateOptions wherever week or fiscal rules matter.
//
// The virtual operations are in a fixed slot order that hosts rely on; do not
// reorder them. The aggregation lists are process-wide vectors built on first
// use and never freed: the references stay valid until the process exits.
//
// Thread-safety: the options objects are not locked; an object shared between
// threads must not be changed while others read it. The lists and
// hierarchies are built once under thread-safe static initialisation.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "velcoredata/datetime/DateTimeHierarchy.h"
#include "velcoredata/datetime/DateTypes.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT IDateOptions {
 public:
  virtual ~IDateOptions();
  // A new heap copy; the caller owns it.
  virtual IDateOptions* Clone() const = 0;
  virtual CalendarType GetCalendarType() const = 0;
  virtual TString GetCalendarTypeId() const = 0;
  virtual SOWValue GetStartOfWeek() const = 0;
  virtual void SetStartOfWeek(SOWValue startOfWeek) = 0;
  virtual FYSValues GetFiscalYearStart() const = 0;
  virtual void SetFiscalYearStart(FYSValues fiscalYearStart) = 0;
  virtual unsigned GetMinDaysInFirstWeek() const = 0;
  virtual FirstWeekBehaviour GetFirstWeekBehavior() const = 0;
  // The nesting of the calendar's aggregations for dates or date-times and
  // for date parts or truncations. A pair outside those four throws
  // std::out_of_range.
  virtual DateTimeHierarchy GetHierarchy(DateDataType dataType, DateComputationKind kind) const = 0;
  virtual const std::vector<AggType>& GetBinDateAggregations() const = 0;
  virtual const std::vector<AggType>& GetBinDateTimeAggregations() const = 0;
  virtual const std::vector<AggType>& GetUncommonDateAggregations() const = 0;
  virtual const std::vector<AggType>& GetTruncDateAggregations() const = 0;
  virtual const std::vector<AggType>& GetTruncDateTimeAggregations() const = 0;
  // The code this calendar uses for an aggregation of the other calendar;
  // non-date codes pass through unchanged.
  virtual AggType GetNormalizedAggType(AggType aggType) const = 0;

 protected:
  IDateOptions() = default;
  IDateOptions(const IDateOptions&) = default;
  IDateOptions& operator=(const IDateOptions&) = default;
};

// Equal when calendar type, start of week, fiscal year start and minimum
// days in the first week are all equal (first-week behaviour and the lists
// are not compared).
VELCOREDATA_EXPORT bool operator==(const IDateOptions& a, const IDateOptions& b);
VELCOREDATA_EXPORT bool operator!=(const IDateOptions& a, const IDateOptions& b);
// Compares the same four values in the same order and is true at the first
// one where the left is smaller; a larger left value does not decide but
// moves on to the next. Not a strict order (two options can each be "less"
// than the other): hosts key containers on it and depend on its answers.
VELCOREDATA_EXPORT bool operator<(const IDateOptions& a, const IDateOptions& b);
