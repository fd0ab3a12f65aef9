// The collators: BinaryCollator's exact code-unit operations and
// ICUCollator's collation-aware ones (tailorings, search, case, hashing).

#include <unicode/ucol.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "collation/CollationTestSupport.h"
#include "velcoredata/collation/BinaryCollator.h"
#include "velcoredata/collation/CollatorRef.h"
#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/ICUCollator.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/platform/THash.h"

// Counts this thread's allocations through operator new, to check that the
// steady state of comparing and hashing allocates nothing.
namespace {
thread_local long t_allocations = 0;
}  // namespace

void* operator new(size_t size) {
  ++t_allocations;
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, size_t) noexcept { std::free(p); }

namespace {

using CollationTestSupport::LogicConditionOf;
using CollationTestSupport::Sign;
using CollationTestSupport::TextOf;

// Random UTF-16 strings over a small alphabet that includes code units
// above U+7FFF, so that signed/unsigned mistakes show.
std::vector<std::u16string> RandomStrings(int count, unsigned seed) {
  const char16_t alphabet[] = {u'a', u'b', u'B', u'\u00E9', u'\u0000', u'\uFFFD', static_cast<char16_t>(0xD800), u'z'};
  std::mt19937 rng(seed);
  std::uniform_int_distribution<int> length(0, 5), pick(0, 7);
  std::vector<std::u16string> strings(static_cast<size_t>(count));
  for (auto& s : strings) {
    s.resize(static_cast<size_t>(length(rng)));
    for (auto& c : s) c = alphabet[pick(rng)];
  }
  return strings;
}

TEST(BinaryCollatorTest, CompareOrdersByCodeUnitThenLength) {
  const BinaryCollator binary;
  EXPECT_EQ(binary.Compare(u"ab", u"abc"), -1);
  EXPECT_EQ(binary.Compare(u"abc", u"ab"), 1);
  EXPECT_EQ(binary.Compare(u"abc", u"abc"), 0);
  EXPECT_EQ(binary.Compare(u"B", u"a"), -1);  // case-sensitive, upper case first
  EXPECT_EQ(binary.Compare(nullptr, u""), 0);
  // Oracle: std::u16string ordering, which compares code units as unsigned.
  const auto strings = RandomStrings(300, 7);
  for (const auto& a : strings) {
    for (const auto& b : strings) {
      const int expected = Sign(a.compare(b));
      ASSERT_EQ(binary.Compare(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size())),
                expected);
    }
  }
}

TEST(CollatorLengthTest, MinusOneReadsUpToTheTerminatingZeroOnEveryCollator) {
  const BinaryCollator binary;
  const Collation& binaryCollation = GetBinaryCollation();
  const Collation icu(u"LEN_RUS_S2");
  CollatorRef icuCollator = icu.GetCollator();
  const std::vector<std::u16string> words = {u"abc", u"abd", u"ab", u"", u"Abc", u"\u00E9t\u00E9", u"zz"};
  for (const auto& a : words) {
    for (const auto& b : words) {
      const int lenA = static_cast<int>(a.size()), lenB = static_cast<int>(b.size());
      const std::string pair = TString(a).toUtf8() + " / " + TString(b).toUtf8();
      // Each collator, directly and through its Collation: -1 on either side
      // or both is the same comparison as the explicit lengths.
      const int binaryExpected = binary.Compare(a.data(), lenA, b.data(), lenB);
      EXPECT_EQ(binary.Compare(a.c_str(), -1, b.c_str(), -1), binaryExpected) << pair;
      EXPECT_EQ(binary.Compare(a.c_str(), -1, b.data(), lenB), binaryExpected) << pair;
      EXPECT_EQ(binary.Compare(a.data(), lenA, b.c_str(), -1), binaryExpected) << pair;
      EXPECT_EQ(binaryCollation.Compare(a.c_str(), -1, b.c_str(), -1), binaryExpected) << pair;
      const int icuExpected = Sign(icuCollator->Compare(a.data(), lenA, b.data(), lenB));
      EXPECT_EQ(Sign(icuCollator->Compare(a.c_str(), -1, b.c_str(), -1)), icuExpected) << pair;
      EXPECT_EQ(Sign(icu.Compare(a.c_str(), -1, b.data(), lenB)), icuExpected) << pair;
    }
  }
  EXPECT_EQ(binary.Compare(u"abc", -1, u"abd", -1), -1);
  EXPECT_EQ(binaryCollation.Compare(u"abd", -1, u"abc", -1), 1);
  EXPECT_EQ(binary.Compare(nullptr, -1, u"", -1), 0);
}

