// LanguageCode: a locale's identity, as a Windows LCID and an ICU locale name.
//
// Made from an LCID, the name is that of the language table (pseudo-LCIDs
// 1024/2048 resolve to the current user/system locale when the code is made;
// the LCID itself stays as given). Made from a name (ICU "de_DE" or BCP-47
// "de-DE"), the name is kept in ICU's canonical form and the LCID is ICU's
// for it, or for its language alone, or 9 (English) when ICU has neither.
#pragma once

#include <cstdint>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT LanguageCode {
 public:
  explicit LanguageCode(uint32_t lcid);
  explicit LanguageCode(const TString& isoName);

  uint32_t GetLCID() const noexcept { return m_lcid; }
  // The ICU locale name ("de_DE").
  const TString& GetISOString() const noexcept { return m_isoString; }

  friend bool operator==(const LanguageCode& a, const LanguageCode& b) noexcept {
    return a.m_lcid == b.m_lcid && a.m_isoString == b.m_isoString;
  }

 private:
  uint32_t m_lcid;
  TString m_isoString;
};
