#include "velcoredata/locale/LocaleHelper.h"

#include "velcoredata/core/CoreDataOptions.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/platform/CoreThreadContext.h"

namespace LocaleHelper {
namespace {
const char* const kSessionLocaleName = "session-lcid";
}

uint32_t GetSessionLCID() {
  if (!CoreDataOptions::GetIgnoreSessionLocale()) {
    if (const uint32_t* lcid = CoreThreadContext::Current().Get<uint32_t>(kSessionLocaleName); lcid && *lcid) {
      return *lcid;
    }
  }
  if (const uint32_t configured = CoreDataOptions::GetDefaultLocale(); configured != 0) {
    return LanguageUtils::ConvertDefaultLocale(configured);
  }
  return LanguageUtils::ConvertDefaultLocale(LanguageUtils::kUserDefaultLCID);
}

void SetSessionLCID(uint32_t lcid) {
  if (lcid == 0) {
    CoreThreadContext::Current().Take(kSessionLocaleName);
  } else {
    CoreThreadContext::Current().Set(kSessionLocaleName, lcid);
  }
}

}  // namespace LocaleHelper
