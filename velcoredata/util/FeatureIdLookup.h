// FeatureIdLookup: feature flag ids by name, ignoring case.
//
// Names are keyed by their full Unicode case folding, so "DummyFeature1",
// "dummyfeature1" and "DUMMYFEATURE1" find the same id. A name that is not
// in the lookup gives FeatureFlagId{} (0), which no flag has.
//
// Thread-safety: a lookup that is no longer changed may be read from any
// number of threads; GetDefaultFeatureIdLookup() is such a lookup.
#pragma once

#include <unordered_map>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/util/FeatureFlagId.h"

class VELCOREDATA_EXPORT FeatureIdLookup {
 public:
  FeatureIdLookup() = default;

  // Adds `name` for `id`. A name that folds to one already present keeps its
  // first id.
  void Add(const TString& name, FeatureFlagId id);

  // The id of `name` (folded with StrToLookupCase), or FeatureFlagId{}.
  FeatureFlagId GetId(const TString& name) const;

  int size() const noexcept { return static_cast<int>(m_ids.size()); }

  // The key form of a name: its full Unicode case folding (default options).
  static TString StrToLookupCase(const TString& text);

 private:
  std::unordered_map<TString, FeatureFlagId> m_ids;
};

// A lookup of every row of the feature table by name, built once on first use
// and kept until the process ends.
VELCOREDATA_EXPORT const FeatureIdLookup& GetDefaultFeatureIdLookup();
