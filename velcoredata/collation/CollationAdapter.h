// CollationAdapter: collations for callers that hold raw UTF-16 strings.
#pragma once

#include "velcoredata/collation/Collation.h"
#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT CollationAdapter {
 public:
  // Collation::LCIDFromLocale of the text (null: the empty text).
  static unsigned LCIDFromLocale(const char16_t* locale, unsigned defaultLcid);
  // Collation(lcid, cmpFlags, charset).
  static Collation GetCollation(unsigned lcid, unsigned cmpFlags, unsigned short charset);
  // Collation(MakeCollatorName(name, options...), charset).
  static Collation GetCollation(const char16_t* name, Collation::CaseOpt caseOpt,
                                Collation::AccentOpt accentOpt, Collation::SortOpt sortOpt,
                                Collation::PunctOpt punctOpt, unsigned short charset);
};
