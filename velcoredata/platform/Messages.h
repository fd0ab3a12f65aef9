// The localised message tables.
//
// Every user-facing message has a CoreData::StringId (a stable 32-bit id) and
// a key name ("IDS_..."). English texts are built in; a host adds
// translations by installing QTranslator objects, which are asked with the
// context "CoreData", the English text as source text and the key name as
// disambiguation (what lupdate extracts from the built-in table). The most
// recently installed translator that knows a message wins.
//
// Lookups never fail: an id that no table knows yields the placeholder text
// "[missing message 0xXXXXXXXX]".
//
// Thread-safety: lookups and translator changes may run on any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class QTranslator;

namespace CoreData {

enum class StringId : uint32_t {
#define VEL_MESSAGE(key, id, text) key = id,
#include "velcoredata/platform/MessageTexts.def"
#undef VEL_MESSAGE
};

// The text of a message in the current language (English when no translator knows it).
VELCOREDATA_EXPORT TString GetString(StringId id);
// The same, by key name ("IDS_ERR_PARSING_NUMBER"); an unknown key yields the
// placeholder "[missing message IDS_...]".
VELCOREDATA_EXPORT TString GetString(std::string_view keyName);
// The built-in English text, or the placeholder.
VELCOREDATA_EXPORT TString GetEnglishString(StringId id);
// Whether the built-in table has the id / the key.
VELCOREDATA_EXPORT bool HasString(StringId id) noexcept;
VELCOREDATA_EXPORT bool FindStringId(std::string_view keyName, StringId& out) noexcept;
// The key name of an id ("" when unknown).
VELCOREDATA_EXPORT const char* GetKeyName(StringId id) noexcept;

// Translators, newest first. The library keeps a shared reference while installed.
VELCOREDATA_EXPORT void InstallTranslator(std::shared_ptr<const QTranslator> translator);
VELCOREDATA_EXPORT void RemoveTranslator(const QTranslator* translator);

}  // namespace CoreData
