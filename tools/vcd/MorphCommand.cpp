// vcd morph --from icu|qt|windows --to icu|qt|windows|custom PATTERN: a
// date-time pattern translated between dialects.

#include <ostream>

#include "Command.h"
#include "velcoredata/locale/TLocale.h"

namespace {

enum class Dialect { ICU, Qt, Windows, Custom };

Dialect ParseDialect(const std::string& name, bool target) {
  if (name == "icu") return Dialect::ICU;
  if (name == "qt") return Dialect::Qt;
  if (name == "windows") return Dialect::Windows;
  if (name == "custom" && target) return Dialect::Custom;
  throw vcd::UsageError("unknown dialect '" + name + "' (" +
                        (target ? "icu, qt, windows or custom" : "icu, qt or windows") + ")");
}

TString FromICU(const TString& pattern, Dialect to) {
  switch (to) {
    case Dialect::Qt:
      return TLocale::MorphICUToQlocale(pattern);
    case Dialect::Windows:
      return TLocale::MorphICUtoWindowsCustom(pattern, true);
    case Dialect::Custom:
      return TLocale::MorphICUtoWindowsCustom(pattern, false);
    case Dialect::ICU:
      break;
  }
  return pattern;
}

// The library's direct translation where there is one; Qt reaches Windows
// and custom through ICU.
TString Morph(const TString& pattern, Dialect from, Dialect to) {
  if (from == to) return pattern;
  switch (from) {
    case Dialect::ICU:
      return FromICU(pattern, to);
    case Dialect::Qt:
      return FromICU(TLocale::MorphQLocaleToICU(pattern, false), to);
    case Dialect::Windows:
      if (to == Dialect::ICU) return TLocale::MorphWindowsToICU(pattern);
      if (to == Dialect::Qt) return TLocale::MorphWindowsToQLocale(pattern);
      return TLocale::MorphWindowsToCustom(pattern);
    case Dialect::Custom:
      break;
  }
  return pattern;
}

int RunMorph(const std::vector<std::string>& args, vcd::CommandIo& io) {
  const char* from = nullptr;
  const char* to = nullptr;
  const std::string* pattern = nullptr;
  for (size_t i = 0; i < args.size(); ++i) {
    if ((args[i] == "--from" || args[i] == "--to") && i + 1 < args.size()) {
      (args[i] == "--from" ? from : to) = args[i + 1].c_str();
      ++i;
    } else if (pattern == nullptr && args[i].rfind("--", 0) != 0) {
      pattern = &args[i];
    } else {
      throw vcd::UsageError("unexpected argument '" + args[i] + "'");
    }
  }
  if (from == nullptr || to == nullptr || pattern == nullptr) {
    throw vcd::UsageError("expected --from, --to and one PATTERN");
  }
  const TString result = Morph(TString::fromUtf8(*pattern), ParseDialect(from, false), ParseDialect(to, true));
  io.out << result.toUtf8() << "\n";
  return 0;
}

const vcd::CommandRegistration kMorph{"morph", "morph --from icu|qt|windows --to icu|qt|windows|custom PATTERN",
                                      "translate a date-time pattern between dialects", &RunMorph};

}  // namespace
