// LocaleHelper: the session locale.
//
// A session is whatever a host serves on one thread (a request, a user's
// workbook); its locale is set per thread. GetSessionLCID answers, in order:
// the calling thread's session LCID (unless CoreDataOptions says to ignore
// session locales), the process default locale (CoreDataOptions), and the
// user's locale from the environment, resolved to a specific LCID.
#pragma once

#include <cstdint>

#include "velcoredata/platform/Export.h"

namespace LocaleHelper {

VELCOREDATA_EXPORT uint32_t GetSessionLCID();
// Sets the calling thread's session locale; 0 clears it.
VELCOREDATA_EXPORT void SetSessionLCID(uint32_t lcid);

}  // namespace LocaleHelper
