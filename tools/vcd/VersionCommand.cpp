// vcd version [options] A [B]: the components, descriptors and text form of a
// version; with B, how the two compare.

#include <ostream>
#include <string>

#include "Command.h"
#include "velcoredata/util/VersionNumber.h"

namespace {

struct VersionOptions {
  char16_t numberSeparator = u'.';
  char16_t descriptorSeparator = u' ';
  unsigned long numbersIndex = 0;
};

char16_t SeparatorArg(const std::string& option, const std::string& value) {
  const TString text = TString::fromUtf8(value);
  if (text.size() != 1) throw vcd::UsageError(option + " takes one character");
  return text[0];
}

unsigned long IndexArg(const std::string& value) {
  bool ok = false;
  const unsigned int index = TString::fromUtf8(value).toUInt(&ok);
  if (!ok) throw vcd::UsageError("--index takes a non-negative number");
  return index;
}

void Describe(const char* label, const std::string& input, const VersionNumber& version, std::ostream& out) {
  out << label << input << "\n"
      << "  numbers:      " << version.GetNumbersAsString(u' ').toUtf8() << "\n"
      << "  descriptors:  ";
  for (size_t i = 0; i < version.GetDescriptors().size(); ++i) {
    out << (i ? ", " : "") << '"' << version.GetDescriptors()[i].toUtf8() << '"';
  }
  out << "\n"
      << "  text form:    " << version.GetAsString().toUtf8() << "\n"
      << "  major.minor:  " << version.GetMajorAndMinorAsString(u'.').toUtf8() << "\n";
}

int RunVersion(const std::vector<std::string>& args, vcd::CommandIo& io) {
  VersionOptions options;
  std::vector<std::string> texts;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    const bool takesValue = arg == "--number-separator" || arg == "--descriptor-separator" || arg == "--index";
    if (!takesValue) {
      texts.push_back(arg);
      continue;
    }
    if (i + 1 == args.size()) throw vcd::UsageError(arg + " needs a value");
    const std::string& value = args[++i];
    if (arg == "--number-separator") {
      options.numberSeparator = SeparatorArg(arg, value);
    } else if (arg == "--descriptor-separator") {
      options.descriptorSeparator = SeparatorArg(arg, value);
    } else {
      options.numbersIndex = IndexArg(value);
    }
  }
  if (texts.empty() || texts.size() > 2) throw vcd::UsageError("expected one or two versions");

  const auto parse = [&](const std::string& text) {
    return VersionNumber(TString::fromUtf8(text), options.numberSeparator, options.descriptorSeparator,
                         options.numbersIndex);
  };
  const VersionNumber a = parse(texts[0]);
  Describe("A: ", texts[0], a, io.out);
  if (texts.size() == 2) {
    const VersionNumber b = parse(texts[1]);
    Describe("B: ", texts[1], b, io.out);
    const int order = a.compare(b);
    io.out << "compare:        " << order << " (A " << (order < 0 ? "<" : order > 0 ? ">" : "==") << " B)\n";
  }
  return 0;
}

const vcd::CommandRegistration kVersion{
    "version",
    "version [--number-separator C] [--descriptor-separator C] [--index N] A [B]",
    "parse version A (numbers at piece N of the descriptor-separated text, default 0): "
    "components, descriptors, text form; with B, how A compares with B",
    &RunVersion};

}  // namespace
