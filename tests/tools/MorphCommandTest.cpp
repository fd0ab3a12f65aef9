// vcd morph: every dialect pair, and malformed command lines.

#include <sstream>

#include <gtest/gtest.h>

#include "Command.h"

namespace {

struct VcdRun {
  int status;
  std::string out;
  std::string err;
};

VcdRun Vcd(std::vector<std::string> args) {
  std::istringstream in;
  std::ostringstream out, err;
  vcd::CommandIo io{in, out, err};
  const int status = vcd::RunVcd(args, io);
  return {status, out.str(), err.str()};
}

TEST(MorphCommandTest, TranslatesBetweenEveryPairOfDialects) {
  struct Case {
    const char* from;
    const char* to;
    const char* pattern;
    const char* expected;
  };
  const Case cases[] = {
      {"icu", "qt", "EEEE, MMMM d, y h:mm a", "dddd, MMMM d, yyyy h:mm AP"},
      {"icu", "windows", "d 'de' MMMM y G", "d 'de' MMMM yyyy g"},
      {"icu", "custom", "d 'de' MMMM h:mm a", "d \"de\" MMMM h:nn AM/PM"},
      {"icu", "icu", "yyyy-MM-dd", "yyyy-MM-dd"},
      {"qt", "icu", "h:mm AP", "h:mm a"},
      {"qt", "icu", "h:mm", "H:mm"},
      // Qt reaches Windows and custom through ICU.
      {"qt", "windows", "dddd h:mm AP", "dddd h:mm tt"},
      {"qt", "custom", "HH:mm", "HH:nn"},
      {"windows", "icu", "dddd", "EEEE"},
      {"windows", "qt", "MMMMM tt", "MMM AP"},
      {"windows", "custom", "h:mm t", "h:nn A/P"},
      {"windows", "windows", "gg", "gg"},
  };
  for (const Case& c : cases) {
    const VcdRun run = Vcd({"morph", "--from", c.from, "--to", c.to, c.pattern});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, std::string(c.expected) + "\n") << c.from << " -> " << c.to << ": " << c.pattern;
  }
  // The pattern may come first; non-ASCII text passes through as UTF-8.
  EXPECT_EQ(Vcd({"morph", "y'年'M'月'", "--to", "windows", "--from", "icu"}).out, "yyyy'年'M'月'\n");
}

TEST(MorphCommandTest, MalformedCommandLinesAreUsageErrors) {
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"morph", "--from", "icu", "yyyy"},
           {"morph", "--from", "icu", "--to", "qt"},
           {"morph", "--from", "custom", "--to", "icu", "yyyy"},
           {"morph", "--from", "icu", "--to", "excel", "yyyy"},
           {"morph", "--from", "icu", "--to", "qt", "yyyy", "extra"},
           {"morph", "--from"},
       }) {
    const VcdRun run = Vcd(args);
    EXPECT_EQ(run.status, 2) << args.back();
    EXPECT_TRUE(run.out.empty());
    EXPECT_NE(run.err.find("usage: vcd morph"), std::string::npos) << run.err;
  }
}

}  // namespace
