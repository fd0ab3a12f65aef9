// TLocale: identity and copies, the date-format cache, the process-wide
// caches, default patterns and style pairs, date order, legacy patterns,
// first-week rules, default and supported locales.

#include <QDateTime>
#include <QLocale>
#include <QLoggingCategory>

#include <unicode/calendar.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/LogicException.h"
#include "support/ScopedIcuDefault.h"

namespace {

using Spec = ICUUtils::DefaultDateTimeFormatSpec;
using Codes = TLocale::DateTimeFormatCodes;

std::string Utf8(const TString& s) { return s.toUtf8(); }

TString Format(const VelICU::ICUDateFormat& format, double udate) {
  icu::UnicodeString out;
  format.format(udate, out);
  return VelICU::FromUnicodeString(out);
}

double UDateOf(int y, int m, int d, int h = 0, int mi = 0) {
  return static_cast<double>(QDateTime(QDate(y, m, d), QTime(h, mi), Qt::UTC).toMSecsSinceEpoch());
}

// Collects what is logged under velcoredata.locale.
std::vector<std::string> g_logged;
void CaptureLog(QtMsgType, const QMessageLogContext& context, const QString& text) {
  if (context.category && std::string(context.category) == "velcoredata.locale") g_logged.push_back(text.toStdString());
}

TEST(TLocaleTest, ConstructionGivesIdentityAndIcuLocale) {
  const TLocale german(0x407);
  EXPECT_EQ(german.GetLCID(), 0x407u);
  EXPECT_EQ(german.getLanguageCode().GetISOString(), TString(u"de_DE"));
  EXPECT_STREQ(german.getICULocale().getName(), "de_DE");

  const TLocale japanese(0x411, u"japanese");
  EXPECT_EQ(japanese.GetLCID(), 0x411u);
  EXPECT_STREQ(japanese.getICULocale().getName(), "ja_JP@calendar=japanese");
  // A locale that already has keywords keeps them beside the calendar.
  const TLocale traditional(0x40A, u"buddhist");
  EXPECT_STREQ(traditional.getICULocale().getName(), "es_ES@calendar=buddhist;collation=traditional");

  const TLocale swiss(TString(u"fr-CH"));
  EXPECT_EQ(swiss.GetLCID(), 0x100Cu);
  EXPECT_STREQ(swiss.getICULocale().getName(), "fr_CH");

  // An LCID without a locale keeps its number and speaks English.
  const TLocale unknown(0x1234);
  EXPECT_EQ(unknown.GetLCID(), 0x1234u);
  EXPECT_STREQ(unknown.getICULocale().getName(), "en");
}

TEST(TLocaleTest, CopiesCloneTheCacheAndKeepTheCalendar) {
  TLocale source(0x411, u"japanese");
  const VelICU::ICUDateFormat& original = source.GetICUDateFormat(u"Gy-MM-dd");
  source.GetICUDateFormat(u"HH:mm");
  const TLocale copy(source);
  EXPECT_EQ(copy.GetLCID(), 0x411u);
  EXPECT_STREQ(copy.getICULocale().getName(), "ja_JP@calendar=japanese");
  EXPECT_EQ(copy.GetICUDateFormatCacheSize(), 2u);
  const VelICU::ICUDateFormat& cloned = copy.GetICUDateFormat(u"Gy-MM-dd");
  EXPECT_NE(&cloned, &original);
  EXPECT_EQ(copy.GetICUDateFormatCacheSize(), 2u);  // a hit, not a new entry
  const double day = UDateOf(2020, 1, 5);
  EXPECT_EQ(Format(cloned, day), Format(original, day));
  EXPECT_EQ(Utf8(Format(cloned, day)), "令和2-01-05");  // Reiwa 2

  TLocale target(0x409);
  target.GetICUDateFormat(u"yyyy");
  target = source;
  EXPECT_EQ(target.GetLCID(), 0x411u);
  EXPECT_STREQ(target.getICULocale().getName(), "ja_JP@calendar=japanese");
  EXPECT_EQ(target.GetICUDateFormatCacheSize(), 2u);
}

TEST(TLocaleTest, DateFormatCacheMakesOneUtcProlepticFormatPerPattern) {
  const TLocale locale(0x409);
  const VelICU::ICUDateFormat& first = locale.GetICUDateFormat(u"yyyy-MM-dd HH:mm");
  EXPECT_EQ(&locale.GetICUDateFormat(u"yyyy-MM-dd HH:mm"), &first);
  EXPECT_EQ(locale.GetICUDateFormatCacheSize(), 1u);
  locale.GetICUDateFormat(u"M/d/yy");
  EXPECT_EQ(locale.GetICUDateFormatCacheSize(), 2u);
  // UTC whatever the process time zone, Gregorian before 1582 as well.
  EXPECT_EQ(Utf8(Format(first, 0.0)), "1970-01-01 00:00");
  EXPECT_EQ(Utf8(Format(first, UDateOf(1500, 3, 1, 12, 30))), "1500-03-01 12:30");
  EXPECT_EQ(Utf8(Format(first, UDateOf(100, 1, 1))), "0100-01-01 00:00");
}

TEST(TLocaleTest, ProcessCachesSharePerLcidAndFollowTheUserLocaleForPseudoLcids) {
  const auto german = TLocale::GetCachedICULocale(0x407);
  EXPECT_EQ(german, TLocale::GetCachedICULocale(0x407));
  EXPECT_STREQ(german->getName(), "de_DE");
  const auto shortDate = TLocale::GetCachedICUDateFormat(0x407, VelICU::ICUDateFormat::kShort);
  EXPECT_EQ(shortDate, TLocale::GetCachedICUDateFormat(0x407, VelICU::ICUDateFormat::kShort));
  EXPECT_EQ(ICUUtils::GetPattern(*shortDate), TString(u"dd.MM.yy"));
  const auto time = TLocale::GetCachedICUSimpleDateFormat(0x407, VelICU::ICUDateFormat::kMedium);
  EXPECT_EQ(time, TLocale::GetCachedICUSimpleDateFormat(0x407, VelICU::ICUDateFormat::kMedium));
  EXPECT_EQ(ICUUtils::GetPattern(*time), TString(u"HH:mm:ss"));
  {
    ScopedIcuDefault env("de_CH");
    EXPECT_STREQ(TLocale::GetCachedICULocale(1024)->getName(), "de_CH");
    EXPECT_EQ(TLocale::GetLocaleFormatAsICU(Spec::ShortDate, 1024), TString(u"dd.MM.yyyy"));
  }
  {
    ScopedIcuDefault env("en_GB");
    EXPECT_STREQ(TLocale::GetCachedICULocale(1024)->getName(), "en_GB");
    EXPECT_EQ(TLocale::GetLocaleFormatAsICU(Spec::ShortDate, 1024), TString(u"dd/MM/y"));
  }
}

TEST(TLocaleTest, DefaultPatternsInTheThreeDialects) {
  struct Case {
    Spec spec;
    const char16_t* icu;
    const char16_t* windows;
    const char16_t* custom;
  };
  // en_US: the short date is widened to four-digit years in ICU only; the
  // narrow no-break space ICU puts before AM/PM is a plain space.
  const Case english[] = {
      {Spec::LongDate, u"EEEE, MMMM d, y", u"dddd, MMMM d, yyyy", u"dddd, MMMM d, yyyy"},
      {Spec::ShortDate, u"M/d/yyyy", u"M/d/yy", u"M/d/yy"},
      {Spec::LongTime, u"h:mm:ss a", u"h:mm:ss tt", u"h:nn:ss AM/PM"},
      {Spec::ShortDateLongTime, u"M/d/yyyy h:mm:ss a", u"M/d/yy h:mm:ss tt", u"M/d/yy h:nn:ss AM/PM"},
      {Spec::ShortTime, u"h:mm a", u"h:mm tt", u"h:nn AM/PM"},
      {static_cast<Spec>(99), u"M/d/yyyy h:mm:ss a", u"M/d/yy h:mm:ss tt", u"M/d/yy h:nn:ss AM/PM"},
  };
  for (const Case& c : english) {
    SCOPED_TRACE(static_cast<int>(c.spec));
    EXPECT_EQ(Utf8(TLocale::GetLocaleFormatAsICU(c.spec, 0x409)), Utf8(TString(c.icu)));
    EXPECT_EQ(Utf8(TLocale::GetLocaleFormatAsWindows(c.spec, 0x409)), Utf8(TString(c.windows)));
    EXPECT_EQ(Utf8(TLocale::GetLocaleFormatAsCustom(c.spec, 0x409)), Utf8(TString(c.custom)));
  }
  EXPECT_EQ(TLocale::GetLocaleFormatAsICU(Spec::ShortDate, 0x407), TString(u"dd.MM.yyyy"));
  EXPECT_EQ(TLocale::GetLocaleFormatAsICU(Spec::LongTime, 0x407), TString(u"HH:mm:ss"));
  // "y" is already the full year: nothing to widen.
  EXPECT_EQ(TLocale::GetLocaleFormatAsICU(Spec::ShortDate, 0x40C), TString(u"dd/MM/y"));
  // An LCID without a locale answers with English (LCID 9).
  for (Spec spec : {Spec::LongDate, Spec::ShortDate, Spec::LongTime, Spec::ShortDateLongTime, Spec::ShortTime}) {
    EXPECT_EQ(TLocale::GetLocaleFormatAsICU(spec, 0x1234), TLocale::GetLocaleFormatAsICU(spec, 9));
    EXPECT_FALSE(TLocale::GetLocaleFormatAsICU(spec, 0x1234).isEmpty());
  }
  // The Qt dialect comes from QLocale.
  EXPECT_EQ(TLocale::GetLocaleFormatQLocaleInternal(Spec::ShortDate, 0x409), TString(u"M/d/yy"));
}

TEST(TLocaleTest, CjkPatternsKeepTheirIdeographsAndDayPeriodsInTheWindowsDialect) {
  EXPECT_EQ(Utf8(TLocale::GetLocaleFormatAsWindows(Spec::LongDate, 0x411)), "yyyy'年'M'月'd'日'dddd");
  EXPECT_EQ(Utf8(TLocale::GetLocaleFormatAsWindows(Spec::LongDate, 0x412)), "yyyy'년' M'월' d'일' dddd");
  // zh_TW writes the flexible day period "B" glued to the hour.
  EXPECT_EQ(Utf8(TLocale::GetLocaleFormatAsWindows(Spec::LongTime, 0x404)), "tt h:mm:ss");
  EXPECT_EQ(Utf8(TLocale::GetLocaleFormatAsWindows(Spec::LongTime, 0x412)), "tt h:mm:ss");
  EXPECT_EQ(Utf8(TLocale::ConvertCJKTimeFormatIfNeeded(u"y'年'M月 Bh", 0x804)), "y'年'M'月' a h");
  // Other languages are left alone.
  EXPECT_EQ(Utf8(TLocale::ConvertCJKTimeFormatIfNeeded(u"d בMMMM Bh", 0x40D)), "d בMMMM Bh");
}

TEST(TLocaleTest, FormatCodesNumberTheStylePairs) {
  EXPECT_EQ(TLocale::GetFormatString(Codes::ShortDate, LanguageCode(0x409)), TString(u"M/d/yy"));
  EXPECT_EQ(TLocale::GetFormatString(Codes::FullDate, LanguageCode(0x409)), TString(u"EEEE, MMMM d, y"));
  EXPECT_EQ(TLocale::GetFormatString(Codes::MediumTime, LanguageCode(0x409)), TString(u"h:mm:ss a"));
  EXPECT_EQ(TLocale::GetFormatString(Codes::ShortTime, LanguageCode(0x409)), TString(u"h:mm a"));
  EXPECT_EQ(TLocale::GetFormatString(Codes::ShortDateMediumTime, LanguageCode(0x409)),
            TString(u"M/d/yy, h:mm:ss a"));
  // Code k pairs date style 4 - k/5 with time style 4 - k%5: its pattern holds
  // the date-only pattern of its row and the time-only pattern of its column.
  for (uint32_t lcid : {0x409u, 0x407u, 0x40Cu, 0x411u}) {
    const LanguageCode language(lcid);
    for (int k = 0; k < 20; ++k) {
      if (k % 5 == 4) continue;
      const TString pair = TLocale::GetFormatString(static_cast<Codes>(k), language);
      const TString date = TLocale::GetFormatString(static_cast<Codes>(k / 5 * 5 + 4), language);
      const TString time = TLocale::GetFormatString(static_cast<Codes>(20 + k % 5), language);
      EXPECT_TRUE(pair.contains(date) && pair.contains(time))
          << std::hex << lcid << std::dec << " code " << k << ": " << Utf8(pair);
    }
    // Longer date styles give longer date patterns.
    EXPECT_GT(TLocale::GetFormatString(Codes::FullDate, language).size(),
              TLocale::GetFormatString(Codes::ShortDate, language).size());
  }
}

TEST(TLocaleTest, FormatStringFailuresAreLoggedAndGiveNothing) {
  g_logged.clear();
  const QtMessageHandler previous = qInstallMessageHandler(&CaptureLog);
  EXPECT_EQ(TLocale::GetFormatString(static_cast<Codes>(24), LanguageCode(0x409)), TString());
  EXPECT_EQ(TLocale::GetFormatString(static_cast<Codes>(-1), LanguageCode(0x409)), TString());
  EXPECT_EQ(TLocale::GetFormatString(Codes::ShortDate, LanguageCode(0x1234)), TString());
  EXPECT_EQ(TLocale::GetDateOrder(0x1234), TLocale::kDateOrderUnknown);
  qInstallMessageHandler(previous);
  EXPECT_EQ(g_logged, (std::vector<std::string>{
                          "Invalid format identifier 24 passed to GetFormatString",
                          "Invalid format identifier -1 passed to GetFormatString",
                          "Unable to find language reference for 4660 in GetFormatString",
                          "Unable to find language reference for 4660 in GetFormatString",
                      }));
}

TEST(TLocaleTest, DateOrderFollowsTheShortDate) {
  const std::pair<uint32_t, int> cases[] = {
      {0x409, TLocale::kMonthDayYear}, {0x407, TLocale::kDayMonthYear}, {0x809, TLocale::kDayMonthYear},
      {0x411, TLocale::kYearMonthDay}, {0x40E, TLocale::kYearMonthDay}, {0x41D, TLocale::kYearMonthDay},
      {0x804, TLocale::kYearMonthDay}, {0x412, TLocale::kYearMonthDay}, {0x40C, TLocale::kDayMonthYear},
  };
  for (const auto& [lcid, order] : cases) EXPECT_EQ(TLocale::GetDateOrder(lcid), order) << std::hex << lcid;
}

TEST(TLocaleTest, LegacyPatternsCoverTheDefaultsOfCommonLocales) {
  EXPECT_EQ(TLocale::GetLegacyFormatFromICU(u"M/d/yy"), TString(u"M/d/yyyy"));
  EXPECT_EQ(TLocale::GetLegacyFormatFromICU(u"h:mm:ss a"), TString(u"h:mm:ss tt"));
  EXPECT_EQ(TLocale::GetLegacyFormatFromICU(u"EEEE, d. MMMM y"), TString(u"dddd, d. MMMM yyyy"));
  for (uint32_t lcid : {0x409u, 0x809u, 0x407u, 0x40Cu, 0x411u, 0x804u, 0x404u, 0x412u, 0xC0Au, 0x410u, 0x419u,
                        0x416u, 0x413u, 0x41Du, 0x40Bu, 0x415u, 0x40Eu}) {
    for (Codes code : {Codes::ShortDate, Codes::FullDate, Codes::MediumTime, Codes::ShortTime}) {
      const TString icu = TLocale::GetFormatString(code, LanguageCode(lcid));
      EXPECT_NO_THROW(TLocale::GetLegacyFormatFromICU(icu)) << std::hex << lcid << ": " << Utf8(icu);
    }
  }
  try {
    TLocale::GetLegacyFormatFromICU(u"QQQQ");
    FAIL() << "no logic error";
  } catch (const VelmoraLogicException& e) {
    EXPECT_EQ(e.GetCondition(), "formatEntry != formatsMap.end()");
  }
}

TEST(TLocaleTest, FirstWeekRulesAgreeWithIcuCalendarData) {
  EXPECT_EQ(TLocale::GetFirstWeekBehaviour(0x407), 2);
  EXPECT_EQ(TLocale::GetMinimalDaysInFirstWeek(0x407), 4);
  EXPECT_FALSE(TLocale::FirstWeekIsBroken(0x407));
  EXPECT_EQ(TLocale::GetFirstWeekBehaviour(0x409), 1);
  EXPECT_EQ(TLocale::GetMinimalDaysInFirstWeek(0x409), 1);
  EXPECT_TRUE(TLocale::FirstWeekIsBroken(0x409));
  // A locale the table does not know counts as broken.
  EXPECT_TRUE(TLocale::FirstWeekIsBroken(0x1234));
  // Every locale the language table knows: the table says what ICU's
  // calendar data says (the regions with the four-day rule).
  int checked = 0;
  for (uint32_t lcid = 1; lcid < 0x10000; lcid += 1) {
    char name[ULOC_FULLNAME_CAPACITY];
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = uloc_getLocaleForLCID(lcid, name, ULOC_FULLNAME_CAPACITY, &status);
    if (U_FAILURE(status) || length <= 0 || std::string(name) == "root") continue;
    std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(CoreICUUtils::GetLocale(lcid), status));
    ASSERT_TRUE(U_SUCCESS(status));
    EXPECT_EQ(TLocale::GetMinimalDaysInFirstWeek(lcid), calendar->getMinimalDaysInFirstWeek()) << name;
    ++checked;
  }
  EXPECT_GT(checked, 5000);
}

