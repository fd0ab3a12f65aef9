// VersionNumber: parsing, text forms, truncation and numeric comparison.

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/util/VersionNumber.h"

namespace {

using Numbers = std::vector<unsigned int>;

TEST(VersionNumberTest, ParsesNumbersAtTheirIndexAndKeepsTheOtherPiecesAsDescriptors) {
  struct Case {
    const char16_t* text;
    char16_t numberSeparator, descriptorSeparator;
    unsigned long index;
    Numbers numbers;
    std::vector<TString> descriptors;
    const char16_t* textForm;
  };
  const Case cases[] = {
      {u"Build 2021.4.3 beta", u'.', u' ', 1, {2021, 4, 3}, {u"Build", u"beta"}, u"2021.4.3 Build beta"},
      {u"", u'.', u' ', 0, {}, {}, u""},
      // Empty pieces are dropped, between numbers and between descriptors.
      {u"1..2.", u'.', u' ', 0, {1, 2}, {}, u"1.2"},
      {u"Build  2021", u'.', u' ', 1, {2021}, {u"Build"}, u"2021 Build"},
      // No piece at the index: no numbers, every piece a descriptor.
      {u"beta", u'.', u' ', 1, {}, {u"beta"}, u" beta"},
      {u"10_4-rc-1", u'_', u'-', 0, {10, 4}, {u"rc", u"1"}, u"10_4-rc-1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(TString(c.text).toUtf8());
    const VersionNumber v(TString(c.text), c.numberSeparator, c.descriptorSeparator, c.index);
    EXPECT_EQ(v.GetNumbers(), c.numbers);
    EXPECT_EQ(v.GetDescriptors(), c.descriptors);
    EXPECT_EQ(v.GetAsString(), TString(c.textForm));
  }
}

TEST(VersionNumberTest, ReadsEachNumericPieceAsToUIntDoesThenFallsBackToItsDigitRun) {
  const std::pair<const char16_t*, unsigned int> cases[] = {
      {u" 12 ", 12},  // toUInt accepts surrounding white space and a plus sign
      {u"+12", 12},   {u"2rc", 2},  // cut after the digit run
      {u"3 beta", 3}, {u"rc2", 0},  // the cut keeps "rc", which still does not read
      {u"beta", 0},   {u"4294967295", 4294967295u},
      {u"4294967296", 0},  // out of range, and the digit run reaches the end: no cut
      {u"-1", 0},
  };
  for (const auto& [piece, value] : cases) {
    // '/' separates descriptors so that spaces stay inside the piece.
    const VersionNumber v(TString(u"1.") + TString(piece), u'.', u'/', 0);
    EXPECT_EQ(v.GetNumbers(), (Numbers{1, value})) << TString(piece).toUtf8();
  }
}

TEST(VersionNumberTest, BuildsTruncatesAndWritesWithChosenSeparators) {
  const VersionNumber file = VersionNumber::FromFileVersion(7 * 65536 + 2, 3 * 65536 + 4);
  EXPECT_EQ(file.GetNumbers(), (Numbers{7, 2, 3, 4}));
  EXPECT_EQ(file.GetAsString(), TString(u"7.2.3.4"));
  EXPECT_EQ(VersionNumber(1, 2, 3).GetAsString(), TString(u"1.2.3"));
  EXPECT_EQ(VersionNumber(TString(u"5")).GetMajorAndMinorAsString(u'.'), TString(u"5.0"));
  EXPECT_EQ(VersionNumber().GetMajorAndMinorAsString(u','), TString(u"0,0"));

  VersionNumber v(TString(u"1-2-3-4 rc"), u'-', u' ', 0);
  EXPECT_EQ(v.AsString(u'.', u'/'), TString(u"1.2.3.4/rc"));
  EXPECT_EQ(v.GetMajorAndMinorAsString(u'_'), TString(u"1_2"));
  const VersionNumber copy = v;
  v.Truncate(2);
  EXPECT_EQ(v.GetNumbers(), (Numbers{1, 2}));
  EXPECT_EQ(v.GetAsString(), TString(u"1-2 rc"));  // rebuilt with the separators it was read with
  EXPECT_EQ(copy.GetAsString(), TString(u"1-2-3-4 rc"));
  v.Truncate(5);
  EXPECT_EQ(v.GetNumbers(), (Numbers{1, 2}));
}

TEST(VersionNumberTest, ComparesNumericallyIgnoringTrailingZerosAndDescriptors) {
  const std::tuple<const char16_t*, const char16_t*, int> cases[] = {
      {u"1.2", u"1.2.0", 0},  {u"1.2", u"1.2.0.1", -1}, {u"10.0", u"9.99", 1},
      {u"1.10", u"1.9", 1},   {u"1.2 beta", u"1.2", 0}, {u"", u"0.0", 0},
  };
  for (const auto& [textA, textB, expected] : cases) {
    const VersionNumber a{TString(textA)}, b{TString(textB)};
    SCOPED_TRACE(a.GetAsString().toUtf8() + " vs " + b.GetAsString().toUtf8());
    EXPECT_EQ(a.compare(b), expected);
    EXPECT_EQ(b.compare(a), -expected);
    EXPECT_EQ((a == b) + 2 * (a < b) + 4 * (a > b), expected == 0 ? 1 : expected < 0 ? 2 : 4);
    EXPECT_EQ((a != b) + 2 * (a <= b) + 4 * (a >= b), expected == 0 ? 6 : expected < 0 ? 3 : 5);
  }
}

TEST(VersionNumberTest, ComparisonAgreesWithZeroPaddedLexicographicOrder) {
  std::mt19937 random(31337);
  const auto randomNumbers = [&] {
    Numbers n(random() % 5);
    for (unsigned int& x : n) x = random() % 3;  // small values make ties and zero tails common
    return n;
  };
  for (int round = 0; round < 5000; ++round) {
    Numbers x = randomNumbers(), y = randomNumbers();
    const auto text = [](const Numbers& n) {
      TString t;
      for (const unsigned int part : n) t += TString::number(part) + u'.';
      return t;
    };
    const VersionNumber a(text(x)), b(text(y));
    ASSERT_EQ(a.GetNumbers(), x);
    const size_t width = std::max(x.size(), y.size());
    x.resize(width, 0);
    y.resize(width, 0);
    ASSERT_EQ(a.compare(b), x < y ? -1 : (y < x ? 1 : 0)) << a.GetAsString().toUtf8() << " " << b.GetAsString().toUtf8();
  }
}

}  // namespace
