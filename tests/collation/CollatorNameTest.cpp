// Collator-name builders: locale and LCID names, options applied to names,
// part merging, and the failures they raise.

#include <tuple>

#include <gtest/gtest.h>

#include "collation/CollationTestSupport.h"
#include "velcoredata/collation/CollatorName.h"
#include "velcoredata/collation/ICUCollator.h"
#include "velcoredata/collation/ICUCollatorPool.h"

namespace {

using CaseOpt = Collation::CaseOpt;
using AccentOpt = Collation::AccentOpt;
using SortOpt = Collation::SortOpt;
using PunctOpt = Collation::PunctOpt;
using Attr = ICUCollator::Attr;
using CollationTestSupport::LogicConditionOf;

struct Options {
  int caseOpt, accentOpt, sortOpt, punctOpt;
};

TString FromLocale(const std::string& locale, bool ignoreDigits, Options o) {
  return MakeICUCollatorName(locale, ignoreDigits, static_cast<CaseOpt>(o.caseOpt),
                             static_cast<AccentOpt>(o.accentOpt), static_cast<SortOpt>(o.sortOpt),
                             static_cast<PunctOpt>(o.punctOpt));
}

std::vector<TString> PartsOf(const TString& name) {
  std::vector<TString> parts;
  int start = 0;
  for (int i = 0; i <= name.size(); ++i) {
    if (i == name.size() || name[i] == u'_') {
      parts.push_back(name.mid(start, i - start));
      start = i + 1;
    }
  }
  return parts;
}

TString FromName(const char16_t* name, Options o) {
  return MakeCollatorName(name, static_cast<CaseOpt>(o.caseOpt), static_cast<AccentOpt>(o.accentOpt),
                          static_cast<SortOpt>(o.sortOpt), static_cast<PunctOpt>(o.punctOpt));
}

TEST(CollatorNameTest, LocaleNamesCarryLanguageRegionScriptAndTheOptionsThatDifferFromDefaults) {
  struct Case {
    std::string locale;
    bool ignoreDigits;
    Options options;
    const char16_t* expected;
  };
  const Case cases[] = {
      {"en_US", false, {0, 0, 0, 0}, u"LEN_RUS"},
      {"en_US", false, {1, 0, 0, 0}, u"LEN_RUS_S2"},
      {"en_US", false, {2, 0, 0, 0}, u"CU_LEN_RUS"},
      {"en_US", false, {3, 0, 0, 0}, u"CL_LEN_RUS"},
      // Accent-insensitive but case-sensitive: primary strength plus case level.
      {"en_US", false, {0, 1, 0, 0}, u"EO_LEN_RUS_S1"},
      {"en_US", false, {1, 1, 0, 0}, u"LEN_RUS_S1"},
      // Shifted punctuation at tertiary strength, the default, so no S part.
      {"en_US", false, {3, 0, 0, 1}, u"AS_CL_LEN_RUS"},
      {"en_US", false, {1, 0, 0, 1}, u"AS_LEN_RUS_S2"},
      {"en_US", false, {0, 0, 0, 2}, u"LEN_RUS_S4"},
      {"en_US", false, {0, 0, 1, 0}, u"LEN_RUS_WO"},
      {"en_US", false, {1, 0, 1, 0}, u"LEN_RUS_S2_WO"},
      // Identical strength is only honoured by the name-based builder.
      {"en_US", false, {0, 0, 4, 0}, u"LEN_RUS"},
      // Ignoring digits leaves punctuation, forced primary and case level off.
      {"en_US", true, {0, 1, 0, 1}, u"LEN_RUS_XO"},
      {"en_US", true, {1, 1, 0, 1}, u"LEN_RUS_S2_XO"},
      {"zh_Hans_CN", false, {0, 0, 0, 0}, u"LZH_RCN_ZHANS"},
      {"sr_Latn", false, {1, 0, 0, 0}, u"LSR_S2_ZLATN"},
      {"root", false, {0, 0, 0, 0}, u""},  // ICU gives the root locale no language
      {"de", false, {0, 0, 0, 0}, u"LDE"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FromLocale(c.locale, c.ignoreDigits, c.options), TString(c.expected))
        << c.locale << " ignoreDigits=" << c.ignoreDigits << " case=" << c.options.caseOpt
        << " accent=" << c.options.accentOpt << " sort=" << c.options.sortOpt
        << " punct=" << c.options.punctOpt;
  }
}

TEST(CollatorNameTest, OptionsAppliedToANameReplaceWhatTheNameSaid) {
  struct Case {
    const char16_t* name;
    Options options;
    const char16_t* expected;
  };
  const Case cases[] = {
      {u"LEN_RUS", {1, 0, 0, 0}, u"LEN_RUS_S2"},
      {u"LEN_RUS_S2", {0, 0, 0, 0}, u"LEN_RUS"},  // strength back to default is stripped
      {u"LEN_RUS_S2_WO", {0, 0, 0, 0}, u"LEN_RUS"},
      {u"LEN_RUS", {0, 0, 4, 0}, u"LEN_RUS_SI"},
      {u"LEN_RUS", {1, 0, 4, 0}, u"LEN_RUS_SI"},
      {u"LEN_RUS", {0, 1, 0, 0}, u"EO_LEN_RUS_S1"},
      {u"LEN_RUS", {2, 0, 0, 1}, u"AS_CU_LEN_RUS"},
      {u"LEN_RUS", {1, 0, 1, 2}, u"LEN_RUS_S2_WO"},  // case-insensitive wins over quaternary
      {u"LEN_RUS", {0, 0, 0, 2}, u"LEN_RUS_S4"},
      {u"AS_CL_EO_LEN_RUS_S1", {0, 0, 0, 0}, u"LEN_RUS"},
      {u"LEN_RUS_XO", {0, 0, 0, 0}, u"LEN_RUS_XO"},  // ignore digits is not an option here
      {u"RUS_LEN", {0, 0, 0, 0}, u"LEN_RUS"},         // parts come out in key order
      {u"LEN_LDE", {0, 0, 0, 0}, u"LDE"},             // a later part with the same key wins
      {nullptr, {1, 0, 0, 0}, u"S2"},
      {nullptr, {0, 0, 0, 0}, u""},
      {u"", {1, 0, 0, 0}, u"S2"},  // an empty name has no parts, like a null one
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FromName(c.name, c.options), TString(c.expected))
        << (c.name ? TString(c.name).toUtf8() : "(null)") << " case=" << c.options.caseOpt
        << " accent=" << c.options.accentOpt << " sort=" << c.options.sortOpt
        << " punct=" << c.options.punctOpt;
  }
}

