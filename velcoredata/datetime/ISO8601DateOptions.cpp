#include "velcoredata/datetime/ISO8601DateOptions.h"

#include <map>
#include <utility>

#include "velcoredata/datetime/CalendarTypeId.h"
#include "velcoredata/util/FeatureFlags.h"

namespace {

using A = AggType;
using HierarchyMap = std::map<std::pair<DateDataType, DateComputationKind>, DateTimeHierarchy>;

// The five lists in both states of the feature flag. Built on first use and
// never freed, so the references handed out stay valid until exit.
struct Lists {
  std::vector<AggType> binDate;
  std::vector<AggType> binDateTime;
  std::vector<AggType> uncommon;
  std::vector<AggType> truncDate;
  std::vector<AggType> truncDateTime;
  HierarchyMap hierarchies;

  Lists(std::vector<AggType> bd, std::vector<AggType> bdt, std::vector<AggType> td, std::vector<AggType> tdt)
      : binDate(std::move(bd)), binDateTime(std::move(bdt)), truncDate(std::move(td)), truncDateTime(std::move(tdt)) {
    // The hierarchies nest the same codes, coarsest first.
    hierarchies.emplace(std::pair{DateDataType::Date, DateComputationKind::DatePart}, DateTimeHierarchy(binDate));
    hierarchies.emplace(std::pair{DateDataType::DateTime, DateComputationKind::DatePart}, DateTimeHierarchy(binDateTime));
    hierarchies.emplace(std::pair{DateDataType::Date, DateComputationKind::Truncation}, DateTimeHierarchy(truncDate));
    hierarchies.emplace(std::pair{DateDataType::DateTime, DateComputationKind::Truncation},
                        DateTimeHierarchy(truncDateTime));
  }
};

const Lists& FlagOn() {
  static const Lists* const lists = new Lists(
      {A::DatePartISOYear, A::DatePartISOQuarter, A::DatePartISOWeek, A::DatePartISOWeekday},
      {A::DatePartISOYear, A::DatePartISOQuarter, A::DatePartISOWeek, A::DatePartISOWeekday, A::DatePartHour,
       A::DatePartMinute, A::DatePartSecond},
      {A::TruncISOYear, A::TruncISOQuarter, A::TruncISOWeek, A::TruncISODay},
      {A::TruncISOYear, A::TruncISOQuarter, A::TruncISOWeek, A::TruncISODay, A::TruncHour, A::TruncMinute,
       A::TruncSecond});
  return *lists;
}

const Lists& FlagOff() {
  static const Lists* const lists = new Lists(
      {A::DatePartYear, A::DatePartWeek},
      {A::DatePartYear, A::DatePartWeek, A::DatePartWeekday, A::DatePartHour, A::DatePartMinute, A::DatePartSecond},
      {A::TruncYear, A::TruncWeek},
      {A::TruncYear, A::TruncWeek, A::TruncDay, A::TruncHour, A::TruncMinute, A::TruncSecond});
  return *lists;
}

// The flag is tested on every call, on the calling thread.
const Lists& Current() {
  return FeatureFlags::IsOn(FeatureFlagId::ISO8601DateAggregations) ? FlagOn() : FlagOff();
}

}  // namespace

ISO8601DateOptions::~ISO8601DateOptions() = default;

ISO8601DateOptions* ISO8601DateOptions::Clone() const { return new ISO8601DateOptions(*this); }

CalendarType ISO8601DateOptions::GetCalendarType() const { return CalendarType::ISO8601; }

TString ISO8601DateOptions::GetCalendarTypeId() const { return CalendarTypeId::CALENDAR_ISO8601; }

SOWValue ISO8601DateOptions::GetStartOfWeek() const { return SOWValue::Monday; }

void ISO8601DateOptions::SetStartOfWeek(SOWValue) {}

FYSValues ISO8601DateOptions::GetFiscalYearStart() const { return FYSValues::January; }

void ISO8601DateOptions::SetFiscalYearStart(FYSValues) {}

unsigned ISO8601DateOptions::GetMinDaysInFirstWeek() const { return 4; }

FirstWeekBehaviour ISO8601DateOptions::GetFirstWeekBehavior() const { return FirstWeekBehaviour::FirstFourDayWeek; }

DateTimeHierarchy ISO8601DateOptions::GetHierarchy(DateDataType dataType, DateComputationKind kind) const {
  // std::map::at: an unknown pair throws std::out_of_range.
  return Current().hierarchies.at({dataType, kind});
}

const std::vector<AggType>& ISO8601DateOptions::GetBinDateAggregations() const { return Current().binDate; }

const std::vector<AggType>& ISO8601DateOptions::GetBinDateTimeAggregations() const { return Current().binDateTime; }

const std::vector<AggType>& ISO8601DateOptions::GetUncommonDateAggregations() const { return Current().uncommon; }

const std::vector<AggType>& ISO8601DateOptions::GetTruncDateAggregations() const { return Current().truncDate; }

const std::vector<AggType>& ISO8601DateOptions::GetTruncDateTimeAggregations() const { return Current().truncDateTime; }

AggType ISO8601DateOptions::GetNormalizedAggType(AggType aggType) const { return ConvertToISO8601AggType(aggType); }

AggType ISO8601DateOptions::ConvertToISO8601AggType(AggType aggType) noexcept {
  switch (aggType) {
    case A::DatePartYear:
      return A::DatePartISOYear;
    case A::DatePartQuarter:
      return A::DatePartISOQuarter;
    case A::DatePartMonth:  // months fold into ISO weeks
    case A::DatePartWeek:
      return A::DatePartISOWeek;
    case A::DatePartDay:  // days fold into ISO weekdays
    case A::DatePartWeekday:
      return A::DatePartISOWeekday;
    case A::TruncYear:
      return A::TruncISOYear;
    case A::TruncQuarter:
      return A::TruncISOQuarter;
    case A::TruncMonth:
    case A::TruncWeek:
      return A::TruncISOWeek;
    case A::TruncDay:
      return A::TruncISODay;
    default:
      return aggType;
  }
}
