#pragma once

#include <emmintrin.h>

namespace Halvora::detail {

// 16 elements to a smaller type on x86-64, where compilers do not use that the instructions which
// pack also saturate. `other` stands for what narrow text does not have.

inline __m128i loadX86(void const* in) noexcept {
    return _mm_loadu_si128(static_cast<__m128i const*>(in));
}

inline void storeX86(void* out, __m128i value) noexcept {
    _mm_storeu_si128(static_cast<__m128i*>(out), value);
}

// Units of which those above 0xFF turn negative, so that packing gives 0, and the others stay.
inline __m128i dropX86(__m128i units) noexcept {
    __m128i const bias = _mm_set1_epi16(0x7F00);
    return _mm_subs_epi16(_mm_adds_epu16(units, bias), bias);
}

// Twice `^ other` leaves a unit as it is, but makes a 0 that comes between the two `other`.
inline void packUnits(char* out, __m128i front, __m128i back, unsigned char other) noexcept {
    __m128i const units = _mm_set1_epi16(other);
    __m128i const bytes =
        _mm_packus_epi16(dropX86(_mm_xor_si128(front, units)), dropX86(_mm_xor_si128(back, units)));
    storeX86(out, _mm_xor_si128(bytes, _mm_set1_epi8(static_cast<char>(other))));
}

inline void packBlock(char* out, unsigned short const* in, unsigned char other) noexcept {
    packUnits(out, loadX86(in), loadX86(in + 8), other);
}

#if __SIZEOF_WCHAR_T__ == 4

// Packed with its sign, what is not in 0 to 0xFF stays outside.
inline void packBlock(char* out, wchar_t const* in, unsigned char other) noexcept {
    packUnits(out, _mm_packs_epi32(loadX86(in), loadX86(in + 4)),
              _mm_packs_epi32(loadX86(in + 8), loadX86(in + 12)), other);
}

inline void packBlock(unsigned short* out, wchar_t const* in, unsigned char) noexcept {
    auto const cut = [in](int at) { // to what 16 bits with a sign hold
        return _mm_srai_epi32(_mm_slli_epi32(loadX86(in + at), 16), 16);
    };
    storeX86(out, _mm_packs_epi32(cut(0), cut(4)));
    storeX86(out + 8, _mm_packs_epi32(cut(8), cut(12)));
}

#else

inline void packBlock(char* out, wchar_t const* in, unsigned char other) noexcept {
    packBlock(out, reinterpret_cast<unsigned short const*>(in), other); // which are only loaded
}

#endif

} // namespace Halvora::detail
