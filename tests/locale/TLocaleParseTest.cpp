// TLocale parsing: the forms each locale reads, options, reference dates,
// partial parses, the cached parse formatter and bad input. Expected values
// are computed with Qt's (proleptic Gregorian) calendar.

#include <QDateTime>

#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "velcoredata/datetime/DateTimeParsingFormats.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/LogicException.h"

namespace {

using Options = DateTimeParseOptions;

constexpr unsigned long long kUnixEpochValue = 2108667168000000ull;

// The raw DateTime value of a UTC date and time.
unsigned long long Value(int y, int mo, int d, int h = 0, int mi = 0, int s = 0, int ms = 0) {
  const qint64 msecs = QDateTime(QDate(y, mo, d), QTime(h, mi, s, ms), Qt::UTC).toMSecsSinceEpoch();
  return static_cast<unsigned long long>(static_cast<long long>(kUnixEpochValue) + msecs * 10);
}

std::string Show(unsigned long long value) {
  const long long ms = (static_cast<long long>(value) - static_cast<long long>(kUnixEpochValue)) / 10;
  return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).toString(Qt::ISODateWithMs).toStdString();
}

struct ParseCase {
  const char16_t* text;
  unsigned long long expected;
};

void ExpectParses(const TLocale& locale, const std::vector<ParseCase>& cases, Options options = Options::DateAndTime) {
  for (const ParseCase& c : cases) {
    unsigned long long value = 1;
    const bool ok = locale.ParseDateTimeTryAllFormats(c.text, &value, options);
    EXPECT_TRUE(ok) << TString(c.text).toUtf8();
    if (ok) {
      EXPECT_EQ(Show(value), Show(c.expected)) << TString(c.text).toUtf8();
    }
  }
}

void ExpectRejects(const TLocale& locale, const std::vector<const char16_t*>& texts,
                   Options options = Options::DateAndTime) {
  for (const char16_t* text : texts) {
    unsigned long long value = 42;
    EXPECT_FALSE(locale.ParseDateTimeTryAllFormats(text, &value, options)) << TString(text).toUtf8();
    EXPECT_EQ(value, 42u) << "output touched for " << TString(text).toUtf8();
  }
}

TEST(TLocaleParseTest, DefaultLocaleReadsItsOwnFormsAndIso8601) {
  const TLocale english(0x409);
  ExpectParses(english, {
                            {u"1/5/2020", Value(2020, 1, 5)},
                            {u"1/5/20", Value(2020, 1, 5)},
                            {u"January 5, 2020", Value(2020, 1, 5)},
                            {u"Sunday, January 5, 2020", Value(2020, 1, 5)},
                            {u"Jan 5, 2020 10:30:15 PM", Value(2020, 1, 5, 22, 30, 15)},
                            {u"1/5/2020 10:30:00\u202FAM", Value(2020, 1, 5, 10, 30)},
                            {u"1/5/2020 10:30 am", Value(2020, 1, 5, 10, 30)},
                            {u"5 Jan 2020", Value(2020, 1, 5)},
                            {u"Sun, 05 Jan 2020 10:30:00 GMT", Value(2020, 1, 5, 10, 30)},
                            {u"Sun Jan  5 10:30:00 2020", Value(2020, 1, 5, 10, 30)},
                            {u"2020-01-05", Value(2020, 1, 5)},
                            {u"2020-1-5", Value(2020, 1, 5)},
                            {u"2020-01-05T10:30:00Z", Value(2020, 1, 5, 10, 30)},
                            {u"2020-01-05T10:30:00+02:00", Value(2020, 1, 5, 8, 30)},
                            {u"2020-01-05T10:30:00.250-01:00", Value(2020, 1, 5, 11, 30, 0, 250)},
                            {u"2020-01-05 10:30:00.123", Value(2020, 1, 5, 10, 30, 0, 123)},
                            {u"20200105T103000", Value(2020, 1, 5, 10, 30)},
                            {u"20200105", Value(2020, 1, 5)},
                            {u"2020-005", Value(2020, 1, 5)},
                            {u"2020-12", Value(2020, 12, 1)},  // a month without its day: the first
                            {u"2020-W02-7", Value(2020, 1, 12)},
                            {u"2020-W53-7", Value(2021, 1, 3)},
                            {u"  \t2020-01-05 \u00A0", Value(2020, 1, 5)},
                            {u"0100-01-01", Value(100, 1, 1)},
                            {u"9999-12-31 23:59:59", Value(9999, 12, 31, 23, 59, 59)},
                            {u"1500-03-01", Value(1500, 3, 1)},
                        });
}

