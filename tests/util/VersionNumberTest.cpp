// VersionNumber: parsing, text forms, truncation and numeric comparison.

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/util/VersionNumber.h"

namespace {

using Numbers = std::vector<unsigned int>;

std::vector<std::string> Utf8(const std::vector<TString>& texts) {
  std::vector<std::string> out;
  for (const TString& t : texts) out.push_back(t.toUtf8());
  return out;
}

VersionNumber V(const char16_t* text) { return VersionNumber(TString(text)); }

TEST(VersionNumberTest, ParsesNumbersAtTheirIndexAndKeepsTheOtherPiecesAsDescriptors) {
  struct Case {
    const char16_t* text;
    char16_t numberSeparator, descriptorSeparator;
    unsigned long index;
    Numbers numbers;
    std::vector<std::string> descriptors;
    const char16_t* textForm;
  };
  const Case cases[] = {
      {u"Build 2021.4.3 beta", u'.', u' ', 1, {2021, 4, 3}, {"Build", "beta"}, u"2021.4.3 Build beta"},
      {u"2021.4.3 beta", u'.', u' ', 0, {2021, 4, 3}, {"beta"}, u"2021.4.3 beta"},
      {u"1.2.3", u'.', u' ', 0, {1, 2, 3}, {}, u"1.2.3"},
      {u"7", u'.', u' ', 0, {7}, {}, u"7"},
      {u"", u'.', u' ', 0, {}, {}, u""},
      // Empty pieces are dropped, both between numbers and between descriptors.
      {u"1..2", u'.', u' ', 0, {1, 2}, {}, u"1.2"},
      {u"1.2.", u'.', u' ', 0, {1, 2}, {}, u"1.2"},
      {u"Build  2021.4", u'.', u' ', 1, {2021, 4}, {"Build"}, u"2021.4 Build"},
      {u"  ", u'.', u' ', 0, {}, {}, u""},
      // No piece at the index: no numbers, every piece a descriptor.
      {u"beta", u'.', u' ', 1, {}, {"beta"}, u" beta"},
      {u"beta 1.2", u'.', u' ', 0, {0}, {"1.2"}, u"0 1.2"},
      // Other separators are used for the text form as well.
      {u"10_4-rc-1", u'_', u'-', 0, {10, 4}, {"rc", "1"}, u"10_4-rc-1"},
      {u"x-5.6", u'.', u'-', 1, {5, 6}, {"x"}, u"5.6-x"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(TString(c.text).toUtf8());
    const VersionNumber v(TString(c.text), c.numberSeparator, c.descriptorSeparator, c.index);
    EXPECT_EQ(v.GetNumbers(), c.numbers);
    EXPECT_EQ(Utf8(v.GetDescriptors()), c.descriptors);
    EXPECT_EQ(v.GetAsString(), TString(c.textForm));
  }
}

TEST(VersionNumberTest, ReadsEachNumericPieceAsToUIntDoesThenFallsBackToItsDigitRun) {
  struct Case {
    const char16_t* piece;
    unsigned int value;
  };
  const Case cases[] = {
      {u"12", 12},
      {u" 12 ", 12},          // toUInt accepts surrounding white space
      {u"+12", 12},           // and a sign, as QString::toUInt does
      {u"007", 7},
      {u"2rc", 2},            // cut after the digit run
      {u"4a5", 4},
      {u"3 beta", 3},
      {u"rc2", 0},            // the cut keeps "rc", which still does not read
      {u"a4b", 0},
      {u"beta", 0},
      {u"4294967295", 4294967295u},
      {u"4294967296", 0},     // out of range, and no shorter digit run to fall back on
      {u"99999999999x", 0},
      {u"-1", 0},             // no sign for unsigned; the digit run reaches the end, so no cut
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(TString(c.piece).toUtf8());
    // '/' separates descriptors so that the spaces stay inside the piece.
    const VersionNumber v(TString(u"1.") + TString(c.piece), u'.', u'/', 0);
    ASSERT_EQ(v.GetNumbers().size(), 2u);
    EXPECT_EQ(v.GetNumbers()[1], c.value);
  }
}

TEST(VersionNumberTest, BuildsFromComponentsAndFileVersions) {
  EXPECT_EQ(VersionNumber(1, 2, 3).GetNumbers(), (Numbers{1, 2, 3}));
  EXPECT_EQ(VersionNumber(1, 2, 3).GetAsString(), TString(u"1.2.3"));
  EXPECT_EQ(VersionNumber(4, 3, 2, 1).GetAsString(), TString(u"4.3.2.1"));
  EXPECT_TRUE(VersionNumber(4, 3, 2, 1).GetDescriptors().empty());
  const VersionNumber file = VersionNumber::FromFileVersion(7 * 65536 + 2, 3 * 65536 + 4);
  EXPECT_EQ(file.GetNumbers(), (Numbers{7, 2, 3, 4}));
  EXPECT_EQ(file.GetAsString(), TString(u"7.2.3.4"));
  EXPECT_EQ(VersionNumber::FromFileVersion(0xFFFF0000, 0x0000FFFF).GetNumbers(), (Numbers{65535, 0, 0, 65535}));
  EXPECT_TRUE(VersionNumber().GetNumbers().empty());
  EXPECT_EQ(VersionNumber().GetAsString(), TString());
}

TEST(VersionNumberTest, WritesNumbersMajorMinorAndDescriptorsWithChosenSeparators) {
  const VersionNumber v(TString(u"2021.4.3 beta 2"));
  EXPECT_EQ(v.GetNumbersAsString(u'_'), TString(u"2021_4_3"));
  EXPECT_EQ(v.AsString(u'-', u'/'), TString(u"2021-4-3/beta/2"));
  EXPECT_EQ(v.GetMajorAndMinorAsString(u'.'), TString(u"2021.4"));
  EXPECT_EQ(V(u"5").GetMajorAndMinorAsString(u'.'), TString(u"5.0"));
  EXPECT_EQ(VersionNumber().GetMajorAndMinorAsString(u','), TString(u"0,0"));
  EXPECT_EQ(VersionNumber().GetNumbersAsString(u'.'), TString());
}

TEST(VersionNumberTest, TruncateKeepsLeadingComponentsAndRebuildsTheText) {
  VersionNumber v(TString(u"1-2-3-4 rc"), u'-', u' ', 0);
  const VersionNumber copy = v;
  v.Truncate(2);
  EXPECT_EQ(v.GetNumbers(), (Numbers{1, 2}));
  EXPECT_EQ(Utf8(v.GetDescriptors()), std::vector<std::string>{"rc"});
  EXPECT_EQ(v.GetAsString(), TString(u"1-2 rc"));
  EXPECT_EQ(copy.GetAsString(), TString(u"1-2-3-4 rc"));
  v.Truncate(5);
  EXPECT_EQ(v.GetNumbers(), (Numbers{1, 2}));
  v.Truncate(0);
  EXPECT_TRUE(v.GetNumbers().empty());
  EXPECT_EQ(v.GetAsString(), TString(u" rc"));
  VersionNumber four(1, 2, 3, 4);
  four.Truncate(2);
  EXPECT_EQ(four, VersionNumber(TString(u"1.2")));
  EXPECT_EQ(four.GetAsString(), TString(u"1.2"));
}

TEST(VersionNumberTest, ComparesNumericallyIgnoringTrailingZerosAndDescriptors) {
  struct Case {
    const char16_t *a, *b;
    int expected;
  };
  const Case cases[] = {
      {u"1.2", u"1.2.0", 0},       {u"1.2", u"1.2.0.0", 0},  {u"1.2", u"1.2.0.1", -1},
      {u"10.0", u"9.99", 1},       {u"1.10", u"1.9", 1},     {u"2", u"10", -1},
      {u"1.2 beta", u"1.2", 0},    {u"", u"0.0", 0},         {u"", u"0.1", -1},
      {u"4294967295", u"1.0", 1},  {u"1.0.0.0.1", u"1", 1},  {u"3.1", u"3.1", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(TString(c.a).toUtf8() + " vs " + TString(c.b).toUtf8());
    const VersionNumber a = V(c.a), b = V(c.b);
    EXPECT_EQ(a.compare(b), c.expected);
    EXPECT_EQ(b.compare(a), -c.expected);
    EXPECT_EQ(a == b, c.expected == 0);
    EXPECT_EQ(a != b, c.expected != 0);
    EXPECT_EQ(a < b, c.expected < 0);
    EXPECT_EQ(a <= b, c.expected <= 0);
    EXPECT_EQ(a > b, c.expected > 0);
    EXPECT_EQ(a >= b, c.expected >= 0);
  }
}

TEST(VersionNumberTest, ComparisonAgreesWithZeroPaddedLexicographicOrder) {
  std::mt19937 random(31337);
  const auto randomNumbers = [&] {
    Numbers n(random() % 5);
    for (unsigned int& x : n) x = random() % 3;  // small values make ties and zero tails common
    return n;
  };
  const auto text = [](const Numbers& n) {
    TString t;
    for (size_t i = 0; i < n.size(); ++i) t += (i ? TString(u".") : TString()) + TString::number(n[i]);
    return t;
  };
  for (int round = 0; round < 5000; ++round) {
    Numbers x = randomNumbers(), y = randomNumbers();
    const VersionNumber a(text(x)), b(text(y));
    ASSERT_EQ(a.GetNumbers(), x);
    const size_t width = std::max(x.size(), y.size());
    x.resize(width, 0);
    y.resize(width, 0);
    const int expected = x < y ? -1 : (y < x ? 1 : 0);
    ASSERT_EQ(a.compare(b), expected) << text(x).toUtf8() << " vs " << text(y).toUtf8();
  }
}

}  // namespace
