// Collation: constructors and canonical names, equality/order/hash, the
// variants (word sort, clone, charset), descriptions, conflict resolution
// and the adapter.

#include <QString>
#include <QtGlobal>

#include <string>
#include <unordered_set>

#include <gtest/gtest.h>

#include "collation/CollationTestSupport.h"
#include "velcoredata/collation/BinaryCollatorPool.h"
#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/CollationAdapter.h"
#include "velcoredata/collation/CollationConflictResolver.h"
#include "velcoredata/collation/CollatorName.h"
#include "velcoredata/collation/ICUCollatorPool.h"

namespace {

using CaseOpt = Collation::CaseOpt;
using AccentOpt = Collation::AccentOpt;
using SortOpt = Collation::SortOpt;
using PunctOpt = Collation::PunctOpt;
using CollationTestSupport::LogicConditionOf;

TEST(CollationTest, ConstructorsResolveNamesToTheirPoolsCanonicalName) {
  const Collation root;
  EXPECT_EQ(root.GetName(), TString(u"LROOT"));
  EXPECT_EQ(Collation(nullptr), root);
  EXPECT_EQ(Collation(u""), root);
  EXPECT_EQ(&Collation(nullptr).GetPool(), &root.GetPool());
  EXPECT_FALSE(root.HasCharsetID());

  const Collation upper(u"BINARY");
  EXPECT_EQ(&upper.GetPool(), &BinaryCollatorPool::Singleton());
  EXPECT_EQ(upper.GetName(), TString(u"binary"));
  EXPECT_EQ(Collation(1u, 7u, 0), upper);  // LCID 1 is binary whatever the flags

  const Collation byLcid(0x409u, 1u, 1252);
  EXPECT_EQ(byLcid.GetName(), TString(u"LEN_RUS_S2"));
  EXPECT_EQ(byLcid.GetCharsetID(), 1252);
  EXPECT_EQ(&byLcid.GetPool(), ICUCollatorPool::Find({u"LEN_RUS_S2", 1u}));
  EXPECT_FALSE(byLcid.HasWordSort());  // the LCID constructor never asks for word sort

  const Collation byLocale("en-US", false, CaseOpt::CaseInsensitive, AccentOpt::AccentSensitive,
                           SortOpt::WordSort, PunctOpt::Default, 0);
  EXPECT_EQ(byLocale.GetName(), TString(u"LEN_RUS_S2_WO"));
  EXPECT_TRUE(byLocale.HasWordSort());
  EXPECT_TRUE(byLocale.IsApproximation());
  EXPECT_EQ(&byLocale.GetPool(), ICUCollatorPool::Find({u"LEN_RUS_S2_WO", 0u}));

  // The same name asked for with other flags is another pool.
  EXPECT_NE(&byLcid.GetPool(), &Collation(u"LEN_RUS_S2").GetPool());
  EXPECT_EQ(byLcid, Collation(u"LEN_RUS_S2", 1252));
}

TEST(CollationTest, EqualityOrderAndHashUseCharsetAndNameOnly) {
  const Collation plain(u"LEN_RUS_S2");
  const Collation latin1(u"LEN_RUS_S2", 1252);
  EXPECT_NE(plain, latin1);
  EXPECT_TRUE(plain < latin1);  // no charset sorts first
  EXPECT_FALSE(latin1 < plain);
  EXPECT_EQ(plain.GetHashCode(), latin1.GetHashCode());
  EXPECT_EQ(plain.GetHashCode(), StringHash(TString(u"LEN_RUS_S2")));
  EXPECT_TRUE(Collation(u"LDE_RDE") < Collation(u"LEN_RUS"));
  EXPECT_FALSE(Collation(u"LEN_RUS") < Collation(u"LEN_RUS"));
  EXPECT_NE(Collation(u"LEN_RUS"), Collation(u"LEN_RUS_S2"));
  EXPECT_TRUE(plain.IsEquivalent(latin1));
  std::unordered_set<Collation, CollationHashFunc> set = {plain, latin1, Collation(u"LEN_RUS_S2")};
  EXPECT_EQ(set.size(), 2u);
  const Collation copy = latin1;
  EXPECT_EQ(copy, latin1);
  EXPECT_EQ(copy.GetHashCode(), latin1.GetHashCode());
}

TEST(CollationTest, ThePoolAnswersTheDescriptiveQueries) {
  const Collation german(u"LDE_RDE_S1");
  EXPECT_EQ(german.GetCmpFlags(), 3u);
  EXPECT_FALSE(german.IsCaseSensitive());
  EXPECT_EQ(german.GetLanguage(), TString(u"de"));
  EXPECT_EQ(german.GetLocale(), 0x407u);
  EXPECT_FALSE(german.GetDisplayLanguage().isEmpty());
  EXPECT_FALSE(german.GetDisplayCountry().isEmpty());
  EXPECT_FALSE(german.IsWindowsSpecific());
  EXPECT_EQ(german.Compare(u"\u00E4", u"a"), 0);
  const Collation& binary = GetBinaryCollation();
  EXPECT_EQ(binary.GetLanguage(), TString(u"binary"));
  EXPECT_EQ(binary.GetLocale(), 1u);
  EXPECT_TRUE(binary.IsCaseSensitive());
  EXPECT_EQ(binary.GetCmpFlags(), 0u);
  EXPECT_TRUE(binary.GetDisplayLanguage().isEmpty());
  EXPECT_EQ(&GetUnknownCollation(), &GetUnknownCollation());
  EXPECT_EQ(GetUnknownCollation(), Collation());
  EXPECT_EQ(GetBinaryCollation().GetName(), TString(u"binary"));
}

TEST(CollationTest, UseWordSortMovesToTheWordSortPoolAndBack) {
  Collation c(u"LEN_RUS_S2", 1252);
  const uint32_t hashBefore = c.GetHashCode();
  c.UseWordSort(true);
  EXPECT_EQ(c.GetName(), TString(u"LEN_RUS_S2_WO"));
  EXPECT_NE(c.GetHashCode(), hashBefore);  // the cached hash follows the new name
  EXPECT_TRUE(c.HasWordSort());
  EXPECT_EQ(c.GetCharsetID(), 1252);
  EXPECT_EQ(c.Compare(u"co-op", u"Coop"), 0);
  c.UseWordSort(true);  // already on: nothing changes
  EXPECT_EQ(c.GetName(), TString(u"LEN_RUS_S2_WO"));
  c.UseWordSort(false);
  EXPECT_EQ(c.GetName(), TString(u"LEN_RUS_S2"));
  EXPECT_EQ(c.GetHashCode(), hashBefore);

  // The new pool keeps the old pool's comparison flags.
  Collation byLcid(0x409u, 1u, 0);
  byLcid.UseWordSort(true);
  EXPECT_EQ(&byLcid.GetPool(), ICUCollatorPool::Find({u"LEN_RUS_S2_WO", 1u}));

  Collation binary(u"binary");
  binary.UseWordSort(false);  // binary has no word sort: nothing to do
  EXPECT_EQ(LogicConditionOf([&] { binary.UseWordSort(true); }),
            "TString(name).compare(CollationType::s_binary, TString::CaseInsensitive) != 0");
}

TEST(CollationTest, CloneRebuildsFromTheLcidAndFlagsWithOrWithoutTheWindowsVariant) {
  const Collation windows(0x409u, 0x80000001u, 1252);
  EXPECT_EQ(windows.GetName(), TString(u"LEN_RUS_S2_VWIN"));
  EXPECT_TRUE(windows.IsWindowsSpecific());
  EXPECT_EQ(windows.GetCmpFlags(), 0x80000001u);
  EXPECT_EQ(windows.GetPool().GetLocaleString(), TString(u"en_US_WIN"));

  const Collation kept = windows.Clone(true);
  EXPECT_EQ(kept, windows);
  EXPECT_TRUE(kept.IsWindowsSpecific());
  const Collation dropped = windows.Clone(false);
  EXPECT_EQ(dropped.GetName(), TString(u"LEN_RUS_S2"));
  EXPECT_FALSE(dropped.IsWindowsSpecific());
  EXPECT_EQ(dropped.GetCharsetID(), 1252);
  EXPECT_EQ(GetBinaryCollation().Clone(false), GetBinaryCollation());

  const Collation other = windows.CopyWithCharset(65001);
  EXPECT_EQ(other.GetCharsetID(), 65001);
  EXPECT_EQ(other.GetName(), windows.GetName());
  EXPECT_EQ(&other.GetPool(), &windows.GetPool());
}

TEST(CollationTest, DescriptionNamesCharsetLocaleAndName) {
  EXPECT_EQ(Collation(u"LEN_RUS_S2", 1252).GetDescription(), TString(u"charset=0x4e4 en_US (LEN_RUS_S2)"));
  EXPECT_EQ(Collation(u"binary").GetDescription(), TString(u"charset=0x0 BINARY (binary)"));
  EXPECT_EQ(Collation(u"LZH_RTW_ZHANT").GetDescription(), TString(u"charset=0x0 zh_Hant_TW (LZH_RTW_ZHANT)"));
}

TEST(CollationTest, LcidFromLocaleKnowsBinaryAndCAndFallsBackToTheDefault) {
  struct Case {
    const char16_t* locale;
    unsigned expected;
  };
  const Case cases[] = {
      {u"binary", 1}, {u"C", 1}, {u"en-US", 0x409}, {u"en_US", 0x409}, {u"de_DE", 0x407},
      {u"BINARY", 77},  // only the exact spelling means binary
      {u"c", 77},       {u"qq_ZZ", 77}, {u"", 77},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Collation::LCIDFromLocale(TString(c.locale), 77), c.expected) << TString(c.locale).toUtf8();
    EXPECT_EQ(CollationAdapter::LCIDFromLocale(c.locale, 77), c.expected);
  }
  EXPECT_EQ(CollationAdapter::LCIDFromLocale(nullptr, 5), 5u);
}

