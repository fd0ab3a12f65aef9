// vcd color: channels, text forms and derived colours, or the parse failure.

#include <gtest/gtest.h>

#include "VcdRun.h"

namespace {

TEST(ColorCommandTest, PrintsChannelsTextFormsAndDerivedColoursOrFails) {
  const VcdRun run = RunVcdCaptured({"color", "# 1a 2B 3c 80"});
  ASSERT_EQ(run.status, 0) << run.err;
  for (const char* line : {"alpha:        128\n", "packed:       0x003C2B1A\n", "String:       #1a2b3c80\n",
                           "CSSString:    rgba(26,43,60,0.501961)\n", "contrasting:  #ffffff\n",
                           "monochrome:   #27272780\n"}) {
    EXPECT_NE(run.out.find(line), std::string::npos) << line << run.out;
  }
  const VcdRun bad = RunVcdCaptured({"color", "rgb(1,2,3)x"});
  EXPECT_EQ(bad.status, 1);
  EXPECT_NE(bad.err.find("could not parse color 'rgb(1,2,3)x'"), std::string::npos) << bad.err;
}

}  // namespace