TEST(TLocaleTest, DefaultLocalesAreMadeOnceFromTheirIdentifiers) {
  EXPECT_EQ(&TLocale::GetISODefaultLocale(), &TLocale::GetISODefaultLocale());
  EXPECT_EQ(TLocale::GetISODefaultLocale().getLanguageCode().GetISOString(), TString(u"en_US"));
  EXPECT_EQ(TLocale::GetISODefaultLocale().GetLCID(), 0x409u);
  EXPECT_EQ(TLocale::GetSystemInvariantLocale().GetLCID(), 2048u);
  EXPECT_EQ(TLocale::GetUserDefaultLocale().GetLCID(), 1024u);
  ScopedIcuDefault env("fr_CH");
  EXPECT_EQ(TLocale::GetUserDefaultLCID(), 0x100Cu);
  // The default locale objects keep what they resolved to when made.
  EXPECT_EQ(&TLocale::GetUserDefaultLocale(), &TLocale::GetUserDefaultLocale());
}

TEST(TLocaleTest, SupportedLocalesHaveLcidsOfTheirOwn) {
  std::vector<uint32_t> lcids;
  std::vector<TString> names, displayNames;
  TLocale::GetSupportedLocales(TLocale::kSpecificLocales, lcids, names, displayNames);
  ASSERT_EQ(lcids.size(), names.size());
  ASSERT_EQ(lcids.size(), displayNames.size());
  EXPECT_GT(lcids.size(), 150u);
  EXPECT_EQ(std::set<uint32_t>(lcids.begin(), lcids.end()).size(), lcids.size());
  bool sawGerman = false;
  for (size_t i = 0; i < lcids.size(); ++i) {
    EXPECT_EQ(LanguageUtils::GetLocaleStr(lcids[i]), names[i]);
    EXPECT_TRUE(names[i].contains(u'_')) << Utf8(names[i]);
    if (lcids[i] == 0x407) {
      sawGerman = true;
      EXPECT_EQ(names[i], TString(u"de_DE"));
      EXPECT_EQ(displayNames[i], TString(u"German (Germany)"));
    }
  }
  EXPECT_TRUE(sawGerman);
  std::vector<uint32_t> all;
  TLocale::GetSupportedLocalesICU(TLocale::kIncludeNeutralLocales, all, names, displayNames);
  EXPECT_GT(all.size(), lcids.size());
  EXPECT_NE(std::find(all.begin(), all.end(), 0x7u), all.end());
}

