// vcd version: components, descriptors and text form; comparison of two.

#include <string>

#include <gtest/gtest.h>

#include "VcdRun.h"

namespace {

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(VersionCommandTest, DescribesOneVersionWithChosenSeparatorsAndIndex) {
  const VcdRun run = RunVcdCaptured({"version", "--index", "1", "Build 2021.4.3 beta"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "  numbers:      2021 4 3\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "  descriptors:  \"Build\", \"beta\"\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "  text form:    2021.4.3 Build beta\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "  major.minor:  2021.4\n")) << run.out;
  EXPECT_FALSE(Has(run.out, "compare:"));
  const VcdRun custom =
      RunVcdCaptured({"version", "--number-separator", "_", "--descriptor-separator", "-", "10_4-rc"});
  ASSERT_EQ(custom.status, 0) << custom.err;
  EXPECT_TRUE(Has(custom.out, "  text form:    10_4-rc\n")) << custom.out;
}

TEST(VersionCommandTest, ComparesTwoVersions) {
  EXPECT_TRUE(Has(RunVcdCaptured({"version", "1.2", "1.2.0.0"}).out, "compare:        0 (A == B)\n"));
  EXPECT_TRUE(Has(RunVcdCaptured({"version", "1.2", "1.2.0.1"}).out, "compare:        -1 (A < B)\n"));
  EXPECT_TRUE(Has(RunVcdCaptured({"version", "10.0", "9.99"}).out, "compare:        1 (A > B)\n"));
}

TEST(VersionCommandTest, RejectsMalformedCommandLines) {
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"version"}, {"version", "1", "2", "3"}, {"version", "--index"}, {"version", "--index", "x", "1"},
           {"version", "--number-separator", "ab", "1"}}) {
    EXPECT_EQ(RunVcdCaptured(args).status, 2) << args.size();
  }
}

}  // namespace
