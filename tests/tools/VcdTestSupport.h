// Runs vcd in-process for the tool tests.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "Command.h"

namespace VcdTestSupport {

struct VcdRun {
  int status;
  std::string out;
  std::string err;
};

inline VcdRun Vcd(const std::vector<std::string>& args, const std::string& input = "") {
  std::istringstream in(input);
  std::ostringstream out, err;
  vcd::CommandIo io{in, out, err};
  const int status = vcd::RunVcd(args, io);
  return {status, out.str(), err.str()};
}

inline std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

}  // namespace VcdTestSupport
