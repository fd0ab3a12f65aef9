// vcd sort: output order checked against Collation::Compare and code-unit
// order, stability, --unique, --keys, byte preservation and usage errors.

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tools/VcdRun.h"
#include "velcoredata/collation/Collation.h"

namespace {


VcdRun Vcd(const std::vector<std::string>& args, const std::string& input = "") {
  return RunVcdCaptured(args, input);
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::string Join(const std::vector<std::string>& lines) {
  std::string text;
  for (const auto& line : lines) text += line + "\n";
  return text;
}

// Words with case, accent, hyphen and digit variants, shuffled.
std::vector<std::string> Corpus(int count) {
  const std::vector<std::string> stems = {"apple", "Apple", "\xC3\xA4pple", "co-op", "coop", "Coop",
                                          "can't", "cant",  "r\xC3\xA9sum\xC3\xA9", "resume", "zebra",
                                          "Zebra", "a1b",   "ab",   "\xC3\x85ngstr\xC3\xB6m", "", "#x", "@x"};
  std::vector<std::string> words;
  std::mt19937 rng(11);
  for (int i = 0; i < count; ++i) words.push_back(stems[rng() % stems.size()] + (i % 3 == 0 ? "" : std::to_string(rng() % 5)));
  return words;
}

TEST(SortCommandTest, OutputIsAPermutationOrderedByTheCollation) {
  const std::vector<std::string> input = Corpus(500);
  struct Case {
    std::vector<std::string> args;
    Collation collation;
  };
  const Case cases[] = {
      {{"sort"}, Collation()},
      {{"sort", "--locale", "en_US", "--case-insensitive"}, Collation(u"LEN_RUS_S2")},
      {{"sort", "--locale", "de-DE", "--accent-insensitive", "--word-sort"}, Collation(u"EO_LDE_RDE_S1_WO")},
      {{"sort", "--collation", "LSV_RSE_S2"}, Collation(u"LSV_RSE_S2")},
      {{"sort", "--locale", "en_US", "--ignore-digits"}, Collation(u"LEN_RUS_XO")},
  };
  for (const Case& c : cases) {
    const auto run = Vcd(c.args, Join(input));
    ASSERT_EQ(run.status, 0) << run.err;
    const std::vector<std::string> output = Lines(run.out);
    std::vector<std::string> sortedInput = input, sortedOutput = output;
    std::sort(sortedInput.begin(), sortedInput.end());
    std::sort(sortedOutput.begin(), sortedOutput.end());
    EXPECT_EQ(sortedOutput, sortedInput) << c.collation.GetName().toUtf8();
    for (size_t i = 1; i < output.size(); ++i) {
      const TString a = TString::fromUtf8(output[i - 1]), b = TString::fromUtf8(output[i]);
      ASSERT_LE(c.collation.Compare(a.c_str(), b.c_str()), 0)
          << c.collation.GetName().toUtf8() << ": " << output[i - 1] << " / " << output[i];
    }
  }
}

TEST(SortCommandTest, BinaryOrderIsCodeUnitOrderAndEqualLinesKeepTheirInputOrder) {
  // U+10000 sorts after U+FF21 by code point but before it by UTF-16 code
  // unit (its lead surrogate is U+D800).
  const std::string input = "\xEF\xBC\xA1\n\xF0\x90\x80\x80\nb\nB\na\n";
  const auto run = Vcd({"sort", "--collation", "binary"}, input);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "B\na\nb\n\xF0\x90\x80\x80\n\xEF\xBC\xA1\n");
  // Under a case-insensitive ordering "Apple" and "apple" are equal: input order stays.
  const auto stable = Vcd({"sort", "--locale", "en", "--case-insensitive"}, "b\napple\nApple\nAPPLE\n");
  EXPECT_EQ(stable.out, "apple\nApple\nAPPLE\nb\n");
  const auto reversed = Vcd({"sort", "--locale", "en", "--case-insensitive"}, "b\nAPPLE\nApple\napple\n");
  EXPECT_EQ(reversed.out, "APPLE\nApple\napple\nb\n");
}

TEST(SortCommandTest, UniqueKeepsTheFirstOfEqualLinesAndKeysPrintTheCollationHash) {
  const auto unique = Vcd({"sort", "--locale", "en_US", "--case-insensitive", "--word-sort", "--unique"},
                          "coop\nCo-op\nbanana\nBANANA\nco-op\n");
  ASSERT_EQ(unique.status, 0) << unique.err;
  EXPECT_EQ(unique.out, "banana\ncoop\n");
  const auto keys = Vcd({"sort", "--collation", "LEN_RUS_S2", "--keys"}, "B\na\n");
  char expected[64];
  const Collation c(u"LEN_RUS_S2");
  std::snprintf(expected, sizeof expected, "0x%08X\ta\n0x%08X\tB\n", c.Hash(u"a"), c.Hash(u"B"));
  EXPECT_EQ(keys.out, expected);
}

TEST(SortCommandTest, BytesAreWrittenBackAsReadAndAMissingLastNewlineIsAdded) {
  EXPECT_EQ(Vcd({"sort"}, "").out, "");
  EXPECT_EQ(Vcd({"sort"}, "b\na").out, "a\nb\n");
  EXPECT_EQ(Vcd({"sort"}, "\n\n").out, "\n\n");
  // Invalid UTF-8 sorts as U+FFFD but is written back byte for byte.
  const auto run = Vcd({"sort", "--collation", "binary"}, "z\n\xFF\xFE\na\n");
  EXPECT_EQ(run.out, "a\nz\n\xFF\xFE\n");
  // A large input crosses the reader's block size.
  std::string big;
  for (int i = 200000; i > 0; --i) big += std::to_string(i) + "\n";
  const auto bigRun = Vcd({"sort", "--collation", "binary"}, big);
  const auto lines = Lines(bigRun.out);
  ASSERT_EQ(lines.size(), 200000u);
  EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end()));
}

TEST(SortCommandTest, BadArgumentsAndBadNamesFailWithTheirExitCodes) {
  EXPECT_EQ(Vcd({"sort", "--frobnicate"}).status, 2);
  EXPECT_EQ(Vcd({"sort", "--locale"}).status, 2);
  EXPECT_EQ(Vcd({"sort", "--locale", "en", "--collation", "LEN"}).status, 2);
  EXPECT_EQ(Vcd({"sort", "--collation", "LEN", "--word-sort"}).status, 2);
  const auto badName = Vcd({"sort", "--collation", "LEN_S9"}, "a\n");
  EXPECT_EQ(badName.status, 1);
  EXPECT_NE(badName.err.find("(*i)[1] >= TC('1')"), std::string::npos) << badName.err;
  EXPECT_TRUE(badName.out.empty());
}

}  // namespace
