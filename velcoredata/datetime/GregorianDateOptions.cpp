#include "velcoredata/datetime/GregorianDateOptions.h"

#include <map>
#include <utility>

#include "velcoredata/datetime/CalendarTypeId.h"

namespace {

using A = AggType;
// Lists and hierarchies are built on first use and never freed, so the
// references handed out stay valid until the process exits.
using HierarchyMap = std::map<std::pair<DateDataType, DateComputationKind>, DateTimeHierarchy>;

const std::vector<AggType>& BinDate() {
  static const auto* const list = new std::vector<AggType>{A::DatePartYear, A::DatePartQuarter, A::DatePartMonth, A::DatePartDay};
  return *list;
}

const std::vector<AggType>& BinDateTime() {
  static const auto* const list = new std::vector<AggType>{A::DatePartYear, A::DatePartQuarter, A::DatePartMonth,
                                         A::DatePartDay,  A::DatePartHour,    A::DatePartMinute,
                                         A::DatePartSecond};
  return *list;
}

const std::vector<AggType>& Uncommon() {
  // The exact date (25) stands twice; hosts read the list as it is.
  static const auto* const list = new std::vector<AggType>{A::DatePartWeek,      A::DatePartWeekday,  A::DatePartExactDate,
                                         A::DatePartDayOfYear, A::DatePartMonthDay, A::DatePartExactDate};
  return *list;
}

const std::vector<AggType>& TruncDate() {
  static const auto* const list = new std::vector<AggType>{A::TruncYear, A::TruncQuarter, A::TruncMonth, A::TruncWeek, A::TruncDay};
  return *list;
}

const std::vector<AggType>& TruncDateTime() {
  static const auto* const list = new std::vector<AggType>{A::TruncYear, A::TruncQuarter, A::TruncMonth,  A::TruncWeek,
                                         A::TruncDay,  A::TruncHour,    A::TruncMinute, A::TruncSecond};
  return *list;
}

const HierarchyMap& Hierarchies() {
  static const HierarchyMap* const map = new HierarchyMap{
      {{DateDataType::Date, DateComputationKind::DatePart}, DateTimeHierarchy(BinDate())},
      {{DateDataType::DateTime, DateComputationKind::DatePart}, DateTimeHierarchy(BinDateTime())},
      {{DateDataType::Date, DateComputationKind::Truncation}, DateTimeHierarchy(TruncDate())},
      {{DateDataType::DateTime, DateComputationKind::Truncation}, DateTimeHierarchy(TruncDateTime())},
  };
  return *map;
}

}  // namespace

GregorianDateOptions::~GregorianDateOptions() = default;

GregorianDateOptions* GregorianDateOptions::Clone() const { return new GregorianDateOptions(*this); }

CalendarType GregorianDateOptions::GetCalendarType() const { return CalendarType::Gregorian; }

TString GregorianDateOptions::GetCalendarTypeId() const { return CalendarTypeId::CALENDAR_GREGORIAN; }

SOWValue GregorianDateOptions::GetStartOfWeek() const { return m_startOfWeek; }

void GregorianDateOptions::SetStartOfWeek(SOWValue startOfWeek) { m_startOfWeek = startOfWeek; }

FYSValues GregorianDateOptions::GetFiscalYearStart() const { return m_fiscalYearStart; }

void GregorianDateOptions::SetFiscalYearStart(FYSValues fiscalYearStart) { m_fiscalYearStart = fiscalYearStart; }

unsigned GregorianDateOptions::GetMinDaysInFirstWeek() const { return 1; }

FirstWeekBehaviour GregorianDateOptions::GetFirstWeekBehavior() const { return FirstWeekBehaviour::CalendarDefault; }

DateTimeHierarchy GregorianDateOptions::GetHierarchy(DateDataType dataType, DateComputationKind kind) const {
  // std::map::at: an unknown pair throws std::out_of_range.
  return Hierarchies().at({dataType, kind});
}

const std::vector<AggType>& GregorianDateOptions::GetBinDateAggregations() const { return BinDate(); }

const std::vector<AggType>& GregorianDateOptions::GetBinDateTimeAggregations() const { return BinDateTime(); }

const std::vector<AggType>& GregorianDateOptions::GetUncommonDateAggregations() const { return Uncommon(); }

const std::vector<AggType>& GregorianDateOptions::GetTruncDateAggregations() const { return TruncDate(); }

const std::vector<AggType>& GregorianDateOptions::GetTruncDateTimeAggregations() const { return TruncDateTime(); }

AggType GregorianDateOptions::GetNormalizedAggType(AggType aggType) const { return ConvertToGregorianAggType(aggType); }

AggType GregorianDateOptions::ConvertToGregorianAggType(AggType aggType) noexcept {
  switch (aggType) {
    case A::DatePartISOYear:
      return A::DatePartYear;
    case A::DatePartISOQuarter:
      return A::DatePartQuarter;
    case A::DatePartISOWeek:
      return A::DatePartWeek;
    case A::DatePartISOWeekday:
      return A::DatePartWeekday;
    case A::TruncISOYear:
      return A::TruncYear;
    case A::TruncISOQuarter:
      return A::TruncQuarter;
    case A::TruncISOWeek:
      return A::TruncWeek;
    case A::TruncISODay:
      return A::TruncDay;
    default:
      return aggType;
  }
}
