// CollationType: the names every collation starts from.
#pragma once

#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT CollationType {
 public:
  // The code-unit ordering; also accepted in any letter case as a collator name.
  static constexpr const char16_t* s_binary = u"binary";
  // The root-locale ordering, used when nothing is known about the data.
  static constexpr const char16_t* s_unknown = u"LROOT";
  // Character-set id meaning "no character set recorded".
  static constexpr unsigned short s_unknownCharset = 0;
};