TEST(CollationTest, AdapterBuildsCollationsFromLcidsAndFromNamesWithOptions) {
  EXPECT_EQ(CollationAdapter::GetCollation(0x407u, 1u, 3), Collation(0x407u, 1u, 3));
  const Collation c = CollationAdapter::GetCollation(u"LEN_RUS", CaseOpt::CaseInsensitive,
                                                     AccentOpt::AccentSensitive, SortOpt::WordSort,
                                                     PunctOpt::Default, 1252);
  EXPECT_EQ(c.GetName(), TString(u"LEN_RUS_S2_WO"));
  EXPECT_EQ(c.GetCharsetID(), 1252);
}

TEST(CollationTest, UnsupportedSortOptionsAreLoggedBeforeTheyFail) {
  static std::string logged;
  logged.clear();
  const QtMessageHandler previous = qInstallMessageHandler(
      [](QtMsgType, const QMessageLogContext&, const QString& text) { logged += text.toStdString(); });
  const std::string condition = LogicConditionOf([] {
    CollationAdapter::GetCollation(u"LEN_RUS", CaseOpt::CaseSensitive, AccentOpt::AccentSensitive,
                                   static_cast<SortOpt>(3), PunctOpt::Default, 0);
  });
  qInstallMessageHandler(previous);
  EXPECT_EQ(condition, "false");
  EXPECT_NE(logged.find("Collation sort option not handled: 3"), std::string::npos) << logged;
}

