// Small text helpers shared by the collators.
#pragma once

#include <string_view>
#include <vector>

namespace CollatorText {

// Collators read a null text as the empty one.
inline const char16_t* Text(const char16_t* text) noexcept { return text ? text : u""; }

inline int Length(const char16_t* text) noexcept {
  return text ? static_cast<int>(std::char_traits<char16_t>::length(text)) : 0;
}

// out := text without the leading and/or trailing code units for which
// isSpace holds, terminated by a 0 code unit.
template <class IsSpace>
void TrimInto(std::vector<char16_t>& out, const char16_t* text, bool leading, bool trailing,
              IsSpace isSpace) {
  const std::u16string_view in(Text(text));
  size_t begin = 0, end = in.size();
  if (leading) {
    while (begin < end && isSpace(in[begin])) ++begin;
  }
  if (trailing) {
    while (end > begin && isSpace(in[end - 1])) --end;
  }
  out.assign(in.begin() + static_cast<std::ptrdiff_t>(begin),
             in.begin() + static_cast<std::ptrdiff_t>(end));
  out.push_back(0);
}

}  // namespace CollatorText
