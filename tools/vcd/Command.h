// The vcd subcommand registry.
//
// Each subcommand lives in its own file and registers itself with a static
// CommandRegistration:
//
//   static const vcd::CommandRegistration kHash{
//       "hash", "hash TEXT", "print the platform hashes of TEXT", &RunHash};
//
// A subcommand receives its arguments (without the subcommand name) and the
// output streams. It throws UsageError for a malformed command line (exit 2)
// and any other exception for a failure (exit 1, message on stderr).
#pragma once

#include <iosfwd>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace vcd {

struct CommandIo {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
};

using CommandFunc = int (*)(const std::vector<std::string>& args, CommandIo& io);

struct Command {
  std::string name;
  std::string usage;    // e.g. "hash TEXT"
  std::string summary;  // one line for `vcd --help`
  CommandFunc run;
};

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CommandRegistration {
  CommandRegistration(std::string name, std::string usage, std::string summary, CommandFunc run);
};

// All registered commands, by name.
const std::map<std::string, Command>& Commands();

// Runs vcd with a full argument list (argv[1..]); returns the exit status.
int RunVcd(const std::vector<std::string>& args, CommandIo& io);

}  // namespace vcd
