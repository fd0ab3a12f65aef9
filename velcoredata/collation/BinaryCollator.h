// BinaryCollator: the code-unit ordering.
//
// Texts compare by UTF-16 code unit, exactly and case-sensitively; searches
// are exact. Case mapping and trimming work per code unit with the
// platform's character classes (no mapping that changes the length). The
// collator has no state, so one instance serves every thread.
#pragma once

#include <algorithm>
#include <string>

#include "velcoredata/collation/Collator.h"

class VELCOREDATA_EXPORT BinaryCollator final : public Collator {
 public:
  BinaryCollator() = default;

  int Compare(const char16_t* a, const char16_t* b) const override;
  // The first min(lenA, lenB) code units decide; then the longer text sorts
  // last. The result is -1, 0 or 1. A negative length (-1) reads the text up
  // to its terminating 0, as ICU does.
  int Compare(const char16_t* a, int lenA, const char16_t* b, int lenB) const override;
  int Search(const char16_t* text, const char16_t* pattern) const override;
  // A start beyond the text finds nothing; a negative start counts as 0.
  int Search(const char16_t* text, const char16_t* pattern, int start,
             int* matchLength) const override;
  void Replace(std::vector<char16_t>& out, const char16_t* text, const char16_t* pattern,
               const char16_t* replacement) const override;
  bool StartsWith(const char16_t* text, const char16_t* prefix) const override;
  bool EndsWith(const char16_t* text, const char16_t* suffix) const override;
  // ASCII letters map as usual; other code units only when they are
  // upper-case (for Lower) or lower-case (for Upper) letters with a
  // one-to-one mapping.
  void Lower(std::vector<char16_t>& out, const char16_t* text) const override;
  void Upper(std::vector<char16_t>& out, const char16_t* text) const override;
  void LTrim(std::vector<char16_t>& out, const char16_t* text) const override;
  void RTrim(std::vector<char16_t>& out, const char16_t* text) const override;
  void Trim(std::vector<char16_t>& out, const char16_t* text) const override;
  // Compare without the virtual call (the collator has no state).
  static int CompareUnits(const char16_t* a, int lenA, const char16_t* b, int lenB) noexcept {
    if (lenA < 0) lenA = a ? static_cast<int>(std::char_traits<char16_t>::length(a)) : 0;
    if (lenB < 0) lenB = b ? static_cast<int>(std::char_traits<char16_t>::length(b)) : 0;
    const int common = std::min(lenA, lenB);
    if (common > 0) {
      const int order = std::char_traits<char16_t>::compare(a, b, static_cast<size_t>(common));
      if (order != 0) return order < 0 ? -1 : 1;
    }
    return lenA == lenB ? 0 : (lenA > lenB ? 1 : -1);
  }

  // THash32 of the text's UTF-16 bytes with seed 1.
  uint32_t Hash(const char16_t* text) const override;
  // True exactly when `other` is a BinaryCollator too.
  bool IsEquivalent(const Collator& other) const override;
};