TEST(BinaryCollatorTest, SearchAndAffixesAreExact) {
  const BinaryCollator binary;
  EXPECT_EQ(binary.Search(u"abcabc", u""), -1);
  EXPECT_EQ(binary.Search(u"abcabc", u"ca"), 2);
  EXPECT_EQ(binary.Search(u"abcabc", u"CA"), -1);
  int length = -1;
  EXPECT_EQ(binary.Search(u"abcabc", u"bc", 2, &length), 4);
  EXPECT_EQ(length, 2);
  EXPECT_EQ(binary.Search(u"abcabc", u"bc", 5, nullptr), -1);
  EXPECT_EQ(binary.Search(u"abc", u"a", 9, nullptr), -1);
  EXPECT_TRUE(binary.StartsWith(u"abc", u"ab"));
  EXPECT_TRUE(binary.StartsWith(u"abc", u""));
  EXPECT_FALSE(binary.StartsWith(u"abc", u"Ab"));
  EXPECT_FALSE(binary.StartsWith(u"ab", u"abc"));
  EXPECT_TRUE(binary.EndsWith(u"abc", u"bc"));
  EXPECT_FALSE(binary.EndsWith(u"bc", u"abc"));
  EXPECT_FALSE(binary.EndsWith(u"abc", u"bC"));
  std::vector<char16_t> out;
  binary.Replace(out, u"a-b-c", u"-", u"--");
  EXPECT_EQ(TextOf(out), TString(u"a--b--c"));
  binary.Replace(out, u"abc", u"", u"x");
  EXPECT_EQ(TextOf(out), TString(u"abc"));
}

TEST(BinaryCollatorTest, CaseMappingIsPerCodeUnitAndTrimmingUsesWhiteSpaceClasses) {
  const BinaryCollator binary;
  std::vector<char16_t> out;
  binary.Lower(out, u"AbC\u00C9\u0130\u00DF1");
  // U+0130 maps one-to-one to 'i'; U+00DF has no single-unit upper case.
  EXPECT_EQ(TextOf(out), TString(u"abc\u00E9i\u00DF1"));
  binary.Upper(out, u"abc\u00E9\u00DF\u03C3");
  EXPECT_EQ(TextOf(out), TString(u"ABC\u00C9\u00DF\u03A3"));
  binary.Upper(out, nullptr);
  EXPECT_EQ(TextOf(out), TString(u""));
  binary.Trim(out, u" \t\u3000 a b \n");
  EXPECT_EQ(TextOf(out), TString(u"a b"));
  binary.LTrim(out, u"  a ");
  EXPECT_EQ(TextOf(out), TString(u"a "));
  binary.RTrim(out, u"  a ");
  EXPECT_EQ(TextOf(out), TString(u"  a"));
  binary.Trim(out, u"   ");
  EXPECT_EQ(TextOf(out), TString(u""));
}

TEST(BinaryCollatorTest, HashIsTheSeedOneHashOfTheCodeUnits) {
  const BinaryCollator binary;
  const std::u16string text = u"Gr\u00FC\u00DFe";
  EXPECT_EQ(binary.Hash(text.c_str()), THash32(text.data(), text.size() * 2, 1));
  EXPECT_NE(binary.Hash(u"a"), binary.Hash(u"A"));
  EXPECT_TRUE(binary.IsEquivalent(BinaryCollator()));
}

// --- ICU collators, reached through collations as callers reach them ---------

// The same ordering opened on ICU directly, as an independent reference.
class RawCollator {
 public:
  RawCollator(const char* locale, UColAttributeValue strength) {
    UErrorCode status = U_ZERO_ERROR;
    m_collator = ucol_open(locale, &status);
    ucol_setStrength(m_collator, strength);
  }
  ~RawCollator() { ucol_close(m_collator); }
  int Compare(const std::u16string& a, const std::u16string& b) const {
    return ucol_strcoll(m_collator, a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()));
  }
  std::vector<uint8_t> SortKey(const std::u16string& text) const {
    std::vector<uint8_t> key(static_cast<size_t>(ucol_getSortKey(m_collator, text.data(), -1, nullptr, 0)));
    ucol_getSortKey(m_collator, text.data(), -1, key.data(), static_cast<int>(key.size()));
    return key;
  }

 private:
  UCollator* m_collator;
};