TEST(TLocaleParseTest, TimesWithoutADateLieOnTheDayOfNoDate) {
  const TLocale english(0x409);
  ExpectParses(english, {
                            {u"10:30", Value(1899, 12, 30, 10, 30)},
                            {u"10:30:15.5", Value(1899, 12, 30, 10, 30, 15, 500)},
                            {u"10:30 PM", Value(1899, 12, 30, 22, 30)},
                            {u"12:05 AM", Value(1899, 12, 30, 0, 5)},
                            {u"7 pm", Value(1899, 12, 30, 19, 0)},
                            {u"23:59:59", Value(1899, 12, 30, 23, 59, 59)},
                        });
  ExpectRejects(english, {u"24:00:00", u"10:60", u"13:00 PM"});
}

TEST(TLocaleParseTest, OtherLocalesReadTheirOwnPatternsAndTheNeutralOnes) {
  const TLocale german(0x407);
  ExpectParses(german, {
                           {u"05.01.2020", Value(2020, 1, 5)},
                           {u"5.1.2020", Value(2020, 1, 5)},
                           {u"5.1.20", Value(2020, 1, 5)},
                           {u"05.01.20, 10:30:00", Value(2020, 1, 5, 10, 30)},
                           {u"5. Januar 2020", Value(2020, 1, 5)},
                           {u"Sonntag, 5. Januar 2020", Value(2020, 1, 5)},
                           {u"14:05", Value(1899, 12, 30, 14, 5)},
                           {u"2020-01-05", Value(2020, 1, 5)},
                           {u"2020-01-05T10:30:00Z", Value(2020, 1, 5, 10, 30)},
                       });
  // U.S. forms are not German.
  ExpectRejects(german, {u"January 5, 2020", u"10:30 PM"});

  const TLocale british(0x809);
  ExpectParses(british, {{u"05/01/2020", Value(2020, 1, 5)}, {u"5 January 2020", Value(2020, 1, 5)}});
  const TLocale japanese(0x411);
  ExpectParses(japanese, {{u"2020/01/05", Value(2020, 1, 5)},
                          {u"2020年1月5日", Value(2020, 1, 5)},
                          {u"2020年1月5日日曜日", Value(2020, 1, 5)}});
  const TLocale korean(0x412);
  ExpectParses(korean, {{u"20. 1. 5.", Value(2020, 1, 5)}, {u"오후 3:04:05", Value(1899, 12, 30, 15, 4, 5)}});
}

TEST(TLocaleParseTest, LocaleCalendarSystemsReadTheirOwnYearsButIsoStaysGregorian) {
  const TLocale thai(0x41E);  // Buddhist calendar: 2563 is 2020
  ExpectParses(thai, {{u"5/1/2563", Value(2020, 1, 5)}, {u"2020-01-05", Value(2020, 1, 5)}});
  const TLocale japaneseEra(0x411, u"japanese");
  ExpectParses(japaneseEra, {{u"R2/1/5", Value(2020, 1, 5)},
                             {u"2020-01-05", Value(2020, 1, 5)},
                             // The first year of an era is written without a digit.
                             {u"令和元年5月1日", Value(2019, 5, 1)}});
}

