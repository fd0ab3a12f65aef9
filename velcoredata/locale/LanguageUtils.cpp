#include "velcoredata/locale/LanguageUtils.h"

#include <unicode/uloc.h>

#include <algorithm>

#include "velcoredata/core/CoreDataOptions.h"

namespace LanguageUtils {
namespace {

constexpr int kNameCapacity = ULOC_FULLNAME_CAPACITY;

// The name ICU gives an LCID, or "" when it has none.
std::string IcuLocaleForLCID(uint32_t lcid) {
  char buffer[kNameCapacity];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = uloc_getLocaleForLCID(lcid, buffer, kNameCapacity, &status);
  if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING || length <= 0) return {};
  std::string name(buffer, static_cast<size_t>(length));
  if (name == "root") return {};  // ICU's answer for the pseudo-LCIDs and 0
  return name;
}

std::string Canonical(const std::string& name) {
  std::string dashless = name;
  std::replace(dashless.begin(), dashless.end(), '-', '_');
  char buffer[kNameCapacity];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = uloc_canonicalize(dashless.c_str(), buffer, kNameCapacity, &status);
  if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING || length <= 0) return dashless;
  return std::string(buffer, static_cast<size_t>(length));
}

// The process locale as ICU sees it, with POSIX read as en_US.
std::string EnvironmentLocale() {
  std::string name = uloc_getDefault();
  if (name.empty() || name == "en_US_POSIX" || name == "c" || name == "root") return "en_US";
  return name;
}

std::string UserLocale() {
  const uint32_t configured = CoreDataOptions::GetDefaultLocale();
  if (configured != 0 && configured != kUserDefaultLCID && configured != kSystemDefaultLCID) {
    std::string name = IcuLocaleForLCID(configured);
    if (!name.empty()) return name;
  }
  return EnvironmentLocale();
}

}  // namespace

std::string GetLocaleForLCID(uint32_t lcid) {
  if (lcid == kUserDefaultLCID) return UserLocale();
  if (lcid == kSystemDefaultLCID) return EnvironmentLocale();
  std::string name = IcuLocaleForLCID(lcid);
  return name.empty() ? "en" : name;
}

TString GetLocaleStr(uint32_t lcid) { return TString::fromLatin1(GetLocaleForLCID(lcid).c_str()); }

uint32_t GetLCIDForLocale(const std::string& localeName) {
  const std::string canonical = Canonical(localeName);
  if (canonical.empty()) return 0;
  if (const uint32_t lcid = uloc_getLCID(canonical.c_str()); lcid != 0) return lcid;
  char language[ULOC_LANG_CAPACITY];
  UErrorCode status = U_ZERO_ERROR;
  uloc_getLanguage(canonical.c_str(), language, ULOC_LANG_CAPACITY, &status);
  if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING || language[0] == 0) return 0;
  return uloc_getLCID(language);
}

const TString& GetDefaultISOString() {
  static const TString* const name = new TString(u"en_US");
  return *name;
}

uint32_t ConvertDefaultLocale(uint32_t lcid) {
  if (lcid == kUserDefaultLCID || lcid == kSystemDefaultLCID) {
    const uint32_t resolved = GetLCIDForLocale(GetLocaleForLCID(lcid));
    return resolved != 0 ? resolved : 0x409;
  }
  // A language-only LCID has sub-language 0 (bits 10-15).
  if (lcid == 0 || (lcid & 0xFC00u) != 0 || lcid > 0xFFFFu) return lcid;
  const std::string language = IcuLocaleForLCID(lcid);
  if (language.empty()) return lcid;
  char likely[kNameCapacity];
  UErrorCode status = U_ZERO_ERROR;
  uloc_addLikelySubtags(language.c_str(), likely, kNameCapacity, &status);
  if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING) return lcid;
  if (const uint32_t specific = uloc_getLCID(likely); specific != 0 && specific != lcid) return specific;
  // ICU knows some locales only without their script: en_Latn_US -> en_US.
  char lang[ULOC_LANG_CAPACITY], country[ULOC_COUNTRY_CAPACITY];
  status = U_ZERO_ERROR;
  uloc_getLanguage(likely, lang, ULOC_LANG_CAPACITY, &status);
  uloc_getCountry(likely, country, ULOC_COUNTRY_CAPACITY, &status);
  if (U_FAILURE(status) || country[0] == 0) return lcid;
  const uint32_t specific = uloc_getLCID((std::string(lang) + "_" + country).c_str());
  return specific != 0 ? specific : lcid;
}

}  // namespace LanguageUtils
