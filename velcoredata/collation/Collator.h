// Collator: the string work behind a Collation.
//
// A collator compares, searches, maps case, trims and hashes UTF-16 text
// under one ordering. Collators keep scratch state (sort-key buffers, search
// objects) and are not thread-safe: a CollatorPool lends each thread its own
// (see CollatorRef), and a collator is only ever used by the thread it was
// lent to.
//
// Conventions shared by every operation:
//   - Texts are null-terminated UTF-16 unless a length is given; a null
//     pointer is read as the empty text.
//   - Positions and lengths are in UTF-16 code units; "not found" is -1.
//   - Output vectors are resized by the operation and always end with a
//     terminating 0 code unit (so out.data() is a C string and the text's
//     length is out.size() - 1).
//
// The virtual operations are declared in a fixed order; derived classes add
// their own after them.
#pragma once

#include <cstdint>
#include <vector>

#include "velcoredata/platform/Export.h"

class VELCOREDATA_EXPORT Collator {
 public:
  virtual ~Collator();

  // Negative, 0 or positive as a sorts before, with or after b.
  virtual int Compare(const char16_t* a, const char16_t* b) const = 0;
  // The texts a[0, lenA) and b[0, lenB); a length of -1 means "up to the
  // terminating 0", on every collator.
  virtual int Compare(const char16_t* a, int lenA, const char16_t* b, int lenB) const = 0;

  // The position of the first match of pattern in text, or -1 (also for an
  // empty pattern).
  virtual int Search(const char16_t* text, const char16_t* pattern) const = 0;
  // The first match at or after `start`; when matchLength is given it
  // receives the length of the matched stretch of text.
  virtual int Search(const char16_t* text, const char16_t* pattern, int start,
                     int* matchLength) const = 0;

  // `out` := text with every match of pattern replaced by replacement.
  virtual void Replace(std::vector<char16_t>& out, const char16_t* text, const char16_t* pattern,
                       const char16_t* replacement) const = 0;

  virtual bool StartsWith(const char16_t* text, const char16_t* prefix) const = 0;
  virtual bool EndsWith(const char16_t* text, const char16_t* suffix) const = 0;

  virtual void Lower(std::vector<char16_t>& out, const char16_t* text) const = 0;
  virtual void Upper(std::vector<char16_t>& out, const char16_t* text) const = 0;

  // Leading, trailing or both kinds of white space removed.
  virtual void LTrim(std::vector<char16_t>& out, const char16_t* text) const = 0;
  virtual void RTrim(std::vector<char16_t>& out, const char16_t* text) const = 0;
  virtual void Trim(std::vector<char16_t>& out, const char16_t* text) const = 0;

  // A hash that agrees with Compare: texts that compare equal hash equal.
  virtual uint32_t Hash(const char16_t* text) const = 0;

  // Whether this collator and `other` order texts the same way.
  virtual bool IsEquivalent(const Collator& other) const = 0;

 protected:
  Collator() = default;
  Collator(const Collator&) = default;
  Collator& operator=(const Collator&) = default;
};
