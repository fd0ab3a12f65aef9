// vcd qname: components, canonical form and hash, or the parse error.

#include <cstdio>

#include <gtest/gtest.h>

#include "VcdRun.h"
#include "velcoredata/names/QualifiedName.h"

namespace {

TEST(QnameCommandTest, PrintsTheNameOrItsParseErrorWithTheId) {
  const VcdRun run = RunVcdCaptured({"qname", "  [Sales].[Or]]ders]  "});
  ASSERT_EQ(run.status, 0) << run.err;
  char hash[16];
  std::snprintf(hash, sizeof hash, "0x%08X", QualifiedName(TString(u"Sales"), TString(u"Or]ders")).Hash());
  EXPECT_NE(run.out.find("components:  2\n  [0] Sales\n  [1] Or]ders\ncanonical:   [Sales].[Or]]ders]\n"),
            std::string::npos) << run.out;
  EXPECT_NE(run.out.find(std::string("hash:        ") + hash), std::string::npos) << run.out;

  const VcdRun bad = RunVcdCaptured({"qname", "[a].[b]x"});
  EXPECT_EQ(bad.status, 1);
  EXPECT_NE(bad.err.find("parse error 0x74F09893 (IDS_ERR_QN_TEXT_AFTER_BRACKET): The name \"[a].[b]x\""),
            std::string::npos) << bad.err;
  EXPECT_EQ(RunVcdCaptured({"qname", "[a]", "[b]"}).status, 2);
}

}  // namespace
