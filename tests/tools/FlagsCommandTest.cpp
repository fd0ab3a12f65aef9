// vcd flags: the table listing, one flag's row, and bad names and ids.

#include <cstdio>
#include <sstream>

#include <gtest/gtest.h>

#include "tools/VcdRun.h"
#include "velcoredata/util/FeatureInfo.h"
#include "velcoredata/util/ScopedFeatureFlags.h"

namespace {

VcdRun Vcd(const std::vector<std::string>& args) { return RunVcdCaptured(args); }

std::string Hex(FeatureFlagId id) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "0x%08X", static_cast<unsigned>(id));
  return buffer;
}

// The listing line of `name`, or "" when there is none.
std::string LineOf(const std::string& listing, const std::string& name) {
  std::istringstream lines(listing);
  for (std::string line; std::getline(lines, line);) {
    if (line.find("  " + name + " ") != std::string::npos) return line;
  }
  return "";
}

TEST(FlagsCommandTest, ListShowsEveryRowWithDefaultAndCurrentState) {
  const VcdRun run = Vcd({"flags"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Vcd({"flags", "list"}).out, run.out);
  EXPECT_EQ(run.out.rfind("ID ", 0), 0u);
  for (const FeatureInfo& info : GetFeatureInfos()) {
    const std::string line = LineOf(run.out, info.name.toUtf8());
    EXPECT_EQ(line.rfind(Hex(info.id), 0), 0u) << line;
    const std::string state = info.enabledByDefault ? "  on       on" : "  off      off";
    EXPECT_NE(line.find(std::string(GetFeatureMaturityName(info.maturity)) + " ("), std::string::npos) << line;
    EXPECT_EQ(line.substr(line.size() - state.size()), state) << line;
  }
  ScopedFeatureFlags scope;
  scope->Enable(FeatureFlagId::DummyFeature1);
  const std::string line = LineOf(Vcd({"flags"}).out, "DummyFeature1");
  EXPECT_EQ(line.substr(line.size() - 13), "  off      on") << line;
}

TEST(FlagsCommandTest, ShowFindsAFlagByNameIgnoringCaseOrById) {
  const VcdRun byName = Vcd({"flags", "show", "dummyfeature1"});
  ASSERT_EQ(byName.status, 0) << byName.err;
  for (const char* expected :
       {"id:                  0x2B6E4D11\n", "name:                DummyFeature1\n",
        "description:         Dummy feature flag 1, used for testing\n", "maturity:            development (0)\n",
        "enabled by default:  off\n", "team:                Unclaimed\n", "team alias:          unclaimed\n",
        "work item:           000000\n", "removal date:        \n", "toggle requirement:  none\n",
        "state:               off\n"}) {
    EXPECT_NE(byName.out.find(expected), std::string::npos) << expected << byName.out;
  }
  const std::string id = Hex(FeatureFlagId::DummyFeature1);
  EXPECT_EQ(Vcd({"flags", "show", id}).out, byName.out);
  EXPECT_EQ(Vcd({"flags", "show", "0x2b6e4d11"}).out, byName.out);
  EXPECT_EQ(Vcd({"flags", "show", std::to_string(0x2B6E4D11)}).out, byName.out);
  EXPECT_NE(Vcd({"flags", "show", "0x8E3D6224"}).out.find("state:               on\n"), std::string::npos);
}

TEST(FlagsCommandTest, UnknownFlagsFailAndMalformedCommandsAreUsageErrors) {
  for (const char* unknown : {"NoSuchFlag", "0x12345678", "0x", "0xZZ", "-1", ""}) {
    const VcdRun run = Vcd({"flags", "show", unknown});
    EXPECT_EQ(run.status, 1) << unknown;
    EXPECT_NE(run.err.find(std::string("no feature flag is named or numbered '") + unknown + "'"),
              std::string::npos)
        << run.err;
    EXPECT_TRUE(run.out.empty());
  }
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"flags", "show"}, {"flags", "show", "a", "b"}, {"flags", "list", "x"}, {"flags", "enable"}}) {
    const VcdRun run = Vcd(args);
    EXPECT_EQ(run.status, 2) << args.back();
    EXPECT_NE(run.err.find("usage: vcd flags [list | show NAME|ID]"), std::string::npos) << run.err;
  }
}

}  // namespace
