// vcd version: components, descriptors and text form; comparison of two.

#include <gtest/gtest.h>

#include "VcdRun.h"

namespace {

TEST(VersionCommandTest, DescribesAndComparesVersions) {
  const VcdRun run = RunVcdCaptured({"version", "--index", "1", "Build 2021.4.3 beta", "2021.4.3.1"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("  numbers:      2021 4 3\n  descriptors:  \"Build\", \"beta\"\n"
                         "  text form:    2021.4.3 Build beta\n"),
            std::string::npos) << run.out;
  // The index applies to both: B's only piece is a descriptor.
  EXPECT_NE(run.out.find("compare:        1 (A > B)\n"), std::string::npos) << run.out;
  const VcdRun custom = RunVcdCaptured({"version", "--number-separator", "_", "--descriptor-separator", "-",
                                        "10_4-rc", "10_4_0"});
  EXPECT_NE(custom.out.find("compare:        0 (A == B)\n"), std::string::npos) << custom.out;
  EXPECT_EQ(RunVcdCaptured({"version", "--number-separator", "ab", "1"}).status, 2);
  EXPECT_EQ(RunVcdCaptured({"version", "1", "2", "3"}).status, 2);
}

}  // namespace