TEST(TLocaleParseTest, OptionsLimitThePartsATextMayCarry) {
  const TLocale english(0x409);
  ExpectParses(english, {{u"2020-01-05", Value(2020, 1, 5)}, {u"1/5/2020", Value(2020, 1, 5)}}, Options::Date);
  ExpectRejects(english, {u"2020-01-05 10:30", u"10:30", u"1/5/2020 10:30 AM"}, Options::Date);
  ExpectParses(english, {{u"10:30", Value(1899, 12, 30, 10, 30)}}, Options::Time);
  ExpectRejects(english, {u"2020-01-05", u"2020-01-05T10:30:00"}, Options::Time);
  // None reads as DateAndTime.
  ExpectParses(english, {{u"2020-01-05T10:30:00", Value(2020, 1, 5, 10, 30)}, {u"10:30", Value(1899, 12, 30, 10, 30)}},
               Options::None);
}

TEST(TLocaleParseTest, AReferenceSuppliesTheMissingFieldsAndTheTimeOfDay) {
  const TLocale english(0x409);
  const unsigned long long reference = Value(2021, 3, 4, 13, 14, 15);
  const unsigned long long endOfJanuary = Value(2021, 1, 31, 8, 0, 0);
  const std::tuple<const char16_t*, unsigned long long, unsigned long long> cases[] = {
      {u"10:30", reference, Value(2021, 3, 4, 10, 30)},
      // A text without a time of day takes the reference's.
      {u"Jan 5", reference, Value(2021, 1, 5, 13, 14, 15)},
      {u"2/7", reference, Value(2021, 2, 7, 13, 14, 15)},
      {u"2020-01-05", reference, Value(2020, 1, 5, 13, 14, 15)},
      // A month without its day takes the reference's day, moved back to
      // the month's end where the month is shorter.
      {u"March 2021", reference, Value(2021, 3, 4, 13, 14, 15)},
      {u"February 2021", endOfJanuary, Value(2021, 2, 28, 8)},
      {u"April 2021", endOfJanuary, Value(2021, 4, 30, 8)},
  };
  for (const auto& [text, from, expected] : cases) {
    unsigned long long value = 0;
    ASSERT_TRUE(english.ParseDateTimeTryAllFormats(text, from, &value, Options::DateAndTime))
        << TString(text).toUtf8();
    EXPECT_EQ(Show(value), Show(expected)) << TString(text).toUtf8();
  }
  // Without a reference a month without its day is its first day, at midnight.
  ExpectParses(english, {{u"March 2021", Value(2021, 3, 1)}, {u"February 2021", Value(2021, 2, 1)}});
  // An invalid reference is read as the day of no date.
  unsigned long long value = 0;
  ASSERT_TRUE(english.ParseDateTimeTryAllFormats(u"10:30", 0, &value, Options::DateAndTime));
  EXPECT_EQ(Show(value), Show(Value(1899, 12, 30, 10, 30)));
}

TEST(TLocaleParseTest, RangesParseWholeOrReportWhereTheDateEnds) {
  const TLocale english(0x409);
  const std::u16string text = u"  2020-01-05 10:30 or more";
  const char16_t* begin = text.data();
  const char16_t* end = begin + text.size();
  unsigned long long value = 0;
  EXPECT_FALSE(english.ParseDateTime(begin, end, &value));
  const char16_t* stop = nullptr;
  ASSERT_TRUE(english.ParseDateTime(begin, end, &value, Options::DateAndTime, &stop));
  EXPECT_EQ(Show(value), Show(Value(2020, 1, 5, 10, 30)));
  EXPECT_EQ(stop - begin, 18);
  // Limited to a date, the longest date is the date alone.
  ASSERT_TRUE(english.ParseDateTime(begin, end, &value, Options::Date, &stop));
  EXPECT_EQ(stop - begin, 12);
  EXPECT_TRUE(english.ParseDateTime(begin, begin + 18, &value));
  const std::u16string nothing = u"and 2020";
  stop = nullptr;
  EXPECT_FALSE(english.ParseDateTime(nothing.data(), nothing.data() + nothing.size(), &value, Options::DateAndTime,
                                     &stop));
  EXPECT_EQ(stop, nothing.data());
  // Text after an embedded zero is part of the range.
  const std::u16string zero(u"2020-01-05\0x", 12);
  EXPECT_FALSE(english.ParseDateTime(zero.data(), zero.data() + zero.size(), &value));
  EXPECT_TRUE(english.ParseDateTime(zero.data(), zero.data() + 10, &value));
  // The zero-terminated form ends at the zero.
  EXPECT_TRUE(english.ParseDateTimeTryAllFormats(zero.data(), &value));
}

