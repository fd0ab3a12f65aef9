// Runs vcd in-process and captures its exit status and output streams.
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

// `input` is what the command reads from standard input.
inline VcdRun RunVcdCaptured(const std::vector<std::string>& args, const std::string& input = "") {
  std::istringstream in(input);
  std::ostringstream out, err;
  vcd::CommandIo io{in, out, err};
  const int status = vcd::RunVcd(args, io);
  return {status, out.str(), err.str()};
}

// Whether the output holds `line` as a whole line.
inline bool HasLine(const VcdRun& run, const std::string& line) {
  return run.out.find(line + "\n") != std::string::npos;
}
