// vcd qname: components, canonical form and hash, or the parse error.

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "VcdRun.h"
#include "velcoredata/names/QualifiedName.h"

namespace {

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(QnameCommandTest, PrintsComponentsCanonicalFormAndHash) {
  const VcdRun run = RunVcdCaptured({"qname", "  [Sales].[Or]]ders]  "});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "components:  2\n  [0] Sales\n  [1] Or]ders\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "canonical:   [Sales].[Or]]ders]\n")) << run.out;
  char hash[16];
  std::snprintf(hash, sizeof hash, "0x%08X", QualifiedName(TString(u"Sales"), TString(u"Or]ders")).Hash());
  EXPECT_TRUE(Has(run.out, std::string("hash:        ") + hash)) << run.out;
}

TEST(QnameCommandTest, ParseErrorsPrintTheIdAndMessageAndExitWithOne) {
  const VcdRun run = RunVcdCaptured({"qname", "[a].[b]x"});
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.out.empty());
  EXPECT_TRUE(Has(run.err, "parse error 0x74F09893 (IDS_ERR_QN_TEXT_AFTER_BRACKET)")) << run.err;
  EXPECT_TRUE(Has(run.err, "\"[a].[b]x\"")) << run.err;
  EXPECT_TRUE(Has(RunVcdCaptured({"qname", "[a]."}).err, "0x11C349CE"));
  EXPECT_EQ(RunVcdCaptured({"qname"}).status, 2);
  EXPECT_EQ(RunVcdCaptured({"qname", "[a]", "[b]"}).status, 2);
}

}  // namespace