TEST(TLocaleTest, IcuUtilitiesTranslateWeekdaysAndFoldCase) {
  const std::pair<SOWValue, UCalendarDaysOfWeek> days[] = {
      {SOWValue::Sunday, UCAL_SUNDAY},     {SOWValue::Monday, UCAL_MONDAY}, {SOWValue::Tuesday, UCAL_TUESDAY},
      {SOWValue::Wednesday, UCAL_WEDNESDAY}, {SOWValue::Thursday, UCAL_THURSDAY}, {SOWValue::Friday, UCAL_FRIDAY},
      {SOWValue::Saturday, UCAL_SATURDAY}};
  for (const auto& [sow, day] : days) {
    EXPECT_EQ(CoreICUUtils::translateSOWValue(sow), day);
    EXPECT_EQ(CoreICUUtils::translateUCalendarDaysOfWeek(day), sow);
  }
  EXPECT_THROW(CoreICUUtils::translateSOWValue(static_cast<SOWValue>(0)), VelmoraLogicException);
  EXPECT_THROW(CoreICUUtils::translateUCalendarDaysOfWeek(static_cast<UCalendarDaysOfWeek>(8)), VelmoraLogicException);
  EXPECT_EQ(ICUUtils::StrFoldCase(u"Stra\u00DFe MASSE"), TString(u"strasse masse"));
}

}  // namespace

