#include "velcoredata/platform/CaseFolding.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include "velcoredata/platform/LogicException.h"

TString FoldCase(const TString& text) {
  if (text.isEmpty()) return text;
  // Folding seldom changes the length; one retry covers the texts it grows.
  std::u16string folded(static_cast<size_t>(text.size()), u'\0');
  for (int attempt = 0; attempt < 2; ++attempt) {
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        u_strFoldCase(folded.data(), static_cast<int32_t>(folded.size()), text.data(), text.size(),
                      U_FOLD_CASE_DEFAULT, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
      folded.assign(static_cast<size_t>(length), u'\0');
      continue;
    }
    VEL_ASSERT(U_SUCCESS(status));
    folded.resize(static_cast<size_t>(length));
    return TString(std::move(folded));
  }
  VEL_FAIL("u_strFoldCase did not fit the size it asked for");
}
