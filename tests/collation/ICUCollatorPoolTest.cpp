// ICU collator pools: names to locales and attributes, comparison flags,
// the registry, per-thread collators on one thread, and malformed names.

#include <string>

#include <gtest/gtest.h>

#include "collation/CollationTestSupport.h"
#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/platform/TSystem.h"

namespace {

using Attr = ICUCollator::Attr;
using CollationTestSupport::LogicConditionOf;

TEST(ICUCollatorPoolTest, NamesBecomeAnIcuLocaleAndAttributesInNameOrder) {
  struct Case {
    const char16_t* name;
    std::string locale;
    ICUCollator::AttrList attributes;
  };
  const Case cases[] = {
      {u"LEN_RUS", "en_US", {}},
      {u"LROOT", "root", {}},
      {u"LZH_RTW_ZHANT", "zh_Hant_TW", {}},
      {u"ZHANS_LZH", "zh_Hans", {}},
      {u"LEN_RUS_S2_VWIN", "en_US_WIN", {{Attr::Strength, UCOL_SECONDARY}}},
      {u"LEN_VWIN", "en__WIN", {}},
      {u"AS_CL_EO_LEN_RUS_S1_WO_XO",
       "en_US",
       {{Attr::AlternateHandling, UCOL_SHIFTED},
        {Attr::CaseFirst, UCOL_LOWER_FIRST},
        {Attr::CaseLevel, UCOL_ON},
        {Attr::Strength, UCOL_PRIMARY},
        {Attr::WordSort, UCOL_ON},
        {Attr::IgnoreDigits, UCOL_ON}}},
      {u"LDE_SI_WX_XX_HO_FO_IO_NX_AN",
       "de",
       {{Attr::Strength, UCOL_IDENTICAL},
        {Attr::WordSort, UCOL_OFF},
        {Attr::IgnoreDigits, UCOL_OFF},
        {Attr::HiraganaQuaternaryMode, UCOL_ON},
        {Attr::FrenchCollation, UCOL_ON},
        {Attr::NumericCollation, UCOL_ON},
        {Attr::NormalizationMode, UCOL_OFF},
        {Attr::AlternateHandling, UCOL_NON_IGNORABLE}}},
      {u"LEN_S4_CD", "en", {{Attr::Strength, UCOL_QUATERNARY}, {Attr::CaseFirst, UCOL_DEFAULT}}},
  };
  for (const Case& c : cases) {
    const CollationSpec spec = ICUCollatorPool::ParseName(TString(c.name));
    EXPECT_EQ(spec.locale, c.locale) << TString(c.name).toUtf8();
    EXPECT_EQ(spec.attributes, c.attributes) << TString(c.name).toUtf8();
  }
}

TEST(ICUCollatorPoolTest, ComparisonFlagsAndCaseSensitivityComeFromTheFirstCollator) {
  struct Case {
    const char16_t* name;
    unsigned flags;
    bool caseSensitive;
  };
  const Case cases[] = {
      {u"LEN_RUS_S1", 3, false},   {u"LEN_RUS_S2", 1, false},   {u"LEN_RUS", 0, true},
      {u"AS_LEN_RUS_S3", 4, true}, {u"AS_LEN_RUS_S2", 5, false}, {u"AS_LEN_RUS_S1", 7, false},
      {u"LEN_RUS_SI", 0, true},    {u"LEN_RUS_S4", 0, true},
      {u"AS_LEN_RUS_S4", 0, true},  // beyond tertiary, shifting is not counted
      {u"LEN_RUS_S2_VWIN", 0x80000001u, false},
      {u"LDE_RDE_S1", 3, false},   // German: tertiary by default, S1 given
      {u"LDA_RDK", 0, true},
  };
  for (const Case& c : cases) {
    const Collation collation(c.name);
    EXPECT_EQ(collation.GetCmpFlags(), c.flags) << TString(c.name).toUtf8();
    EXPECT_EQ(collation.IsCaseSensitive(), c.caseSensitive) << TString(c.name).toUtf8();
  }
}

TEST(ICUCollatorPoolTest, PoolsDescribeTheirLocale) {
  ICUCollatorPool* pool = ICUCollatorPool::Factory({u"LEN_RUS_S2_VWIN_WO", 0u});
  EXPECT_EQ(pool->GetName(), TString(u"LEN_RUS_S2_VWIN_WO"));
  EXPECT_EQ(pool->GetLocaleString(), TString(u"en_US_WIN"));
  EXPECT_EQ(pool->GetLanguage(), TString(u"en"));
  EXPECT_EQ(pool->GetLCID(), 0x409u);
  EXPECT_TRUE(pool->IsWindowsSpecific());
  EXPECT_TRUE(pool->HasWordSort());
  EXPECT_FALSE(pool->GetDisplayLanguage().isEmpty());
  EXPECT_FALSE(pool->GetDisplayCountry().isEmpty());
  // The root locale has no LCID of its own: it stands for the user's locale.
  EXPECT_EQ(ICUCollatorPool::Factory({u"LROOT", 0u})->GetLCID(), 0x400u);
  EXPECT_TRUE(ICUCollatorPool::Factory({u"LROOT", 0u})->GetDisplayCountry().isEmpty());
  // "_WIN" counts only as a variant, after the language.
  EXPECT_FALSE(ICUCollatorPool::Factory({u"LEN_RWINE", 0u})->IsWindowsSpecific());
  EXPECT_TRUE(ICUCollatorPool::Factory({u"LEN_VWIN", 0u})->IsWindowsSpecific());
  EXPECT_EQ(ICUCollatorPool::Factory({u"LEN_VWIN", 0u})->GetCmpFlags(), 0x80000000u);
}

TEST(ICUCollatorPoolTest, TheRegistryKeepsOnePoolPerNameAndFlags) {
  const size_t before = ICUCollatorPool::GetPoolCount();
  ICUCollatorPool* a = ICUCollatorPool::Factory({u"LNB_RNO_S2", 0u});
  EXPECT_EQ(ICUCollatorPool::Factory({u"LNB_RNO_S2", 0u}), a);
  EXPECT_EQ(ICUCollatorPool::Find({u"LNB_RNO_S2", 0u}), a);
  ICUCollatorPool* flagged = ICUCollatorPool::Factory({u"LNB_RNO_S2", 1u});
  EXPECT_NE(flagged, a);
  EXPECT_EQ(flagged->GetKey(), (ICUCollatorPool::Key{u"LNB_RNO_S2", 1u}));
  EXPECT_EQ(flagged->GetCmpFlags(), 1u);  // derived, not the key's flags
  EXPECT_NE(ICUCollatorPool::Factory({u"LNB_RNO", 0u}), a);
  EXPECT_EQ(ICUCollatorPool::GetPoolCount(), before + 3);
  EXPECT_EQ(ICUCollatorPool::Find({u"LNB_RNO_S3", 0u}), nullptr);
}

TEST(ICUCollatorPoolTest, OneThreadAlwaysGetsTheSameCollatorUntilItFreesIt) {
  const Collation c(u"LFI_RFI_S2");
  auto* pool = dynamic_cast<ICUCollatorPool*>(&c.GetPool());
  ASSERT_NE(pool, nullptr);
  Collator* first = c.GetCollator().get();
  EXPECT_EQ(c.GetCollator().get(), first);
  EXPECT_EQ(pool->AcquireCollator(), first);
  pool->ReleaseCollator(first);
  EXPECT_EQ(pool->AcquireCollator(), first);  // release keeps it for the thread
  EXPECT_TRUE(pool->HasCollatorForThread(TSystem::ThreadID()));
  const CollatorRef copy = c.GetCollator();
  const CollatorRef copyOfCopy = copy;  // NOLINT: copying acquires again
  EXPECT_EQ(copyOfCopy.get(), first);

  ICUCollatorPool::FreeOnThread();
  EXPECT_FALSE(pool->HasCollatorForThread(TSystem::ThreadID()));
  // The next operation opens a new collator that works like the old one.
  EXPECT_EQ(c.Compare(u"\u00C5", u"\u00E5"), 0);
  EXPECT_TRUE(pool->HasCollatorForThread(TSystem::ThreadID()));
}

TEST(ICUCollatorPoolTest, MalformedNamesAreLogicErrorsAndRegisterNothing) {
  struct Case {
    const char16_t* name;
    std::string condition;
  };
  const Case cases[] = {
      {u"QEN", "Unhandled specifier"},
      {u"len_rus", "Unhandled specifier"},
      {u"LEN_DX", "Unhandled specifier"},  // D is a value letter, not a key
      {u"LEN_S5", "(*i)[1] >= TC('1') && (*i)[1] <= TC('4')"},
      {u"LEN_S0", "(*i)[1] >= TC('1') && (*i)[1] <= TC('4')"},
      {u"LEN_S22", "i->length() == 2"},
      {u"LEN_S", "i->length() == 2"},
      {u"LEN_WOO", "i->length() == 2"},
      {u"LEN_AS_", "!i->isEmpty()"},
      {u"LEN__RUS", "!i->isEmpty()"},
      {u"_LEN", "!i->isEmpty()"},
      {u"RUS", "!locale.isEmpty()"},
      {u"L_RUS", "!locale.isEmpty()"},
      {u"LEN_AQ", "value != nullptr"},
  };
  for (const Case& c : cases) {
    const size_t before = ICUCollatorPool::GetPoolCount();
    EXPECT_EQ(LogicConditionOf([&] { Collation collation(c.name); }), c.condition) << TString(c.name).toUtf8();
    EXPECT_EQ(ICUCollatorPool::GetPoolCount(), before) << TString(c.name).toUtf8();
    EXPECT_EQ(ICUCollatorPool::Find({c.name, 0u}), nullptr);
  }
}

TEST(ICUCollatorPoolTest, LocalesIcuCannotOpenRaiseTheIcuExceptionAndRegisterNothing) {
  const size_t before = ICUCollatorPool::GetPoolCount();
  const TString name = TString(u"L") + TString(200, u'Q');
  try {
    Collation collation(name.c_str());
    FAIL() << "no exception";
  } catch (const ICUException& e) {
    EXPECT_EQ(e.GetErrorId(), 0x4A7C1D02u);
    EXPECT_NE(e.GetMessage().indexOf(name), -1);  // the collator name is the context
  }
  EXPECT_EQ(ICUCollatorPool::GetPoolCount(), before);
  EXPECT_EQ(ICUCollatorPool::Find({name, 0u}), nullptr);
  // A language code too long for the pool's language buffer fails the same way.
  EXPECT_THROW(Collation(u"LABCDEFGHIJKL"), ICUException);
  EXPECT_EQ(ICUCollatorPool::GetPoolCount(), before);
}

}  // namespace
