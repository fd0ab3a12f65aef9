#include <iostream>
#include <string>
#include <vector>

#include "Command.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  std::vector<std::string> args(argv + 1, argv + argc);
  vcd::CommandIo io{std::cin, std::cout, std::cerr};
  const int status = vcd::RunVcd(args, io);
  std::cout.flush();
  return status;
}
