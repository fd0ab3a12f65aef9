// TCType: character classes of UTF-16 code units (Unicode properties via ICU).
// A surrogate code unit is never a letter, digit or space.
#pragma once

#include "velcoredata/platform/Export.h"

namespace TCType {

VELCOREDATA_EXPORT bool isAlpha(char16_t c) noexcept;
VELCOREDATA_EXPORT bool isDigit(char16_t c) noexcept;  // decimal digits of any script
VELCOREDATA_EXPORT bool isAlnum(char16_t c) noexcept;
VELCOREDATA_EXPORT bool isSpace(char16_t c) noexcept;  // Unicode white space
VELCOREDATA_EXPORT bool isUpper(char16_t c) noexcept;
VELCOREDATA_EXPORT bool isLower(char16_t c) noexcept;
// Simple one-to-one case mappings; code units without one are returned as they are.
VELCOREDATA_EXPORT char16_t toUpper(char16_t c) noexcept;
VELCOREDATA_EXPORT char16_t toLower(char16_t c) noexcept;

constexpr bool isAsciiDigit(char16_t c) noexcept { return c >= u'0' && c <= u'9'; }
constexpr bool isHexDigit(char16_t c) noexcept {
  return isAsciiDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

}  // namespace TCType