TEST(TLocaleParseTest, BadTextIsRejectedWithoutTouchingTheOutput) {
  const TLocale english(0x409);
  const std::u16string huge(100000, u'9');
  const std::u16string surrogates = u"2020-01-05\xD800";
  ExpectRejects(english, {
                             u"",
                             u"   ",
                             u"hello",
                             u"2/30/2020",
                             u"13/5/2020",
                             u"2020-13-01",
                             u"2020-01-05 junk",
                             u"0099-12-31",
                             u"10000-01-01",
                             u"9999-12-31T23:59:59.500",
                             u"2020-01-05T10:30:00+25:00",
                             // Abutting fields are read at full width only,
                             // not as 0123-04-05 with narrowed fields.
                             u"123456",
                             u"2020015",
                             u"\xD800",
                             u"\xDC00 1/5/2020",
                             huge.c_str(),
                             surrogates.c_str(),
                         });
  unsigned long long value = 7;
  EXPECT_FALSE(english.ParseDateTimeTryAllFormats(nullptr, &value));
  EXPECT_FALSE(english.ParseDateTime(nullptr, nullptr, &value));
  EXPECT_EQ(value, 7u);
}

TEST(TLocaleParseTest, TheFormatThatLastSucceededIsTriedFirst) {
  const TLocale english(0x409);
  unsigned long long value = 0;
  EXPECT_EQ(english.GetParseAttemptCount(), 0u);
  EXPECT_FALSE(english.HasParseFormatterFailed());
  ASSERT_TRUE(english.ParseDateTimeTryAllFormats(u"1/5/2020", &value));
  EXPECT_FALSE(english.HasParseFormatterFailed());
  // Another form: the cached formatter fails, the search succeeds and caches it.
  ASSERT_TRUE(english.ParseDateTimeTryAllFormats(u"2020-01-06", &value));
  EXPECT_FALSE(english.HasParseFormatterFailed());
  EXPECT_EQ(Show(value), Show(Value(2020, 1, 6)));
  // Nothing parses: the flag stays set until the next success.
  EXPECT_FALSE(english.ParseDateTimeTryAllFormats(u"not a date", &value));
  EXPECT_TRUE(english.HasParseFormatterFailed());
  ASSERT_TRUE(english.ParseDateTimeTryAllFormats(u"2020-02-07", &value));
  EXPECT_FALSE(english.HasParseFormatterFailed());
  // The cached formatter honours the options: a date formatter does not
  // answer a request for a time.
  EXPECT_FALSE(english.ParseDateTimeTryAllFormats(u"2020-02-07", &value, Options::Time));
  EXPECT_EQ(english.GetParseAttemptCount(), 5u);
  // Blank text is not an attempt.
  EXPECT_FALSE(english.ParseDateTimeTryAllFormats(u" ", &value));
  EXPECT_EQ(english.GetParseAttemptCount(), 5u);
}

