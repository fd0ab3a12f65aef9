// ParseOleFormatString against the grammar run through std::regex: the same
// answer (match or not) and the same fields on every text of a corpus of
// generated pictures.

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/OleFormatReference.h"
#include "velcoredata/locale/NumberFormat.h"

namespace {

// A sentinel that no parse produces, to see untouched options.
NUMBER_FORMAT_OPTIONS Sentinel() {
  NUMBER_FORMAT_OPTIONS o;
  o.decimalPlaces = 99;
  o.prefix = u"untouched";
  o.units = UnitsFormatEnum::Billions;
  o.negativeFormat = NegativeFormatEnum::MinusBeforeSuffix;
  return o;
}

// Returns the number of texts that matched; fails the test on disagreement.
int CompareAll(const std::vector<TString>& texts) {
  int matched = 0;
  for (const TString& text : texts) {
    NUMBER_FORMAT_OPTIONS expected = Sentinel();
    NUMBER_FORMAT_OPTIONS actual = Sentinel();
    const bool reference = OleFormatReference::Parse(text, &expected);
    const bool parsed = ParseOleFormatString(text, &actual);
    EXPECT_EQ(parsed, reference) << text.toUtf8();
    EXPECT_EQ(actual, expected) << text.toUtf8();
    if (parsed != reference || !(actual == expected)) return -1;
    matched += parsed ? 1 : 0;
  }
  return matched;
}

TEST(OleFormatOracleTest, EveryShortStringOverTheGrammarsAlphabet) {
  const std::u16string alphabet = u"-()\"#,0.KGx\n";
  std::vector<TString> texts{TString()};
  std::vector<std::u16string> level{u""};
  for (int length = 1; length <= 4; ++length) {
    std::vector<std::u16string> next;
    for (const std::u16string& prefix : level) {
      for (char16_t c : alphabet) next.push_back(prefix + c);
    }
    for (const std::u16string& s : next) texts.emplace_back(s);
    level = std::move(next);
  }
  ASSERT_EQ(texts.size(), 1u + 12 + 144 + 1728 + 20736);
  const int matched = CompareAll(texts);
  EXPECT_GT(matched, 1000);  // the corpus exercises both answers
}

TEST(OleFormatOracleTest, RandomPicturesFromGrammarTokens) {
  const char16_t* tokens[] = {u"#,##0", u"0",  u".00", u".0",     u",",  u"\"$\"", u"\"EUR \"", u"\"\"",
                              u"-",     u"(",  u")",   u";",      u"K",  u"M",     u"B",        u"G",
                              u" ",     u"x",  u"\"",  u"\n",     u"\r", u"\u2028", u"0.",      u"E+00",
                              u"%",     u"\xD800", u"\u20AC", u"#", u"\"a\"b\""};
  std::mt19937 random(4217);
  std::uniform_int_distribution<size_t> token(0, std::size(tokens) - 1);
  std::uniform_int_distribution<int> count(0, 14);
  std::vector<TString> texts;
  for (int i = 0; i < 20000; ++i) {
    std::u16string text;
    for (int n = count(random); n > 0; --n) text += tokens[token(random)];
    texts.emplace_back(text);
  }
  // Long texts: a picture after a long lead, a long quoted prefix, long comma
  // and zero runs.
  texts.emplace_back(std::u16string(1500, u'x') + u"#,##0.00");
  texts.emplace_back(u"\"" + std::u16string(1500, u'-') + u"\"0");
  texts.emplace_back(u"0" + std::u16string(1500, u',') + u".00K");
  texts.emplace_back(u"0." + std::u16string(1500, u'0'));
  texts.emplace_back(std::u16string(1500, u'0'));
  texts.emplace_back(std::u16string(750, u'"') + u"0");
  EXPECT_GT(CompareAll(texts), 2000);
}

TEST(OleFormatOracleTest, EveryBuiltPicture) {
  std::vector<TString> texts;
  for (uint32_t decimals : {0u, 2u}) {
    for (bool grouping : {false, true}) {
      for (const char16_t* prefix : {u"", u"$", u"(", u"-", u"a\"b"}) {
        for (const char16_t* suffix : {u"", u")", u"-", u" kr"}) {
          for (int units = 0; units <= 4; ++units) {
            for (int negative = 0; negative <= 5; ++negative) {
              NUMBER_FORMAT_OPTIONS o;
              o.decimalPlaces = decimals;
              o.grouping = grouping;
              o.prefix = prefix;
              o.suffix = suffix;
              o.units = static_cast<UnitsFormatEnum>(units);
              o.negativeFormat = static_cast<NegativeFormatEnum>(negative);
              texts.push_back(BuildOleFormatString(&o, true));
              texts.push_back(BuildOleFormatString(&o, false));
            }
          }
        }
      }
    }
  }
  EXPECT_GT(CompareAll(texts), 0);
}

}  // namespace
