// GregorianDateOptions: plain Gregorian dates with a configurable start of
// week (default Sunday) and fiscal year start (default January).
//
// Calendar type 0, id "Gregorian", at least one day in the first week,
// first-week behaviour 0 (the calendar's own rule: week 1 holds 1 January).
#pragma once

#include "velcoredata/datetime/IDateOptions.h"

class VELCOREDATA_EXPORT GregorianDateOptions : public IDateOptions {
 public:
  GregorianDateOptions() noexcept = default;
  explicit GregorianDateOptions(SOWValue startOfWeek) noexcept : m_startOfWeek(startOfWeek) {}
  explicit GregorianDateOptions(FYSValues fiscalYearStart) noexcept : m_fiscalYearStart(fiscalYearStart) {}
  GregorianDateOptions(SOWValue startOfWeek, FYSValues fiscalYearStart) noexcept
      : m_startOfWeek(startOfWeek), m_fiscalYearStart(fiscalYearStart) {}
  GregorianDateOptions(const GregorianDateOptions&) = default;
  GregorianDateOptions& operator=(const GregorianDateOptions&) = default;
  ~GregorianDateOptions() override;

  GregorianDateOptions* Clone() const override;
  CalendarType GetCalendarType() const override;
  TString GetCalendarTypeId() const override;
  SOWValue GetStartOfWeek() const override;
  void SetStartOfWeek(SOWValue startOfWeek) override;
  FYSValues GetFiscalYearStart() const override;
  void SetFiscalYearStart(FYSValues fiscalYearStart) override;
  unsigned GetMinDaysInFirstWeek() const override;
  FirstWeekBehaviour GetFirstWeekBehavior() const override;
  DateTimeHierarchy GetHierarchy(DateDataType dataType, DateComputationKind kind) const override;
  // 14, 15, 16, 17: year, quarter, month, day.
  const std::vector<AggType>& GetBinDateAggregations() const override;
  // The date parts and 18, 19, 20: hour, minute, second.
  const std::vector<AggType>& GetBinDateTimeAggregations() const override;
  // 21, 22, 25, 23, 24, 25 (25 stands twice; hosts read the list as it is).
  const std::vector<AggType>& GetUncommonDateAggregations() const override;
  // 30-34: year, quarter, month, week and day truncations.
  const std::vector<AggType>& GetTruncDateAggregations() const override;
  // The date truncations and 35, 36, 37: hour, minute, second.
  const std::vector<AggType>& GetTruncDateTimeAggregations() const override;
  AggType GetNormalizedAggType(AggType aggType) const override;

  // ISO-8601 codes to their Gregorian counterparts: 26->14, 27->15, 28->21,
  // 29->22, 38->30, 39->31, 40->33, 41->34; every other code unchanged.
  static AggType ConvertToGregorianAggType(AggType aggType) noexcept;

 private:
  SOWValue m_startOfWeek = SOWValue::Sunday;
  FYSValues m_fiscalYearStart = FYSValues::January;
};
