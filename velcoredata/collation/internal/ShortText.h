// Length and equality of the short UTF-16 texts the string pool interns,
// inline and several code units per step: a call into the C library costs
// as much as the work on a text of a few dozen code units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace ShortText {

// Code units before the terminating 0 of `text` (not null). Reads each code
// unit only after the one before it proved not to be the terminator, so it
// never touches memory past the caller's text; four units per step keep the
// loop short for the texts of a few dozen units the pool sees.
inline size_t Length(const char16_t* text) noexcept {
  const char16_t* p = text;
  for (;; p += 4) {
    if (p[0] == 0) return static_cast<size_t>(p - text);
    if (p[1] == 0) return static_cast<size_t>(p - text) + 1;
    if (p[2] == 0) return static_cast<size_t>(p - text) + 2;
    if (p[3] == 0) return static_cast<size_t>(p - text) + 3;
  }
}

// Whether the `Word` at `x` and the one at `y` are the same.
template <class Word>
inline bool SameWord(const char* x, const char* y) noexcept {
  Word u, v;
  std::memcpy(&u, x, sizeof(Word));
  std::memcpy(&v, y, sizeof(Word));
  return u == v;
}

// Whether the `units` code units at `a` and `b` are the same.
inline bool Equal(const char16_t* a, const char16_t* b, size_t units) noexcept {
  const char* x = reinterpret_cast<const char*>(a);
  const char* y = reinterpret_cast<const char*>(b);
  size_t bytes = units * sizeof(char16_t);
  if (bytes >= 8) {
    // Eight bytes at a time, the last eight overlapping what came before.
    for (; bytes > 8; x += 8, y += 8, bytes -= 8) {
      if (!SameWord<uint64_t>(x, y)) return false;
    }
    return SameWord<uint64_t>(x + bytes - 8, y + bytes - 8);
  }
  if (bytes >= 4) return SameWord<uint32_t>(x, y) && SameWord<uint32_t>(x + bytes - 4, y + bytes - 4);
  return bytes == 0 || SameWord<uint16_t>(x, y);
}

}  // namespace ShortText
