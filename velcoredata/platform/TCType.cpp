#include "velcoredata/platform/TCType.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace TCType {

bool isAlpha(char16_t c) noexcept { return !U16_IS_SURROGATE(c) && u_isalpha(c); }
bool isDigit(char16_t c) noexcept { return !U16_IS_SURROGATE(c) && u_isdigit(c); }
bool isAlnum(char16_t c) noexcept { return !U16_IS_SURROGATE(c) && u_isalnum(c); }
bool isSpace(char16_t c) noexcept { return !U16_IS_SURROGATE(c) && u_isUWhiteSpace(c); }
bool isUpper(char16_t c) noexcept { return !U16_IS_SURROGATE(c) && u_isupper(c); }
bool isLower(char16_t c) noexcept { return !U16_IS_SURROGATE(c) && u_islower(c); }

char16_t toUpper(char16_t c) noexcept {
  if (U16_IS_SURROGATE(c)) return c;
  const UChar32 u = u_toupper(c);
  return u <= 0xFFFF ? static_cast<char16_t>(u) : c;
}

char16_t toLower(char16_t c) noexcept {
  if (U16_IS_SURROGATE(c)) return c;
  const UChar32 l = u_tolower(c);
  return l <= 0xFFFF ? static_cast<char16_t>(l) : c;
}

}  // namespace TCType
