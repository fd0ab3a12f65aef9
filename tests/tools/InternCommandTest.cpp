// vcd intern: the counts it prints for known inputs, files, and bad arguments.

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "tools/VcdRun.h"

namespace {

TEST(InternCommandTest, CountsEntriesBytesAndCacheHitsOfTheInput) {
  // 6 lines, 4 distinct texts (interning is exact: "berlin" is its own entry).
  const std::string input = "Berlin\nParis\nberlin\nBerlin\nParis\nRome\n";
  const VcdRun run = RunVcdCaptured({"intern", "--locale", "en_US", "--case-insensitive"}, input);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(HasLine(run, "collation:           LEN_RUS_S2")) << run.out;
  EXPECT_TRUE(HasLine(run, "lines:               6")) << run.out;
  EXPECT_TRUE(HasLine(run, "text bytes (UTF-16): 64")) << run.out;
  EXPECT_TRUE(HasLine(run, "entries:             4")) << run.out;
  EXPECT_TRUE(HasLine(run, "bytes held:          42 (65.6% of the text)")) << run.out;
  EXPECT_TRUE(HasLine(run, "lookup cache:        2 hits of 6 lookups (33.3%, capacity 1000)")) << run.out;
  EXPECT_TRUE(HasLine(run, "after release:       4 weak entries, 0 bytes held")) << run.out;
  EXPECT_TRUE(HasLine(run, "after collection:    0 entries, 0 weak entries")) << run.out;
  // A cache of two alternately asked for three texts never hits.
  const VcdRun small = RunVcdCaptured({"intern", "--cache-size", "2"}, "a\nb\nc\na\nb\nc\n");
  EXPECT_TRUE(HasLine(small, "lookup cache:        0 hits of 6 lookups (0.0%, capacity 2)")) << small.out;
  EXPECT_TRUE(HasLine(small, "entries:             3")) << small.out;
}

TEST(InternCommandTest, ReadsEveryFileGivenAndRejectsBadArguments) {
  const auto dir = std::filesystem::temp_directory_path();
  const auto first = dir / "vcd_intern_test_1.txt", second = dir / "vcd_intern_test_2.txt";
  std::ofstream(first) << "x\ny\n";
  std::ofstream(second) << "y\nz\n";
  const VcdRun run = RunVcdCaptured({"intern", first.string(), second.string()});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(HasLine(run, "lines:               4")) << run.out;
  EXPECT_TRUE(HasLine(run, "entries:             3")) << run.out;
  std::filesystem::remove(first);
  std::filesystem::remove(second);

  EXPECT_EQ(RunVcdCaptured({"intern", (dir / "vcd_intern_missing.txt").string()}).status, 1);
  EXPECT_EQ(RunVcdCaptured({"intern", "--cache-size"}).status, 2);
  EXPECT_EQ(RunVcdCaptured({"intern", "--cache-size", "-1"}).status, 2);
  EXPECT_EQ(RunVcdCaptured({"intern", "--bogus"}).status, 2);
}

}  // namespace
