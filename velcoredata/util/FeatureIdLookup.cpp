#include "velcoredata/util/FeatureIdLookup.h"

#include "velcoredata/platform/CaseFolding.h"
#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/util/FeatureInfo.h"

void FeatureIdLookup::Add(const TString& name, FeatureFlagId id) {
  m_ids.emplace(StrToLookupCase(name), id);
}

FeatureFlagId FeatureIdLookup::GetId(const TString& name) const {
  const auto it = m_ids.find(StrToLookupCase(name));
  return it == m_ids.end() ? FeatureFlagId{} : it->second;
}

TString FeatureIdLookup::StrToLookupCase(const TString& text) { return FoldCase(text); }

const FeatureIdLookup& GetDefaultFeatureIdLookup() {
  static InitOnceValue<FeatureIdLookup> lookup;
  return lookup.Get([] {
    auto* all = new FeatureIdLookup;
    for (const FeatureInfo& info : GetFeatureInfos()) all->Add(info.name, info.id);
    return all;
  });
}
