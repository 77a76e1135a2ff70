#pragma once

#include <Halvora/text/detail/Ascii.h>

#include <iterator>
#include <numeric>

namespace Halvora::detail {

// The length of the conversion, if the text is well-formed.

inline std::size_t sumOfBytes(Word word) noexcept {
    constexpr Word pairs = static_cast<Word>(0x00FF00FF00FF00FF);
    Word const sums = (word & pairs) + (word >> 8 & pairs);
    return (sums * static_cast<Word>(0x0001000100010001)) >> (8 * wordSize - 16);
}
inline std::size_t sumOfBytes(Vector words) noexcept {
    std::size_t sum = 0;
    for (std::size_t i = 0; i < sizeof words / wordSize; ++i) {
        sum += sumOfBytes(static_cast<Word>(words[i]));
    }
    return sum;
}

// All bytes but the continuations; in 16-bit text, two for the lead of four bytes.
[[gnu::noinline]] inline std::size_t convertedLength(Byte const* text, std::size_t n,
                                                     bool isUtf16) noexcept {
    constexpr Word ones = highBits >> 7;
    constexpr std::size_t mostBlocks = 255; // until a byte of the sums overflows
    std::size_t length = n;
    std::size_t at = 0;
    while (n - at >= sizeof(Block)) {
        Block continuations{};
        Block fours{};
        for (std::size_t i = 0; i < mostBlocks && n - at >= sizeof(Block); ++i) {
            Block block;
            std::memcpy(&block, text + at, sizeof block);
            at += sizeof block;
            Block const next = block << 1;
            continuations += (block & ~next) >> 7 & ones;
            Block const two = block & next;
            fours += (two & two << 2) >> 7 & ones;
        }
        length -= sumOfBytes(continuations);
        length += isUtf16 ? sumOfBytes(fours) : 0;
    }
    for (; at < n; ++at) {
        length -= isContinuation(text[at]) ? 1 : 0;
        length += isUtf16 && text[at] >= 0xF0 ? 1 : 0;
    }
    return length;
}

// How many bytes more than one an element becomes; of a surrogate pair two too many.
template <typename Unit, typename Signed = std::make_signed_t<Unit>>
Signed bytesBeyondOne(Unit unit) noexcept {
    auto const code = static_cast<std::make_unsigned_t<Unit>>(unit);
    auto const isAbove = [code](int bits) { return static_cast<Signed>(code >> bits) > 0; };
    return static_cast<Signed>(isAbove(7) + isAbove(11) + (sizeof(Unit) == 4 && isAbove(16)));
}

template <typename Unit>
[[gnu::noinline]] std::size_t convertedLength(Unit const* text, std::size_t n, bool) noexcept {
    constexpr std::size_t block = 16; // a fixed length, which compilers take to vectors
    constexpr std::size_t mostBlocks = 64;
    std::size_t length = n;
    std::size_t at = 0;
    while (hasVectors && n - at >= block) {
        std::make_signed_t<Unit> more[block] = {};
        for (std::size_t i = 0; i < mostBlocks && n - at >= block; ++i, at += block) {
            for (std::size_t j = 0; j < block; ++j) {
                more[j] =
                    static_cast<std::make_signed_t<Unit>>(more[j] + bytesBeyondOne(text[at + j]));
            }
        }
        length += std::accumulate(std::begin(more), std::end(more), std::size_t(0));
    }
    for (; at < n; ++at) {
        length += static_cast<std::size_t>(bytesBeyondOne(text[at]));
    }
    return length;
}

} // namespace Halvora::detail
