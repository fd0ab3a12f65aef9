// FeatureInfo: one row of the feature table, and the table's accessors.
//
// The table lists every feature flag the library knows. It is generated at
// build time from FeatureFlagTable.txt together with the FeatureFlagId
// enumeration, built once on first use and kept, unchanged, until the
// process ends, so references into it stay valid for the life of the process.
//
// Every accessor below finds the row by a linear scan in table order; the
// first row with the id wins (the build rejects repeated ids). An id that no
// row has is a programming error: the accessors raise VelmoraLogicException
// with the condition "it != std::cend(GetFeatureInfos())".
//
// Thread-safety: everything here is safe to call from any thread.
#pragma once

#include <cstdint>
#include <vector>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/util/FeatureFlagId.h"

struct FeatureInfo {
  FeatureFlagId id;
  uint32_t maturity;      // a FeatureMaturity code
  bool enabledByDefault;  // one byte
  TString team;
  TString scrumAlias;
  TString tfsId;  // the work-item id
  TString removalDate;  // YYYY-MM-DD, or empty
  TString toggleRequirement;
  TString name;
  TString description;
};

// The whole table in its generated order.
VELCOREDATA_EXPORT const std::vector<FeatureInfo>& GetFeatureInfos();

// The row of `id`.
VELCOREDATA_EXPORT const FeatureInfo& GetFeatureInfo(FeatureFlagId id);

// Columns of the row of `id`; the texts are references into the table.
VELCOREDATA_EXPORT uint32_t GetFeatureMaturity(FeatureFlagId id);
VELCOREDATA_EXPORT const TString& GetFeatureTeam(FeatureFlagId id);
VELCOREDATA_EXPORT const TString& GetFeatureScrumAlias(FeatureFlagId id);
VELCOREDATA_EXPORT const TString& GetTFSId(FeatureFlagId id);
VELCOREDATA_EXPORT const TString& GetFeatureFlagRemovalDate(FeatureFlagId id);
VELCOREDATA_EXPORT const TString& GetFeatureToggleRequirement(FeatureFlagId id);
VELCOREDATA_EXPORT const TString& GetFeatureFlagName(FeatureFlagId id);
VELCOREDATA_EXPORT const TString& GetFeatureFlagDescription(FeatureFlagId id);

// The name a maturity code has in the table file ("development", "preview",
// "released", "retiring"), or null for a code the table does not use.
VELCOREDATA_EXPORT const char* GetFeatureMaturityName(uint32_t maturity);

// The ids of all rows, in table order.
VELCOREDATA_EXPORT const std::vector<FeatureFlagId>& GetAllFeatureFlagIds();
// The ids of the rows that are enabled by default, in table order.
VELCOREDATA_EXPORT const std::vector<FeatureFlagId>& GetDefaultEnabledFeatureIds();