TEST(ICUCollatorTest, CompareAndHashAgreeWithIcuOnTheSameAttributes) {
  const Collation secondary(u"LEN_RUS_S2");
  const RawCollator raw("en_US", UCOL_SECONDARY);
  const std::vector<std::u16string> words = {u"apple", u"Apple", u"APPLE", u"\u00E4pple", u"apples",
                                             u"banana", u"Banana", u"co-op", u"coop", u"",
                                             u"r\u00E9sum\u00E9", u"resume", u"Resume", u"\u00C5ngstr\u00F6m"};
  for (const auto& a : words) {
    for (const auto& b : words) {
      EXPECT_EQ(Sign(secondary.Compare(a.c_str(), b.c_str())), Sign(raw.Compare(a, b)))
          << TString(a).toUtf8() << " / " << TString(b).toUtf8();
      EXPECT_EQ(secondary.Compare(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size())),
                raw.Compare(a, b));
    }
    const std::vector<uint8_t> key = raw.SortKey(a);
    EXPECT_EQ(secondary.Hash(a.c_str()), THash32(key.data(), key.size(), 0xDEADBEEF));
  }
  EXPECT_EQ(secondary.Hash(u"APPLE"), secondary.Hash(u"apple"));
  EXPECT_NE(secondary.Hash(u"\u00E4pple"), secondary.Hash(u"apple"));
  // A sort key longer than the collator's first buffer (128 bytes).
  const std::u16string longText(400, u'\u00E9');
  const std::vector<uint8_t> longKey = raw.SortKey(longText);
  ASSERT_GT(longKey.size(), 128u);
  EXPECT_EQ(secondary.Hash(longText.c_str()), THash32(longKey.data(), longKey.size(), 0xDEADBEEF));
  EXPECT_EQ(secondary.Hash(longText.c_str()), secondary.Hash(longText.c_str()));
}

TEST(ICUCollatorTest, ComparingAndHashingAllocateNothingOnceWarm) {
  const Collation collation(u"LEN_RUS_S2_WO");
  const std::u16string longText(300, u'\u00E9');  // grows the sort-key buffer once
  (void)collation.Hash(longText.c_str());
  (void)collation.Compare(u"a", u"b");
  (void)GetBinaryCollation().Compare(u"x", u"y");
  const long before = t_allocations;
  for (int i = 0; i < 100; ++i) {
    (void)collation.Compare(u"co-op", 5, u"coop", 4);
    (void)collation.Compare(u"Apple", u"apple");
    (void)collation.Hash(u"r\u00E9sum\u00E9");
    (void)collation.Hash(longText.c_str());
    (void)GetBinaryCollation().Compare(u"x", u"y");
  }
  EXPECT_EQ(t_allocations - before, 0);
}

TEST(ICUCollatorTest, WordSortIgnoresHyphensAndApostrophesAndKeepsTheOtherAttributes) {
  const Collation plain(u"LEN_RUS");
  const Collation wordSort(u"LEN_RUS_WO");
  const Collation caseInsensitiveWordSort(u"LEN_RUS_S2_WO");
  EXPECT_EQ(wordSort.Compare(u"co-op", u"coop"), 0);
  EXPECT_EQ(wordSort.Compare(u"can't", u"cant"), 0);
  EXPECT_LT(wordSort.Compare(u"co-op", u"cop"), 0);  // ignored, not a letter "u0000"
  EXPECT_NE(plain.Compare(u"co-op", u"coop"), 0);
  EXPECT_NE(plain.Compare(u"can't", u"cant"), 0);
  // The rules rebuild the collator; the strength set before them survives.
  EXPECT_EQ(caseInsensitiveWordSort.Compare(u"Co-Op", u"coop"), 0);
  EXPECT_NE(wordSort.Compare(u"Co-Op", u"coop"), 0);
  EXPECT_EQ(wordSort.Hash(u"co-op"), wordSort.Hash(u"coop"));
}