// Every default pattern any LCID of the language table yields, in every
// style, has a legacy form.
TEST(TLocaleTest, LegacyPatternsCoverEveryDefaultPatternOfTheLanguageTable) {
  using Spec = ICUUtils::DefaultDateTimeFormatSpec;
  std::map<std::string, std::string> missing;  // pattern -> an LCID that gives it
  std::set<std::string> seen;
  for (uint32_t lcid = 1; lcid <= 0xFFFF; ++lcid) {
    if (lcid == LanguageUtils::kUserDefaultLCID || lcid == LanguageUtils::kSystemDefaultLCID) continue;
    if (lcid != LanguageUtils::kEnglishLCID && LanguageUtils::GetLocaleForLCID(lcid) == "en") continue;
    for (Spec spec : {Spec::LongDate, Spec::ShortDate, Spec::LongTime, Spec::ShortDateLongTime, Spec::ShortTime}) {
      const TString icu = TLocale::GetLocaleFormatAsICU(spec, lcid);
      seen.insert(Utf8(icu));
      try {
        TLocale::GetLegacyFormatFromICU(icu);
      } catch (const VelmoraLogicException&) {
        std::ostringstream where;
        where << std::hex << lcid << " spec " << static_cast<int>(spec);
        missing.emplace(Utf8(icu), where.str());
      }
    }
  }
  for (const auto& [pattern, where] : missing) ADD_FAILURE() << "no legacy form for \"" << pattern << "\" (" << where << ")";
  EXPECT_GT(seen.size(), 100u);  // the walk did reach the language table
}
