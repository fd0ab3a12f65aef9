// vcd flags [list | show NAME|ID]: the feature table and the state of each
// flag in this process.

#include <cstdio>
#include <ostream>
#include <stdexcept>

#include "Command.h"
#include "velcoredata/util/FeatureFlags.h"
#include "velcoredata/util/FeatureIdLookup.h"
#include "velcoredata/util/FeatureInfo.h"

namespace {

std::string Hex(FeatureFlagId id) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "0x%08X", static_cast<unsigned>(id));
  return buffer;
}

std::string OnOff(bool on) { return on ? "on" : "off"; }

std::string MaturityText(uint32_t maturity) {
  const char* name = GetFeatureMaturityName(maturity);
  return (name ? std::string(name) + " " : std::string()) + "(" + std::to_string(maturity) + ")";
}

// A flag by name (case ignored) or by id, written "0x" and hexadecimal digits
// or in decimal.
FeatureFlagId FindFlag(const std::string& text) {
  FeatureFlagId id = GetDefaultFeatureIdLookup().GetId(TString::fromUtf8(text));
  if (id == FeatureFlagId{}) {
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    bool ok = false;
    const unsigned value = TString::fromUtf8(hex ? text.substr(2) : text).toUInt(&ok, hex ? 16 : 10);
    if (ok) {
      for (const FeatureInfo& info : GetFeatureInfos()) {
        if (static_cast<unsigned>(info.id) == value) id = info.id;
      }
    }
  }
  if (id == FeatureFlagId{}) throw std::runtime_error("no feature flag is named or numbered '" + text + "'");
  return id;
}

void List(std::ostream& out) {
  char line[160];
  std::snprintf(line, sizeof line, "%-10s  %-32s  %-16s  %-7s  %s\n", "ID", "NAME", "MATURITY",
                "DEFAULT", "STATE");
  out << line;
  for (const FeatureInfo& info : GetFeatureInfos()) {
    std::snprintf(line, sizeof line, "%-10s  %-32s  %-16s  %-7s  %s\n", Hex(info.id).c_str(),
                  info.name.toUtf8().c_str(), MaturityText(info.maturity).c_str(),
                  OnOff(info.enabledByDefault).c_str(), OnOff(FeatureFlags::IsOn(info.id)).c_str());
    out << line;
  }
}

void Show(std::ostream& out, FeatureFlagId id) {
  const FeatureInfo& info = GetFeatureInfo(id);
  out << "id:                  " << Hex(info.id) << "\n"
      << "name:                " << info.name.toUtf8() << "\n"
      << "description:         " << info.description.toUtf8() << "\n"
      << "maturity:            " << MaturityText(info.maturity) << "\n"
      << "enabled by default:  " << OnOff(info.enabledByDefault) << "\n"
      << "team:                " << info.team.toUtf8() << "\n"
      << "team alias:          " << info.scrumAlias.toUtf8() << "\n"
      << "work item:           " << info.tfsId.toUtf8() << "\n"
      << "removal date:        " << info.removalDate.toUtf8() << "\n"
      << "toggle requirement:  " << info.toggleRequirement.toUtf8() << "\n"
      << "state:               " << OnOff(FeatureFlags::IsOn(info.id)) << "\n";
}

int RunFlags(const std::vector<std::string>& args, vcd::CommandIo& io) {
  if (args.empty() || args[0] == "list") {
    if (args.size() > 1) throw vcd::UsageError("list takes no arguments");
    List(io.out);
    return 0;
  }
  if (args[0] == "show") {
    if (args.size() != 2) throw vcd::UsageError("show takes exactly one NAME or ID");
    Show(io.out, FindFlag(args[1]));
    return 0;
  }
  throw vcd::UsageError("unexpected argument '" + args[0] + "'");
}

const vcd::CommandRegistration kFlags{
    "flags", "flags [list | show NAME|ID]",
    "list the feature flags, or show one flag (by name, case ignored, or id) and whether it is on",
    &RunFlags};

}  // namespace
