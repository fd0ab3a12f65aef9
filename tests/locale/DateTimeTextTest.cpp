// DateTime's text members and TLocale formatting: constructors that throw and
// those that never do, the parse forms, the format forms, and a round trip
// through the default patterns of many locales and calendar systems.

#include <QDateTime>

#include <random>
#include <string>

#include <gtest/gtest.h>

#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/TFormatString.h"
#include "velcoredata/platform/VelmoraException.h"

namespace {

using Options = DateTimeParseOptions;

std::string Utf8(const TString& s) { return s.toUtf8(); }

TEST(DateTimeTextTest, TwoPointerConstructorsThrowForTextThatIsNoDate) {
  const std::u16string good = u"2020-01-05 10:30:00";
  const DateTime parsed(good.data(), good.data() + good.size(), TLocale(0x407));
  EXPECT_EQ(parsed, DateTime(2020, 1, 5, 10, 30, 0));
  EXPECT_EQ(DateTime(good.data(), good.data() + good.size()), parsed);

  const std::u16string bad(u"no date\0tail", 12);
  const TString expected = TFormatString(CoreData::StringId::IDS_ERR_PARSING_DATETIME).arg(TString(u"no date")).str();
  try {
    (void)DateTime(bad.data(), bad.data() + bad.size());
    FAIL() << "no exception";
  } catch (const VelmoraException& e) {
    EXPECT_EQ(e.GetError().GetId(), 0x2CE8742Cu);
    EXPECT_EQ(Utf8(e.GetError().GetMessage()), Utf8(expected));
  }
  try {
    (void)DateTime(bad.data(), bad.data() + bad.size(), TLocale(0x409));
    FAIL() << "no exception";
  } catch (const VelmoraException& e) {
    EXPECT_EQ(e.GetError().GetId(), 0x8E8A7D12u);
    EXPECT_EQ(Utf8(e.GetError().GetMessage()), Utf8(expected));
  }
}

TEST(DateTimeTextTest, OnePointerConstructorsNeverThrowAndLeaveAnInvalidValue) {
  const TLocale english(0x409);
  EXPECT_EQ(DateTime(u"2020-01-05T10:30:00"), DateTime(2020, 1, 5, 10, 30, 0));
  EXPECT_EQ(DateTime(u"1/5/2020", Options::Date, english), DateTime(2020, 1, 5));
  for (const DateTime& failed : {DateTime(u"no date"), DateTime(u"", Options::DateAndTime),
                                 DateTime(u"1/5/2020 10:30 AM", Options::Date, english),
                                 DateTime(static_cast<const char16_t*>(nullptr))}) {
    EXPECT_EQ(failed.GetRepresentation(), 0u);
    EXPECT_FALSE(failed.IsValid());
  }
}

TEST(DateTimeTextTest, ParseFormsReportOrHideFailures) {
  const TLocale english(0x409);
  const std::u16string good = u" 1/5/2020 ";
  const std::u16string bad = u"1/32/2020";
  unsigned long long raw = 17;
  EXPECT_FALSE(DateTime::ParseDateTime(bad.data(), bad.data() + bad.size(), &raw));
  EXPECT_EQ(raw, 17u);
  EXPECT_TRUE(DateTime::ParseDateTime(good.data(), good.data() + good.size(), &raw));
  EXPECT_EQ(DateTime(raw), DateTime(2020, 1, 5));

  DateTime target(2001, 2, 3);
  EXPECT_FALSE(DateTime::ParseDateTime(bad.data(), bad.data() + bad.size(), target, english));
  EXPECT_EQ(target, DateTime(2001, 2, 3));
  EXPECT_TRUE(DateTime::ParseDateTime(good.data(), good.data() + good.size(), target, english));
  EXPECT_EQ(target, DateTime(2020, 1, 5));

  const std::u16string prefix = u"1/5/2020 is the day";
  const char16_t* stop = nullptr;
  EXPECT_TRUE(DateTime::ParseDateTime(prefix.data(), prefix.data() + prefix.size(), target, english, &stop));
  EXPECT_EQ(stop - prefix.data(), 8);

  // The value-returning forms hide failures: the OLE epoch resp. raw 0.
  EXPECT_EQ(DateTime::ParseDateTime(bad.data(), bad.data() + bad.size(), english), DateTime());
  EXPECT_EQ(DateTime::ParseDateTime(good.data(), good.data() + good.size(), english), DateTime(2020, 1, 5));
  EXPECT_EQ(DateTime::ParseDateTimeTryAllFormats(u"garbage", english).GetRepresentation(), 0u);
  EXPECT_EQ(DateTime::ParseDateTimeTryAllFormats(u"2020-01-05"), DateTime(2020, 1, 5));
  EXPECT_EQ(DateTime::ParseDateTimeTryAllFormats(u"10:30", english, DateTime(2021, 3, 4, 23, 0, 0)),
            DateTime(2021, 3, 4, 10, 30, 0));
}

TEST(DateTimeTextTest, ParseTimeChangesTheValueOnlyOnSuccess) {
  const TLocale german(0x407);
  DateTime value(2020, 1, 5, 8, 0, 0);
  EXPECT_FALSE(value.ParseTimeTryAllFormats(u"2020-01-05", german));
  EXPECT_FALSE(value.ParseTimeTryAllFormats(u"25:00", german));
  EXPECT_EQ(value, DateTime(2020, 1, 5, 8, 0, 0));
  EXPECT_TRUE(value.ParseTimeTryAllFormats(u"14:05:06", german));
  EXPECT_EQ(value, DateTime::FromValue(DateTime::s_OLEEpoch + (14 * 3600 + 5 * 60 + 6) * 10000ULL));
  EXPECT_FALSE(value.HasDate());
  const auto [ok, parsed] = german.ParseTimeTryAllFormats(u" 7:08 ");
  EXPECT_TRUE(ok);
  EXPECT_EQ(parsed.GetHour(), 7);
  EXPECT_EQ(parsed.GetMinute(), 8);
}

TEST(DateTimeTextTest, FormatWritesThroughTheLocalesPatternsAndCalendars) {
  const DateTime value(2020, 1, 5, 14, 5, 6, 0.789);
  const TLocale english(0x409);
  EXPECT_EQ(Utf8(value.Format(u"yyyy-MM-dd HH:mm:ss.SSS", english)), "2020-01-05 14:05:06.789");
  EXPECT_EQ(Utf8(value.Format(u"EEEE, MMMM d, y h:mm a", english)), "Sunday, January 5, 2020 2:05 PM");
  EXPECT_EQ(Utf8(value.Format(Options::Date, english)), "1/5/2020");
  EXPECT_EQ(Utf8(value.Format(Options::Time, english)), "2:05:06 PM");
  EXPECT_EQ(Utf8(value.Format(Options::DateAndTime, english)), "1/5/2020 2:05:06 PM");
  EXPECT_EQ(Utf8(value.Format(Options::DateAndTime, TLocale(0x407))), "05.01.2020 14:05:06");
  EXPECT_EQ(Utf8(value.Format(u"d MMMM y", TLocale(0x40C))), "5 janvier 2020");
  EXPECT_EQ(Utf8(value.Format(u"G y", TLocale(0x41E))), "พ.ศ. 2563");
  EXPECT_EQ(Utf8(value.Format(u"Gy", TLocale(0x411, u"japanese"))), "令和2");
  // Before 1582 the calendar stays Gregorian; years below 1000 keep four digits.
  EXPECT_EQ(Utf8(DateTime(1500, 3, 1).Format(u"yyyy-MM-dd", english)), "1500-03-01");
  EXPECT_EQ(Utf8(DateTime(DateTime::FromValue(1518552576000000ULL)).Format(Options::Date, english)), "1/1/0100");
  // No zone: the fields are written as they are, whatever TZ says.
  EXPECT_EQ(Utf8(DateTime(2020, 7, 1, 2, 30, 0).Format(u"HH:mm", english)), "02:30");

  EXPECT_EQ(Utf8(english.Format(Time(13, 4, 5, 600000u), u"HH:mm:ss.SSS")), "13:04:05.600");
  EXPECT_EQ(Utf8(english.Format(Interval::FromHours(25) + Interval::FromMinutes(2), u"HH:mm")), "01:02");
  EXPECT_EQ(Utf8(english.Format(Interval::FromMinutes(90), u"H:mm")), "1:30");
}

TEST(DateTimeTextTest, DefaultFormsOfManyLocalesParseBack) {
  struct LocaleCase {
    TLocale locale;
    int firstYear;
    int lastYear;
  };
  // Gregorian locales over the whole valid range; other calendar systems over
  // the years their eras cover without ambiguity.
  const LocaleCase cases[] = {
      {TLocale(0x409), 100, 9999},          {TLocale(0x809), 100, 9999}, {TLocale(0x407), 100, 9999},
      {TLocale(0x40C), 100, 9999},          {TLocale(0x411), 100, 9999}, {TLocale(0x804), 100, 9999},
      {TLocale(0x404), 100, 9999},          {TLocale(0x412), 100, 9999}, {TLocale(0x419), 100, 9999},
      {TLocale(0xC0A), 100, 9999},          {TLocale(0x416), 100, 9999}, {TLocale(0x41D), 100, 9999},
      {TLocale(0x40B), 100, 9999},          {TLocale(0x40E), 100, 9999}, {TLocale(0x415), 100, 9999},
      {TLocale(0x40D), 100, 9999},          {TLocale(0x439), 100, 9999}, {TLocale(0x402), 100, 9999},
      {TLocale(0x41E), 1900, 2100},         {TLocale(0x401), 1900, 2100}, {TLocale(0x429), 1900, 2100},
      {TLocale(0x411, u"japanese"), 1900, 2100},
  };
  std::mt19937 random(20200105);
  for (const LocaleCase& c : cases) {
    // 0100-01-01 cannot be set from fields (SetDateTime starts at 400).
    const unsigned long long first =
        c.firstYear == 100 ? 1518552576000000ULL : DateTime(c.firstYear, 1, 1).GetRepresentation();
    const unsigned long long last = DateTime(c.lastYear, 12, 31, 23, 59, 59).GetRepresentation();
    std::uniform_int_distribution<unsigned long long> seconds(0, (last - first) / 10000);
    for (int i = 0; i < 60; ++i) {
      const DateTime value = DateTime::FromValue(first + seconds(random) * 10000);
      for (Options options : {Options::DateAndTime, Options::Date, Options::Time}) {
        const TString text = value.Format(options, c.locale);
        DateTime parsed(0ULL);
        ASSERT_TRUE(c.locale.ParseDateTimeTryAllFormats(text, parsed, options))
            << c.locale.getICULocale().getName() << ": " << Utf8(text);
        const unsigned long long day = DateTime::s_scaling;
        const unsigned long long expected =
            options == Options::Date   ? value.GetRepresentation() / day * day
            : options == Options::Time ? DateTime::s_OLEEpoch + value.GetRepresentation() % day
                                       : value.GetRepresentation();
        ASSERT_EQ(parsed.GetRepresentation(), expected) << c.locale.getICULocale().getName() << ": " << Utf8(text);
      }
    }
  }
}

}  // namespace
