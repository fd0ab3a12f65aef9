// vcd qname TEXT: the components, canonical form and hash of a bracketed name,
// or the parse error with its id.

#include <cstdio>
#include <ostream>

#include "Command.h"
#include "velcoredata/names/QualifiedName.h"
#include "velcoredata/platform/Messages.h"

namespace {

std::string Hex8(uint32_t value) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "0x%08X", value);
  return buffer;
}

int RunQname(const std::vector<std::string>& args, vcd::CommandIo& io) {
  if (args.size() != 1) throw vcd::UsageError("expected exactly one TEXT");
  QualifiedName name;
  try {
    name = QualifiedName::ParseGlobal(TString::fromUtf8(args[0]));
  } catch (const QualifiedFieldNameParseException& e) {
    io.err << "vcd qname: parse error " << FormatErrorId(e.GetErrorId()) << " ("
           << CoreData::GetKeyName(e.GetMessageId()) << "): " << e.GetMessage().toUtf8() << "\n";
    return 1;
  }
  io.out << "text:        " << args[0] << "\n"
         << "components:  " << name.GetNumberOfComponents() << "\n";
  for (size_t i = 0; i < name.GetNumberOfComponents(); ++i) {
    io.out << "  [" << i << "] " << name.GetComponent(i).toUtf8() << "\n";
  }
  io.out << "canonical:   " << name.GetFullValue().toUtf8() << "\n"
         << "root:        " << name.GetRootValue().toUtf8() << "\n"
         << "leaf:        " << name.GetLeafValue().toUtf8() << "\n"
         << "hash:        " << Hex8(name.Hash()) << "\n";
  return 0;
}

const vcd::CommandRegistration kQname{
    "qname", "qname TEXT",
    "parse a bracketed name such as [Sales].[Amount]: components, canonical form and hash", &RunQname};

}  // namespace
