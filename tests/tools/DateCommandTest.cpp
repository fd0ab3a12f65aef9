// vcd date driven in-process: the printed parts, period arithmetic, options
// and the exit codes for texts that are no date and for bad command lines.

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tools/VcdRun.h"

namespace {

VcdRun Date(std::vector<std::string> args) {
  args.insert(args.begin(), "date");
  return RunVcdCaptured(args);
}

void ExpectLines(const VcdRun& run, const std::vector<std::string>& lines) {
  ASSERT_EQ(run.status, 0) << run.err;
  for (const std::string& line : lines) EXPECT_TRUE(HasLine(run, line)) << line << " in\n" << run.out;
}

TEST(DateCommandTest, PrintsTheValueAndItsCalendarParts) {
  ExpectLines(Date({"2021-05-17 13:45:30", "--locale", "en_US"}),
              {"value:         2021-05-17T13:45:30", "OLE date:      44333.57326",
               "day of week:   Monday (2, 1 = Sunday)",
               "ISO-8601:      2021-W20-1 (year 2021, week 20, weekday 1, quarter 2)", "quarter:       2",
               "fiscal:        year 2021, quarter 2, month 5, week 21 (year from January, weeks from Sunday)"});
  // 2021-01-03 is a Sunday in the last ISO week of 2020.
  ExpectLines(Date({"2021-01-03", "--locale", "1033"}),
              {"value:         2021-01-03T00:00:00", "ISO-8601:      2020-W53-7 (year 2020, week 53, weekday 7, quarter 4)"});
}

TEST(DateCommandTest, FiscalStartAndWeekStartShapeTheFiscalParts) {
  ExpectLines(Date({"2021-05-17", "--locale", "en_US", "--fiscal-start", "4", "--week-start", "mon"}),
              {"fiscal:        year 2022, quarter 1, month 2, week 8 (year from April, weeks from Monday)"});
  ExpectLines(Date({"2021-05-17", "--locale", "en_US", "--fiscal-start", "April", "--week-start", "2"}),
              {"fiscal:        year 2022, quarter 1, month 2, week 8 (year from April, weeks from Monday)"});
}

TEST(DateCommandTest, AddDiffAndStartOfUseTheOptions) {
  ExpectLines(Date({"2021-01-31 08:30", "--locale", "en_US", "--add", "1", "month", "--add", "-3", "days", "--add",
                    "1", "isoyear"}),
              {"add 1 month: 2021-02-28T08:30:00", "add -3 day: 2021-01-28T08:30:00",
               "add 1 isoyear: 2022-01-30T08:30:00"});
  ExpectLines(Date({"2021-05-17", "--locale", "en_US", "--fiscal-start", "2", "--start-of", "quarter", "--start-of",
                    "year", "--diff", "2021-01-31", "year"}),
              {"start of quarter: 2021-05-01T00:00:00", "start of year: 2021-02-01T00:00:00",
               "diff year from 2021-01-31T00:00:00: 1"});
  // Weeks from Sunday by default, from Monday with --iso.
  ExpectLines(Date({"2021-05-17", "--locale", "en_US", "--start-of", "week", "--diff", "2021-05-16", "week"}),
              {"start of week: 2021-05-16T00:00:00", "diff week from 2021-05-16T00:00:00: 0"});
  ExpectLines(Date({"2021-05-17", "--locale", "en_US", "--iso", "--start-of", "week", "--diff", "2021-05-16", "week"}),
              {"start of week: 2021-05-17T00:00:00", "diff week from 2021-05-16T00:00:00: 1",
               "fiscal:        year 2021, quarter 2, month 5, week 21 (year from January, weeks from Monday)"});
}

TEST(DateCommandTest, TextThatIsNoDateFailsWithExitOne) {
  for (const std::string text : {"no date at all", "", "2021-13-45"}) {
    const VcdRun run = Date({text, "--locale", "en_US"});
    EXPECT_EQ(run.status, 1) << text;
    EXPECT_NE(run.err.find("is not a date"), std::string::npos) << run.err;
    EXPECT_TRUE(run.out.empty());
  }
  const VcdRun badOther = Date({"2021-05-17", "--locale", "en_US", "--diff", "yesterday-ish", "day"});
  EXPECT_EQ(badOther.status, 1);
  EXPECT_NE(badOther.err.find("'yesterday-ish' is not a date"), std::string::npos) << badOther.err;
}

TEST(DateCommandTest, MalformedCommandLinesAreUsageErrors) {
  const std::vector<std::vector<std::string>> cases = {
      {},
      {"2021-05-17", "2021-05-18"},
      {"2021-05-17", "--fiscal-start", "13"},
      {"2021-05-17", "--week-start", "funday"},
      {"2021-05-17", "--add", "one", "month"},
      {"2021-05-17", "--add", "1", "fortnight"},
      {"2021-05-17", "--diff", "2021-05-01"},
      {"2021-05-17", "--start-of"},
      {"2021-05-17", "--iso", "--fiscal-start", "4"},
      {"2021-05-17", "--frobnicate"},
  };
  for (const auto& args : cases) {
    const VcdRun run = Date(args);
    EXPECT_EQ(run.status, 2) << ::testing::PrintToString(args) << run.out;
    EXPECT_NE(run.err.find("usage: vcd date TEXT"), std::string::npos) << run.err;
  }
}

}  // namespace
