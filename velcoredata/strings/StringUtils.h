// String utilities: cutting a text into pieces at a separator and joining
// pieces back.
//
// Thread-safety: pure functions over values.
#pragma once

#include <vector>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

// Cuts `text` at every occurrence of `separator` and returns the pieces in
// order, without the separators.
//
// Empty pieces are dropped: "1..2" gives {"1", "2"}, ".a." gives {"a"}, and
// an empty text or a text made only of separators gives no pieces at all.
// Callers read user-typed lists (version strings, words separated by spaces)
// where a doubled or trailing separator is a slip, not an empty item. A text
// that does not contain the separator is one piece, the whole text.
VELCOREDATA_EXPORT std::vector<TString> SplitString(const TString& text, char16_t separator);

// The pieces in order with `separator` between neighbours ("" for no pieces).
// SplitString undoes it when no piece is empty or contains the separator.
VELCOREDATA_EXPORT TString JoinString(const std::vector<TString>& pieces, char16_t separator);
