// Runs vcd in-process with an argument list and collects status and output.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "Command.h"

struct VcdRun {
  int status;
  std::string out;
  std::string err;
};

inline VcdRun RunVcdCommand(const std::vector<std::string>& args) {
  std::istringstream in;
  std::ostringstream out, err;
  vcd::CommandIo io{in, out, err};
  const int status = vcd::RunVcd(args, io);
  return {status, out.str(), err.str()};
}
