#include "velcoredata/strings/StringUtils.h"

#include <cstddef>
#include <string_view>

std::vector<TString> SplitString(const TString& text, char16_t separator) {
  std::vector<TString> pieces;
  const std::u16string_view view = text.view();
  size_t start = 0;
  while (start <= view.size()) {
    size_t end = view.find(separator, start);
    if (end == std::u16string_view::npos) end = view.size();
    if (end > start) pieces.emplace_back(view.substr(start, end - start));
    start = end + 1;
  }
  return pieces;
}

TString JoinString(const std::vector<TString>& pieces, char16_t separator) {
  TString joined;
  int length = 0;
  for (const TString& piece : pieces) length += piece.size() + 1;
  joined.reserve(length);
  for (size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) joined.append(separator);
    joined.append(pieces[i]);
  }
  return joined;
}
