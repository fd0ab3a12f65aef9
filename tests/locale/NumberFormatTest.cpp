// Number formats: the encoding tables, building and parsing OLE strings,
// encoded format strings, and options populated from them.

#include <gtest/gtest.h>

#include "velcoredata/core/EnumEncoding.h"
#include "velcoredata/locale/LocaleHelper.h"
#include "velcoredata/locale/NumberFormat.h"
#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/Messages.h"

namespace {

using Units = UnitsFormatEnum;
using Negative = NegativeFormatEnum;

std::string Utf8(const TString& s) { return s.toUtf8(); }

NUMBER_FORMAT_OPTIONS Options(uint32_t decimals, bool grouping, const char16_t* prefix, const char16_t* suffix,
                              Units units, Negative negative) {
  NUMBER_FORMAT_OPTIONS o;
  o.decimalPlaces = decimals;
  o.grouping = grouping;
  o.prefix = prefix;
  o.suffix = suffix;
  o.units = units;
  o.negativeFormat = negative;
  return o;
}

class ScopedSessionLocale {
 public:
  explicit ScopedSessionLocale(uint32_t lcid) { LocaleHelper::SetSessionLCID(lcid); }
  ~ScopedSessionLocale() { LocaleHelper::SetSessionLCID(0); }
};

TEST(NumberFormatTest, EncodingTablesAndUnknownValues) {
  EXPECT_EQ(GetUnitsFormatChar(Units::None), u'\0');
  EXPECT_EQ(GetUnitsFormatChar(Units::Thousands), u'K');
  EXPECT_EQ(GetUnitsFormatChar(Units::Millions), u'M');
  EXPECT_EQ(GetUnitsFormatChar(Units::Billions), u'B');
  EXPECT_EQ(GetUnitsFormatChar(Units::Giga), u'G');
  EXPECT_EQ(UnitsFormatEnumEncodings().Decode(u"X"), Units::None);
  const std::pair<Negative, const char16_t*> samples[] = {
      {Negative::Parentheses, u"($1234 US)"},     {Negative::LeadingMinus, u"-$1234 US"},
      {Negative::TrailingMinus, u"$1234 US-"},    {Negative::MinusAfterPrefix, u"$-1234 US"},
      {Negative::MinusBeforeSuffix, u"$1234- US"},
  };
  for (const auto& [format, sample] : samples) {
    EXPECT_EQ(GetNegativeFormatSample(format, u"$", u" US"), TString(sample));
  }
  EXPECT_EQ(GetNegativeFormatSample(Negative::None, u"$", u""),
            CoreData::GetString(CoreData::StringId::IDS_NEGATIVE_FORMAT_DEFAULT_SAMPLE));
  EXPECT_TRUE(CoreData::HasString(static_cast<CoreData::StringId>(0x12C45CA4)));

  NUMBER_FORMAT_OPTIONS badUnits = Options(0, false, u"", u"", static_cast<Units>(5), Negative::None);
  NUMBER_FORMAT_OPTIONS badNegative = Options(0, false, u"", u"", Units::None, static_cast<Negative>(6));
  EXPECT_THROW(GetUnitsFormatChar(static_cast<Units>(-1)), XMLEnumEncodingException);
  EXPECT_THROW(GetNegativeFormatSample(static_cast<Negative>(6), u"", u""), XMLEnumEncodingException);
  EXPECT_THROW(BuildOleFormatString(&badUnits, false), XMLEnumEncodingException);
  EXPECT_THROW(BuildOleFormatString(&badNegative, false), XMLEnumEncodingException);
}

TEST(NumberFormatTest, BuildWritesPrefixBodyUnitsSuffixAndNegativeSection) {
  const TString comma(u","), point(u".");
  struct Case {
    NUMBER_FORMAT_OPTIONS options;
    bool withUnits;
    const char16_t* expected;
  };
  const Case cases[] = {
      {Options(2, true, u"$", u"", Units::None, Negative::Parentheses), false, u"\"$\"#,##0.00;(\"$\"#,##0.00)"},
      {Options(0, false, u"", u"", Units::None, Negative::None), false, u"0"},
      // "B" and "G" both write three commas; the letter only with units shown.
      {Options(0, false, u"", u"", Units::Giga, Negative::None), true, u"0,,,G"},
      {Options(0, false, u"", u"", Units::Giga, Negative::None), false, u"0,,,"},
      {Options(1, true, u"", u"", Units::Billions, Negative::None), true, u"#,##0,,,.0B"},
      {Options(0, false, u"", u"", Units::Thousands, Negative::None), true, u"0,K"},
      {Options(3, false, u"", u" \u20AC", Units::Millions, Negative::LeadingMinus), true,
       u"0,,.000M\" \u20AC\";-0,,.000M\" \u20AC\""},
      {Options(0, false, u"a", u"b", Units::None, Negative::TrailingMinus), false, u"\"a\"0\"b\";\"a\"0\"b\"-"},
      {Options(0, false, u"a", u"b", Units::None, Negative::MinusAfterPrefix), false, u"\"a\"0\"b\";\"a\"-0\"b\""},
      {Options(0, false, u"a", u"b", Units::None, Negative::MinusBeforeSuffix), false, u"\"a\"0\"b\";\"a\"0-\"b\""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Utf8(BuildOleFormatString(&c.options, c.withUnits)), Utf8(TString(c.expected)));
    // Null separators are "." and ",".
    EXPECT_EQ(BuildOleFormatString(&c.options, c.withUnits, &point, &comma), TString(c.expected));
  }
  // The locale's separators replace "." and ",".
  const NUMBER_FORMAT_OPTIONS german = Options(2, true, u"", u"", Units::Thousands, Negative::None);
  EXPECT_EQ(BuildOleFormatString(&german, false, &comma, &point), TString(u"#.##0.,00"));
}

TEST(NumberFormatTest, ParseReadsTheLastSectionOfAPicture) {
  NUMBER_FORMAT_OPTIONS o;
  o.decimalSeparator = u",";
  o.groupingDescription = u"3;3";
  ASSERT_TRUE(ParseOleFormatString(u"\"$\"#,##0.00;(\"$\"#,##0.00)", &o));
  EXPECT_EQ(o.decimalPlaces, 2u);
  EXPECT_TRUE(o.grouping);
  EXPECT_EQ(o.prefix, TString(u"$"));
  EXPECT_EQ(o.suffix, TString());
  EXPECT_EQ(o.negativeFormat, Negative::Parentheses);
  // Separators and grouping description are not the parser's business.
  EXPECT_EQ(o.decimalSeparator, TString(u","));
  EXPECT_EQ(o.groupingDescription, TString(u"3;3"));

  struct Case {
    const char16_t* text;
    uint32_t decimals;
    bool grouping;
    const char16_t* prefix;
    const char16_t* suffix;
    Units units;
    Negative negative;
  };
  const Case cases[] = {
      // The groups describe the last section.
      {u"0.00;0.0", 1, false, u"", u"", Units::None, Negative::None},
      {u"\"a\"0\"b\";\"a\"0\"b\"-", 0, false, u"a", u"b", Units::None, Negative::TrailingMinus},
      // Units come from the letter alone; the commas are not counted.
      {u"0,K", 0, false, u"", u"", Units::Thousands, Negative::None},
      {u"0,,,,,G", 0, false, u"", u"", Units::Giga, Negative::None},
      // Text before the picture is skipped by the lazy lead, even text that
      // looks like a picture itself.
      {u"anything 0.0", 1, false, u"", u"", Units::None, Negative::None},
      {u"00", 0, false, u"", u"", Units::None, Negative::None},
      {u"\"$0", 0, false, u"", u"", Units::None, Negative::None},
      {u"\"line\nbreak\"0", 0, false, u"line\nbreak", u"", Units::None, Negative::None},
      // A sign alone shows no sample: not a negative format.
      {u"-0", 0, false, u"", u"", Units::None, Negative::LeadingMinus},
      {u"(0", 0, false, u"", u"", Units::None, Negative::None},
  };
  for (const Case& c : cases) {
    NUMBER_FORMAT_OPTIONS parsed;
    ASSERT_TRUE(ParseOleFormatString(c.text, &parsed)) << Utf8(TString(c.text));
    EXPECT_EQ(parsed, Options(c.decimals, c.grouping, c.prefix, c.suffix, c.units, c.negative)) << Utf8(TString(c.text));
  }
  // Texts outside the grammar leave the options alone.
  for (const char16_t* text : {u"", u"abc", u"#,##0x", u"0\n", u"x\n0", u"0.K", u"0 ", u"1234", u"0\u2028"}) {
    NUMBER_FORMAT_OPTIONS untouched = Options(7, true, u"p", u"s", Units::Millions, Negative::Parentheses);
    EXPECT_FALSE(ParseOleFormatString(text, &untouched)) << Utf8(TString(text));
    EXPECT_EQ(untouched, Options(7, true, u"p", u"s", Units::Millions, Negative::Parentheses));
  }
}

TEST(NumberFormatTest, BuildThenParseGivesBackTheOptions) {
  int checked = 0;
  for (uint32_t decimals : {0u, 1u, 4u}) {
    for (bool grouping : {false, true}) {
      for (const char16_t* prefix : {u"", u"$", u"EUR ", u"a;b"}) {
        for (const char16_t* suffix : {u"", u" \u20AC", u"%"}) {
          for (int units = 0; units <= 4; ++units) {
            for (int negative = 0; negative <= 5; ++negative) {
              const NUMBER_FORMAT_OPTIONS built = Options(decimals, grouping, prefix, suffix,
                                                          static_cast<Units>(units), static_cast<Negative>(negative));
              const TString text = BuildOleFormatString(&built, true);
              NUMBER_FORMAT_OPTIONS parsed;
              ASSERT_TRUE(ParseOleFormatString(text, &parsed)) << Utf8(text);
              // Without a prefix "-%1%2%3" and "%1-%2%3" write the same
              // text, without a suffix "%1%2%3-" and "%1%2-%3": the lower
              // value is read.
              NUMBER_FORMAT_OPTIONS expected = built;
              if (expected.prefix.isEmpty() && negative == 4) expected.negativeFormat = Negative::LeadingMinus;
              if (expected.suffix.isEmpty() && negative == 5) expected.negativeFormat = Negative::TrailingMinus;
              EXPECT_EQ(parsed, expected) << Utf8(text);
              ++checked;
            }
          }
        }
      }
    }
  }
  EXPECT_EQ(checked, 3 * 2 * 4 * 3 * 5 * 6);
}

TEST(NumberFormatTest, ScientificAndPercentStrings) {
  EXPECT_EQ(GetScientificFormatStringOfSize(0), TString(u"0e+00"));
  EXPECT_EQ(GetScientificFormatStringOfSize(3), TString(u"0.000e+00"));
  EXPECT_EQ(GetScientificFormatStringOfSize(-2), TString(u"0e+00"));
  EXPECT_EQ(GetPercentFormatStringOfSize(0), TString(u"0%"));
  EXPECT_EQ(GetPercentFormatStringOfSize(2), TString(u"0.00%"));
}

TEST(NumberFormatTest, NegativeFormattingOfALocaleFollowsItsSigns) {
  struct Case {
    const char16_t* prefix;
    const char16_t* suffix;
    Negative expected;
  };
  const Case cases[] = {
      {u"($", u")", Negative::Parentheses}, {u"(", u" US)", Negative::Parentheses},
      {u"-$", u"", Negative::LeadingMinus}, {u"-(", u")", Negative::LeadingMinus},
      {u"$", u"-", Negative::TrailingMinus}, {u"(", u"-", Negative::TrailingMinus},
      {u"$-", u"", Negative::MinusAfterPrefix}, {u"", u"- €", Negative::MinusBeforeSuffix},
      {u"$", u"", Negative::None},           {u"", u"", Negative::None},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(GetNegativeFormatting(c.prefix, c.suffix, u"ignored", u"ignored"), c.expected)
        << Utf8(TString(c.prefix)) << "|" << Utf8(TString(c.suffix));
  }
}

TEST(NumberFormatTest, EncodeAndDecodeFormatStrings) {
  EXPECT_EQ(EncodeFormatString(FormatCode::Automatic, 1033, u"0.00"), TString());
  EXPECT_EQ(EncodeFormatString(FormatCode::SystemNumber, 1033, u"ignored"), TString(u"N1033%"));
  EXPECT_EQ(EncodeFormatString(FormatCode::SystemNumber, 0, u"ignored"), TString(u"N"));
  EXPECT_EQ(EncodeFormatString(FormatCode::Custom, 0x407, u"#,##0.00"), TString(u"*!de_DE!#,##0.00"));
  EXPECT_EQ(EncodeFormatString(FormatCode::Number, 0, u"0.0"), TString(u"n0.0"));
  EXPECT_EQ(EncodeFormatString(FormatCode::LongTime, 5, u"h:mm"), TString(u"Th:mm"));
  EXPECT_EQ(EncodeFormatString(FormatCode::Scientific, 7, u"0e+00"), TString(u"e0e+00"));

  struct Case {
    const char16_t* text;
    FormatCode code;
    int options;
    const char16_t* rest;
  };
  const Case cases[] = {
      {u"N1033%", FormatCode::SystemNumber, 1033, u""},
      {u"  C 1031 %%", FormatCode::SystemCurrency, 1031, u""},
      {u"S1033", FormatCode::ShortDate, 1033, u""},
      {u"L-7%", FormatCode::LongDate, -7, u""},
      {u"N", FormatCode::SystemNumber, 0, u""},
      {u"N99999999999%", FormatCode::SystemNumber, 0, u""},  // beyond 32 bits
      {u"N2147483647%", FormatCode::SystemNumber, 2147483647, u""},
      {u"N12a%", FormatCode::SystemNumber, 0, u""},
      {u"N\u0661\u0662%", FormatCode::SystemNumber, 0, u""},  // non-ASCII digits
      {u"*!en_US!#,##0.00", FormatCode::Custom, 0x409, u"#,##0.00"},
      {u"n !de_DE!0.0", FormatCode::Number, 0x407, u"0.0"},
      {u"i!en!0.00", FormatCode::International, 9, u"0.00"},
      // Shorter than seven characters: "!x!0.0" is all picture.
      {u"*!x!0.0", FormatCode::Custom, 0, u"!x!0.0"},
      // "!" without a second one, or a second one right after it.
      {u"*!abcdefgh", FormatCode::Custom, 0, u"!abcdefgh"},
      {u"*!!abcdefg", FormatCode::Custom, 0, u"!!abcdefg"},
      {u"e0.00E+00", FormatCode::Scientific, 0, u"0.00e+00"},
      {u"p0.0%", FormatCode::Percentage, 0, u"0.0%"},
      {u"c\"$\"0", FormatCode::Currency, 0, u"\"$\"0"},
      {u"Th:mm", FormatCode::LongTime, 0, u"h:mm"},
      {u"x123", FormatCode::Automatic, 0, u""},
      {u"", FormatCode::Automatic, 0, u""},
      {u" \t ", FormatCode::Automatic, 0, u""},
      {u"\u00E9t\u00E9", FormatCode::Automatic, 0, u""},
  };
  for (const Case& c : cases) {
    FormatCode code = FormatCode::Percentage;
    int options = 42;
    TString rest = u"junk";
    DecodeFormatString(c.text, code, options, rest);
    EXPECT_EQ(code, c.code) << Utf8(TString(c.text));
    EXPECT_EQ(options, c.options) << Utf8(TString(c.text));
    EXPECT_EQ(rest, TString(c.rest)) << Utf8(TString(c.text));
    EXPECT_EQ(IsAutoFormatString(c.text), c.code == FormatCode::Automatic);
  }
  // A leading NUL is the automatic code with a rest.
  FormatCode code;
  int options;
  TString rest;
  DecodeFormatString(TString(std::u16string(u"\0 0.0", 5)), code, options, rest);
  EXPECT_EQ(code, FormatCode::Automatic);
  EXPECT_EQ(rest, TString(u"0.0"));
  // Encoding and decoding are inverse for the codes that keep everything.
  for (FormatCode c : {FormatCode::SystemNumber, FormatCode::ShortDate, FormatCode::Custom, FormatCode::Number}) {
    DecodeFormatString(EncodeFormatString(c, 0x407, u"0.00"), code, options, rest);
    EXPECT_EQ(code, c);
    EXPECT_EQ(options, 0x407);
  }
}

TEST(NumberFormatTest, PopulatedOptionsFollowTheCodeAndTheLocale) {
  FormatCode code;
  int options;
  NUMBER_FORMAT_OPTIONS o;
  // A picture with a locale: the separators are the locale's.
  GetFormatCodeAndOptionsFromString(u"*!de_DE!\"EUR \"#,##0.00;-\"EUR \"#,##0.00", code, options, &o);
  EXPECT_EQ(code, FormatCode::Custom);
  EXPECT_EQ(options, 0x407);
  EXPECT_EQ(o.decimalSeparator, TString(u","));
  EXPECT_EQ(o.thousandsSeparator, TString(u"."));
  EXPECT_EQ(o.decimalPlaces, 2u);
  EXPECT_TRUE(o.grouping);
  EXPECT_EQ(o.prefix, TString(u"EUR "));
  EXPECT_EQ(o.negativeFormat, Negative::LeadingMinus);
  // Without one, the session locale.
  {
    ScopedSessionLocale session(0x40C);
    o = NUMBER_FORMAT_OPTIONS();
    GetFormatCodeAndOptionsFromString(u"n0.0", code, options, &o);
    EXPECT_EQ(options, 0);
    EXPECT_EQ(o.decimalSeparator, TString(u","));
    EXPECT_EQ(o.decimalPlaces, 1u);
  }
  // "Percent" and "Scientific" become their codes with two decimals.
  o = NUMBER_FORMAT_OPTIONS();
  GetFormatCodeAndOptionsFromString(u"*!en_US!Percent", code, options, &o);
  EXPECT_EQ(code, FormatCode::Percentage);
  EXPECT_EQ(o.decimalPlaces, 2u);
  EXPECT_TRUE(o.grouping);
  EXPECT_EQ(o.negativeFormat, Negative::LeadingMinus);
  GetFormatCodeAndOptionsFromString(u"*!en_US!Scientific", code, options, &o);
  EXPECT_EQ(code, FormatCode::Scientific);
  EXPECT_EQ(o.decimalPlaces, 2u);
  // Known sizes are read back; unknown ones fall to the default (0 here).
  GetFormatCodeAndOptionsFromString(u"p0.000%", code, options, &o);
  EXPECT_EQ(o.decimalPlaces, 3u);
  EXPECT_FALSE(o.grouping);
  GetFormatCodeAndOptionsFromString(u"p#0.0%", code, options, &o);
  EXPECT_EQ(o.decimalPlaces, 0u);
  EXPECT_TRUE(o.grouping);
  GetFormatCodeAndOptionsFromString(u"e0.0000E+00", code, options, &o);
  EXPECT_EQ(o.decimalPlaces, 4u);
  // The system formats take the locale's settings whole.
  NUMBER_FORMAT_OPTIONS system;
  GetFormatCodeAndOptionsFromString(u"N1031%", code, options, &o);
  TLocale::GetSystemNumberSettings(1031, &system);
  EXPECT_EQ(o, system);
  GetFormatCodeAndOptionsFromString(u"C1041%", code, options, &o);
  TLocale::GetSystemCurrencySettings(1041, &system);
  EXPECT_EQ(o, system);
  // The grouping argument sets the flag before the code is applied.
  TString rest = u"0";
  code = FormatCode::Scientific;
  o = NUMBER_FORMAT_OPTIONS();
  PopulateNumberFormatOptions(code, 0x409, rest, &o, 5, 1);
  EXPECT_TRUE(o.grouping);
  EXPECT_EQ(o.decimalPlaces, 5u);
  // A picture that does not parse changes nothing but the separators.
  rest = u"not a picture";
  code = FormatCode::Custom;
  o = Options(7, true, u"p", u"s", Units::Millions, Negative::Parentheses);
  PopulateNumberFormatOptions(code, 0x407, rest, &o, 0, -1);
  EXPECT_EQ(o.decimalPlaces, 7u);
  EXPECT_EQ(o.decimalSeparator, TString(u","));
}

TEST(NumberFormatTest, EncodedStringsAreRebuiltFromOptions) {
  const struct {
    FormatCode code;
    int options;
    NUMBER_FORMAT_OPTIONS numbers;
    const char16_t* expected;
  } cases[] = {
      {FormatCode::Number, 0, Options(2, true, u"", u"", Units::None, Negative::None), u"n#,##0.00"},
      {FormatCode::Number, 0x407, Options(0, false, u"", u"", Units::Thousands, Negative::None), u"n!de_DE!0,K"},
      {FormatCode::Currency, 0, Options(2, false, u"$", u"", Units::None, Negative::Parentheses),
       u"c\"$\"0.00;(\"$\"0.00)"},
      {FormatCode::Scientific, 0, Options(3, false, u"", u"", Units::None, Negative::None), u"e0.000e+00"},
      {FormatCode::Percentage, 0, Options(0, true, u"", u"", Units::None, Negative::None), u"p0%"},
      {FormatCode::SystemNumber, 1033, Options(2, true, u"", u"", Units::None, Negative::None), u"N1033%"},
      {FormatCode::LongTime, 0, Options(2, true, u"", u"", Units::None, Negative::None), u"T"},
  };
  for (const auto& c : cases) {
    FormatCode code = c.code;
    int options = c.options;
    TString out;
    GetStringFromFormatCodeAndOptions(code, options, &c.numbers, out);
    EXPECT_EQ(Utf8(out), Utf8(TString(c.expected)));
  }
}

TEST(NumberFormatTest, OlePicturesOfLocaleFormats) {
  EXPECT_EQ(GetOleFormatString(FormatCode::ShortDate, 0x409), TString(u"M/d/yy"));
  EXPECT_EQ(GetOleFormatString(FormatCode::LongDate, 0x409), TString(u"dddd, MMMM d, yyyy"));
  EXPECT_EQ(GetOleFormatString(FormatCode::LongTime, 0x409), TString(u"h:mm:ss tt"));
  // Windows literals in single quotes become double-quoted.
  EXPECT_EQ(Utf8(GetOleFormatString(FormatCode::LongDate, 0xC0A)), "dddd, d \"de\" MMMM \"de\" yyyy");
  EXPECT_EQ(GetOleFormatString(FormatCode::SystemNumber, 0x409), TString(u"#,##0;-#,##0"));
  const int two = 2;
  EXPECT_EQ(GetOleFormatString(FormatCode::SystemNumber, 0x409, &two), TString(u"#,##0.00;-#,##0.00"));
  EXPECT_EQ(GetOleFormatString(FormatCode::SystemCurrency, 0x409), TString());
  EXPECT_EQ(GetOleFormatString(FormatCode::Automatic, 0x409), TString());
}

}  // namespace
