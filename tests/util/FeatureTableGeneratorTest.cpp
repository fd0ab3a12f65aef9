// The feature table generator run on small tables: bad rows stop it with a
// message naming the row, good tables come out as C++.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <sys/wait.h>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

struct GeneratorRun {
  int status;
  std::string errors;
  std::string header;
  std::string source;
};

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// Writes `table` to a scratch directory and runs the generator on it.
GeneratorRun Generate(const std::string& table) {
  const fs::path dir = fs::temp_directory_path() /
                       ("vcd-featuregen-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                        "-" + std::to_string(std::hash<std::string>()(table)));
  fs::create_directories(dir);
  std::ofstream(dir / "table.txt", std::ios::binary) << table;
  const std::string command = std::string("\"") + VCD_FEATURE_TABLE_GENERATOR + "\" \"" +
                              (dir / "table.txt").string() + "\" \"" + (dir / "ids.h").string() + "\" \"" +
                              (dir / "table.cpp").string() + "\" 2> \"" + (dir / "errors.txt").string() + "\"";
  const int status = std::system(command.c_str());
  GeneratorRun run{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(dir / "errors.txt"),
          fs::exists(dir / "ids.h") ? ReadFile(dir / "ids.h") : "",
          fs::exists(dir / "table.cpp") ? ReadFile(dir / "table.cpp") : ""};
  fs::remove_all(dir);
  return run;
}

const std::string kGoodRow =
    "0x00000001 | released | on | Team | team | 000000 | | none | First | The first flag\n";

TEST(FeatureTableGeneratorTest, BadRowsFailNamingTheRowAndTheProblem) {
  struct Case {
    std::string row;         // written as line 3, after a comment and kGoodRow
    std::string where;       // the row as the message names it
    std::string problem;     // part of the message
  };
  const Case cases[] = {
      {"0x00000002 | released | on | Team | team | 000000 | | none | Second\n", "row 0x00000002",
       "expected 10 columns"},
      {"0x0000000a | released | on | T | t | 1 | | none | Second | d\n", "row Second", "upper-case"},
      {"0x0000001 | released | on | T | t | 1 | | none | Second | d\n", "row Second", "eight"},
      {"0x00000000 | released | on | T | t | 1 | | none | Second | d\n", "row Second", "id 0 is reserved"},
      {"0x00000002 | beta | on | T | t | 1 | | none | Second | d\n", "row Second", "maturity 'beta'"},
      {"0x00000002 | released | yes | T | t | 1 | | none | Second | d\n", "row Second", "'yes'"},
      {"0x00000002 | released | on |  | t | 1 | | none | Second | d\n", "row Second", "team is empty"},
      {"0x00000002 | released | on | T | t | WI-1 | | none | Second | d\n", "row Second", "work-item id"},
      {"0x00000002 | released | on | T | t | 1 | 2024-13-01 | none | Second | d\n", "row Second",
       "removal date"},
      {"0x00000002 | released | on | T | t | 1 | | none | Sec ond | d\n", "row Sec ond", "C++ identifier"},
      {"0x00000002 | released | on | T | t | 1 | | none | 2nd | d\n", "row 2nd", "C++ identifier"},
      {"0x00000002 | released | on | T | t | 1 | | none | Second | \n", "row Second", "description is empty"},
      {"0x00000002 | released | on | T | t | 1 | | none | Second | bad \xFF byte\n", "row Second",
       "column 10 is not valid UTF-8"},
      {"0x00000002 | released | on | T | t | 1 | | none | Second | tab\x01here\n", "row Second",
       "control character"},
      {"0x00000001 | released | on | T | t | 1 | | none | Second | d\n", "row Second",
       "duplicate id 0x00000001 (first used on line 2)"},
      {"0x00000002 | released | on | T | t | 1 | | none | FIRST | d\n", "row FIRST",
       "duplicate name FIRST (names ignore case; first used on line 2)"},
  };
  for (const Case& c : cases) {
    const GeneratorRun run = Generate("# header\n" + kGoodRow + c.row);
    EXPECT_EQ(run.status, 1) << c.row;
    EXPECT_NE(run.errors.find("table.txt:3: " + c.where + ": "), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find(c.problem), std::string::npos) << run.errors;
    EXPECT_EQ(run.errors.find("table.txt:2:"), std::string::npos) << "the good row was blamed";
    EXPECT_TRUE(run.header.empty() && run.source.empty()) << "output written for a bad table";
  }
}

TEST(FeatureTableGeneratorTest, GoodTableBecomesEnumeratorsAndEscapedLiterals) {
  const GeneratorRun run = Generate(
      "# comment\r\n\r\n" + kGoodRow +
      "  0xFFFFFFFE|preview|off|Équipe \"Q\"|a\\b|42|2031-02-28|restart|Second_2|Stra\xC3\x9F" "e \xF0\x9F\x98\x80\r\n");
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(run.errors.empty());
  const size_t first = run.header.find("  First = 0x00000001,\n");
  const size_t second = run.header.find("  Second_2 = 0xFFFFFFFE,\n");
  ASSERT_NE(first, std::string::npos) << run.header;
  ASSERT_NE(second, std::string::npos) << run.header;
  EXPECT_LT(first, second);
  EXPECT_NE(run.source.find("{FeatureFlagId::First, 2, true,"), std::string::npos) << run.source;
  EXPECT_NE(run.source.find("{FeatureFlagId::Second_2, 1, false,"), std::string::npos);
  for (const char* literal : {R"(u"\u00C9quipe \"Q\"")", R"(u"a\\b")", R"(u"42")", R"(u"2031-02-28")",
                              R"(u"Stra\u00DFe \U0001F600")", R"(u"")"}) {
    EXPECT_NE(run.source.find(literal), std::string::npos) << literal << "\n" << run.source;
  }
}

}  // namespace
