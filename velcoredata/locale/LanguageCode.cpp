#include "velcoredata/locale/LanguageCode.h"

#include <unicode/uloc.h>

#include <algorithm>

#include "velcoredata/locale/LanguageUtils.h"

namespace {

TString CanonicalName(const TString& isoName) {
  std::string name = isoName.trimmed().toUtf8();
  std::replace(name.begin(), name.end(), '-', '_');
  char buffer[ULOC_FULLNAME_CAPACITY];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = uloc_canonicalize(name.c_str(), buffer, ULOC_FULLNAME_CAPACITY, &status);
  if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING || length <= 0) {
    return TString::fromUtf8(name);
  }
  return TString::fromLatin1(buffer, length);
}

}  // namespace

LanguageCode::LanguageCode(uint32_t lcid) : m_lcid(lcid), m_isoString(LanguageUtils::GetLocaleStr(lcid)) {}

LanguageCode::LanguageCode(const TString& isoName) : m_isoString(CanonicalName(isoName)) {
  const uint32_t lcid = LanguageUtils::GetLCIDForLocale(m_isoString.toUtf8());
  m_lcid = lcid != 0 ? lcid : LanguageUtils::kEnglishLCID;
}
