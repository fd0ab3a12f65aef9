// vcd numfmt: decoding, building, a locale's pictures, and usage errors.

#include <gtest/gtest.h>

#include "VcdRun.h"

namespace {

VcdRun Vcd(const std::vector<std::string>& args) { return RunVcdCaptured(args); }

TEST(NumfmtCommandTest, DecodeShowsCodeOptionAndFields) {
  const VcdRun run = Vcd({"numfmt", "decode", "*!de_DE!\"EUR \"#,##0.00;(\"EUR \"#,##0.00)"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(HasLine(run, "code:        * (42)")) << run.out;
  EXPECT_TRUE(HasLine(run, "option:      1031")) << run.out;
  EXPECT_TRUE(HasLine(run, "decimals:    2")) << run.out;
  EXPECT_TRUE(HasLine(run, "decimal:     \",\"")) << run.out;
  EXPECT_TRUE(HasLine(run, "prefix:      \"EUR \"")) << run.out;
  EXPECT_TRUE(HasLine(run, "negative:    1 (EUR 1234)")) << run.out;
  // "*" is not rebuilt from the options: the rest is dropped.
  EXPECT_TRUE(HasLine(run, "rebuilt:     *!de_DE!")) << run.out;

  const VcdRun system = Vcd({"numfmt", "decode", "N1033%"});
  EXPECT_TRUE(HasLine(system, "code:        N (78)")) << system.out;
  EXPECT_TRUE(HasLine(system, "rebuilt:     N1033%")) << system.out;
  const VcdRun automatic = Vcd({"numfmt", "decode", "   "});
  EXPECT_TRUE(HasLine(automatic, "code:        (automatic) (0)")) << automatic.out;
}

TEST(NumfmtCommandTest, BuildEncodesTheOptions) {
  const VcdRun run = Vcd({"numfmt", "build", "--decimals", "2", "--grouping", "--prefix", "$", "--negative", "1"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(HasLine(run, "encoded:     n\"$\"#,##0.00;(\"$\"#,##0.00)")) << run.out;
  const VcdRun units = Vcd({"numfmt", "build", "--code", "c", "--units", "G", "--locale", "de_DE"});
  EXPECT_TRUE(HasLine(units, "encoded:     c0,,,G")) << units.out;
  const VcdRun percent = Vcd({"numfmt", "build", "--code", "p", "--decimals", "1"});
  EXPECT_TRUE(HasLine(percent, "encoded:     p0.0%")) << percent.out;
}

TEST(NumfmtCommandTest, LocaleShowsThePicturesOfItsFormats) {
  const VcdRun run = Vcd({"numfmt", "locale", "de_DE"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(HasLine(run, "locale:      de_DE (1031)")) << run.out;
  EXPECT_TRUE(HasLine(run, "number:      #,##0;-#,##0")) << run.out;
  EXPECT_TRUE(HasLine(run, "short date:  dd.MM.yy")) << run.out;
  EXPECT_TRUE(HasLine(run, "long date:   dddd, d. MMMM yyyy")) << run.out;
  EXPECT_TRUE(HasLine(run, "long time:   HH:mm:ss")) << run.out;
  EXPECT_TRUE(HasLine(run, "decimal:     \",\"")) << run.out;
  // The same locale by LCID, decimal or hexadecimal.
  EXPECT_EQ(Vcd({"numfmt", "locale", "1031"}).out, run.out);
  EXPECT_EQ(Vcd({"numfmt", "locale", "0x407"}).out, run.out);
}

TEST(NumfmtCommandTest, MalformedCommandLinesAreUsageErrors) {
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"numfmt"},
           {"numfmt", "encode", "x"},
           {"numfmt", "decode"},
           {"numfmt", "build", "--decimals", "many"},
           {"numfmt", "build", "--negative", "6"},
           {"numfmt", "build", "--units", "X"},
           {"numfmt", "build", "--code", "ab"},
           {"numfmt", "build", "--bogus", "1"},
           {"numfmt", "build", "--prefix"},
           {"numfmt", "locale"},
       }) {
    const VcdRun run = Vcd(args);
    EXPECT_EQ(run.status, 2) << args.back();
    EXPECT_NE(run.err.find("usage: vcd numfmt"), std::string::npos) << run.err;
  }
}

}  // namespace
