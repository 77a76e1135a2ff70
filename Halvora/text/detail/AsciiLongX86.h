#pragma once

#include <Halvora/text/detail/LongX86.h>
#include <Halvora/text/detail/Utf8X86.h>

#include <type_traits>

namespace Halvora::detail {

// Long runs of ASCII, as LongX86.h converts Latin-1, which tell as well whether they are ASCII. A
// step gives the bits that its elements have, all in one.

#define HALV_AVX2 [[gnu::target("avx2"), gnu::always_inline]] inline
#define HALV_AVX512 [[gnu::target("avx512bw"), gnu::always_inline]] inline

HALV_AVX2 __m256i copyStepAvx2(unsigned short* out, unsigned char const* in) noexcept {
    __m256i const front = _mm256_cvtepu8_epi16(loadHalf(in));
    __m256i const back = _mm256_cvtepu8_epi16(loadHalf(in + 16));
    storeAvx2(out, front);
    storeAvx2(out + 16, back);
    return _mm256_or_si256(front, back);
}

HALV_AVX2 __m256i copyStepAvx2(wchar_t* out, unsigned char const* in) noexcept {
    __m128i const bytes = loadHalf(in);
    __m256i const front = _mm256_cvtepu8_epi32(bytes);
    __m256i const back = _mm256_cvtepu8_epi32(_mm_unpackhi_epi64(bytes, bytes));
    storeAvx2(out, front);
    storeAvx2(out + 8, back);
    return _mm256_or_si256(front, back);
}

HALV_AVX2 __m256i copyStepAvx2(char* out, unsigned short const* in) noexcept {
    __m256i const front = loadAvx2(in);
    __m256i const back = loadAvx2(in + 16);
    storeAvx2(out, _mm256_permute4x64_epi64(_mm256_packus_epi16(front, back), 0b11'01'10'00));
    return _mm256_or_si256(front, back);
}

HALV_AVX2 __m256i copyStepAvx2(char* out, wchar_t const* in) noexcept {
    __m256i const front = _mm256_packs_epi32(loadAvx2(in), loadAvx2(in + 8));
    __m256i const back = _mm256_packs_epi32(loadAvx2(in + 16), loadAvx2(in + 24));
    __m256i const order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    storeAvx2(out, _mm256_permutevar8x32_epi32(_mm256_packus_epi16(front, back), order));
    return _mm256_or_si256(front, back); // what is no ASCII stays none
}

HALV_AVX512 __m512i copyStepAvx512(unsigned short* out, unsigned char const* in) noexcept {
    __m512i const units = _mm512_cvtepu8_epi16(loadAvx2(in));
    _mm512_storeu_si512(out, units);
    return units;
}

HALV_AVX512 __m512i copyStepAvx512(wchar_t* out, unsigned char const* in) noexcept {
    __m512i const units = _mm512_maskz_cvtepu8_epi32(0xFFFF, loadHalf(in));
    _mm512_storeu_si512(out, units);
    return units;
}

#undef HALV_AVX2
#undef HALV_AVX512

// The bits that no ASCII has, in what a step gives.
template <typename To>
inline constexpr int beyondAsciiX86 = static_cast<int>(sizeof(To) == 4 ? 0xFFFFFF80 : 0xFF80FF80);

template <typename To, typename From>
[[gnu::target("avx2")]] bool copyAsciiAvx2(To* __restrict out, From const* __restrict in,
                                           std::size_t n) noexcept {
    std::size_t const last = n - longStep<To>;
    __m256i bits = copyStepAvx2(out, in);
    for (std::size_t at = toBoundary(out); at < last; at += longStep<To>) {
        bits |= copyStepAvx2(out + at, in + at);
    }
    bits |= copyStepAvx2(out + last, in + last);
    return _mm256_testz_si256(bits, _mm256_set1_epi32(beyondAsciiX86<To>)) != 0;
}

template <typename To, typename From>
[[gnu::target("avx512bw")]] bool copyAsciiAvx512(To* __restrict out, From const* __restrict in,
                                                 std::size_t n) noexcept {
    std::size_t const last = n - longStep<To>;
    __m512i bits = copyStepAvx512(out, in);
    for (std::size_t at = toBoundary(out); at < last; at += longStep<To>) {
        bits |= copyStepAvx512(out + at, in + at);
    }
    bits |= copyStepAvx512(out + last, in + last);
    return _mm512_test_epi32_mask(bits, _mm512_set1_epi32(beyondAsciiX86<To>)) == 0;
}

inline constexpr std::size_t asciiPart = 4096; // so that not much is in vain

// At least longLength elements, with the best that the processor has.
template <typename To, typename From>
bool copyAsciiLong(To* out, From const* text, std::size_t n) noexcept {
    auto const copyPart = [](To* to, From const* from, std::size_t length) {
        if constexpr (sizeof(From) == 1) {
            if (__builtin_cpu_supports("avx512bw")) {
                return copyAsciiAvx512(to, from, length);
            }
        }
        return __builtin_cpu_supports("avx2") ? copyAsciiAvx2(to, from, length)
                                              : copyAsciiBlocks(to, from, length);
    };
    for (; n >= 2 * asciiPart; n -= asciiPart, out += asciiPart, text += asciiPart) {
        if (!copyPart(out, text, asciiPart)) {
            return false;
        }
    }
    return copyPart(out, text, n);
}

// Replaces a string of n elements, at least longLength, by ASCII of as many; what is none goes to
// the other conversion. The first is for AVX-512 alone, with one call on the way to the loop.

template <typename Result, typename String, typename From>
using Conversion = Result(String& out, From const* text, std::size_t n);

template <typename Result, typename String, typename From>
[[gnu::target("avx512bw"), gnu::noinline, gnu::flatten]] Result
copyAsciiOrAvx512(String& out, From const* text, std::size_t n,
                  Conversion<Result, String, From>* other) {
    return copyAsciiAvx512(out.data(), text, n) ? Result{0, n} : other(out, text, n);
}

template <typename Result, typename String, typename From>
[[gnu::noinline]] Result copyAsciiOrLong(String& out, From const* text, std::size_t n,
                                         Conversion<Result, String, From>* other) {
    return copyAsciiLong(out.data(), text, n) ? Result{0, n} : other(out, text, n);
}

template <typename Result, typename String, typename From>
Result copyAsciiOr(String& out, From const* text, std::size_t n,
                   Conversion<Result, String, From>* other) {
    if constexpr (sizeof(From) == 1) {
        if (n < 2 * asciiPart && __builtin_cpu_supports("avx512bw")) {
            return copyAsciiOrAvx512(out, text, n, other);
        }
    }
    return copyAsciiOrLong(out, text, n, other);
}

} // namespace Halvora::detail
