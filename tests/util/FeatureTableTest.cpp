// The generated feature table against its data file, the table accessors and
// the name lookup.

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/platform/LogicException.h"
#include "velcoredata/util/FeatureIdLookup.h"
#include "velcoredata/util/FeatureInfo.h"

namespace {

// The data rows of the checked-in table, split the simplest way: this reading
// shares no code with the generator.
std::vector<std::vector<std::string>> DataFileRows() {
  std::ifstream in(std::string(VCD_SOURCE_DIR) + "/velcoredata/util/FeatureFlagTable.txt");
  std::vector<std::vector<std::string>> rows;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> fields;
    std::istringstream split(line);
    for (std::string field; std::getline(split, field, '|');) {
      field.erase(0, field.find_first_not_of(' '));
      field.erase(field.find_last_not_of(' ') + 1);
      fields.push_back(field);
    }
    rows.push_back(fields);
  }
  return rows;
}

TEST(FeatureTableTest, GeneratedTableHoldsEveryDataFileRowInOrder) {
  const auto rows = DataFileRows();
  const auto& infos = GetFeatureInfos();
  ASSERT_EQ(infos.size(), rows.size());
  ASSERT_GE(rows.size(), 4u);
  for (size_t i = 0; i < rows.size(); ++i) {
    const auto& row = rows[i];
    const FeatureInfo& info = infos[i];
    SCOPED_TRACE(row[8]);
    ASSERT_EQ(row.size(), 10u);
    EXPECT_EQ(static_cast<uint32_t>(info.id), std::stoul(row[0], nullptr, 16));
    ASSERT_NE(GetFeatureMaturityName(info.maturity), nullptr);
    EXPECT_EQ(GetFeatureMaturityName(info.maturity), row[1]);
    EXPECT_EQ(info.enabledByDefault, row[2] == "on");
    const TString* columns[] = {&info.team, &info.scrumAlias, &info.tfsId, &info.removalDate,
                                &info.toggleRequirement, &info.name, &info.description};
    for (size_t c = 0; c < 7; ++c) EXPECT_EQ(columns[c]->toUtf8(), row[3 + c]) << "column " << 4 + c;
  }
}

TEST(FeatureTableTest, NeutralRowAndTheFlagsOtherSubsystemsTest) {
  const FeatureFlagId dummy = FeatureFlagId::DummyFeature1;
  EXPECT_EQ(GetFeatureTeam(dummy), TString(u"Unclaimed"));
  EXPECT_EQ(GetFeatureScrumAlias(dummy), TString(u"unclaimed"));
  EXPECT_EQ(GetTFSId(dummy), TString(u"000000"));
  EXPECT_TRUE(GetFeatureFlagRemovalDate(dummy).isEmpty());
  EXPECT_EQ(GetFeatureToggleRequirement(dummy), TString(u"none"));
  EXPECT_EQ(GetFeatureFlagName(dummy), TString(u"DummyFeature1"));
  EXPECT_EQ(GetFeatureFlagDescription(dummy), TString(u"Dummy feature flag 1, used for testing"));
  EXPECT_EQ(GetFeatureMaturity(dummy), static_cast<uint32_t>(FeatureMaturity::Development));
  // The accessors return references into the one table, not copies.
  EXPECT_EQ(&GetFeatureFlagName(dummy), &GetFeatureInfo(dummy).name);

  EXPECT_EQ(static_cast<uint32_t>(FeatureFlagId::MarkFormattedValues), 0xF5080C5Fu);
  EXPECT_EQ(static_cast<uint32_t>(FeatureFlagId::ISO8601DateAggregations), 0x8E3D6224u);
}

TEST(FeatureTableTest, DerivedTablesFollowTableOrder) {
  std::vector<FeatureFlagId> all, onByDefault;
  for (const FeatureInfo& info : GetFeatureInfos()) {
    all.push_back(info.id);
    if (info.enabledByDefault) onByDefault.push_back(info.id);
  }
  EXPECT_EQ(GetAllFeatureFlagIds(), all);
  EXPECT_EQ(GetDefaultEnabledFeatureIds(), onByDefault);
  EXPECT_FALSE(onByDefault.empty());
  EXPECT_LT(onByDefault.size(), all.size());
}

