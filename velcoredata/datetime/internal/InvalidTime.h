// The "invalid time" failures of the date types: a VelmoraException with the
// error of `factory` and the localised IDS_ERR_INVALID_TIME message.
#pragma once

#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/VelmoraException.h"

[[noreturn]] inline void ThrowInvalidTime(VelmoraError (*factory)(const TString&)) {
  throw VelmoraException(factory(CoreData::GetString(CoreData::StringId::IDS_ERR_INVALID_TIME)));
}
