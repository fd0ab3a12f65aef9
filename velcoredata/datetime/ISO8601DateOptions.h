// ISO8601DateOptions: ISO-8601 weeks. Weeks start on Monday, the first week
// holds at least four days, and the year starts in January; none of this can
// be changed (the setters do nothing, deliberately).
//
// Calendar type 1, id "ISO8601", first-week behaviour 2. Which aggregations
// the calendar offers depends on the ISO-8601 aggregation feature flag
// (FeatureFlagId::ISO8601DateAggregations, 0x8E3D6224), read on every call
// on the calling thread: with the flag on, the ISO date parts and
// truncations (26-29, 38-41) with the Gregorian time parts; with it off, the
// Gregorian codes that make sense on ISO weeks (year and week, weekday and
// day for date-times) with the time parts.
#pragma once

#include "velcoredata/datetime/IDateOptions.h"

class VELCOREDATA_EXPORT ISO8601DateOptions : public IDateOptions {
 public:
  ISO8601DateOptions() noexcept = default;
  ISO8601DateOptions(const ISO8601DateOptions&) = default;
  ISO8601DateOptions& operator=(const ISO8601DateOptions&) = default;
  ~ISO8601DateOptions() override;

  ISO8601DateOptions* Clone() const override;
  CalendarType GetCalendarType() const override;
  TString GetCalendarTypeId() const override;
  SOWValue GetStartOfWeek() const override;
  // Does nothing: ISO-8601 weeks always start on Monday.
  void SetStartOfWeek(SOWValue startOfWeek) override;
  FYSValues GetFiscalYearStart() const override;
  // Does nothing: the ISO-8601 year always starts in January.
  void SetFiscalYearStart(FYSValues fiscalYearStart) override;
  unsigned GetMinDaysInFirstWeek() const override;
  FirstWeekBehaviour GetFirstWeekBehavior() const override;
  DateTimeHierarchy GetHierarchy(DateDataType dataType, DateComputationKind kind) const override;
  const std::vector<AggType>& GetBinDateAggregations() const override;
  const std::vector<AggType>& GetBinDateTimeAggregations() const override;
  // Always empty.
  const std::vector<AggType>& GetUncommonDateAggregations() const override;
  const std::vector<AggType>& GetTruncDateAggregations() const override;
  const std::vector<AggType>& GetTruncDateTimeAggregations() const override;
  AggType GetNormalizedAggType(AggType aggType) const override;

  // Gregorian codes to ISO-8601 ones: 14->26, 15->27, 16->28, 17->29,
  // 21->28, 22->29, 30->38, 31->39, 32->40, 33->40, 34->41; every other code
  // unchanged. Not the inverse of ConvertToGregorianAggType: months fold into
  // ISO weeks and days into ISO weekdays.
  static AggType ConvertToISO8601AggType(AggType aggType) noexcept;
};
