#include "velcoredata/util/FeatureInfo.h"

#include <algorithm>
#include <iterator>

#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/platform/LogicException.h"

namespace {

// Failures name the generated table source, where the rows come from, rather
// than this file.
constexpr const char* kTableSource = "CoredataFeatureFlagIds";

std::vector<FeatureFlagId>* CollectIds(bool defaultEnabledOnly) {
  auto* ids = new std::vector<FeatureFlagId>;
  for (const FeatureInfo& info : GetFeatureInfos()) {
    if (!defaultEnabledOnly || info.enabledByDefault) ids->push_back(info.id);
  }
  return ids;
}

}  // namespace

const FeatureInfo& GetFeatureInfo(FeatureFlagId id) {
  const auto it = std::find_if(std::cbegin(GetFeatureInfos()), std::cend(GetFeatureInfos()),
                               [id](const FeatureInfo& info) { return info.id == id; });
  VEL_ASSERT_IN(kTableSource, it != std::cend(GetFeatureInfos()));
  return *it;
}

uint32_t GetFeatureMaturity(FeatureFlagId id) { return GetFeatureInfo(id).maturity; }
const TString& GetFeatureTeam(FeatureFlagId id) { return GetFeatureInfo(id).team; }
const TString& GetFeatureScrumAlias(FeatureFlagId id) { return GetFeatureInfo(id).scrumAlias; }
const TString& GetTFSId(FeatureFlagId id) { return GetFeatureInfo(id).tfsId; }
const TString& GetFeatureFlagRemovalDate(FeatureFlagId id) { return GetFeatureInfo(id).removalDate; }
const TString& GetFeatureToggleRequirement(FeatureFlagId id) {
  return GetFeatureInfo(id).toggleRequirement;
}
const TString& GetFeatureFlagName(FeatureFlagId id) { return GetFeatureInfo(id).name; }
const TString& GetFeatureFlagDescription(FeatureFlagId id) { return GetFeatureInfo(id).description; }

const std::vector<FeatureFlagId>& GetAllFeatureFlagIds() {
  static InitOnceValue<std::vector<FeatureFlagId>> ids;
  return ids.Get([] { return CollectIds(false); });
}

const std::vector<FeatureFlagId>& GetDefaultEnabledFeatureIds() {
  static InitOnceValue<std::vector<FeatureFlagId>> ids;
  return ids.Get([] { return CollectIds(true); });
}
