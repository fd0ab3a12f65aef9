// Fuzzes the six date-pattern morphs with arbitrary UTF-16 patterns (two
// bytes per code unit, little-endian). Checks: nothing crashes, no output
// grows beyond the widest translation (five characters per input character,
// plus a pair of quotes), and outside literals each target dialect holds only
// the letters its morphs can write.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "velcoredata/locale/TLocale.h"
#include "velcoredata/platform/TCType.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

// Every letter outside single-quoted literals (read as the morphs read them:
// a run of two or more quotes is an escaped quote) must be in `allowed`.
void CheckLetters(const TString& pattern, const char16_t* allowed) {
  const TString letters(allowed);
  int i = 0;
  while (i < pattern.size()) {
    const char16_t c = pattern[i];
    if (c == u'\'') {
      if (i + 1 < pattern.size() && pattern[i + 1] == u'\'') {
        i += 2;
        continue;
      }
      ++i;
      while (i < pattern.size()) {
        if (pattern[i] == u'\'' && i + 1 < pattern.size() && pattern[i + 1] == u'\'') {
          i += 2;
        } else if (pattern[i] == u'\'') {
          break;
        } else {
          ++i;
        }
      }
      ++i;
      continue;
    }
    if (TCType::isAlpha(c)) Check(letters.contains(c));
    ++i;
  }
}

// The same for the custom dialect: literals in double quotes, "\" escapes
// the next character.
void CheckCustomLetters(const TString& pattern) {
  const TString letters(u"dMLyHhnsAMP");
  for (int i = 0; i < pattern.size(); ++i) {
    const char16_t c = pattern[i];
    if (c == u'\\') {
      ++i;
    } else if (c == u'"') {
      for (++i; i < pattern.size() && pattern[i] != u'"'; ++i) {
        if (pattern[i] == u'\\') ++i;
      }
    } else if (TCType::isAlpha(c)) {
      Check(letters.contains(c));
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::u16string units;
  for (size_t i = 0; i + 1 < size; i += 2) units.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
  const TString pattern(units);
  const int limit = 5 * pattern.size() + 2;

  const TString icu = TLocale::MorphQLocaleToICU(pattern, false);
  Check(icu.size() <= limit);
  CheckLetters(icu, u"aHhMdEmsyS");
  const TString qt = TLocale::MorphICUToQlocale(pattern);
  Check(qt.size() <= limit);
  CheckLetters(qt, u"dMLyHhmsztAP");
  const TString windows = TLocale::MorphICUtoWindowsCustom(pattern, true);
  Check(windows.size() <= limit);
  CheckLetters(windows, u"dMLyHhmstg");
  const TString custom = TLocale::MorphICUtoWindowsCustom(pattern, false);
  Check(custom.size() <= limit);
  CheckCustomLetters(custom);
  // The Windows-bound morphs copy what they do not know: no letter check.
  Check(TLocale::MorphWindowsToICU(pattern).size() <= limit);
  Check(TLocale::MorphWindowsToQLocale(pattern).size() <= limit);
  Check(TLocale::MorphWindowsToCustom(pattern).size() <= limit);
  return 0;
}
