#pragma once

#include <Halvora/text/detail/PackX86.h>
#include <Halvora/text/detail/Utf8Characters.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Halvora::detail {

// What Utf8 does on x86-64 with registers of 16 bytes.

// Each bit of `value` where that of `isKept` is set, elsewhere that of `other`.
inline __m128i selectX86(__m128i isKept, __m128i value, __m128i other) noexcept {
    return _mm_or_si128(_mm_and_si128(isKept, value), _mm_andnot_si128(isKept, other));
}

inline __m128i ofAllX86(std::uint32_t value) noexcept {
    return _mm_set1_epi32(static_cast<int>(value));
}

// Whether all lanes are zero.
inline bool isZeroX86(__m128i value) noexcept {
    return _mm_movemask_epi8(_mm_cmpeq_epi32(value, _mm_setzero_si128())) == 0xFFFF;
}

template <typename To>
void widenX86(To* out, __m128i bytes) noexcept {
    __m128i const zero = _mm_setzero_si128();
    __m128i const front = _mm_unpacklo_epi8(bytes, zero);
    __m128i const back = _mm_unpackhi_epi8(bytes, zero);
    if constexpr (sizeof(To) == 2) {
        storeX86(out, front);
        storeX86(out + 8, back);
    } else {
        storeX86(out, _mm_unpacklo_epi16(front, zero));
        storeX86(out + 4, _mm_unpackhi_epi16(front, zero));
        storeX86(out + 8, _mm_unpacklo_epi16(back, zero));
        storeX86(out + 12, _mm_unpackhi_epi16(back, zero));
    }
}

// These copy 16 elements and tell whether all were ASCII.

template <typename To>
bool copyAsciiX86(To* out, unsigned char const* in) noexcept {
    __m128i const bytes = loadX86(in);
    widenX86(out, bytes);
    return _mm_movemask_epi8(bytes) == 0;
}

template <typename Unit>
bool copyAsciiX86(char* out, Unit const* in) noexcept {
    __m128i front, back;
    if constexpr (sizeof(Unit) == 2) {
        front = loadX86(in);
        back = loadX86(in + 8);
    } else { // what is no ASCII stays none
        front = _mm_packs_epi32(loadX86(in), loadX86(in + 4));
        back = _mm_packs_epi32(loadX86(in + 8), loadX86(in + 12));
    }
    storeX86(out, _mm_packus_epi16(front, back));
    return isZeroX86(_mm_and_si128(_mm_or_si128(front, back), ofAllX86(0xFF80FF80)));
}

// At least 16 elements. The last block may overlap the one before. One block goes straight through.
template <typename To, typename From>
bool copyAsciiBlocks(To* __restrict out, From const* __restrict text, std::size_t n) noexcept {
    if (!copyAsciiX86(out, text)) {
        return false;
    }
    if (n == 16) {
        return true;
    }
    std::size_t const last = n - 16;
    for (std::size_t at = 16; at < last; at += 16) {
        if (!copyAsciiX86(out + at, text + at)) {
            return false;
        }
    }
    return copyAsciiX86(out + last, text + last);
}

// Two registers of numbers up to 0xFFFF as one.
inline __m128i cutX86(__m128i first, __m128i second) noexcept {
    auto const spread = [](__m128i value) { return _mm_srai_epi32(_mm_slli_epi32(value, 16), 16); };
    return _mm_packs_epi32(spread(first), spread(second));
}

// Whether a unit, of which only the upper five bits are left, belongs to a pair of surrogates or is
// below 0x800.
inline __m128i isNotThreeX86(__m128i top) noexcept {
    return _mm_or_si128(_mm_cmpeq_epi16(top, _mm_setzero_si128()),
                        _mm_cmpeq_epi16(top, ofAllX86(0xD800D800)));
}

// Takes four characters of three bytes each, unless there is anything else.
template <typename To>
bool takeFourX86(To*& to, unsigned char const*& at) noexcept {
    auto const lane = [at](int i) { return static_cast<int>(bytesAt(at + i)); };
    __m128i const bytes = _mm_setr_epi32(lane(0), lane(3), lane(6), lane(9));
    __m128i const marks = _mm_and_si128(bytes, ofAllX86(0xC0C0F0));
    __m128i const high = _mm_slli_epi32(_mm_and_si128(bytes, ofAllX86(0x0F)), 12);
    __m128i const middle = _mm_and_si128(_mm_srli_epi32(bytes, 2), ofAllX86(0xFC0));
    __m128i const low = _mm_and_si128(_mm_srli_epi32(bytes, 16), ofAllX86(0x3F));
    __m128i const codes = _mm_or_si128(_mm_or_si128(high, middle), low);
    __m128i const units = cutX86(codes, codes);
    __m128i const isBad = isNotThreeX86(_mm_and_si128(units, ofAllX86(0xF800F800)));
    if (!isZeroX86(_mm_or_si128(_mm_xor_si128(marks, ofAllX86(0x8080E0)), isBad))) {
        return false;
    }
    if constexpr (sizeof(To) == 2) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), units);
    } else {
        storeX86(to, codes);
    }
    to += 4;
    at += 12;
    return true;
}

