// The locale's number, currency and list settings.

#include <QLocale>
#include <QTemporaryDir>

#include <unicode/locid.h>
#include <unicode/ucurr.h>
#include <unicode/uloc.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/NumberFormat.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/TSettings.h"

namespace {

using Negative = NegativeFormatEnum;

std::string Utf8(const TString& s) { return s.toUtf8(); }

TEST(LocaleSettingsTest, NumberSettingsComeFromTheLocalesDecimalFormat) {
  NUMBER_FORMAT_OPTIONS english;
  TLocale::GetSystemNumberSettings(0x409, &english);
  EXPECT_EQ(english.decimalSeparator, TString(u"."));
  EXPECT_EQ(english.thousandsSeparator, TString(u","));
  EXPECT_TRUE(english.grouping);
  EXPECT_EQ(english.groupingDescription, TString(u"3;3"));
  EXPECT_EQ(english.decimalPlaces, 0u);
  EXPECT_EQ(english.prefix, TString());
  EXPECT_EQ(english.suffix, TString());
  EXPECT_EQ(english.units, UnitsFormatEnum::None);
  EXPECT_EQ(english.negativeFormat, Negative::LeadingMinus);

  NUMBER_FORMAT_OPTIONS german;
  TLocale::GetSystemNumberSettings(0x407, &german);
  EXPECT_EQ(german.decimalSeparator, TString(u","));
  EXPECT_EQ(german.thousandsSeparator, TString(u"."));
  // Indian grouping: three digits, then groups of two.
  NUMBER_FORMAT_OPTIONS hindi;
  TLocale::GetSystemNumberSettings(0x439, &hindi);
  EXPECT_EQ(hindi.groupingDescription, TString(u"3;2"));

  // The decimal separator agrees with Qt's locale data for common locales.
  for (uint32_t lcid : {0x409u, 0x407u, 0x40Cu, 0x410u, 0x411u, 0x419u, 0x416u, 0x41Du, 0xC0Au}) {
    EXPECT_EQ(TLocale::GetDecimalPoint(lcid), TString(QString(TLocale::GetQLocale(lcid).decimalPoint())))
        << std::hex << lcid;
  }
}

TEST(LocaleSettingsTest, CurrencySettingsComeFromTheLocalesCurrencyFormat) {
  NUMBER_FORMAT_OPTIONS dollars;
  TLocale::GetSystemCurrencySettings(0x409, &dollars);
  EXPECT_EQ(dollars.prefix, TString(u"$"));
  EXPECT_EQ(dollars.decimalPlaces, 2u);
  EXPECT_EQ(dollars.negativeFormat, Negative::LeadingMinus);
  EXPECT_EQ(Utf8(BuildOleFormatString(&dollars, false)), "\"$\"#,##0.00;-\"$\"#,##0.00");

  NUMBER_FORMAT_OPTIONS euros;
  TLocale::GetSystemCurrencySettings(0x407, &euros);
  EXPECT_EQ(Utf8(euros.suffix), "\u00A0€");
  EXPECT_EQ(euros.prefix, TString());
  EXPECT_EQ(euros.decimalSeparator, TString(u","));
  EXPECT_EQ(euros.decimalPlaces, 2u);

  NUMBER_FORMAT_OPTIONS yen;
  TLocale::GetSystemCurrencySettings(0x411, &yen);
  EXPECT_EQ(yen.decimalPlaces, 0u);
  EXPECT_EQ(yen.decimalPlaces, static_cast<uint32_t>(TLocale::GetCurrencyDecimalPlaces(0x411)));
  EXPECT_EQ(TLocale::GetCurrencyString(0x409), TString(u"$"));
  EXPECT_EQ(TLocale::GetCurrencyString(0x407), TString(u"€"));
  EXPECT_EQ(TLocale::GetQLocale(0x40A).name(), QString("es_ES"));
}

TEST(LocaleSettingsTest, CurrencyDigitsFollowIso4217) {
  // Through ConvertDefaultLocale: the neutral Japanese LCID is Japan's.
  EXPECT_EQ(TLocale::GetCurrencyDecimalPlaces(0x11), 0);
  EXPECT_EQ(TLocale::GetCurrencyDecimalPlaces(0x409), 2);
  EXPECT_EQ(TLocale::GetCurrencyDecimalPlaces(0x3401), 3);  // KWD
  EXPECT_EQ(TLocale::GetCurrencyDecimalPlaces(0x1234), 2);  // no locale
  // Against ICU's currency data for every locale with an LCID of its own.
  // ICU follows CLDR, which gives 0 digits to these currencies although
  // ISO 4217 has 2 (or 3 for the Iraqi dinar); the table follows ISO.
  const std::set<std::string> isoDiffers = {"ALL", "IRR", "LAK", "MMK", "AFN", "SOS", "KPW",
                                            "YER", "RSD", "SYP", "LBP", "IQD"};
  int32_t count = 0;
  const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
  int checked = 0;
  for (int32_t i = 0; i < count; ++i) {
    const icu::Locale& locale = locales[i];
    const uint32_t lcid = locale.getLCID();
    if (locale.getCountry()[0] == 0 || lcid == 0 || LanguageUtils::GetLocaleForLCID(lcid) != locale.getName()) {
      continue;
    }
    UChar currency[4];
    UErrorCode status = U_ZERO_ERROR;
    if (ucurr_forLocale(locale.getName(), currency, 4, &status) != 3 || U_FAILURE(status)) continue;
    const int icuDigits = ucurr_getDefaultFractionDigits(currency, &status);
    const std::string code(currency, currency + 3);
    if (isoDiffers.count(code) != 0) continue;
    EXPECT_EQ(TLocale::GetCurrencyDecimalPlaces(lcid), icuDigits) << locale.getName() << " " << code;
    ++checked;
  }
  EXPECT_GT(checked, 150);
  EXPECT_EQ(TLocale::GetCurrencyDecimalPlaces(0x801), 3);  // ar_IQ: ISO 4217 says 3
}

TEST(LocaleSettingsTest, ListSeparatorIsReadFromTheSettingsStore) {
  QTemporaryDir dir;
  ASSERT_TRUE(dir.isValid());
  TSettings::UseIniFile(TString((dir.path() + QStringLiteral("/settings.ini")).toStdString()));
  EXPECT_EQ(TLocale::GetListSeparator(0x407), TString(u","));
  EXPECT_EQ(TLocale::GetListSeparator(1024), TString(u","));
  TSettings::SetValue(u"UserDefaults/ListSeparator", u";");
  TSettings::SetValue(u"SystemDefaults/ListSeparator", u"|");
  TSettings::SetValue(u"de_DE/ListSeparator", u"; ");
  EXPECT_EQ(TLocale::GetListSeparator(1024), TString(u";"));
  EXPECT_EQ(TLocale::GetListSeparator(2048), TString(u"|"));
  EXPECT_EQ(TLocale::GetListSeparator(0x407), TString(u"; "));
  EXPECT_EQ(TLocale::GetListSeparator(0x409), TString(u","));
  TSettings::UseDefaultStore();
}

TEST(NumberFormatConcurrencyTest, SettingsAndFormatsAreTheSameOnEveryThread) {
  const uint32_t lcids[] = {0x409, 0x407, 0x40C, 0x411, 0x439, 0x3401, 0x410, 0x419};
  std::vector<NUMBER_FORMAT_OPTIONS> expected;
  for (uint32_t lcid : lcids) {
    NUMBER_FORMAT_OPTIONS o;
    TLocale::GetSystemCurrencySettings(lcid, &o);
    expected.push_back(o);
  }
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < 50; ++round) {
        const size_t i = static_cast<size_t>(t + round) % std::size(lcids);
        NUMBER_FORMAT_OPTIONS currency;
        TLocale::GetSystemCurrencySettings(lcids[i], &currency);
        if (!(currency == expected[i])) ++failures;
        FormatCode code;
        int options;
        NUMBER_FORMAT_OPTIONS parsed;
        const TString encoded = EncodeFormatString(FormatCode::Custom, static_cast<int>(lcids[i]),
                                                   BuildOleFormatString(&currency, true));
        GetFormatCodeAndOptionsFromString(encoded, code, options, &parsed);
        if (parsed.prefix != currency.prefix || parsed.decimalPlaces != currency.decimalPlaces) ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
}

}  // namespace