TEST(CollatorNameTest, LcidNamesFollowTheWindowsComparisonFlags) {
  struct Case {
    unsigned lcid, flags;
    bool wordSort;
    const char16_t* expected;
  };
  const Case cases[] = {
      {0x409, 0, false, u"LEN_RUS"},
      {0x409, 1, false, u"LEN_RUS_S2"},
      {0x409, 2, false, u"EO_LEN_RUS_S1"},
      {0x409, 3, false, u"LEN_RUS_S1"},
      {0x409, 4, false, u"AS_LEN_RUS_S3"},
      {0x409, 5, false, u"AS_LEN_RUS_S2"},
      {0x409, 6, false, u"AS_EO_LEN_RUS_S1"},
      {0x409, 0, true, u"LEN_RUS_WO"},
      // The Windows variant stands right after the strength part.
      {0x409, 0x80000001u, false, u"LEN_RUS_S2_VWIN"},
      {0x409, 0x80000001u, true, u"LEN_RUS_S2_VWIN_WO"},
      {0x409, 0x80000000u, false, u"LEN_RUS_VWIN"},
      {0x407, 1, false, u"LDE_RDE_S2"},
      {0x404, 1, true, u"LZH_RTW_S2_WO_ZHANT"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(MakeCollatorName(c.lcid, c.flags, c.wordSort), TString(c.expected))
        << std::hex << c.lcid << " flags=" << c.flags << " wordSort=" << c.wordSort;
  }
}

TEST(CollatorNameTest, LocaleNamesThroughTheLcidAddIgnoreDigitsBeforeTheOptions) {
  EXPECT_EQ(CollatorNameFromLocaleName("en_US", false, CaseOpt::CaseSensitive,
                                       AccentOpt::AccentSensitive, SortOpt::Default, PunctOpt::Default),
            TString(u"LEN_RUS"));
  EXPECT_EQ(CollatorNameFromLocaleName("de-DE", false, CaseOpt::CaseInsensitive,
                                       AccentOpt::AccentSensitive, SortOpt::WordSort, PunctOpt::Default),
            TString(u"LDE_RDE_S2_WO"));
  // Ignoring digits forces accent-insensitive and punctuation-ignoring.
  EXPECT_EQ(CollatorNameFromLocaleName("en-US", true, CaseOpt::CaseSensitive,
                                       AccentOpt::AccentSensitive, SortOpt::Default, PunctOpt::Default),
            TString(u"AS_EO_LEN_RUS_S1_XO"));
}

TEST(CollatorNameTest, EveryBuiltNameIsOrderedUniqueAndReadableByThePool) {
  const std::string locales[] = {"en_US", "de_DE", "zh_Hans_CN", "sv"};
  const int sortOpts[] = {0, 1, 4};
  int checked = 0;
  for (const std::string& locale : locales) {
    for (bool ignoreDigits : {false, true}) {
      for (int c = 0; c < 4; ++c) {
        for (int a = 0; a < 2; ++a) {
          for (int s : sortOpts) {
            for (int p = 0; p < 3; ++p) {
              const Options o{c, a, s, p};
              const TString byLocale = FromLocale(locale, ignoreDigits, o);
              const TString byName = FromName(FromLocale(locale, false, {0, 0, 0, 0}).c_str(), o);
              for (const TString& name : {byLocale, byName}) {
                char16_t previous = 0;
                for (const TString& part : PartsOf(name)) {
                  ASSERT_FALSE(part.isEmpty()) << name.toUtf8();
                  EXPECT_GT(part[0], previous) << name.toUtf8();
                  previous = part[0];
                }
                EXPECT_NO_THROW(ICUCollatorPool::ParseName(name)) << name.toUtf8();
                // Options replace rather than accumulate: applying them again changes nothing.
                EXPECT_EQ(FromName(byName.c_str(), o), byName);
                ++checked;
              }
            }
          }
        }
      }
    }
  }
  EXPECT_EQ(checked, 4 * 2 * 4 * 2 * 3 * 3 * 2);
}

TEST(CollatorNameTest, MergingSetsAndRemovesAttributeParts) {
  std::vector<TString> parts = {u"LEN", u"RUS", u"S2", u"WO"};
  CollatorNamePartsFromAttributes({{Attr::Strength, UCOL_TERTIARY},  // the default: removed
                                   {Attr::WordSort, UCOL_DEFAULT},   // -1: removed
                                   {Attr::AlternateHandling, UCOL_SHIFTED},
                                   {Attr::NumericCollation, UCOL_ON},
                                   {Attr::FrenchCollation, UCOL_ON},
                                   {Attr::HiraganaQuaternaryMode, UCOL_OFF},
                                   {Attr::NormalizationMode, UCOL_ON},
                                   {Attr::IgnoreDigits, UCOL_ON}},
                                  parts);
  EXPECT_EQ(parts, (std::vector<TString>{u"AS", u"FO", u"HX", u"IO", u"LEN", u"NO", u"RUS", u"XO"}));
  EXPECT_EQ(ICUCollator::AddAttrToName(u"LEN_RUS", Attr::Strength, UCOL_PRIMARY), TString(u"LEN_RUS_S1"));
  EXPECT_EQ(ICUCollator::SetWordSort(u"LEN_RUS_S2", true), TString(u"LEN_RUS_S2_WO"));
  EXPECT_EQ(ICUCollator::SetWordSort(u"LEN_RUS_S2_WO", false), TString(u"LEN_RUS_S2"));
}

TEST(CollatorNameTest, MalformedInputToTheBuildersIsALogicError) {
  std::vector<TString> emptyPart = {u"LEN", u""};
  EXPECT_EQ(LogicConditionOf([&] { CollatorNamePartsFromAttributes({}, emptyPart); }), "!i->isEmpty()");
  std::vector<TString> parts = {u"LEN"};
  EXPECT_EQ(LogicConditionOf([&] { CollatorNamePartsFromAttributes({{Attr(8), UCOL_ON}}, parts); }),
            "a.attr.enumVal == i->first.enumVal");
  EXPECT_EQ(LogicConditionOf([&] { CollatorNamePartsFromAttributes({{Attr(-7), UCOL_ON}}, parts); }),
            "a.attr.enumVal == i->first.enumVal");
  EXPECT_EQ(LogicConditionOf([&] {
              CollatorNamePartsFromAttributes({{Attr::Strength, static_cast<UColAttributeValue>(7)}}, parts);
            }),
            "v.value == i->second");
  for (const char16_t* binary : {u"binary", u"BINARY", u"Binary"}) {
    EXPECT_EQ(LogicConditionOf([&] { ICUCollator::SetWordSort(binary, true); }),
              "TString(name).compare(CollationType::s_binary, TString::CaseInsensitive) != 0");
  }
  for (int sortOpt : {2, 3}) {
    EXPECT_EQ(LogicConditionOf([&] { FromName(u"LEN_RUS", {0, 0, sortOpt, 0}); }), "false");
    EXPECT_EQ(LogicConditionOf([&] { FromLocale("en_US", false, {0, 0, sortOpt, 0}); }), "false");
  }
}

TEST(CollatorNameTest, LocaleCodesTooLongForTheirBufferAreIcuFailures) {
  const std::string longLanguage(40, 'q');
  try {
    FromLocale(longLanguage, false, {0, 0, 0, 0});
    FAIL() << "no exception";
  } catch (const ICUException& e) {
    EXPECT_EQ(e.GetErrorId(), 0x4A7C1D02u);
    EXPECT_NE(e.GetMessage().indexOf(TString::fromUtf8(longLanguage)), -1) << e.what();
  }
}

}  // namespace