// --- conflict resolution ------------------------------------------------------

class RecordingCallback : public CollationConflictResolver::Callback {
 public:
  explicit RecordingCallback(bool answer) : m_answer(answer) {}
  bool PreferSecond(const Collation& first, const Collation& second, const TString& source) override {
    ++calls;
    lastSource = source;
    lastFirst = first.GetName();
    lastSecond = second.GetName();
    return m_answer;
  }
  int calls = 0;
  TString lastSource, lastFirst, lastSecond;

 private:
  bool m_answer;
};

TEST(CollationConflictResolverTest, PairsAreDecidedByTheFirstRuleThatApplies) {
  const Collation sensitive(u"LEN_RUS");
  const Collation insensitive(u"LEN_RUS_S2");
  const Collation german(u"LDE_RDE");
  RecordingCallback yes(true), no(false);
  struct Case {
    const char* rule;
    SourcedCollation a, b;
    RecordingCallback* callback;
    bool expectSecond;
  };
  const Case cases[] = {
      {"1 only b has a source", {u"", sensitive}, {u"db", german}, nullptr, true},
      {"1 not when both lack one", {u"", german}, {u"", sensitive}, nullptr, false},
      {"2 a is the root ordering", {u"x", Collation()}, {u"y", german}, nullptr, true},
      {"2 not when both are", {u"x", Collation()}, {u"y", Collation()}, nullptr, false},
      {"3 case-insensitive second", {u"x", sensitive}, {u"y", insensitive}, nullptr, true},
      {"3 case-insensitive first", {u"x", insensitive}, {u"y", sensitive}, nullptr, false},
      {"4 callback prefers b", {u"db", german}, {u"db", sensitive}, &yes, true},
      {"4 callback declines", {u"db", german}, {u"db", sensitive}, &no, false},
      {"4 needs equal sources", {u"db", german}, {u"other", sensitive}, &yes, false},
      {"5 b has no charset", {u"x", german}, {u"y", sensitive}, nullptr, false},
      {"6 a has a charset", {u"x", Collation(u"LDE_RDE", 1)}, {u"y", Collation(u"LEN_RUS", 2)}, nullptr, false},
      {"7 only b has one, same name", {u"x", german}, {u"y", Collation(u"LDE_RDE", 2)}, nullptr, true},
      {"7 only b has one, other name", {u"x", german}, {u"y", Collation(u"LEN_RUS", 2)}, nullptr, false},
  };
  for (const Case& c : cases) {
    const CollationConflictResolver resolver(c.callback);
    const SourcedCollation& winner = resolver.ResolveCollationPair(c.a, c.b);
    EXPECT_EQ(&winner, c.expectSecond ? &c.b : &c.a) << c.rule;
  }
  EXPECT_EQ(yes.calls, 1);  // only where the sources were equal and non-empty
  EXPECT_EQ(yes.lastSource, TString(u"db"));
  EXPECT_EQ(yes.lastFirst, TString(u"LDE_RDE"));
  EXPECT_EQ(yes.lastSecond, TString(u"LEN_RUS"));
  EXPECT_EQ(no.calls, 1);
}

