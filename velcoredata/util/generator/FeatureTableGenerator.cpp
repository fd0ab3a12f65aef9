// FeatureTableGenerator: turns the feature table data file into C++.
//
//   FeatureTableGenerator TABLE HEADER SOURCE
//
// reads TABLE (see FeatureFlagTable.txt for the format) and writes HEADER
// (the FeatureFlagId and FeatureMaturity enumerations) and SOURCE (the table
// itself, GetFeatureInfos, and the maturity names). Every row is checked
// first; each bad row is reported as "TABLE:LINE: row NAME: problem" on
// stderr and the generator exits with 1 without writing anything, so a bad
// table stops the build at the row that broke it.
//
// The generator is built and run as part of the build, so it uses nothing
// beyond the standard library.

#include <array>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The maturity column: the names written in the table and the codes stored in
// FeatureInfo::maturity. Codes are stable; new stages get new codes.
struct Maturity {
  const char* name;        // as written in the table
  const char* enumerator;  // FeatureMaturity::<enumerator>
  uint32_t code;
};
constexpr std::array<Maturity, 4> kMaturities{{
    {"development", "Development", 0},  // incomplete; off by default
    {"preview", "Preview", 1},          // complete, being tried out
    {"released", "Released", 2},        // generally available
    {"retiring", "Retiring", 3},        // the flag is to be removed
}};

constexpr size_t kColumnCount = 10;

struct Row {
  int line = 0;
  uint32_t id = 0;
  const Maturity* maturity = nullptr;
  bool enabledByDefault = false;
  std::string team, alias, workItem, removalDate, toggleRequirement, name, description;
};

std::string Trim(const std::string& text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  const size_t last = text.find_last_not_of(" \t");
  return text.substr(first, last - first + 1);
}

std::vector<std::string> Split(const std::string& line) {
  std::vector<std::string> fields;
  size_t start = 0;
  for (;;) {
    const size_t bar = line.find('|', start);
    fields.push_back(Trim(line.substr(start, bar == std::string::npos ? std::string::npos : bar - start)));
    if (bar == std::string::npos) return fields;
    start = bar + 1;
  }
}

std::string AsciiLower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

std::string Hex(uint32_t id) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "0x%08X", id);
  return buffer;
}

