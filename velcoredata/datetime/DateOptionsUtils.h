// DateOptionsUtils: the options types the host offers and their aggregations
// taken together.
//
// The options types are a process-wide list of shared options objects: the
// default GregorianDateOptions, followed by ISO8601DateOptions when the
// caller asks for ISO-8601 and the ISO-8601 aggregation feature flag
// (0x8E3D6224) is on.
//
// Thread-safety: every function may be called from any thread.
#pragma once

#include <memory>
#include <vector>

#include "velcoredata/datetime/IDateOptions.h"

namespace DateOptionsUtils {

// A new ISO8601DateOptions for CalendarType::ISO8601, a new default
// GregorianDateOptions for every other value.
VELCOREDATA_EXPORT std::unique_ptr<IDateOptions> CreateDateOptionsForCalendarType(CalendarType type);

// The options types (see above); each list is built once.
VELCOREDATA_EXPORT const std::vector<std::shared_ptr<const IDateOptions>>& GetDateOptionsTypes(bool includeISO8601);

// Each options type's list in turn, neither sorted nor de-duplicated.
VELCOREDATA_EXPORT std::vector<AggType> GetAllBinDateAggregations(bool includeISO8601);
VELCOREDATA_EXPORT std::vector<AggType> GetAllUncommonDateAggregations(bool includeISO8601);
VELCOREDATA_EXPORT std::vector<AggType> GetAllTruncDateAggregations(bool includeISO8601);
// Each type's date-time bins followed by its uncommon date parts; sorted,
// without duplicates and without 25 (the exact date is no instance bin).
VELCOREDATA_EXPORT std::vector<AggType> GetAllBinInstanceAggregations(bool includeISO8601);
// Each type's date-time truncations; sorted, without duplicates and 25.
VELCOREDATA_EXPORT std::vector<AggType> GetAllTruncInstanceAggregations(bool includeISO8601);

}  // namespace DateOptionsUtils
