#include "velcoredata/core/VelErrorsError.h"

#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/TFormatString.h"

namespace VelErrorsError {

#define VEL_ERROR_ID(id) \
  VelmoraError AutoGen_##id(const TString& message) { return VelmoraError(id, "VelmoraException_AutoGen_" #id, message); }
#include "velcoredata/core/ErrorIds.def"
#undef VEL_ERROR_ID

VelmoraError IncorrectDatatypeException_0xCA8336D0(int expectedType, int actualType) {
  TString message =
      TFormatString(CoreData::StringId::IDS_ERR_INCORRECT_DATA_TYPE_GET).arg(expectedType).arg(actualType);
  return VelmoraError(0xCA8336D0, "IncorrectDatatypeException_0xCA8336D0", std::move(message));
}

VelmoraError IncorrectDatatypeException_0xCA8336D1(int expectedType, int actualType) {
  TString message =
      TFormatString(CoreData::StringId::IDS_ERR_INCORRECT_DATA_TYPE_SET).arg(expectedType).arg(actualType);
  return VelmoraError(0xCA8336D1, "IncorrectDatatypeException_0xCA8336D1", std::move(message));
}

const std::vector<uint32_t>& AllErrorIds() {
  static const std::vector<uint32_t> ids = {
#define VEL_ERROR_ID(id) id,
#include "velcoredata/core/ErrorIds.def"
#undef VEL_ERROR_ID
  };
  return ids;
}

const std::vector<const char*>& AllErrorIdTexts() {
  static const std::vector<const char*> texts = {
#define VEL_ERROR_ID(id) #id,
#include "velcoredata/core/ErrorIds.def"
#undef VEL_ERROR_ID
  };
  return texts;
}

}  // namespace VelErrorsError