TEST(ICUCollatorTest, IgnoreDigitsIgnoresDecimalDigitsOfEveryScript) {
  const Collation ignoreDigits(u"LEN_RUS_XO");
  EXPECT_EQ(ignoreDigits.Compare(u"a1b2", u"ab"), 0);
  EXPECT_EQ(ignoreDigits.Compare(u"a\u0663b", u"ab"), 0);        // ARABIC-INDIC DIGIT THREE
  EXPECT_EQ(ignoreDigits.Compare(u"a\U0001D7CEb", u"ab"), 0);    // MATHEMATICAL BOLD DIGIT ZERO
  EXPECT_LT(ignoreDigits.Compare(u"a9b", u"ac"), 0);
  EXPECT_NE(Collation(u"LEN_RUS").Compare(u"a1b", u"ab"), 0);
}

TEST(ICUCollatorTest, WindowsUsEnglishSortsTheNumberSignJustBeforeTheAtSign) {
  const Collation windows(u"LEN_RUS_VWIN");
  const Collation icu(u"LEN_RUS");
  EXPECT_GT(icu.Compare(u"#", u"@"), 0);
  EXPECT_LT(windows.Compare(u"#", u"@"), 0);
  // Immediately before: what sorted between them stays on the far side of both.
  EXPECT_LT(icu.Compare(u"@", u"&"), 0);
  EXPECT_LT(icu.Compare(u"&", u"#"), 0);
  EXPECT_LT(windows.Compare(u"&", u"#"), 0);
  EXPECT_LT(windows.Compare(u"@", u"%"), 0);
  EXPECT_TRUE(windows.IsWindowsSpecific());
}

TEST(ICUCollatorTest, SearchFindsCollationEqualStretches) {
  const Collation secondary(u"LEN_RUS_S2");
  const Collation tertiary(u"LEN_RUS");
  EXPECT_EQ(secondary.Search(u"Big Apple pie", u"apple"), 4);
  EXPECT_EQ(tertiary.Search(u"Big Apple pie", u"apple"), -1);
  EXPECT_EQ(secondary.Search(u"Big Apple pie", u""), -1);
  EXPECT_EQ(secondary.Search(u"", u"a"), -1);
  int length = 0;
  EXPECT_EQ(secondary.Search(u"apple APPLE", u"Apple", 1, &length), 6);
  EXPECT_EQ(length, 5);
  EXPECT_EQ(secondary.Search(u"apple APPLE", u"Apple", 7, &length), -1);
  // The cached search follows a change of pattern and of text.
  EXPECT_EQ(secondary.Search(u"xyz pie", u"PIE"), 4);
  EXPECT_EQ(secondary.Search(u"pie", u"PIE"), 0);
  // Under word sort the match may be longer than the pattern.
  const Collation wordSort(u"LEN_RUS_WO");
  EXPECT_EQ(wordSort.Search(u"a co-op", u"coop", 0, &length), 2);
  EXPECT_EQ(length, 5);
  std::vector<char16_t> out;
  secondary.Replace(out, u"Hello hello HELLO!", u"hello", u"bye");
  EXPECT_EQ(TextOf(out), TString(u"bye bye bye!"));
  wordSort.Replace(out, u"co-op coop", u"coop", u"X");
  EXPECT_EQ(TextOf(out), TString(u"X X"));
  secondary.Replace(out, u"none here", u"zz", u"X");
  EXPECT_EQ(TextOf(out), TString(u"none here"));
}

