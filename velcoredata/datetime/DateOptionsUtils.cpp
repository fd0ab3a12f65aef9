#include "velcoredata/datetime/DateOptionsUtils.h"

#include <algorithm>

#include "velcoredata/datetime/GregorianDateOptions.h"
#include "velcoredata/datetime/ISO8601DateOptions.h"
#include "velcoredata/util/FeatureFlags.h"

namespace DateOptionsUtils {

namespace {

using OptionsList = std::vector<std::shared_ptr<const IDateOptions>>;
using ListOf = const std::vector<AggType>& (IDateOptions::*)() const;

std::vector<AggType> Concatenate(bool includeISO8601, std::initializer_list<ListOf> lists) {
  std::vector<AggType> out;
  for (const auto& options : GetDateOptionsTypes(includeISO8601)) {
    for (ListOf list : lists) {
      const std::vector<AggType>& codes = ((*options).*list)();
      out.insert(out.end(), codes.begin(), codes.end());
    }
  }
  return out;
}

// Sorted, without duplicates and without the exact date (25), which is no
// aggregation of instants.
std::vector<AggType> InstanceAggregations(std::vector<AggType> codes) {
  std::sort(codes.begin(), codes.end());
  codes.erase(std::unique(codes.begin(), codes.end()), codes.end());
  codes.erase(std::remove(codes.begin(), codes.end(), AggType::DatePartExactDate), codes.end());
  return codes;
}

}  // namespace

std::unique_ptr<IDateOptions> CreateDateOptionsForCalendarType(CalendarType type) {
  if (type == CalendarType::ISO8601) return std::make_unique<ISO8601DateOptions>();
  return std::make_unique<GregorianDateOptions>();
}

const std::vector<std::shared_ptr<const IDateOptions>>& GetDateOptionsTypes(bool includeISO8601) {
  // Two separate lists, each built once and never freed.
  static const OptionsList* const gregorianOnly = new OptionsList{std::make_shared<const GregorianDateOptions>()};
  static const OptionsList* const withISO8601 =
      new OptionsList{std::make_shared<const GregorianDateOptions>(), std::make_shared<const ISO8601DateOptions>()};
  return includeISO8601 && FeatureFlags::IsOn(FeatureFlagId::ISO8601DateAggregations) ? *withISO8601 : *gregorianOnly;
}

std::vector<AggType> GetAllBinDateAggregations(bool includeISO8601) {
  return Concatenate(includeISO8601, {&IDateOptions::GetBinDateAggregations});
}

std::vector<AggType> GetAllUncommonDateAggregations(bool includeISO8601) {
  return Concatenate(includeISO8601, {&IDateOptions::GetUncommonDateAggregations});
}

std::vector<AggType> GetAllTruncDateAggregations(bool includeISO8601) {
  return Concatenate(includeISO8601, {&IDateOptions::GetTruncDateAggregations});
}

std::vector<AggType> GetAllBinInstanceAggregations(bool includeISO8601) {
  return InstanceAggregations(Concatenate(
      includeISO8601, {&IDateOptions::GetBinDateTimeAggregations, &IDateOptions::GetUncommonDateAggregations}));
}

std::vector<AggType> GetAllTruncInstanceAggregations(bool includeISO8601) {
  return InstanceAggregations(Concatenate(includeISO8601, {&IDateOptions::GetTruncDateTimeAggregations}));
}

}  // namespace DateOptionsUtils
