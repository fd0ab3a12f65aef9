// vcd color: channels, text forms and derived colours, or the parse failure.

#include <string>

#include <gtest/gtest.h>

#include "VcdRun.h"

namespace {

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(ColorCommandTest, PrintsChannelsEveryTextFormAndDerivedColours) {
  const VcdRun run = RunVcdCaptured({"color", "# 1a 2B 3c 80"});
  ASSERT_EQ(run.status, 0) << run.err;
  for (const char* line : {"red:          26\n", "green:        43\n", "blue:         60\n", "alpha:        128\n",
                           "packed:       0x003C2B1A\n", "String:       #1a2b3c80\n",
                           "RGBAString:   rgba(26,43,60,128)\n", "CSSString:    rgba(26,43,60,0.501961)\n",
                           "LineColor:    rgba(26,43,60,0.502)\n", "tooltip:      #1a2b3c80 (26, 43, 60, 50%)\n",
                           "contrasting:  #ffffff\n", "monochrome:   #27272780\n"}) {
    EXPECT_TRUE(Has(run.out, line)) << line << run.out;
  }
  EXPECT_TRUE(Has(RunVcdCaptured({"color", "rgb(200,200,200)"}).out, "contrasting:  #000000\n"));
}

TEST(ColorCommandTest, UnparsableColoursFailWithOne) {
  const VcdRun run = RunVcdCaptured({"color", "rgb(1,2,3)x"});
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(Has(run.err, "could not parse color 'rgb(1,2,3)x'")) << run.err;
  EXPECT_EQ(RunVcdCaptured({"color"}).status, 2);
}

}  // namespace
