// SplitString and JoinString.

#include <QString>
#include <QStringList>

#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/strings/StringUtils.h"

namespace {

using Pieces = std::vector<TString>;

TEST(SplitStringTest, CutsAtEverySeparatorAndDropsEmptyPieces) {
  struct Case {
    const char16_t* text;
    char16_t separator;
    Pieces expected;
  };
  const Case cases[] = {
      {u"", u'.', {}},
      {u"...", u'.', {}},
      {u"abc", u'.', {u"abc"}},
      {u"2021.4.3", u'.', {u"2021", u"4", u"3"}},
      {u"1..2", u'.', {u"1", u"2"}},
      {u".a.", u'.', {u"a"}},
      {u"a b", u'.', {u"a b"}},
      {u"Build  2021 beta", u' ', {u"Build", u"2021", u"beta"}},
      {u"\u00E9\u00B7\u00FC\u00B7", u'\u00B7', {u"\u00E9", u"\u00FC"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SplitString(TString(c.text), c.separator), c.expected) << TString(c.text).toUtf8();
  }
}

TEST(SplitStringTest, AgreesWithQtSplitSkippingEmptyParts) {
  // Random texts over a small alphabet so that runs of separators, leading
  // and trailing separators all occur often.
  std::mt19937 random(20240607);
  const char16_t alphabet[] = {u'a', u'b', u'.', u'.', u' ', u'\u00E9'};
  for (int round = 0; round < 2000; ++round) {
    std::u16string text(random() % 12, u' ');
    for (char16_t& c : text) c = alphabet[random() % std::size(alphabet)];
    const QStringList expected = TString(text).toQString().split(QChar(u'.'), Qt::SkipEmptyParts);
    const Pieces pieces = SplitString(TString(text), u'.');
    ASSERT_EQ(static_cast<int>(pieces.size()), expected.size()) << TString(text).toUtf8();
    for (int i = 0; i < expected.size(); ++i) EXPECT_EQ(pieces[static_cast<size_t>(i)], TString(expected[i]));
  }
}

TEST(JoinStringTest, PutsTheSeparatorBetweenNeighboursOnly) {
  EXPECT_EQ(JoinString({}, u','), TString());
  EXPECT_EQ(JoinString({u"a"}, u','), TString(u"a"));
  EXPECT_EQ(JoinString({u"a", u"", u"c"}, u','), TString(u"a,,c"));
  EXPECT_EQ(JoinString({u"2021", u"4", u"3"}, u'.'), TString(u"2021.4.3"));
}

TEST(JoinStringTest, SplitUndoesJoinOfNonEmptyPiecesWithoutTheSeparator) {
  std::mt19937 random(7);
  for (int round = 0; round < 500; ++round) {
    Pieces pieces(random() % 5);
    for (TString& piece : pieces) {
      piece = TString(1 + static_cast<int>(random() % 4), static_cast<char16_t>(u'a' + random() % 3));
    }
    EXPECT_EQ(SplitString(JoinString(pieces, u'/'), u'/'), pieces);
  }
}

}  // namespace
