#pragma once

#include <emmintrin.h>

namespace Halvora::detail {

// Conversions of 16 elements to a smaller type by the packing instructions of x86-64, which also
// saturate; compilers make no use of that. `other` is the replacement.

inline __m128i loadX86(void const* in) noexcept {
    return _mm_loadu_si128(static_cast<__m128i const*>(in));
}

inline void storeX86(void* out, __m128i value) noexcept {
    _mm_storeu_si128(static_cast<__m128i*>(out), value);
}

// Makes units above 0xFF negative, so that packing turns them into 0; the others stay.
inline __m128i dropX86(__m128i units) noexcept {
    __m128i const bias = _mm_set1_epi16(0x7F00);
    return _mm_subs_epi16(_mm_adds_epu16(units, bias), bias);
}

// `^ other` before and after packing cancels out, but where packing gave 0 the second one leaves
// `other`.
inline void packUnitsX86(char* out, __m128i front, __m128i back, unsigned char other) noexcept {
    __m128i const units = _mm_set1_epi16(other);
    __m128i const bytes =
        _mm_packus_epi16(dropX86(_mm_xor_si128(front, units)), dropX86(_mm_xor_si128(back, units)));
    storeX86(out, _mm_xor_si128(bytes, _mm_set1_epi8(static_cast<char>(other))));
}

inline void packX86(char* out, unsigned short const* in, unsigned char other) noexcept {
    packUnitsX86(out, loadX86(in), loadX86(in + 8), other);
}

#if __SIZEOF_WCHAR_T__ == 4

// Packing with sign keeps what is outside 0 to 0xFF outside.
inline void packX86(char* out, wchar_t const* in, unsigned char other) noexcept {
    packUnitsX86(out, _mm_packs_epi32(loadX86(in), loadX86(in + 4)),
                 _mm_packs_epi32(loadX86(in + 8), loadX86(in + 12)), other);
}

inline void packX86(unsigned short* out, wchar_t const* in, unsigned char) noexcept {
    auto const cut = [in](int at) { // to what 16 bits with a sign hold
        return _mm_srai_epi32(_mm_slli_epi32(loadX86(in + at), 16), 16);
    };
    storeX86(out, _mm_packs_epi32(cut(0), cut(4)));
    storeX86(out + 8, _mm_packs_epi32(cut(8), cut(12)));
}

#else

inline void packX86(char* out, wchar_t const* in, unsigned char other) noexcept {
    packX86(out, reinterpret_cast<unsigned short const*>(in), other); // which are only loaded
}

#endif

} // namespace Halvora::detail
