// The collation options shared by `vcd sort`, `vcd collation` and
// `vcd intern`:
//   --collation NAME | --locale LOCALE
//   --case-insensitive --accent-insensitive --ignore-punctuation
//   --word-sort --ignore-digits
#pragma once

#include <string>
#include <vector>

#include "velcoredata/collation/Collation.h"

namespace vcd {

struct CollationArgs {
  std::string name;    // a collator name, or empty
  std::string locale;  // an ICU locale, or empty
  bool caseInsensitive = false;
  bool accentInsensitive = false;
  bool ignorePunctuation = false;
  bool wordSort = false;
  bool ignoreDigits = false;

  // Consumes args[i] (and its value) when it is one of the options above;
  // returns false for anything else. Throws UsageError for a missing value.
  bool Consume(const std::vector<std::string>& args, size_t& i);
  bool HasOptions() const {
    return caseInsensitive || accentInsensitive || ignorePunctuation || wordSort || ignoreDigits;
  }
  // The collation asked for: the locale with the options, the name (with
  // the options applied when any is given), or the root ordering when
  // neither was given. Throws UsageError when both were.
  Collation Build() const;
};

}  // namespace vcd
