#include "velcoredata/locale/CoreICUUtils.h"

#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TFormatString.h"

ICUException::ICUException(UErrorCode status, const TString& context)
    : VelmoraException(VelErrorsError::AutoGen_0x4A7C1D02(
          TFormatString(u"ICU error %1: %2").arg(TString(u_errorName(status))).arg(context))),
      m_status(status) {}

std::unique_ptr<VelmoraException> ICUException::Clone() const { return std::make_unique<ICUException>(*this); }

void ICUException::Throw() const { throw *this; }

namespace CoreICUUtils {

icu::Locale GetLocale(uint32_t lcid) { return icu::Locale(LanguageUtils::GetLocaleForLCID(lcid).c_str()); }

void ThrowICUException(UErrorCode status, const TString& context) { throw ICUException(status, context); }

UCalendarDaysOfWeek translateSOWValue(SOWValue startOfWeek) {
  const auto day = static_cast<int>(startOfWeek);
  VEL_ASSERT(day >= UCAL_SUNDAY && day <= UCAL_SATURDAY);
  return static_cast<UCalendarDaysOfWeek>(day);
}

SOWValue translateUCalendarDaysOfWeek(UCalendarDaysOfWeek day) {
  VEL_ASSERT(day >= UCAL_SUNDAY && day <= UCAL_SATURDAY);
  return static_cast<SOWValue>(static_cast<int>(day));
}

}  // namespace CoreICUUtils
