#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <type_traits>

#if defined(__SSE2__)
#    include <Halvora/text/detail/PackX86.h>
#elif defined(__ARMEL__) && defined(__ARM_FEATURE_UNALIGNED) && !defined(__ARM_NEON)
#    include <Halvora/text/detail/WordsArm.h>
#    define HALV_ARM_WORDS
#endif
#if defined(__x86_64__) && defined(__ELF__) && __SIZEOF_WCHAR_T__ == 4
#    define HALV_LONG_RUNS
#endif

namespace Halvora::detail {

// What stands in narrow text for a character that it does not have.
inline constexpr unsigned char replacement = 0x20;

// convertElement, convertRun, convertInto and converted are what is called from elsewhere. What
// only one kind of machine has ends in its name.

// The one rule by which an element of narrow (char), 16-bit (unsigned short) or wide (wchar_t) text
// becomes an element of another: its unsigned value, cut to 16 bits, or the replacement where
// narrow text has no such character.
template <typename To, typename From>
constexpr To convertElement(From element) noexcept {
    auto const value = static_cast<std::make_unsigned_t<From>>(element);
    if constexpr (sizeof(To) == 1) {
        // The shift spares an unsigned comparison, which vectors of x86-64 lack.
        return static_cast<To>((value >> 8) != 0 ? replacement : value);
    } else {
        return static_cast<To>(value);
    }
}

#ifdef HALV_ARM_WORDS

// Converts n elements between buffers that do not overlap.
template <typename To, typename From>
[[gnu::noinline]] void convertRun(To* __restrict out, From const* __restrict in,
                                  std::size_t n) noexcept {
    constexpr std::size_t step = sizeof(To) == 1 ? 4 : 8;
    for (; n >= step; n -= step, out += step, in += step) {
        if constexpr (sizeof(To) != 1) {
            convertFourArm(out, in);
            convertFourArm(out + 4, in + 4);
        } else if (!narrowFourArm(out, in)) {
            out[0] = convertElement<To>(in[0]);
            out[1] = convertElement<To>(in[1]);
            out[2] = convertElement<To>(in[2]);
            out[3] = convertElement<To>(in[3]);
        }
    }
    for (; n != 0; --n) {
        *out++ = convertElement<To>(*in++);
    }
}

#else

// At -O2 compilers use vectors for a loop of exactly 16, not for one of unknown length. The last
// block ends at n and overlaps the one before.
template <typename To, typename From>
void convertBlocks(To* __restrict out, From const* __restrict in, std::size_t n) noexcept {
    constexpr std::size_t blockLength = 16;
    auto const convertBlock = [](To* __restrict to, From const* __restrict from) {
#    if defined(__SSE2__)
        if constexpr (sizeof(To) < sizeof(From)) {
            packX86(to, from, replacement);
            return;
        }
#    endif
        for (std::size_t i = 0; i < blockLength; ++i) {
            to[i] = convertElement<To>(from[i]);
        }
    };
    if (n < blockLength) {
        for (std::size_t i = 0; i < n; ++i) {
            out[i] = convertElement<To>(in[i]);
        }
        return;
    }
    std::size_t const last = n - blockLength;
    std::size_t at = 0;
#    ifdef HALV_LONG_RUNS // where space is cheap, a text of one block goes straight through
    convertBlock(out, in);
    if (last == 0) {
        return;
    }
    at = blockLength;
#    endif
    for (; at < last; at += blockLength) {
        convertBlock(out + at, in + at);
    }
    convertBlock(out + last, in + last);
}

#    ifdef HALV_LONG_RUNS

// The same for at least `longLength` elements, with the best that the processor has.
template <typename To, typename From>
void convertLong(To* out, From const* in, std::size_t n) noexcept;

// From here on that is worth the call.
inline constexpr std::size_t longLength = 128;

#    endif

// Converts n elements between buffers that do not overlap.
template <typename To, typename From>
void convertRun(To* __restrict out, From const* __restrict in, std::size_t n) noexcept {
#    ifdef HALV_LONG_RUNS
    if constexpr (sizeof(To) != sizeof(From)) {
        if (__builtin_expect(n >= longLength, false)) {
            convertLong(out, in, n);
            return;
        }
    }
#    endif
    convertBlocks(out, in, n);
}

#endif

inline constexpr std::size_t chunkLength = 256;
#ifdef HALV_LONG_RUNS
inline constexpr std::size_t appendLength = 1920; // a frame of no more than a page
inline constexpr bool isSpaceCheap = true;        // for code that only short texts take
#else
inline constexpr std::size_t appendLength = chunkLength;
inline constexpr bool isSpaceCheap = false;
#endif

// Replaces `out`, which has too little room, by n elements; by the empty string when memory runs
// out. In place, because a string that was made just now is slow to move.
template <typename String>
void renew(String& out, typename String::value_type const* text, std::size_t n) {
    out.~String();
    try {
        new (&out) String(text, n);
    } catch (...) {
        new (&out) String();
        throw;
    }
}

// convertInto for a short text, more than the output has room for.
template <typename String, typename From>
[[gnu::noinline, gnu::flatten]] void convertIntoNew(String& out, From const* in, std::size_t n) {
    alignas(64) typename String::value_type chunk[chunkLength]; // 64: a line of the cache
    convertRun(chunk, in, n);
    renew(out, chunk, n);
}

// The slow path of convertInto: an output of another length.
template <typename String, typename From>
[[gnu::noinline]] void convertIntoFallback(String& out, From const* in, std::size_t n) {
    using To = typename String::value_type;
    if (n > out.capacity()) {
        out.clear(); // nothing to carry over into the new buffer
    }
    if (std::is_same_v<To, unsigned short> && n > out.size()) {
        // resize() would fill this instantiation element by element.
        out.clear();
        out.reserve(n);
        To chunk[appendLength];
        for (std::size_t at = 0; at < n; at += appendLength) {
            std::size_t const length = std::min(n - at, appendLength);
            convertRun(chunk, in + at, length);
            out.append(chunk, length);
        }
        return;
    }
    out.resize(n);
    convertRun(out.data(), in, n);
}

// Replaces `out` by the conversion of n elements. An output of the right length spares even the
// call of convertRun.
template <typename String, typename From>
[[gnu::flatten]] void convertInto(String& out, From const* in, std::size_t n) {
    if (n == out.size()) {
        convertRun(out.data(), in, n);
    } else if (isSpaceCheap && n > out.capacity() && n <= chunkLength) {
        convertIntoNew(out, in, n);
    } else {
        convertIntoFallback(out, in, n);
    }
}

// The conversion of n elements as a new narrow or wide string.
template <typename String, typename From>
String converted(From const* in, std::size_t n) {
    using To = typename String::value_type;
    String out(n, To());
    convertRun(out.data(), in, n);
    return out;
}

// The number of elements before the first zero, at most `limit`; 0 for null.
template <typename Char>
std::size_t terminatedLength(Char const* text,
                             std::size_t limit = std::numeric_limits<std::size_t>::max()) noexcept {
    std::size_t n = 0;
    if (text != nullptr) {
        while (n < limit && text[n] != Char()) {
            ++n;
        }
    }
    return n;
}

inline std::size_t terminatedLength(char const* text) noexcept {
    return text == nullptr ? 0 : std::strlen(text);
}

// The number or code unit at any address, even or odd.
inline unsigned short unitAt(void const* bytes) noexcept {
    unsigned short unit;
    std::memcpy(&unit, bytes, sizeof unit);
    return unit;
}

} // namespace Halvora::detail
