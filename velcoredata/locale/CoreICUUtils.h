// CoreICUUtils: the ICU locale of an LCID and the exception for failed ICU calls.
#pragma once

#include <cstdint>

#include <unicode/locid.h>
#include <unicode/ucal.h>
#include <unicode/utypes.h>

#include "velcoredata/datetime/DateTypes.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/VelmoraException.h"

// A failed ICU call (error 0x4A7C1D02): carries ICU's status and the context
// it was made in (a collator name, a locale, a pattern).
class VELCOREDATA_EXPORT ICUException : public VelmoraException {
 public:
  ICUException(UErrorCode status, const TString& context);
  UErrorCode GetStatus() const noexcept { return m_status; }
  std::unique_ptr<VelmoraException> Clone() const override;
  [[noreturn]] void Throw() const override;

 private:
  UErrorCode m_status;
};

namespace CoreICUUtils {

// The ICU locale of an LCID, through the language table.
VELCOREDATA_EXPORT icu::Locale GetLocale(uint32_t lcid);

// Raises ICUException for `status` with the context text, e.g.
// "ICU error U_FILE_ACCESS_ERROR: LXX_RYY".
[[noreturn]] VELCOREDATA_EXPORT void ThrowICUException(UErrorCode status, const TString& context);

// A first day of the week as ICU's day of the week and back. Both number
// Sunday 1 ... Saturday 7; a value outside that range is a logic error.
VELCOREDATA_EXPORT UCalendarDaysOfWeek translateSOWValue(SOWValue startOfWeek);
VELCOREDATA_EXPORT SOWValue translateUCalendarDaysOfWeek(UCalendarDaysOfWeek day);

}  // namespace CoreICUUtils
