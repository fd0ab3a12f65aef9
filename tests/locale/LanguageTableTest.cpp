// The language table: LCIDs, ICU locale names, pseudo-LCIDs, the session locale.

#include <unicode/locid.h>

#include <thread>

#include <gtest/gtest.h>

#include "velcoredata/core/CoreDataOptions.h"
#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/locale/LanguageCode.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/LocaleHelper.h"
#include "support/ScopedIcuDefault.h"

namespace {

class ScopedDefaultLocaleOption {
 public:
  explicit ScopedDefaultLocaleOption(uint32_t lcid) { CoreDataOptions::SetDefaultLocale(lcid); }
  ~ScopedDefaultLocaleOption() { CoreDataOptions::SetDefaultLocale(0); }
};

TEST(LanguageTableTest, MapsLcidsAndLocaleNamesBothWays) {
  const std::pair<uint32_t, const char*> table[] = {
      {0x409, "en_US"}, {0x809, "en_GB"}, {0x407, "de_DE"}, {0x411, "ja_JP"},
      {0x804, "zh_CN"}, {0x40C, "fr_FR"}, {0x9, "en"},      {0x7, "de"}};
  for (const auto& [lcid, name] : table) {
    EXPECT_EQ(LanguageUtils::GetLocaleForLCID(lcid), name) << std::hex << lcid;
    EXPECT_EQ(LanguageUtils::GetLocaleStr(lcid), TString(name));
    EXPECT_EQ(LanguageUtils::GetLCIDForLocale(name), lcid) << name;
    const LanguageCode code(lcid);
    EXPECT_EQ(code.GetLCID(), lcid);
    EXPECT_EQ(code.GetISOString(), TString(name));
    EXPECT_EQ(LanguageCode(TString(name)).GetLCID(), lcid) << name;
  }
  // Keywords that select a collation stay part of the name.
  EXPECT_EQ(LanguageUtils::GetLocaleForLCID(0x40A), "es_ES@collation=traditional");
}

TEST(LanguageTableTest, UnknownIdentifiersFallBackToEnglish) {
  EXPECT_EQ(LanguageUtils::GetLocaleForLCID(0x1234), "en");
  EXPECT_EQ(LanguageUtils::GetLocaleForLCID(0), "en");
  EXPECT_EQ(LanguageUtils::GetLCIDForLocale("xx_YY"), 0u);
  EXPECT_EQ(LanguageUtils::GetLCIDForLocale(""), 0u);
  const LanguageCode unknown(TString(u"xx_YY"));
  EXPECT_EQ(unknown.GetLCID(), 9u);
  EXPECT_EQ(unknown.GetISOString(), TString(u"xx_YY"));
  // A known language with an unknown region keeps the language's LCID.
  EXPECT_EQ(LanguageCode(TString(u"de_AQ")).GetLCID(), 0x7u);
}

TEST(LanguageTableTest, AcceptsBcp47NamesAndCanonicalisesThem) {
  const LanguageCode code(TString(u" de-DE "));
  EXPECT_EQ(code.GetISOString(), TString(u"de_DE"));
  EXPECT_EQ(code.GetLCID(), 0x407u);
  EXPECT_EQ(LanguageUtils::GetLCIDForLocale("zh-Hans-CN"), 0x804u);
}

TEST(LanguageTableTest, PseudoLcidsFollowTheEnvironmentAndTheDefaultLocaleOption) {
  {
    ScopedIcuDefault env("fr_CH");
    EXPECT_EQ(LanguageUtils::GetLocaleForLCID(1024), "fr_CH");
    EXPECT_EQ(LanguageUtils::GetLocaleForLCID(2048), "fr_CH");
    EXPECT_EQ(LanguageUtils::ConvertDefaultLocale(1024), 0x100Cu);
    EXPECT_EQ(LanguageCode(1024u).GetISOString(), TString(u"fr_CH"));
    EXPECT_EQ(LanguageCode(1024u).GetLCID(), 1024u);  // the identity stays the pseudo-LCID
    ScopedDefaultLocaleOption option(0x407);
    EXPECT_EQ(LanguageUtils::GetLocaleForLCID(1024), "de_DE");
    EXPECT_EQ(LanguageUtils::GetLocaleForLCID(2048), "fr_CH");  // the system locale is not the user's
  }
  {
    ScopedIcuDefault posix("en_US_POSIX");
    EXPECT_EQ(LanguageUtils::GetLocaleForLCID(2048), "en_US");
    EXPECT_EQ(LanguageUtils::ConvertDefaultLocale(2048), 0x409u);
  }
}

TEST(LanguageTableTest, ConvertDefaultLocaleMakesNeutralLcidsSpecific) {
  EXPECT_EQ(LanguageUtils::ConvertDefaultLocale(0x9), 0x409u);
  EXPECT_EQ(LanguageUtils::ConvertDefaultLocale(0x7), 0x407u);
  EXPECT_EQ(LanguageUtils::ConvertDefaultLocale(0x11), 0x411u);
  EXPECT_EQ(LanguageUtils::ConvertDefaultLocale(0x809), 0x809u);
  EXPECT_EQ(LanguageUtils::ConvertDefaultLocale(0x1234), 0x1234u);
  EXPECT_EQ(LanguageUtils::GetDefaultISOString(), TString(u"en_US"));
}

TEST(CoreICUUtilsTest, GivesTheIcuLocaleAndRaisesIcuErrorsWithContext) {
  const icu::Locale german = CoreICUUtils::GetLocale(0x407);
  EXPECT_STREQ(german.getLanguage(), "de");
  EXPECT_STREQ(german.getCountry(), "DE");
  try {
    CoreICUUtils::ThrowICUException(U_ILLEGAL_ARGUMENT_ERROR, TString(u"LXX_RYY"));
    FAIL() << "no exception";
  } catch (const ICUException& e) {
    EXPECT_EQ(e.GetErrorId(), 0x4A7C1D02u);
    EXPECT_EQ(e.GetStatus(), U_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(e.GetMessage(), TString(u"ICU error U_ILLEGAL_ARGUMENT_ERROR: LXX_RYY"));
  }
}

TEST(LocaleHelperTest, SessionLocaleFallsBackToTheDefaultLocaleAndCanBeIgnored) {
  ScopedIcuDefault env("ja_JP");
  EXPECT_EQ(LocaleHelper::GetSessionLCID(), 0x411u);
  {
    ScopedDefaultLocaleOption option(0x9);
    EXPECT_EQ(LocaleHelper::GetSessionLCID(), 0x409u);
  }
  LocaleHelper::SetSessionLCID(0x40C);
  EXPECT_EQ(LocaleHelper::GetSessionLCID(), 0x40Cu);
  CoreDataOptions::SetIgnoreSessionLocale(true);
  EXPECT_EQ(LocaleHelper::GetSessionLCID(), 0x411u);
  CoreDataOptions::SetIgnoreSessionLocale(false);
  LocaleHelper::SetSessionLCID(0);
  EXPECT_EQ(LocaleHelper::GetSessionLCID(), 0x411u);
}

TEST(LocaleHelperConcurrencyTest, EachThreadHasItsOwnSessionLocale) {
  ScopedDefaultLocaleOption option(0x409);
  LocaleHelper::SetSessionLCID(0x407);
  uint32_t seenByOther = 0, setByOther = 0;
  std::thread other([&] {
    seenByOther = LocaleHelper::GetSessionLCID();
    LocaleHelper::SetSessionLCID(0x411);
    setByOther = LocaleHelper::GetSessionLCID();
  });
  other.join();
  EXPECT_EQ(seenByOther, 0x409u);
  EXPECT_EQ(setByOther, 0x411u);
  EXPECT_EQ(LocaleHelper::GetSessionLCID(), 0x407u);
  LocaleHelper::SetSessionLCID(0);
}

}  // namespace
