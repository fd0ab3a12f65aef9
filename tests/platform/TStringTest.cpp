// TString against QString: the Qt-named operations must give what QString
// gives on the same input.

#include <QString>

#include <cmath>
#include <limits>
#include <unordered_set>

#include <gtest/gtest.h>

#include "velcoredata/platform/TString.h"

namespace {

QString Q(const char16_t* s) { return QString::fromUtf16(s); }

TEST(TStringTest, ConvertsUtf8Latin1AndQStringBothWays) {
  const char* utf8 = "caf\xC3\xA9 \xF0\x9F\x98\x80";  // café 😀 (a surrogate pair)
  const TString s(utf8);
  EXPECT_EQ(s.size(), 7);
  EXPECT_EQ(s[3], u'\u00E9');
  EXPECT_EQ(s[5], 0xD83D);
  EXPECT_EQ(s.toUtf8(), utf8);
  EXPECT_EQ(s.toQString(), QString::fromUtf8(utf8));
  EXPECT_EQ(TString(QString::fromUtf8(utf8)), s);

  const TString latin = TString::fromLatin1("\xE9t\xE9");
  EXPECT_EQ(latin, TString(u"\u00E9t\u00E9"));
  EXPECT_EQ(latin.toLatin1(), "\xE9t\xE9");
  EXPECT_EQ(TString(u"\u20AC").toLatin1(), "?");

  EXPECT_TRUE(TString(static_cast<const char*>(nullptr)).isEmpty());
  EXPECT_TRUE(TString(static_cast<const char16_t*>(nullptr)).isEmpty());
}

TEST(TStringTest, InvalidUtf8AndLoneSurrogatesDecodeAsQStringDoes) {
  const char* cases[] = {"\xFF", "a\xC3", "\xC0\xAF", "\xED\xA0\x80", "ok\x80ok", "\xF4\x90\x80\x80"};
  for (const char* bytes : cases) {
    const TString s = TString::fromUtf8(bytes);
    EXPECT_EQ(s.toQString(), QString::fromUtf8(bytes)) << bytes;
    EXPECT_TRUE(s.contains(u'\uFFFD')) << bytes;
  }
  const char16_t lone[] = {u'a', 0xD800, u'b', 0};
  EXPECT_EQ(TString(lone).toUtf8(), Q(lone).toUtf8().toStdString());
}

TEST(TStringTest, KeepsEmbeddedZeros) {
  const char16_t text[] = {u'a', 0, u'b'};
  const TString s(text, 3);
  EXPECT_EQ(s.size(), 3);
  EXPECT_EQ(s.toQString().size(), 3);
  EXPECT_EQ(s.mid(2), TString(u"b"));
  EXPECT_NE(s, TString(u"a"));
}

TEST(TStringTest, IntegerNumbersMatchQString) {
  const long long values[] = {0, 1, -1, 42, -42, 255, std::numeric_limits<long long>::min(),
                              std::numeric_limits<long long>::max()};
  for (long long v : values) {
    for (int base : {2, 8, 10, 16, 36}) {
      EXPECT_EQ(TString::number(v, base).toQString(), QString::number(v, base)) << v << " base " << base;
    }
  }
  EXPECT_EQ(TString::number(std::numeric_limits<unsigned long long>::max()).toQString(),
            QString::number(std::numeric_limits<qulonglong>::max()));
  EXPECT_EQ(TString::number(-7, 1), TString(u"-7"));  // an unusable base falls back to 10
  EXPECT_EQ(TString::number(-1, 16), TString(u"ffffffffffffffff"));
  TString s;
  EXPECT_EQ(s.setNum(-12), TString(u"-12"));
}

TEST(TStringTest, DoubleNumbersMatchQStringInEveryForm) {
  const double values[] = {0.0,  -0.0, 0.1,   1.0 / 3.0, 3.0, -12.0, 1e20, 1e-7, 123456789.125,
                           5e-324, 1.7976931348623157e308, std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(), std::nan("")};
  for (double v : values) {
    for (char f : {'g', 'G', 'f', 'e', 'E'}) {
      for (int precision : {0, 1, 6, 17}) {
        EXPECT_EQ(TString::number(v, f, precision).toQString(), QString::number(v, f, precision))
            << v << " " << f << precision;
      }
    }
  }
  EXPECT_EQ(TString::number(0.1, 'g', 17), TString(u"0.10000000000000001"));
  EXPECT_EQ(TString::number(1e20, 'g', 17), TString(u"1e+20"));
}

TEST(TStringTest, ParsingNumbersMatchesQStringIncludingFailures) {
  const char16_t* inputs[] = {u"12",   u" 12 ",  u"+7",    u"-1",     u"abc", u"",        u"1e3",
                              u"0x1F", u"1F",    u"1,000", u"12abc",  u"nan", u"inf",     u"-inf",
                              u"4294967295", u"4294967296", u"9223372036854775807",
                              u"9223372036854775808", u"99999999999999999999999", u"1.5", u".5",
                              u"5.", u"\u0661", u"  ", u"rc2", u"2rc"};
  for (const char16_t* in : inputs) {
    const TString t(in);
    const QString q = Q(in);
    bool tok = true, qok = true;
    EXPECT_EQ(t.toLongLong(&tok), q.toLongLong(&qok)) << q.toStdString();
    EXPECT_EQ(tok, qok) << q.toStdString();
    EXPECT_EQ(t.toUInt(&tok), q.toUInt(&qok)) << q.toStdString();
    EXPECT_EQ(tok, qok) << q.toStdString();
    EXPECT_EQ(t.toInt(&tok, 16), q.toInt(&qok, 16)) << q.toStdString();
    EXPECT_EQ(tok, qok) << q.toStdString();
    EXPECT_EQ(t.toULongLong(&tok, 0), q.toULongLong(&qok, 0)) << q.toStdString();
    EXPECT_EQ(tok, qok) << q.toStdString();
    const double td = t.toDouble(&tok);
    const double qd = q.toDouble(&qok);
    EXPECT_EQ(tok, qok) << q.toStdString();
    EXPECT_TRUE(td == qd || (std::isnan(td) && std::isnan(qd))) << q.toStdString();
  }
  bool ok = true;
  EXPECT_EQ(TString(u"abc").toDouble(&ok), 0.0);
  EXPECT_FALSE(ok);
  EXPECT_EQ(TString(u"99999999999999999999").toLongLong(&ok), 0);
  EXPECT_FALSE(ok);
}

TEST(TStringTest, ArgReplacesTheLowestMarkerAsQStringDoes) {
  const char16_t* patterns[] = {u"%1 and %2", u"%2 then %1", u"none", u"%1%1", u"%10 %9", u"100%"};
  for (const char16_t* p : patterns) {
    EXPECT_EQ(TString(p).arg(TString(u"x")).toQString(), Q(p).arg(QStringLiteral("x")));
    EXPECT_EQ(TString(p).arg(42).toQString(), Q(p).arg(42));
    EXPECT_EQ(TString(p).arg(-3.25).toQString(), Q(p).arg(-3.25));
    EXPECT_EQ(TString(p).arg(255, 6, 16, u'0').toQString(), Q(p).arg(255, 6, 16, QLatin1Char('0')));
    EXPECT_EQ(TString(p).arg(0.5, 8, 'f', 3).toQString(), Q(p).arg(0.5, 8, 'f', 3));
  }
}

TEST(TStringTest, CaseOperationsFollowUnicodeAsQStringDoes) {
  const char16_t* inputs[] = {u"Stra\u00DFe", u"\u0130stanbul", u"\u03A3\u039F\u03A6\u039F\u03A3", u"ABC def",
                              u"\uFB01"};
  for (const char16_t* in : inputs) {
    EXPECT_EQ(TString(in).toLower().toQString(), Q(in).toLower());
    EXPECT_EQ(TString(in).toUpper().toQString(), Q(in).toUpper());
    EXPECT_EQ(TString(in).toCaseFolded().toQString(), Q(in).toCaseFolded());
  }
  EXPECT_EQ(TString(u"Stra\u00DFe").toUpper(), TString(u"STRASSE"));
}

TEST(TStringTest, ComparesCaseSensitivelyByCodeUnitAndInsensitivelyAsQString) {
  const std::pair<const char16_t*, const char16_t*> pairs[] = {
      {u"abc", u"abd"}, {u"abc", u"ABC"}, {u"", u"a"}, {u"a", u""}, {u"\u00E9", u"\u00C9"},
      {u"Stra\u00DFe", u"STRASSE"}, {u"b", u"A"}, {u"same", u"same"}};
  auto sign = [](int v) { return (v > 0) - (v < 0); };
  for (const auto& [a, b] : pairs) {
    EXPECT_EQ(sign(TString(a).compare(TString(b))), sign(Q(a).compare(Q(b)))) << Q(a).toStdString();
    EXPECT_EQ(sign(TString(a).compare(TString(b), TString::CaseInsensitive)),
              sign(Q(a).compare(Q(b), Qt::CaseInsensitive)))
        << Q(a).toStdString();
  }
  // Ordering is by UTF-16 code unit: a surrogate sorts below U+FFFD.
  EXPECT_LT(TString(u"\U0001F600"), TString(u"\uFFFD"));
  EXPECT_EQ(TString::Compare(TString(u"a"), TString(u"b")), -1);
}

TEST(TStringTest, SubstringsClampLikeQString) {
  const QString q = QStringLiteral("hello");
  const TString t(u"hello");
  for (int pos : {-3, -1, 0, 2, 4, 5, 6}) {
    for (int n : {-1, 0, 1, 3, 10}) {
      EXPECT_EQ(t.mid(pos, n).toQString(), q.mid(pos, n)) << pos << "," << n;
    }
    EXPECT_EQ(t.left(pos).toQString(), q.left(pos)) << pos;
    EXPECT_EQ(t.right(pos).toQString(), q.right(pos)) << pos;
  }
}

TEST(TStringTest, SearchesLikeQString) {
  const char16_t* hay = u"abcABCabc";
  const TString t(hay);
  const QString q = Q(hay);
  for (int from : {-20, -3, 0, 1, 4, 9, 20}) {
    EXPECT_EQ(t.indexOf(TString(u"bc"), from), q.indexOf(QStringLiteral("bc"), from)) << from;
    EXPECT_EQ(t.indexOf(TString(u"bc"), from, TString::CaseInsensitive),
              q.indexOf(QStringLiteral("bc"), from, Qt::CaseInsensitive))
        << from;
    EXPECT_EQ(t.lastIndexOf(TString(u"bc"), from), q.lastIndexOf(QStringLiteral("bc"), from)) << from;
    EXPECT_EQ(t.indexOf(u'C', from), q.indexOf(QLatin1Char('C'), from)) << from;
    EXPECT_EQ(t.lastIndexOf(u'a', from), q.lastIndexOf(QLatin1Char('a'), from)) << from;
  }
  EXPECT_TRUE(t.startsWith(TString(u"ABC"), TString::CaseInsensitive));
  EXPECT_FALSE(t.startsWith(TString(u"ABC")));
  EXPECT_TRUE(t.endsWith(u'c'));
  EXPECT_TRUE(t.contains(TString()));
}

TEST(TStringTest, FindsOneOfACharacterSetAndTruncates) {
  TString s(u"rc12beta");
  EXPECT_EQ(s.findOneOf(TString(u"0123456789")), 2);
  EXPECT_EQ(s.findOneNotOf(TString(u"0123456789"), 2), 4);
  EXPECT_EQ(s.findOneOf(TString(u"xyz")), -1);
  EXPECT_EQ(TString(u"123").findOneNotOf(TString(u"0123456789")), -1);
  EXPECT_EQ(s.findOneOf(TString(u"a"), 100), -1);
  s.truncate(4);
  EXPECT_EQ(s, TString(u"rc12"));
  s.truncate(10);
  EXPECT_EQ(s, TString(u"rc12"));
  s.truncate(-1);
  EXPECT_TRUE(s.isEmpty());
}

TEST(TStringTest, TrimsAndSimplifiesWhiteSpaceLikeQString) {
  const char16_t* inputs[] = {u"  a b  ", u"\t\n x\u00A0", u"", u"   ", u"a  \t b\n\nc"};
  for (const char16_t* in : inputs) {
    EXPECT_EQ(TString(in).trimmed().toQString(), Q(in).trimmed());
    EXPECT_EQ(TString(in).simplified().toQString(), Q(in).simplified());
  }
}

TEST(TStringTest, EditsLikeQString) {
  QString q = QStringLiteral("a-b-c");
  TString t(u"a-b-c");
  q.replace(QStringLiteral("-"), QStringLiteral("--"));
  t.replace(TString(u"-"), TString(u"--"));
  EXPECT_EQ(t.toQString(), q);
  q.replace(QStringLiteral("A"), QStringLiteral("x"), Qt::CaseInsensitive);
  t.replace(TString(u"A"), TString(u"x"), TString::CaseInsensitive);
  EXPECT_EQ(t.toQString(), q);
  q.insert(12, QStringLiteral("!"));
  t.insert(12, TString(u"!"));
  EXPECT_EQ(t.toQString(), q);
  q.remove(1, 2);
  t.remove(1, 2);
  EXPECT_EQ(t.toQString(), q);
  q.remove(QLatin1Char('c'));
  t.remove(u'c');
  EXPECT_EQ(t.toQString(), q);
  t.chop(100);
  EXPECT_TRUE(t.isEmpty());
  EXPECT_EQ(TString(u"ab") + u"c" + TString(u"d"), TString(u"abcd"));
}

TEST(TStringTest, EqualTextsHashEqualAndWorkAsKeys) {
  const TString a(u"key"), b(std::u16string(u"key"));
  EXPECT_EQ(a.hash(), b.hash());
  EXPECT_EQ(StringHash(a), a.hash());
  EXPECT_NE(TString(u"key").hash(), TString(u"kez").hash());
  std::unordered_set<TString> set{a, TString(u"other")};
  EXPECT_EQ(set.count(b), 1u);
}

}  // namespace
