// vcd collation: names and locales with options, and what is printed.

#include <gtest/gtest.h>

#include "tools/VcdRun.h"

namespace {

VcdRun Vcd(const std::vector<std::string>& args) { return RunVcdCaptured(args); }

TEST(CollationCommandTest, PrintsTheCanonicalNameAndWhatThePoolSays) {
  struct Case {
    std::vector<std::string> args;
    std::vector<std::string> expectedLines;
  };
  const Case cases[] = {
      {{"collation", "en_US", "--case-insensitive"},
       {"name:              LEN_RUS_S2", "locale:            en_US", "LCID:              0x0409 (1033)",
        "comparison flags:  0x00000001 (ignore case)", "case-sensitive:    no", "word sort:         no"}},
      {{"collation", "Binary"},
       {"name:              binary", "LCID:              0x0001 (1)", "case-sensitive:    yes"}},
      {{"collation", "LDE_RDE_S1_VWIN"},
       {"name:              LDE_RDE_S1_VWIN", "locale:            de_DE_WIN",
        "comparison flags:  0x80000003 (ignore case, ignore non-spacing marks, Windows variant)"}},
      // Options applied to a name replace its strength part.
      {{"collation", "LEN_RUS_S1", "--word-sort", "--ignore-punctuation"},
       {"name:              AS_LEN_RUS_WO", "comparison flags:  0x00000004 (ignore symbols)",
        "word sort:         yes"}},
      {{"collation", "--locale", "sv", "--ignore-digits"}, {"name:              LSV_XO"}},
  };
  for (const Case& c : cases) {
    const auto run = Vcd(c.args);
    ASSERT_EQ(run.status, 0) << run.err;
    for (const std::string& line : c.expectedLines) {
      EXPECT_NE(run.out.find(line + "\n"), std::string::npos) << line << "\nin:\n" << run.out;
    }
  }
}

TEST(CollationCommandTest, MissingOrConflictingSubjectsAreUsageErrorsAndBadNamesFailures) {
  EXPECT_EQ(Vcd({"collation"}).status, 2);
  EXPECT_EQ(Vcd({"collation", "en", "de"}).status, 2);
  EXPECT_EQ(Vcd({"collation", "en", "--locale", "de"}).status, 2);
  EXPECT_EQ(Vcd({"collation", "--bogus"}).status, 2);
  const auto unknownKey = Vcd({"collation", "LEN_QQ"});
  EXPECT_EQ(unknownKey.status, 1);
  EXPECT_NE(unknownKey.err.find("Unhandled specifier"), std::string::npos) << unknownKey.err;
  const auto tooLong = Vcd({"collation", std::string(200, 'q')});
  EXPECT_EQ(tooLong.status, 1);
  EXPECT_NE(tooLong.err.find("0x4A7C1D02"), std::string::npos) << tooLong.err;
}

}  // namespace
