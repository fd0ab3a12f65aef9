// The length of a null-terminated UTF-16 text, eight code units per step.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace TextLength {

// Code units before the terminating 0 of `text` (not null, 2-byte aligned).
// Reads the aligned 16-byte blocks that hold the text: a block never
// crosses a page, so the bytes read around the text cannot fault; the
// sanitizers would report them, so they do not look at this function.
#if defined(__SSE2__)
__attribute__((no_sanitize("address", "thread"))) inline size_t Of(const char16_t* text) noexcept {
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
inline size_t Of(const char16_t* text) noexcept { return std::char_traits<char16_t>::length(text); }
#endif

}  // namespace TextLength
