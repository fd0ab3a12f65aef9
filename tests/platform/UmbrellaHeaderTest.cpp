// The umbrella header must include every public header of the library.

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "velcoredata/velcoredata.h"

namespace {

TEST(UmbrellaHeaderTest, IncludesEveryPublicHeader) {
  namespace fs = std::filesystem;
  const fs::path root = fs::path(VCD_SOURCE_DIR) / "velcoredata";
  std::ifstream umbrella(root / "velcoredata.h");
  ASSERT_TRUE(umbrella.good());
  std::stringstream text;
  text << umbrella.rdbuf();
  const std::string content = text.str();

  std::set<std::string> missing;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (!entry.is_regular_file() || entry.path().extension() != ".h") continue;
    const fs::path relative = fs::relative(entry.path(), root.parent_path());
    if (relative.filename() == "velcoredata.h") continue;
    // Headers under an internal/ folder are private to the library.
    if (relative.string().find("/internal/") != std::string::npos) continue;
    if (content.find("#include \"" + relative.generic_string() + "\"") == std::string::npos) {
      missing.insert(relative.generic_string());
    }
  }
  EXPECT_TRUE(missing.empty()) << "not in velcoredata/velcoredata.h: " << ::testing::PrintToString(missing);
}

}  // namespace
