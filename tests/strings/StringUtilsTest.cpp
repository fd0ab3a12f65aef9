// SplitString and JoinString.

#include <QString>
#include <QStringList>

#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/strings/StringUtils.h"

namespace {

using Pieces = std::vector<TString>;

TEST(SplitStringTest, AgreesWithQtSplitSkippingEmptyParts) {
  EXPECT_EQ(SplitString(TString(u"1..2"), u'.'), (Pieces{u"1", u"2"}));
  EXPECT_EQ(SplitString(TString(u"a b"), u'.'), (Pieces{u"a b"}));
  EXPECT_TRUE(SplitString(TString(u"..."), u'.').empty());
  // Random texts over a small alphabet, so that runs of separators and
  // leading and trailing separators are common.
  std::mt19937 random(20240607);
  const char16_t alphabet[] = {u'a', u'b', u'.', u'.', u' ', u'\u00E9'};
  for (int round = 0; round < 2000; ++round) {
    std::u16string text(random() % 12, u' ');
    for (char16_t& c : text) c = alphabet[random() % std::size(alphabet)];
    Pieces expected;
    for (const QString& piece : TString(text).toQString().split(QChar(u'.'), Qt::SkipEmptyParts)) {
      expected.emplace_back(piece);
    }
    ASSERT_EQ(SplitString(TString(text), u'.'), expected) << TString(text).toUtf8();
  }
}

TEST(JoinStringTest, PutsTheSeparatorBetweenNeighboursAndSplitUndoesIt) {
  EXPECT_EQ(JoinString({}, u','), TString());
  EXPECT_EQ(JoinString({u"a"}, u','), TString(u"a"));
  EXPECT_EQ(JoinString({u"a", u"", u"c"}, u','), TString(u"a,,c"));
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
