#include "velcoredata/platform/VelICU.h"

#include <unicode/uniset.h>

#include "velcoredata/platform/InitOnce.h"

namespace VelICU {

const TString& getIgnoreDigitsRule() {
  static InitOnceValue<TString> rule;
  return rule.Get([] {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeSet digits(icu::UnicodeString(u"[:Nd:]"), status);
    // "&" U+0000 "=*" then the digits: each becomes equal to U+0000, which
    // the root collation already ignores completely.
    icu::UnicodeString text(u'&');
    text.append(static_cast<char16_t>(0)).append(u"=*", 2);
    if (ICU_SUCCESS(status)) {
      for (int32_t i = 0; i < digits.getRangeCount(); ++i) {
        for (UChar32 c = digits.getRangeStart(i); c <= digits.getRangeEnd(i); ++c) text.append(c);
      }
    } else {
      text.append(u"0123456789", 10);  // the property data is missing: ASCII digits at least
    }
    return new TString(FromUnicodeString(text));
  });
}

}  // namespace VelICU
