// The error factories: one per id of ErrorIds.def.
//
//   throw VelmoraException(VelErrorsError::AutoGen_0xDD90F63D(message));
//
// makes the error 0xDD90F63D named "VelmoraException_AutoGen_0xDD90F63D".
#pragma once

#include <cstdint>
#include <vector>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/VelmoraException.h"

namespace VelErrorsError {

#define VEL_ERROR_ID(id) VELCOREDATA_EXPORT VelmoraError AutoGen_##id(const TString& message = TString());
#include "velcoredata/core/ErrorIds.def"
#undef VEL_ERROR_ID

// Reading a value as the wrong type: the localised
// "Incorrect data type %2, getting expected %1 type." with the type numbers.
VELCOREDATA_EXPORT VelmoraError IncorrectDatatypeException_0xCA8336D0(int expectedType, int actualType);
// Writing a value as the wrong type: "Incorrect data type %2, setting expected %1 type."
VELCOREDATA_EXPORT VelmoraError IncorrectDatatypeException_0xCA8336D1(int expectedType, int actualType);

// Every generated id, in list order (for tools and tests).
VELCOREDATA_EXPORT const std::vector<uint32_t>& AllErrorIds();
// The written form of each generated id, as it stands in the list.
VELCOREDATA_EXPORT const std::vector<const char*>& AllErrorIdTexts();

}  // namespace VelErrorsError

// Uniqueness of ids is checked here: each id becomes an enumerator name.
namespace VelErrorsError::detail {
enum UniqueIds : uint32_t {
#define VEL_ERROR_ID(id) kId_##id = id,
#include "velcoredata/core/ErrorIds.def"
#undef VEL_ERROR_ID
};
}  // namespace VelErrorsError::detail
