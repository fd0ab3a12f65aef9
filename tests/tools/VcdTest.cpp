// The vcd tool driven in-process: dispatch, exit codes and the hash command.

#include <cstdio>
#include <sstream>

#include <gtest/gtest.h>

#include "tools/VcdRun.h"
#include "velcoredata/platform/TString.h"

namespace {

VcdRun Vcd(const std::vector<std::string>& args) { return RunVcdCaptured(args); }

TEST(VcdTest, HelpAndVersionSucceed) {
  const VcdRun help = Vcd({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("hash TEXT"), std::string::npos);
  const VcdRun version = Vcd({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out.rfind("vcd ", 0), 0u);
  EXPECT_EQ(Vcd({"hash", "--help"}).status, 0);
}

TEST(VcdTest, UsageErrorsExitWithTwoAndExplainOnStderr) {
  const VcdRun none = Vcd({});
  EXPECT_EQ(none.status, 2);
  EXPECT_NE(none.err.find("no command"), std::string::npos);
  const VcdRun unknown = Vcd({"frobnicate"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_NE(unknown.err.find("unknown command 'frobnicate'"), std::string::npos);
  const VcdRun badArgs = Vcd({"hash"});
  EXPECT_EQ(badArgs.status, 2);
  EXPECT_NE(badArgs.err.find("usage: vcd hash TEXT"), std::string::npos);
  EXPECT_TRUE(badArgs.out.empty());
}

TEST(VcdTest, HashPrintsThePlatformHashesOfTheUtf16Text) {
  const VcdRun run = Vcd({"hash", "caf\xC3\xA9"});
  ASSERT_EQ(run.status, 0) << run.err;
  char expected[16];
  std::snprintf(expected, sizeof expected, "0x%08X", StringHash(TString(u"caf\u00E9")));
  EXPECT_NE(run.out.find(std::string("StringHash:  ") + expected), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("(4 UTF-16 code units)"), std::string::npos);
}

}  // namespace
