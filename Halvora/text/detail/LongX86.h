#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace Halvora::detail {

// Conversions of long runs on x86-64 in registers of 32 and of 64 bytes. A caller must know that
// the processor has them. Every helper is inlined: a copy of its own could not pass such a register
// to one that is compiled for less.

#define HALV_AVX2 [[gnu::target("avx2"), gnu::always_inline]] inline
#define HALV_AVX512 [[gnu::target("avx512bw"), gnu::always_inline]] inline

HALV_AVX2 __m256i loadAvx2(void const* in) noexcept {
    return _mm256_loadu_si256(static_cast<__m256i const*>(in));
}

HALV_AVX2 void storeAvx2(void* out, __m256i value) noexcept {
    _mm256_storeu_si256(static_cast<__m256i*>(out), value);
}

// A narrower text is made as in PackX86.h, but the two halves of a register are packed by
// themselves: what comes out is in the wrong order by quarters.

HALV_AVX2 __m256i dropAvx2(__m256i units) noexcept {
    __m256i const bias = _mm256_set1_epi16(0x7F00);
    return _mm256_subs_epi16(_mm256_adds_epu16(units, bias), bias);
}

HALV_AVX2 __m256i packAvx2(__m256i front, __m256i back, unsigned char other) noexcept {
    __m256i const units = _mm256_set1_epi16(other);
    __m256i const bytes = _mm256_packus_epi16(dropAvx2(_mm256_xor_si256(front, units)),
                                              dropAvx2(_mm256_xor_si256(back, units)));
    return _mm256_xor_si256(bytes, _mm256_set1_epi8(static_cast<char>(other)));
}

HALV_AVX2 void convertAvx2(char* out, unsigned short const* in, unsigned char other) noexcept {
    __m256i const bytes = packAvx2(loadAvx2(in), loadAvx2(in + 16), other);
    storeAvx2(out, _mm256_permute4x64_epi64(bytes, 0b11'01'10'00));
}

HALV_AVX2 void convertAvx2(char* out, wchar_t const* in, unsigned char other) noexcept {
    __m256i const bytes = packAvx2(_mm256_packs_epi32(loadAvx2(in), loadAvx2(in + 8)),
                                   _mm256_packs_epi32(loadAvx2(in + 16), loadAvx2(in + 24)), other);
    __m256i const order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    storeAvx2(out, _mm256_permutevar8x32_epi32(bytes, order));
}

HALV_AVX2 void convertAvx2(unsigned short* out, wchar_t const* in, unsigned char) noexcept {
    __m256i const kept = _mm256_set1_epi32(0xFFFF);
    for (int at = 0; at < 32; at += 16) {
        __m256i const units = _mm256_packus_epi32(_mm256_and_si256(loadAvx2(in + at), kept),
                                                  _mm256_and_si256(loadAvx2(in + at + 8), kept));
        storeAvx2(out + at, _mm256_permute4x64_epi64(units, 0b11'01'10'00));
    }
}

// A wider text is as quick as its stores, hence in whole lines of the cache: 64 bytes.

HALV_AVX2 __m128i loadHalf(void const* in) noexcept {
    return _mm_loadu_si128(static_cast<__m128i const*>(in));
}

HALV_AVX2 void convertAvx2(unsigned short* out, char const* in, unsigned char) noexcept {
    storeAvx2(out, _mm256_cvtepu8_epi16(loadHalf(in)));
    storeAvx2(out + 16, _mm256_cvtepu8_epi16(loadHalf(in + 16)));
}

HALV_AVX2 void convertAvx2(wchar_t* out, char const* in, unsigned char) noexcept {
    __m128i const bytes = loadHalf(in);
    storeAvx2(out, _mm256_cvtepu8_epi32(bytes));
    storeAvx2(out + 8, _mm256_cvtepu8_epi32(_mm_unpackhi_epi64(bytes, bytes)));
}

HALV_AVX2 void convertAvx2(wchar_t* out, unsigned short const* in, unsigned char) noexcept {
    storeAvx2(out, _mm256_cvtepu16_epi32(loadHalf(in)));
    storeAvx2(out + 8, _mm256_cvtepu16_epi32(loadHalf(in + 8)));
}

HALV_AVX512 void convertAvx512(unsigned short* out, char const* in) noexcept {
    _mm512_storeu_si512(out, _mm512_cvtepu8_epi16(loadAvx2(in)));
}

// The forms without a mask come with a false warning from GCC 12, which leaves the mask out again.
HALV_AVX512 void convertAvx512(wchar_t* out, char const* in) noexcept {
    _mm512_storeu_si512(out, _mm512_maskz_cvtepu8_epi32(0xFFFF, loadHalf(in)));
}

HALV_AVX512 void convertAvx512(wchar_t* out, unsigned short const* in) noexcept {
    _mm512_storeu_si512(out, _mm512_maskz_cvtepu16_epi32(0xFFFF, loadAvx2(in)));
}

#undef HALV_AVX2
#undef HALV_AVX512

// The runs, of no fewer elements than one of their steps has. The first step ends anywhere, all
// others on a boundary, the last at n.

template <typename To>
inline constexpr std::size_t longStep = sizeof(To) == 1 ? 32 : 64 / sizeof(To);

// The elements from `out` to the next boundary that a step ends at.
template <typename To>
std::size_t toBoundary(To const* out) noexcept {
    return longStep<To> - reinterpret_cast<std::uintptr_t>(out) / sizeof(To) % longStep<To>;
}

template <typename To, typename From>
[[gnu::target("avx2")]] void convertRunAvx2(To* __restrict out, From const* __restrict in,
                                            std::size_t n, unsigned char other) noexcept {
    std::size_t const last = n - longStep<To>;
    convertAvx2(out, in, other);
    for (std::size_t at = toBoundary(out); at < last; at += longStep<To>) {
        convertAvx2(out + at, in + at, other);
    }
    convertAvx2(out + last, in + last, other);
}

template <typename To, typename From>
[[gnu::target("avx512bw")]] void convertRunAvx512(To* __restrict out, From const* __restrict in,
                                                  std::size_t n) noexcept {
    std::size_t const last = n - longStep<To>;
    convertAvx512(out, in);
    for (std::size_t at = toBoundary(out); at < last; at += longStep<To>) {
        convertAvx512(out + at, in + at);
    }
    convertAvx512(out + last, in + last);
}

} // namespace Halvora::detail
