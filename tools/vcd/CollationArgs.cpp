#include "CollationArgs.h"

#include "Command.h"
#include "velcoredata/collation/CollatorName.h"
#include "velcoredata/collation/ICUCollator.h"

namespace vcd {

bool CollationArgs::Consume(const std::vector<std::string>& args, size_t& i) {
  const std::string& arg = args[i];
  auto value = [&]() -> std::string {
    if (i + 1 >= args.size()) throw UsageError(arg + " needs a value");
    return args[++i];
  };
  if (arg == "--collation") name = value();
  else if (arg == "--locale") locale = value();
  else if (arg == "--case-insensitive") caseInsensitive = true;
  else if (arg == "--accent-insensitive") accentInsensitive = true;
  else if (arg == "--ignore-punctuation") ignorePunctuation = true;
  else if (arg == "--word-sort") wordSort = true;
  else if (arg == "--ignore-digits") ignoreDigits = true;
  else return false;
  return true;
}

Collation CollationArgs::Build() const {
  if (!name.empty() && !locale.empty()) throw UsageError("give either --collation or --locale, not both");
  const auto caseOpt = caseInsensitive ? Collation::CaseOpt::CaseInsensitive : Collation::CaseOpt::CaseSensitive;
  const auto accentOpt =
      accentInsensitive ? Collation::AccentOpt::AccentInsensitive : Collation::AccentOpt::AccentSensitive;
  const auto sortOpt = wordSort ? Collation::SortOpt::WordSort : Collation::SortOpt::Default;
  const auto punctOpt = ignorePunctuation ? Collation::PunctOpt::IgnorePunctuation : Collation::PunctOpt::Default;
  if (!locale.empty()) return Collation(locale, ignoreDigits, caseOpt, accentOpt, sortOpt, punctOpt, 0);
  if (name.empty() && !HasOptions()) return Collation();
  TString collatorName = TString::fromUtf8(name.empty() ? "LROOT" : name);
  if (HasOptions()) {
    // Applying options replaces what the name said about strength, case and
    // word sort, so only do it when some option was given.
    collatorName = MakeCollatorName(collatorName.c_str(), caseOpt, accentOpt, sortOpt, punctOpt);
    if (ignoreDigits) {
      collatorName = ICUCollator::AddAttrToName(collatorName.c_str(), ICUCollator::Attr::IgnoreDigits, UCOL_ON);
    }
  }
  return Collation(collatorName.c_str());
}

}  // namespace vcd