// Converts such ones while all four begin before `last`, behind which three bytes can be read.
// Gives their number.
template <typename To>
[[gnu::noinline]] std::ptrdiff_t convertThreesX86(To* out, unsigned char const* at,
                                                  unsigned char const* last) noexcept {
    To* to = out;
    while (last - at > 9 && takeFourX86(to, at)) {
    }
    return to - out;
}

// 8 units below 0x800, by two bytes and one for each pair of them.
inline void putTwosX86(char*& to, __m128i units) noexcept {
    __m128i const low = _mm_slli_epi16(_mm_and_si128(units, ofAllX86(0x3F003F)), 8);
    __m128i const twos =
        _mm_or_si128(_mm_or_si128(_mm_srli_epi16(units, 6), low), ofAllX86(0x80C080C0));
    __m128i const isTwo = _mm_cmpgt_epi16(units, ofAllX86(0x7F007F));
    __m128i const both = selectX86(isTwo, twos, units);
    __m128i const close =
        _mm_or_si128(_mm_and_si128(both, ofAllX86(0xFF)), _mm_srli_epi32(both, 8));
    __m128i const isFirstTwo = _mm_srai_epi32(_mm_slli_epi32(isTwo, 16), 16);
    __m128i const pairs = selectX86(isFirstTwo, both, close);
    __m128i const lengths = _mm_add_epi32(_mm_madd_epi16(isTwo, isTwo), ofAllX86(2));
    // Where each pair ends, a byte for each.
    __m128i const packed = _mm_packs_epi16(_mm_packs_epi32(lengths, lengths), lengths);
    std::uint32_t const ends = static_cast<std::uint32_t>(_mm_cvtsi128_si32(packed)) * 0x01010101;
    auto const put = [to](std::uint32_t at, __m128i pair) {
        auto const bytes = static_cast<std::uint32_t>(_mm_cvtsi128_si32(pair));
        std::memcpy(to + at, &bytes, sizeof bytes);
    };
    put(0, pairs);
    put(ends & 0xFF, _mm_srli_si128(pairs, 4));
    put(ends >> 8 & 0xFF, _mm_srli_si128(pairs, 8));
    put(ends >> 16 & 0xFF, _mm_srli_si128(pairs, 12));
    to += ends >> 24;
}

// 8 units of three bytes each.
inline void putThreesX86(char*& to, __m128i units) noexcept {
    __m128i const low = _mm_or_si128(_mm_and_si128(units, ofAllX86(0x3F003F)), ofAllX86(0x800080));
    __m128i const middle = _mm_and_si128(_mm_slli_epi16(units, 2), ofAllX86(0x3F003F00));
    __m128i const front =
        _mm_or_si128(_mm_or_si128(_mm_srli_epi16(units, 12), middle), ofAllX86(0x80E080E0));
    auto const put = [&to](__m128i bytes) { // three of each four
        __m128i const first = _mm_and_si128(bytes, _mm_set1_epi64x(0xFFFFFF));
        __m128i const second =
            _mm_and_si128(_mm_srli_epi64(bytes, 8), _mm_set1_epi64x(0xFFFFFF000000));
        __m128i const pairs = _mm_or_si128(first, second);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), pairs);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to + 6), _mm_unpackhi_epi64(pairs, pairs));
        to += 12;
    };
    put(_mm_unpacklo_epi16(front, low));
    put(_mm_unpackhi_epi16(front, low));
}

// Takes 8 units, unless they need what none of the above has.
inline bool putUnitsX86(char*& to, __m128i units) noexcept {
    __m128i const top = _mm_and_si128(units, ofAllX86(0xF800F800));
    if (isZeroX86(top)) {
        if (isZeroX86(_mm_and_si128(units, ofAllX86(0xFF80FF80)))) {
            _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(units, units));
            to += 8;
        } else {
            putTwosX86(to, units);
        }
        return true;
    }
    if (!isZeroX86(isNotThreeX86(top))) {
        return false;
    }
    putThreesX86(to, units);
    return true;
}

// Takes characters up to U+FFFF, 8 at a time. Gives the place before which it finds no more: there
// are others among them, or less than 8 are left.
template <typename Unit>
Unit const* convertX86(char*& out, Unit const*& text, Unit const* stop) noexcept {
    char* to = out;
    Unit const* at = text;
    bool isGood = true;
    while (isGood && stop - at >= 8) {
        __m128i units = loadX86(at);
        if constexpr (sizeof(Unit) == 4) {
            __m128i const second = loadX86(at + 4);
            isGood = isZeroX86(_mm_srli_epi32(_mm_or_si128(units, second), 16));
            units = cutX86(units, second);
        }
        isGood = isGood && putUnitsX86(to, units);
        at += isGood ? 8 : 0;
    }
    out = to;
    text = at;
    return isGood ? stop : at + 8;
}

} // namespace Halvora::detail
