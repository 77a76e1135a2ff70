#pragma once

#include <emmintrin.h>

namespace Halvora::detail {

// 16 elements to narrow text on x86-64, where GCC does not see that no more than 0xFF is left to
// pack and shuffles bytes instead. Clang sees it, and ARM has instructions that narrow. `other`
// stands for what narrow text does not have.

inline __m128i loadX86(void const* in) noexcept {
    return _mm_loadu_si128(static_cast<__m128i const*>(in));
}

// Each bit of `value` where that of `isKept` is set, elsewhere that of `other`.
inline __m128i selectX86(__m128i isKept, __m128i value, __m128i other) noexcept {
    return _mm_or_si128(_mm_and_si128(isKept, value), _mm_andnot_si128(isKept, other));
}

#if __SIZEOF_WCHAR_T__ == 4
inline void packBlock(char* out, wchar_t const* in, unsigned char other) noexcept {
    auto const latin1 = [in, other](int at) {
        __m128i const value = loadX86(in + at);
        __m128i const isLatin1 = _mm_cmpeq_epi32(_mm_srli_epi32(value, 8), _mm_setzero_si128());
        return selectX86(isLatin1, value, _mm_set1_epi32(other));
    };
    __m128i const front = _mm_packs_epi32(latin1(0), latin1(4));
    __m128i const back = _mm_packs_epi32(latin1(8), latin1(12));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(front, back));
}
#endif

inline void packBlock(char* out, unsigned short const* in, unsigned char other) noexcept {
    auto const latin1 = [in, other](int at) {
        __m128i const value = loadX86(in + at);
        __m128i const isLatin1 = _mm_cmpeq_epi16(_mm_srli_epi16(value, 8), _mm_setzero_si128());
        return selectX86(isLatin1, value, _mm_set1_epi16(other));
    };
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(latin1(0), latin1(8)));
}

#if __SIZEOF_WCHAR_T__ == 2
inline void packBlock(char* out, wchar_t const* in, unsigned char other) noexcept {
    packBlock(out, reinterpret_cast<unsigned short const*>(in), other); // which are only loaded
}
#endif

} // namespace Halvora::detail
