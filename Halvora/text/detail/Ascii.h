#pragma once

#include <Halvora/text/detail/Encoding.h>
#include <Halvora/text/detail/Utf8Characters.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

#if defined(__SSE2__)
#    include <Halvora/text/detail/Utf8X86.h>
#    define HALV_UTF8_X86
#endif
#ifdef HALV_LONG_RUNS
#    include <Halvora/text/detail/AsciiLongX86.h>
#endif

namespace Halvora::detail {

// The machine's word, as many bytes at once.
using Word = std::size_t;
inline constexpr std::size_t wordSize = sizeof(Word);
inline constexpr Word highBits = static_cast<Word>(0x8080808080808080);

// What is looked at in one go: a register of several words where there are such, else a word.
using Vector [[gnu::vector_size(16)]] = Word;
#if defined(__SSE2__) || defined(__ARM_NEON)
inline constexpr bool hasVectors = true;
#else
inline constexpr bool hasVectors = false;
#endif
using Block = std::conditional_t<hasVectors, Vector, Word>;

inline Word bitsOf(Word word) noexcept {
    return word;
}
inline Word bitsOf(Vector words) noexcept {
    Word const bits = words[0] | words[1];
    return wordSize == 8 ? bits : bits | words[2 % (16 / wordSize)] | words[3 % (16 / wordSize)];
}

inline Word wordAt(void const* at) noexcept {
    Word word;
    std::memcpy(&word, at, wordSize);
    return word;
}

// The bits of a word of units that no ASCII has.
template <typename Unit, typename Unsigned = std::make_unsigned_t<Unit>>
constexpr Word beyondAscii = ~static_cast<Word>(0) / static_cast<Unsigned>(-1) *
                             static_cast<Unsigned>(~static_cast<Unsigned>(0x7F));

// Whether none of the bits is set in any word of `size` bytes. The last word overlaps.
[[gnu::noinline]] inline bool hasNone(Word bits, void const* text, std::size_t size) noexcept {
    auto const* at = static_cast<char const*>(text);
    auto const* const end = at + size;
    auto const two = [&at](std::size_t i) {
        Block blocks[2];
        std::memcpy(&blocks[0], at + i * sizeof(Block), sizeof(Block));
        std::memcpy(&blocks[1], at + (i + 1) * sizeof(Block), sizeof(Block));
        return blocks[0] | blocks[1];
    };
    for (constexpr std::size_t step = 8 * sizeof(Block); static_cast<std::size_t>(end - at) >= step;
         at += step) {
        if ((bitsOf((two(0) | two(2)) | (two(4) | two(6))) & bits) != 0) {
            return false;
        }
    }
    Word found = 0;
    for (; static_cast<std::size_t>(end - at) >= wordSize; at += wordSize) {
        found |= wordAt(at);
    }
    if (size >= wordSize) {
        found |= wordAt(end - wordSize);
    } else if (size != 0) {
        std::memcpy(&found, at, size);
    }
    return (found & bits) == 0;
}

template <typename Unit>
bool isAscii(Unit const* text, std::size_t n) noexcept {
    return hasNone(beyondAscii<Unit>, text, n * sizeof(Unit));
}

// Copies n elements by their low bits, and tells whether all were ASCII, so that this is their
// conversion. The second block may overlap the first.
template <typename To, typename From>
bool copyAscii(To* __restrict out, From const* __restrict text, std::size_t n) noexcept {
    if constexpr (!hasVectors) {
        using Plain = std::conditional_t<sizeof(From) == 1, char, From>;
        if (!isAscii(text, n)) {
            return false;
        }
        convertRun(out, reinterpret_cast<Plain const*>(text), n);
        return true;
    } else {
        constexpr std::size_t block = 16; // a fixed length, which compilers take to vectors
        if (n < block) {
            std::make_unsigned_t<From> all = 0;
            for (std::size_t i = 0; i < n; ++i) {
                all |= static_cast<std::make_unsigned_t<From>>(text[i]);
                out[i] = static_cast<To>(text[i]);
            }
            return all < 0x80;
        }
#ifdef HALV_UTF8_X86
#    ifdef HALV_LONG_RUNS
        if (n >= longLength) {
            return copyAsciiLong(out, text, n);
        }
#    endif
        return copyAsciiBlocks(out, text, n);
#else
        Block all{};
        std::size_t stride = (n - 1) % block + 1;
        for (std::size_t at = 0; at < n; at += stride, stride = block) {
            constexpr std::size_t count = block * sizeof(From) / sizeof(Block); // 1, 2 or 4
            Block blocks[count];
            std::memcpy(blocks, text + at, sizeof blocks);
            all |= (blocks[0] | blocks[count / 4]) | (blocks[count / 2] | blocks[3 * count / 4]);
            for (std::size_t i = 0; i < block; ++i) {
                out[at + i] = static_cast<To>(text[at + i]);
            }
        }
        return (bitsOf(all) & beyondAscii<From>) == 0;
#endif
    }
}

} // namespace Halvora::detail