TEST(CollationConflictResolverTest, CaseInsensitiveWinsWhicheverComesFirstAndListsFoldLeftToRight) {
  const SourcedCollation sensitive(u"t", Collation(u"LEN_RUS"));
  const SourcedCollation insensitive(u"t", Collation(u"LEN_RUS_S2"));
  const CollationConflictResolver resolver;
  EXPECT_EQ(&resolver.ResolveCollationPair(sensitive, insensitive), &insensitive);
  EXPECT_EQ(&resolver.ResolveCollationPair(insensitive, sensitive), &insensitive);

  std::vector<const SourcedCollation*> none;
  EXPECT_EQ(resolver.ResolveSourcedCollation(none), nullptr);
  const SourcedCollation unsourced;
  const SourcedCollation latin1(u"s", Collation(u"LDE_RDE_S2", 1252));
  std::vector<const SourcedCollation*> list = {&unsourced, &sensitive, &latin1, &insensitive};
  // unsourced loses to sensitive (rule 1), sensitive to latin1 (rule 3),
  // latin1 keeps its charset against insensitive (rule 6).
  const std::unique_ptr<SourcedCollation> winner = resolver.ResolveSourcedCollation(list);
  ASSERT_NE(winner, nullptr);
  EXPECT_EQ(*winner, latin1);
  EXPECT_NE(winner.get(), &latin1);  // an owned copy
  std::vector<const SourcedCollation*> single = {&sensitive};
  EXPECT_EQ(*resolver.ResolveSourcedCollation(single), sensitive);
  EXPECT_EQ(SourcedCollation(), SourcedCollation(u"", Collation()));
  EXPECT_NE(SourcedCollation(u"a", Collation()), SourcedCollation(u"b", Collation()));
}

}  // namespace
