// vcd collation: what a collator name or a locale with options stands for.

#include <cstdio>
#include <ostream>

#include "CollationArgs.h"
#include "Command.h"
#include "velcoredata/collation/CollatorPool.h"

namespace {

std::string Hex(unsigned value, int digits) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "0x%0*X", digits, value);
  return buffer;
}

std::string FlagNames(unsigned flags) {
  std::string names;
  auto add = [&names](const char* name) { names += names.empty() ? name : std::string(", ") + name; };
  if (flags & 1) add("ignore case");
  if (flags & 2) add("ignore non-spacing marks");
  if (flags & 4) add("ignore symbols");
  if (flags & 0x80000000u) add("Windows variant");
  return names.empty() ? "none" : names;
}

// An argument without lower-case letters is a collator name ("LEN_RUS_S2",
// "binary" in any case); anything else is a locale ("en_US", "de-DE").
bool LooksLikeCollatorName(const std::string& text) {
  if (TString::fromUtf8(text).compare(TString(u"binary"), TString::CaseInsensitive) == 0) return true;
  for (char c : text) {
    if (c >= 'a' && c <= 'z') return false;
  }
  return true;
}

int RunCollation(const std::vector<std::string>& args, vcd::CommandIo& io) {
  vcd::CollationArgs collationArgs;
  std::string subject;
  for (size_t i = 0; i < args.size(); ++i) {
    if (collationArgs.Consume(args, i)) continue;
    if (!subject.empty() || args[i].rfind("--", 0) == 0) {
      throw vcd::UsageError("unexpected argument '" + args[i] + "'");
    }
    subject = args[i];
  }
  if (!subject.empty()) {
    if (!collationArgs.name.empty() || !collationArgs.locale.empty()) {
      throw vcd::UsageError("give NAME|LOCALE or --collation/--locale, not both");
    }
    (LooksLikeCollatorName(subject) ? collationArgs.name : collationArgs.locale) = subject;
  }
  if (collationArgs.name.empty() && collationArgs.locale.empty()) throw vcd::UsageError("expected NAME or LOCALE");

  const Collation collation = collationArgs.Build();
  const CollatorPool& pool = collation.GetPool();
  const unsigned flags = collation.GetCmpFlags();
  io.out << "name:              " << collation.GetName().toUtf8() << "\n"
         << "locale:            " << pool.GetLocaleString().toUtf8() << "\n"
         << "LCID:              " << Hex(collation.GetLocale(), 4) << " (" << collation.GetLocale() << ")\n"
         << "comparison flags:  " << Hex(flags, 8) << " (" << FlagNames(flags) << ")\n"
         << "case-sensitive:    " << (collation.IsCaseSensitive() ? "yes" : "no") << "\n"
         << "word sort:         " << (collation.HasWordSort() ? "yes" : "no") << "\n"
         << "display language:  " << collation.GetDisplayLanguage().toUtf8() << "\n"
         << "display country:   " << collation.GetDisplayCountry().toUtf8() << "\n";
  return 0;
}

const vcd::CommandRegistration kCollation{
    "collation",
    "collation NAME|LOCALE [--case-insensitive] [--accent-insensitive] [--ignore-punctuation] "
    "[--word-sort] [--ignore-digits]",
    "print the canonical collator name, LCID, comparison flags, case sensitivity and display "
    "names of a collator name (no lower-case letters, e.g. LEN_RUS_S2) or a locale (en_US)",
    &RunCollation};

}  // namespace