TEST(ICUCollatorTest, PrefixesAndSuffixesAreCollationAware) {
  const Collation secondary(u"LEN_RUS_S2");
  const Collation tertiary(u"LEN_RUS");
  struct Case {
    const char16_t *text, *affix;
    bool startsSecondary, startsTertiary, endsSecondary;
  };
  const Case cases[] = {
      {u"Apple pie", u"apple", true, false, false},
      {u"Apple pie", u"Apple", true, true, false},
      {u"pie apple", u"APPLE", false, false, true},
      {u"abc", u"", true, true, true},
      {u"", u"a", false, false, false},
      {u"ab", u"abc", false, false, false},
      {u"abc", u"abc", true, true, true},
      {u"xabc", u"ABC", false, false, true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(secondary.StartsWith(c.text, c.affix), c.startsSecondary) << TString(c.text).toUtf8();
    EXPECT_EQ(tertiary.StartsWith(c.text, c.affix), c.startsTertiary) << TString(c.text).toUtf8();
    EXPECT_EQ(secondary.EndsWith(c.text, c.affix), c.endsSecondary) << TString(c.text).toUtf8();
  }
  EXPECT_FALSE(secondary.StartsWith(nullptr, u""));
  EXPECT_FALSE(secondary.EndsWith(u"a", nullptr));
}

TEST(ICUCollatorTest, CaseMappingUsesTheLocaleAndGrowsTheOutput) {
  std::vector<char16_t> out;
  Collation(u"LDE_RDE").Upper(out, u"stra\u00DFe");
  EXPECT_EQ(TextOf(out), TString(u"STRASSE"));  // one code unit becomes two
  Collation(u"LTR_RTR").Upper(out, u"istanbul");
  EXPECT_EQ(TextOf(out), TString(u"\u0130STANBUL"));
  Collation(u"LTR_RTR").Lower(out, u"I");
  EXPECT_EQ(TextOf(out), TString(u"\u0131"));
  Collation(u"LEN_RUS").Lower(out, u"\u0130");
  EXPECT_EQ(TextOf(out), TString(u"i\u0307"));
  Collation(u"LEN_RUS").Lower(out, nullptr);
  EXPECT_EQ(TextOf(out), TString(u""));
  const std::u16string many(300, u'\u00DF');
  Collation(u"LEN_RUS").Upper(out, many.c_str());
  EXPECT_EQ(TextOf(out), TString(std::u16string(600, u'S')));
  Collation(u"LEN_RUS").Trim(out, u"\u2003 a\u00A0b \u2028");
  EXPECT_EQ(TextOf(out), TString(u"a\u00A0b"));  // no-break space is not white space to ICU
  Collation(u"LEN_RUS").LTrim(out, u" a ");
  EXPECT_EQ(TextOf(out), TString(u"a "));
  Collation(u"LEN_RUS").RTrim(out, u" a ");
  EXPECT_EQ(TextOf(out), TString(u" a"));
}

TEST(ICUCollatorTest, EquivalenceMeansSameLocaleWithTheWindowsVariantAsItsLocale) {
  struct Case {
    const char16_t *a, *b;
    bool equivalent;
  };
  const Case cases[] = {
      {u"LEN_RUS", u"LEN_RUS", true},
      {u"LEN_RUS", u"LEN_RUS_S2", true},  // attributes do not count
      {u"LEN_RUS", u"LDE_RDE", false},
      {u"LEN_RUS", u"LEN", false},
      {u"LEN_RUS_VWIN", u"LEN_RUS", true},
      {u"LEN_RUS", u"LEN_RUS_S1_VWIN", true},
      {u"LEN_VWIN", u"LEN", true},
      {u"LDE_RDE_VWIN", u"LEN_RUS", false},
      {u"binary", u"BINARY", true},
      {u"binary", u"LEN_RUS", false},
      {u"LEN_RUS", u"binary", false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Equivalent(Collation(c.a), Collation(c.b)), c.equivalent)
        << TString(c.a).toUtf8() << " / " << TString(c.b).toUtf8();
  }
}

TEST(ICUCollatorTest, AttributeNumbersOutsideIcusRangeAreLogicErrors) {
  CollatorRef ref = Collation(u"LFR_RCA").GetCollator();
  auto* icu = dynamic_cast<ICUCollator*>(ref.get());
  ASSERT_NE(icu, nullptr);
  EXPECT_EQ(LogicConditionOf([&] { icu->SetAttribute(ICUCollator::Attr(8), UCOL_ON); }),
            "static_cast<VelICU::ICUColAttribute>(attr) < VelICU::UCOL_ATTRIBUTE_COUNT");
  EXPECT_EQ(LogicConditionOf([&] { icu->SetAttribute(ICUCollator::Attr(11), UCOL_ON); }),
            "static_cast<VelICU::ICUColAttribute>(attr) < VelICU::UCOL_ATTRIBUTE_COUNT");
  // Word sort and ignore digits do nothing for values other than on.
  icu->SetAttribute(ICUCollator::Attr::WordSort, UCOL_OFF);
  icu->SetAttribute(ICUCollator::Attr::IgnoreDigits, UCOL_DEFAULT);
  EXPECT_NE(icu->Compare(u"co-op", u"coop"), 0);
  EXPECT_EQ(icu->GetName(), TString(u"LFR_RCA"));
  EXPECT_EQ(icu->GetLocale(), "fr_CA");
}

}  // namespace