TEST(FeatureTableTest, UnknownIdIsALogicErrorNamingTheTableSource) {
  const std::vector<void (*)()> accessors = {
      [] { GetFeatureFlagName(static_cast<FeatureFlagId>(0x12345678)); },
      [] { GetFeatureMaturity(static_cast<FeatureFlagId>(0)); },
      [] { GetFeatureFlagDescription(static_cast<FeatureFlagId>(0xFFFFFFFF)); },
      [] { GetTFSId(static_cast<FeatureFlagId>(0x2B6E4D13)); },
      [] { GetFeatureInfo(static_cast<FeatureFlagId>(0x8E3D6225)); },
  };
  for (auto accessor : accessors) {
    try {
      accessor();
      ADD_FAILURE() << "no logic error";
    } catch (const VelmoraLogicException& e) {
      EXPECT_EQ(e.GetCondition(), "it != std::cend(GetFeatureInfos())");
      EXPECT_EQ(e.GetSourceName(), "CoredataFeatureFlagIds");
    }
  }
}

TEST(FeatureIdLookupTest, NamesMatchUnderFullCaseFolding) {
  const FeatureIdLookup& lookup = GetDefaultFeatureIdLookup();
  EXPECT_EQ(lookup.size(), static_cast<int>(GetFeatureInfos().size()));
  for (const FeatureInfo& info : GetFeatureInfos()) {
    EXPECT_EQ(lookup.GetId(info.name), info.id);
    EXPECT_EQ(lookup.GetId(info.name.toUpper()), info.id);
    EXPECT_EQ(lookup.GetId(info.name.toLower()), info.id);
  }
  EXPECT_EQ(lookup.GetId(u"dummyfeature1"), FeatureFlagId::DummyFeature1);
  EXPECT_EQ(lookup.GetId(u"DUMMYFEATURE1"), FeatureFlagId::DummyFeature1);
  // U+017F LATIN SMALL LETTER LONG S folds to "s".
  EXPECT_EQ(lookup.GetId(u"ISO8601DateAggregation\u017F"), FeatureFlagId::ISO8601DateAggregations);
  for (const char16_t* unknown : {u"", u"DummyFeature", u"DummyFeature1 ", u"NoSuchFlag"}) {
    EXPECT_EQ(lookup.GetId(unknown), FeatureFlagId{}) << TString(unknown).toUtf8();
  }
}

TEST(FeatureIdLookupTest, LookupCaseIsFullUnicodeFolding) {
  struct Case {
    const char16_t* text;
    const char16_t* folded;
  };
  const Case cases[] = {
      {u"", u""},
      {u"MiXeD 123", u"mixed 123"},
      {u"Stra\u00DFe", u"strasse"},             // sharp s grows to two letters
      {u"\uFB01le", u"file"},                   // ligature fi
      {u"\u0130", u"i\u0307"},                  // dotted capital I, default (non-Turkic) folding
      {u"\u039C\u0391\u03A3", u"\u03BC\u03B1\u03C3"},  // final and medial sigma agree
      {u"\u03C2", u"\u03C3"},
      {u"\U00010400", u"\U00010428"},           // Deseret: a surrogate pair
      {u"a\xD800z", u"a\xD800z"},               // a lone surrogate is kept
      {u"\u1E9E", u"ss"},                        // capital sharp s
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FeatureIdLookup::StrToLookupCase(c.text), TString(c.folded)) << TString(c.text).toUtf8();
  }
  FeatureIdLookup lookup;
  lookup.Add(u"Stra\u00DFe", static_cast<FeatureFlagId>(7));
  lookup.Add(u"STRASSE", static_cast<FeatureFlagId>(8));  // same key: the first id stays
  EXPECT_EQ(lookup.size(), 1);
  EXPECT_EQ(lookup.GetId(u"strasse"), static_cast<FeatureFlagId>(7));
}

}  // namespace