TEST(TLocaleParseTest, TheSingleStepsReadOnlyTheirOwnForms) {
  const TLocale german(0x407);
  const DateTime reference(2021, 3, 4);
  DateTime value;
  EXPECT_FALSE(german.ParseDateTimeWithCachedFormatter(u"05.01.2020", reference, value));
  EXPECT_TRUE(german.ParseDateTimeUsingISODefaultDateTimeFormatStrings(u"2020-01-05", reference, value));
  EXPECT_EQ(value, DateTime(2020, 1, 5));
  EXPECT_FALSE(german.ParseDateTimeUsingISODefaultDateTimeFormatStrings(u"05.01.2020", reference, value));
  EXPECT_TRUE(german.ParseInternationalDateTime(u"05.01.2020", Options::DateAndTime, value));
  EXPECT_EQ(value, DateTime(2020, 1, 5));
  EXPECT_FALSE(german.ParseInternationalDateTime(u"2020-01-05", Options::DateAndTime, value));
  // The last success is cached: the same form reads again, another does not.
  EXPECT_TRUE(german.ParseDateTimeWithCachedFormatter(u"06.01.2020", reference, value));
  EXPECT_EQ(value, DateTime(2020, 1, 6));
  EXPECT_FALSE(german.ParseDateTimeWithCachedFormatter(u"2020-01-06", reference, value));
  // The locale's Qt formats, translated to ICU.
  EXPECT_TRUE(german.ParseDateTimeUsingNativeAPIs(u"Sonntag, 5. Januar 2020", reference, value));
  EXPECT_EQ(value, DateTime(2020, 1, 5));
  EXPECT_FALSE(german.ParseDateTimeUsingNativeAPIs(u"2020-01-05", reference, value));
  // An explicit pattern is read as it stands.
  EXPECT_TRUE(german.ParseDateTime(u"05/01/2020 13h", u"dd/MM/yyyy HH'h'", value, Options::DateAndTime));
  EXPECT_EQ(value, DateTime(2020, 1, 5, 13, 0, 0));
  EXPECT_FALSE(german.ParseDateTime(u"5/1/2020 13h", u"dd/MM/yyyy HH'h'", value, Options::DateAndTime));
  EXPECT_FALSE(german.ParseDateTime(u"05/01/2020 13h", u"dd/MM/yyyy HH'h'", value, Options::Date));
}

TEST(TLocaleParseTest, ParsingFormatTableKeepsItsFixedEntries) {
  EXPECT_EQ(LookupDateTimeParsingFormatString(4), TString(u"yyyy-MM-dd HH:mm:ss.SSS"));
  EXPECT_EQ(LookupDateTimeParsingFormatString(10), TString(u"yyyy-MM-dd HH:mm:ss"));
  EXPECT_EQ(LookupDateTimeParsingFormatString(18), TString(u"yyyy-MM-dd"));
  EXPECT_EQ(LookupDateTimeParsingFormatString(65), TString(u"HH:mm:ss"));
  EXPECT_THROW(LookupDateTimeParsingFormatString(-1), VelmoraLogicException);
  EXPECT_THROW(LookupDateTimeParsingFormatString(GetDateTimeParsingFormatCount()), VelmoraLogicException);
  // Every entry reads back what it writes, in the default locale and, for the
  // neutral ones, in a locale with another calendar and other names.
  const TLocale english(0x409);
  const TLocale thai(0x41E);
  const unsigned long long sample = Value(2021, 11, 28, 14, 5, 6, 789);
  for (int i = 0; i < GetDateTimeParsingFormatCount(); ++i) {
    const TString& pattern = LookupDateTimeParsingFormatString(i);
    for (const TLocale* locale : {&english, &thai}) {
      if (locale == &thai && !IsLocaleNeutralDateTimeParsingFormat(i)) continue;
      icu::UnicodeString text;
      english.GetICUDateFormat(pattern).format((static_cast<double>(sample) - kUnixEpochValue) / 10.0, text);
      const TString written = VelICU::FromUnicodeString(text);
      unsigned long long value = 0;
      EXPECT_TRUE(locale->ParseDateTimeTryAllFormats(written.c_str(), Value(2021, 1, 1), &value, Options::DateAndTime))
          << i << " " << pattern.toUtf8() << ": " << written.toUtf8();
    }
  }
}

}  // namespace
