// The six translations of date-time patterns between the ICU, Qt, Windows and
// custom dialects: every table row, the default rules, literals and quotes.

#include <gtest/gtest.h>

#include "velcoredata/locale/TLocale.h"

namespace {

struct MorphCase {
  const char16_t* input;
  const char16_t* expected;
};

std::string Utf8(const TString& s) { return s.toUtf8(); }

template <class Morph>
void ExpectMorphs(const std::vector<MorphCase>& cases, Morph morph) {
  for (const MorphCase& c : cases) {
    EXPECT_EQ(Utf8(morph(TString(c.input))), Utf8(TString(c.expected))) << "input: " << Utf8(TString(c.input));
  }
}

TEST(TLocaleMorphTest, QtToIcu) {
  ExpectMorphs(
      {
          // An AM/PM marker anywhere makes the conversion 12-hour.
          {u"h:mm AP", u"h:mm a"},
          {u"h:mm", u"H:mm"},
          {u"hh:mm:ss ap", u"hh:mm:ss a"},
          {u"AP h", u"a h"},
          {u"HH:mm A", u"HH:mm a"},
          {u"hhh", u"HH"},
          // "Ap": the P does not join an "A" run of the other case; it is an
          // unknown letter and dropped with the space before it.
          {u"h Ap", u"h a"},
          {u"dddd, d MMMM yyyy", u"EEEE, d MMMM yyyy"},
          {u"ddd dd d", u"EEE dd d"},
          {u"MMMMM M", u"MMMM M"},
          {u"y yy yyy", u"yy yy yyyy"},
          {u"mmm:sss", u"mm:ss"},
          {u"HH:mm:ss.zzz", u"HH:mm:ss.SSS"},
          {u"s.z", u"s.S"},
          // The zone and unknown letters vanish with their separators.
          {u"HH:mm:ss t", u"HH:mm:ss"},
          {u"H:mm X", u"H:mm"},
          {u"HH-mm/ss", u"HH-mm/ss"},
          {u"'o''clock' h", u"'o''clock' H"},
          {u"HH 'at", u"HH 'at"},
          {u"", u""},
      },
      [](const TString& p) { return TLocale::MorphQLocaleToICU(p, false); });
  // Asked for a 12-hour result directly, "h" stays "h" without a marker.
  EXPECT_EQ(TLocale::MorphQLocaleToICU(u"h:mm", true), TString(u"h:mm"));
}

TEST(TLocaleMorphTest, IcuToQt) {
  ExpectMorphs(
      {
          {u"EEEE, MMMM d, y", u"dddd, MMMM d, yyyy"},
          {u"E EEE", u"ddd ddd"},
          {u"K:mm a", u"H:mm AP"},
          {u"HHH", u"HH"},
          // The narrow month becomes the abbreviated one; "L" stays "L".
          {u"LLLLL MMMMM MMMM L", u"LLL MMM MMMM L"},
          {u"ss.S ss.SSS ss.SSSS", u"ss.z ss.z ss.zzz"},
          {u"ccccc cccc e ee", u"ddd dd d dd"},
          {u"ddd", u"dd"},
          {u"hh jj kkk", u"hh hh hh"},
          {u"mmm sss", u"mm ss"},
          {u"y yy yyy yyyy uuu", u"yyyy yy yy yyyy yy"},
          {u"z zzzz", u"t ttt"},
          // Unknown letters (the era here) vanish with the space before them.
          {u"y G", u"yyyy"},
          {u"'o''clock' h", u"'o''clock' h"},
          {u"h 'at", u"h 'at"},
      },
      [](const TString& p) { return TLocale::MorphICUToQlocale(p); });
}

TEST(TLocaleMorphTest, IcuToWindows) {
  ExpectMorphs(
      {
          {u"d 'de' MMMM", u"d 'de' MMMM"},
          // Fractions and zones vanish, the space before the zone with them.
          {u"HH:mm:ss.SSS zzzz", u"HH:mm:ss."},
          {u"h:mm a", u"h:mm tt"},
          {u"y G", u"yyyy g"},
          {u"EEEE, MMMM d, y", u"dddd, MMMM d, yyyy"},
          {u"LLLLL MMMMM", u"LLL MMM"},
          {u"ccccc e", u"ddd d"},
          {u"KK:mm", u"HH:mm"},
          {u"jj kk", u"hh hh"},
          {u"mmm sss", u"mm ss"},
          {u"u yy yyy", u"yyyy yy yy"},
          {u"H\\:mm\"", u"H\\:mm\""},
          {u"''", u"''"},
          {u"''' x", u"''' x"},
          {u"h 'at", u"h 'at"},
      },
      [](const TString& p) { return TLocale::MorphICUtoWindowsCustom(p, true); });
}

TEST(TLocaleMorphTest, IcuToCustom) {
  ExpectMorphs(
      {
          {u"d 'de' MMMM", u"d \"de\" MMMM"},
          {u"HH:mm:ss.SSS zzzz", u"HH:nn:ss."},
          {u"h:mm a", u"h:nn AM/PM"},
          // The custom dialect has no era: dropped like an unknown letter.
          {u"y G", u"yyyy"},
          {u"EEEE d MMMMM", u"dddd d MMM"},
          // Literals lose their quotes, unescape '' and escape ".
          {u"''", u"'"},
          {u"'it''s'", u"\"it's\""},
          {u"'say \"hi\"'", u"\"say \\\"hi\\\"\""},
          {u"''' x", u"'\" x\""},
          {u"h 'at", u"h \"at\""},
          {u"HH'", u"HH\"\""},
          // Backslashes and double quotes outside literals are escaped.
          {u"H\\:mm", u"H\\\\:nn"},
          {u"H\"\"m", u"H\\\"\\\"n"},
      },
      [](const TString& p) { return TLocale::MorphICUtoWindowsCustom(p, false); });
}

TEST(TLocaleMorphTest, WindowsToIcu) {
  ExpectMorphs(
      {
          {u"dddd", u"EEEE"},
          {u"ddddddd", u"EEEEEE"},
          {u"ddd dd d", u"EEE dd d"},
          // Months keep up to five letters towards ICU.
          {u"MMMMMM MMMMM", u"MMMMM MMMMM"},
          {u"g gg ggg", u"G GGGG GGGG"},
          {u"h:mm tt", u"h:mm a"},
          {u"t", u"a"},
          {u"y yy yyy yyyyy", u"yy yy yyyy yyyy"},
          {u"HHH:mmm:sss hhh", u"HH:mm:ss hh"},
          // Unknown characters, letters included, are copied.
          {u"HH:mm zzz X", u"HH:mm zzz X"},
          {u"'o''clock' h", u"'o''clock' h"},
          {u"h 'at", u"h 'at"},
      },
      [](const TString& p) { return TLocale::MorphWindowsToICU(p); });
}

TEST(TLocaleMorphTest, WindowsToQt) {
  ExpectMorphs(
      {
          // Months keep up to four letters towards Qt; five become three.
          {u"MMMMM MMMM", u"MMM MMMM"},
          {u"dddddd", u"dddd"},
          {u"hh:mm:ss tt", u"hh:mm:ss AP"},
          {u"yyyy g", u"yyyy"},
          {u"g yyyy", u" yyyy"},
          {u"y yyy", u"yy yyyy"},
          {u"HHH:mmm:sss", u"HH:mm:ss"},
          {u"X 'de'", u"X 'de'"},
          {u"h 'at", u"h 'at"},
      },
      [](const TString& p) { return TLocale::MorphWindowsToQLocale(p); });
}

TEST(TLocaleMorphTest, WindowsToCustom) {
  ExpectMorphs(
      {
          {u"h:mm t", u"h:nn A/P"},
          {u"h:mm tt", u"h:nn AM/PM"},
          {u"hh:mm:ss ttt", u"hh:nn:ss AM/PM"},
          {u"MMMMMM", u"MMMMM"},
          {u"ddddd", u"dddd"},
          {u"yyyy g", u"yyyy"},
          {u"y yyy", u"yy yyyy"},
          {u"HHH:mmm:sss", u"HH:nn:ss"},
          // The escaped pair and an empty literal become a single quote.
          {u"''", u"'"},
          {u"d'", u"d'"},
          {u"d 'de' MMMM", u"d \"de\" MMMM"},
          {u"'it''s \"x\"'", u"\"it's \\\"x\\\"\""},
          {u"\\X", u"\\X"},
      },
      [](const TString& p) { return TLocale::MorphWindowsToCustom(p); });
}

TEST(TLocaleMorphTest, ADialectRoundTripKeepsTheFieldsOfCommonPatterns) {
  // Windows -> ICU -> Windows restores the common Windows pictures.
  for (const char16_t* windows : {u"M/d/yyyy", u"dddd, MMMM d, yyyy", u"h:mm:ss tt", u"HH:mm", u"dd.MM.yyyy",
                                  u"yyyy'年'M'月'd'日'"}) {
    EXPECT_EQ(TLocale::MorphICUtoWindowsCustom(TLocale::MorphWindowsToICU(windows), true), TString(windows))
        << Utf8(TString(windows));
  }
  // ICU -> Qt -> ICU for 12-hour and 24-hour patterns.
  for (const char16_t* icu : {u"h:mm:ss a", u"HH:mm", u"dd.MM.yyyy", u"EEEE, MMMM d, yyyy"}) {
    EXPECT_EQ(TLocale::MorphQLocaleToICU(TLocale::MorphICUToQlocale(icu), false), TString(icu)) << Utf8(TString(icu));
  }
}

}  // namespace
