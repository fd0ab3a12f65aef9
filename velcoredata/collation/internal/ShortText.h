// Length and equality of the short UTF-16 texts the string pool interns,
// inline and eight bytes or more per step: a call into the C library costs
// as much as the work on a text of a few dozen code units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ShortText {

// Code units before the terminating 0 of `text` (not null, 2-byte aligned).
// Reads the aligned 16-byte blocks that hold the text: a block never
// crosses a page, so the bytes read around the text cannot fault; the
// sanitizers would report them, so they do not look at this function.
#if defined(__SSE2__)
__attribute__((no_sanitize("address", "thread"))) inline size_t Length(const char16_t* text) noexcept {
  const uintptr_t address = reinterpret_cast<uintptr_t>(text);
  const char* block = reinterpret_cast<const char*>(address & ~uintptr_t{15});
  const __m128i zero = _mm_setzero_si128();
  // Bytes of the first block before the text do not count.
  uint32_t zeros = static_cast<uint32_t>(_mm_movemask_epi8(
                       _mm_cmpeq_epi16(_mm_load_si128(reinterpret_cast<const __m128i*>(block)), zero))) &
                   (~0u << (address & 15));
  while (zeros == 0) {
    block += 16;
    zeros = static_cast<uint32_t>(
        _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_load_si128(reinterpret_cast<const __m128i*>(block)), zero)));
  }
  return static_cast<size_t>(block + __builtin_ctz(zeros) - reinterpret_cast<const char*>(text)) / 2;
}
#else
inline size_t Length(const char16_t* text) noexcept { return std::char_traits<char16_t>::length(text); }
#endif

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
