#include "Command.h"

#include <exception>
#include <iostream>

#include "velcoredata/platform/VelmoraException.h"

namespace vcd {
namespace {

std::map<std::string, Command>& Registry() {
  static std::map<std::string, Command> commands;
  return commands;
}

void PrintHelp(std::ostream& out) {
  out << "usage: vcd [--help] [--version] COMMAND [ARGS...]\n\n"
         "Commands:\n";
  for (const auto& [name, command] : Registry()) {
    out << "  " << command.usage << "\n      " << command.summary << "\n";
  }
  out << "\nRun 'vcd COMMAND --help' for the usage of one command.\n";
}

}  // namespace

CommandRegistration::CommandRegistration(std::string name, std::string usage, std::string summary,
                                         CommandFunc run) {
  Registry()[name] = Command{name, std::move(usage), std::move(summary), run};
}

const std::map<std::string, Command>& Commands() { return Registry(); }

int RunVcd(const std::vector<std::string>& args, CommandIo& io) {
  if (args.empty()) {
    io.err << "vcd: no command given\n";
    PrintHelp(io.err);
    return 2;
  }
  const std::string& first = args.front();
  if (first == "--help" || first == "-h" || first == "help") {
    PrintHelp(io.out);
    return 0;
  }
  if (first == "--version") {
    io.out << "vcd " << VCD_VERSION << "\n";
    return 0;
  }
  auto it = Registry().find(first);
  if (it == Registry().end()) {
    io.err << "vcd: unknown command '" << first << "'\n";
    PrintHelp(io.err);
    return 2;
  }
  const Command& command = it->second;
  const std::vector<std::string> rest(args.begin() + 1, args.end());
  if (!rest.empty() && (rest.front() == "--help" || rest.front() == "-h")) {
    io.out << "usage: vcd " << command.usage << "\n" << command.summary << "\n";
    return 0;
  }
  try {
    return command.run(rest, io);
  } catch (const UsageError& e) {
    io.err << "vcd " << command.name << ": " << e.what() << "\nusage: vcd " << command.usage << "\n";
    return 2;
  } catch (const VelmoraException& e) {
    io.err << "vcd " << command.name << ": " << e.GetMessage().toUtf8() << " ("
           << e.GetError().GetName() << ")\n";
    return 1;
  } catch (const std::exception& e) {
    io.err << "vcd " << command.name << ": " << e.what() << "\n";
    return 1;
  }
}

}  // namespace vcd
