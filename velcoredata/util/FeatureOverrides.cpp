#include "velcoredata/util/FeatureOverrides.h"

#include <algorithm>
#include <unordered_set>

#include "velcoredata/util/FeatureFlags.h"
#include "velcoredata/util/FeatureInfo.h"

FeatureOverrides::~FeatureOverrides() = default;

void FeatureOverrides::Add(FeatureFlagId id, bool on) {
  const auto it = std::find_if(m_overrides.begin(), m_overrides.end(),
                               [id](const Override& o) { return o.id == id; });
  if (it != m_overrides.end()) {
    it->on = on;
  } else {
    m_overrides.push_back({id, on});
  }
}

void FeatureOverrides::ApplyTo(FeatureFlags& flags) const {
  for (const Override& o : m_overrides) {
    if (o.on) {
      flags.Enable(o.id);
    } else {
      flags.Disable(o.id);
    }
  }
}

FeatureOverrides GetFeatureFlagOverrides() {
  const std::vector<FeatureFlagId>& defaults = GetDefaultEnabledFeatureIds();
  const std::unordered_set<FeatureFlagId> onByDefault(defaults.begin(), defaults.end());
  const FeatureFlags& current = FeatureFlags::Get();
  FeatureOverrides overrides;
  for (FeatureFlagId id : GetAllFeatureFlagIds()) {
    const bool on = current.Contains(id);
    // Table ids are unique, so no id is recorded twice.
    if (on != (onByDefault.count(id) != 0)) overrides.m_overrides.push_back({id, on});
  }
  return overrides;
}