// Decodes UTF-8 into code points; nullopt for malformed text (overlong forms,
// surrogates and values above U+10FFFF included) and for control characters,
// which have no place in a one-line field.
std::optional<std::vector<char32_t>> DecodeUtf8(const std::string& text) {
  std::vector<char32_t> out;
  for (size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    int extra;
    char32_t cp;
    if (lead < 0x80) {
      extra = 0, cp = lead;
    } else if ((lead & 0xE0) == 0xC0) {
      extra = 1, cp = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
      extra = 2, cp = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
      extra = 3, cp = lead & 0x07;
    } else {
      return std::nullopt;
    }
    if (i + static_cast<size_t>(extra) >= text.size()) return std::nullopt;
    for (int k = 1; k <= extra; ++k) {
      const auto cont = static_cast<unsigned char>(text[i + static_cast<size_t>(k)]);
      if ((cont & 0xC0) != 0x80) return std::nullopt;
      cp = (cp << 6) | (cont & 0x3F);
    }
    static constexpr char32_t kMinimum[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kMinimum[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return std::nullopt;
    if (cp < 0x20 || (cp >= 0x7F && cp < 0xA0)) return std::nullopt;
    out.push_back(cp);
    i += static_cast<size_t>(extra) + 1;
  }
  return out;
}

// A u"..." literal of the text: printable ASCII as it is, everything else as
// universal character names, so the generated file is ASCII whatever the
// table holds. Control characters never get here (AddLine rejects them).
std::string Utf16Literal(const std::vector<char32_t>& codePoints) {
  std::string out = "u\"";
  for (char32_t cp : codePoints) {
    if (cp == U'"' || cp == U'\\') {
      out += '\\';
      out += static_cast<char>(cp);
    } else if (cp >= 0x20 && cp < 0x7F) {
      out += static_cast<char>(cp);
    } else {
      char buffer[16];
      if (cp <= 0xFFFF) {
        std::snprintf(buffer, sizeof buffer, "\\u%04X", static_cast<unsigned>(cp));
      } else {
        std::snprintf(buffer, sizeof buffer, "\\U%08X", static_cast<unsigned>(cp));
      }
      out += buffer;
    }
  }
  return out + "\"";
}

bool IsIdentifier(const std::string& text) {
  if (text.empty() || std::isdigit(static_cast<unsigned char>(text[0]))) return false;
  for (char c : text) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_') return false;
  }
  return true;
}

bool IsDate(const std::string& text) {  // YYYY-MM-DD with a month and day in range
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
  for (size_t i : {0, 1, 2, 3, 5, 6, 8, 9}) {
    if (!std::isdigit(static_cast<unsigned char>(text[i]))) return false;
  }
  const int month = std::stoi(text.substr(5, 2)), day = std::stoi(text.substr(8, 2));
  return month >= 1 && month <= 12 && day >= 1 && day <= 31;
}

class Generator {
 public:
  explicit Generator(std::string tableName) : m_tableName(std::move(tableName)) {}

  // Parses and checks one data line; reports its problems.
  void AddLine(int lineNumber, const std::string& line) {
    const std::vector<std::string> fields = Split(line);
    // Name the row by its name column when it has one, else by its first field.
    const std::string label = fields.size() == kColumnCount && !fields[8].empty() ? fields[8] : fields[0];
    const auto fail = [&](const std::string& problem) {
      std::cerr << m_tableName << ":" << lineNumber << ": row " << label << ": " << problem << "\n";
      ++m_failures;
    };
    if (fields.size() != kColumnCount) {
      fail("expected " + std::to_string(kColumnCount) + " columns separated by '|', found " +
           std::to_string(fields.size()));
      return;
    }
    const size_t failuresBefore = m_failures;
    const auto check = [&](bool ok, const std::string& problem) {
      if (!ok) fail(problem);
    };

    Row row;
    row.line = lineNumber;
    const std::string& id = fields[0];
    const bool idShape = id.size() == 10 && id.compare(0, 2, "0x") == 0 &&
                         id.find_first_not_of("0123456789ABCDEF", 2) == std::string::npos;
    check(idShape, "id '" + id + "' is not 0x and eight upper-case hexadecimal digits");
    if (idShape) {
      row.id = static_cast<uint32_t>(std::stoul(id.substr(2), nullptr, 16));
      check(row.id != 0, "id 0 is reserved for 'no such flag'");
    }
    for (const Maturity& m : kMaturities) {
      if (fields[1] == m.name) row.maturity = &m;
    }
    check(row.maturity != nullptr,
          "maturity '" + fields[1] + "' is not one of development, preview, released, retiring");
    check(fields[2] == "on" || fields[2] == "off",
          "enabled-by-default '" + fields[2] + "' is not 'on' or 'off'");
    row.enabledByDefault = fields[2] == "on";
    row.team = fields[3], row.alias = fields[4], row.workItem = fields[5];
    row.removalDate = fields[6], row.toggleRequirement = fields[7];
    row.name = fields[8], row.description = fields[9];
    check(!row.team.empty(), "team is empty");
    check(!row.alias.empty(), "team alias is empty");
    check(!row.workItem.empty() && row.workItem.find_first_not_of("0123456789") == std::string::npos,
          "work-item id '" + row.workItem + "' is not a number");
    check(row.removalDate.empty() || IsDate(row.removalDate),
          "removal date '" + row.removalDate + "' is neither empty nor YYYY-MM-DD");
    check(!row.toggleRequirement.empty(), "toggle requirement is empty");
    check(IsIdentifier(row.name), "name '" + row.name + "' is not a C++ identifier");
    check(!row.description.empty(), "description is empty");
    for (size_t i = 3; i < kColumnCount; ++i) {
      check(DecodeUtf8(fields[i]).has_value(), "column " + std::to_string(i + 1) + " is not valid UTF-8 or holds a control character");
    }
    if (m_failures != failuresBefore) return;

    // Names are looked up case-insensitively, so names that differ only in
    // case would shadow each other.
    const auto [byId, newId] = m_lineById.emplace(row.id, lineNumber);
    check(newId, "duplicate id " + Hex(row.id) + " (first used on line " + std::to_string(byId->second) + ")");
    const auto [byName, newName] = m_lineByName.emplace(AsciiLower(row.name), lineNumber);
    check(newName, "duplicate name " + row.name + " (names ignore case; first used on line " +
                       std::to_string(byName->second) + ")");
    if (m_failures == failuresBefore) m_rows.push_back(std::move(row));
  }

  bool Failed() const { return m_failures != 0; }

  std::string Header() const {
    std::ostringstream out;
    out << "// Generated by FeatureTableGenerator from the feature table; edit the table, not this file.\n"
           "#pragma once\n\n#include <cstdint>\n\n"
           "// The id of a feature flag: one enumerator per row of the feature table,\n"
           "// named after the row. FeatureFlagId{} (0) is no flag.\n"
           "enum class FeatureFlagId : uint32_t {\n";
    for (const Row& row : m_rows) out << "  " << row.name << " = " << Hex(row.id) << ",\n";
    out << "};\n\n// The maturity codes of the feature table (FeatureInfo::maturity).\n"
           "enum class FeatureMaturity : uint32_t {\n";
    for (const Maturity& m : kMaturities) out << "  " << m.enumerator << " = " << m.code << ",\n";
    out << "};\n";
    return out.str();
  }

  std::string Source() const {
    std::ostringstream out;
    out << "// Generated by FeatureTableGenerator from the feature table; edit the table, not this file.\n"
           "#include <vector>\n\n"
           "#include \"velcoredata/platform/InitOnce.h\"\n"
           "#include \"velcoredata/util/FeatureInfo.h\"\n\n"
           "const std::vector<FeatureInfo>& GetFeatureInfos() {\n"
           "  static InitOnceValue<std::vector<FeatureInfo>> table;\n"
           "  return table.Get([] {\n"
           "    return new std::vector<FeatureInfo>{\n";
    for (const Row& row : m_rows) {
      out << "        {FeatureFlagId::" << row.name << ", " << row.maturity->code << ", "
          << (row.enabledByDefault ? "true" : "false");
      for (const std::string* text : {&row.team, &row.alias, &row.workItem, &row.removalDate,
                                      &row.toggleRequirement, &row.name, &row.description}) {
        out << ",\n         " << Utf16Literal(*DecodeUtf8(*text));
      }
      out << "},\n";
    }
    out << "    };\n  });\n}\n\n"
           "const char* GetFeatureMaturityName(uint32_t maturity) {\n"
           "  switch (maturity) {\n";
    for (const Maturity& m : kMaturities) out << "    case " << m.code << ": return \"" << m.name << "\";\n";
    out << "    default: return nullptr;\n  }\n}\n";
    return out.str();
  }

 private:
  std::string m_tableName;
  size_t m_failures = 0;
  std::vector<Row> m_rows;
  std::map<uint32_t, int> m_lineById;
  std::map<std::string, int> m_lineByName;
};

bool WriteFile(const std::string& path, const std::string& content) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << content;
  out.close();
  if (!out) std::cerr << "FeatureTableGenerator: cannot write " << path << "\n";
  return static_cast<bool>(out);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: FeatureTableGenerator TABLE HEADER SOURCE\n";
    return 2;
  }
  const std::string tablePath = argv[1];
  std::ifstream in(tablePath, std::ios::binary);
  if (!in) {
    std::cerr << "FeatureTableGenerator: cannot read " << tablePath << "\n";
    return 1;
  }
  Generator generator(tablePath.substr(tablePath.find_last_of("/\\") + 1));
  std::string line;
  for (int lineNumber = 1; std::getline(in, line); ++lineNumber) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::string content = Trim(line);
    if (content.empty() || content[0] == '#') continue;
    generator.AddLine(lineNumber, content);
  }
  if (generator.Failed()) return 1;
  return WriteFile(argv[2], generator.Header()) && WriteFile(argv[3], generator.Source()) ? 0 : 1;
}
