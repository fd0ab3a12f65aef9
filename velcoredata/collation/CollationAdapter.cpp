#include "velcoredata/collation/CollationAdapter.h"

#include "velcoredata/collation/CollatorName.h"

unsigned CollationAdapter::LCIDFromLocale(const char16_t* locale, unsigned defaultLcid) {
  return Collation::LCIDFromLocale(TString(locale), defaultLcid);
}

Collation CollationAdapter::GetCollation(unsigned lcid, unsigned cmpFlags, unsigned short charset) {
  return Collation(lcid, cmpFlags, charset);
}

Collation CollationAdapter::GetCollation(const char16_t* name, Collation::CaseOpt caseOpt,
                                         Collation::AccentOpt accentOpt, Collation::SortOpt sortOpt,
                                         Collation::PunctOpt punctOpt, unsigned short charset) {
  const TString collatorName = MakeCollatorName(name, caseOpt, accentOpt, sortOpt, punctOpt);
  return Collation(collatorName.c_str(), charset);
}
