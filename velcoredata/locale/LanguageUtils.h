// LanguageUtils: the language table, between Windows locale identifiers
// (LCIDs) and ICU locale names, built on ICU's own LCID mapping.
//
// Pseudo-identifiers: 1024 (0x400) is the user's locale and 2048 (0x800) the
// system's. Both are the process's locale as ICU sees it (ICU reads LC_ALL,
// LC_MESSAGES and LANG), except that CoreDataOptions::SetDefaultLocale
// overrides the user's, and that the C/POSIX locale (ICU: en_US_POSIX) is
// read as en_US: POSIX formats are meant for machines, not users.
// An LCID that ICU does not know falls back to 9 (English).
//
// All functions are pure apart from reading the process environment and
// options, and may be called from any thread.
#pragma once

#include <cstdint>
#include <string>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

namespace LanguageUtils {

inline constexpr uint32_t kUserDefaultLCID = 0x400;
inline constexpr uint32_t kSystemDefaultLCID = 0x800;
inline constexpr uint32_t kEnglishLCID = 9;

// The ICU locale name of an LCID ("de_DE", "es_ES@collation=traditional",
// "en" for 9); pseudo-LCIDs resolve as described above; unknown LCIDs give "en".
VELCOREDATA_EXPORT std::string GetLocaleForLCID(uint32_t lcid);
// The same as a TString.
VELCOREDATA_EXPORT TString GetLocaleStr(uint32_t lcid);

// The LCID of an ICU or BCP-47 locale name ("de_DE", "de-DE"); 0 when ICU has
// none for the full name nor for its language alone.
VELCOREDATA_EXPORT uint32_t GetLCIDForLocale(const std::string& localeName);

// The locale string of the default ISO locale, "en_US": the locale whose
// date-time formats are the ISO-style defaults.
VELCOREDATA_EXPORT const TString& GetDefaultISOString();

// Resolves pseudo-LCIDs and neutral ones to a specific LCID, as Windows'
// ConvertDefaultLocale does: 1024 and 2048 become the user's and system's
// LCID; a language-only LCID (such as 9) becomes that language's most likely
// specific locale (0x409); any other LCID is returned unchanged.
VELCOREDATA_EXPORT uint32_t ConvertDefaultLocale(uint32_t lcid);

}  // namespace LanguageUtils
