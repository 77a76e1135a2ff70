#include <Halvora/text/Utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <numeric>

#include <Halvora/text/detail/Encoding.h>

namespace Halvora {

namespace {

using Byte = unsigned char;

constexpr std::uint32_t replacement = 0xFFFD;
constexpr std::uint32_t illFormed = 0xFFFFFFFF;

// The machine's word, as many bytes at once.
using Word = std::size_t;
constexpr std::size_t wordSize = sizeof(Word);
constexpr Word highBits = static_cast<Word>(0x8080808080808080);

constexpr bool isContinuation(Byte byte) noexcept {
    return (byte & 0xC0) == 0x80;
}
constexpr bool isSurrogate(std::uint32_t code) noexcept {
    return (code & 0xFFFFF800) == 0xD800;
}

// What is looked at in one go: a register of several words where there are such, else a word.
using Vector [[gnu::vector_size(16)]] = Word;
#if defined(__SSE2__) || defined(__ARM_NEON)
constexpr bool hasVectors = true;
#else
constexpr bool hasVectors = false;
#endif
using Block = std::conditional_t<hasVectors, Vector, Word>;

[[maybe_unused]] Word bitsOf(Word word) noexcept {
    return word;
}
[[maybe_unused]] Word bitsOf(Vector words) noexcept {
    Word const bits = words[0] | words[1];
    return wordSize == 8 ? bits : bits | words[2 % (16 / wordSize)] | words[3 % (16 / wordSize)];
}

Word wordAt(void const* at) noexcept {
    Word word;
    std::memcpy(&word, at, wordSize);
    return word;
}

std::uint32_t bytesAt(void const* at) noexcept {
    std::uint32_t bytes;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
}

// The bits of a word of units that no ASCII has.
template <typename Unit, typename Unsigned = std::make_unsigned_t<Unit>>
constexpr Word beyondAscii = ~static_cast<Word>(0) / static_cast<Unsigned>(-1) *
                             static_cast<Unsigned>(~static_cast<Unsigned>(0x7F));

// Whether none of the bits is set in any word of `size` bytes. The last word overlaps.
[[gnu::noinline]] bool hasNone(Word bits, void const* text, std::size_t size) noexcept {
    Block blocks[8];
    auto const* at = static_cast<char const*>(text);
    auto const* const end = at + size;
    for (; static_cast<std::size_t>(end - at) >= sizeof blocks; at += sizeof blocks) {
        std::memcpy(blocks, at, sizeof blocks);
        Word const found = bitsOf(((blocks[0] | blocks[1]) | (blocks[2] | blocks[3])) |
                                  ((blocks[4] | blocks[5]) | (blocks[6] | blocks[7])));
        if ((found & bits) != 0) {
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
        detail::convertRun(out, reinterpret_cast<Plain const*>(text), n);
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
    }
}

// Takes the character at the front off, or the maximal subpart of an ill-formed sequence.
std::uint32_t takeCharacter(Byte const*& at, Byte const* end) noexcept {
    Byte const lead = *at++;
    if (lead < 0x80) {
        return lead;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return illFormed;
    }
    int const trailing = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    // These bounds of the second byte keep out overlong forms, surrogates and too large values.
    Byte low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    Byte high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    std::uint32_t code = lead & (0x3Fu >> trailing);
    for (int i = 0; i < trailing; ++i) {
        if (at == end || *at < low || *at > high) {
            return illFormed;
        }
        code = code << 6 | (*at++ & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return code;
}

template <typename Unit>
std::uint32_t takeCharacter(Unit const*& at, Unit const* end) noexcept {
    auto const code = static_cast<std::make_unsigned_t<Unit>>(*at++);
    if (!isSurrogate(code)) {
        return code <= 0x10FFFF ? code : illFormed;
    }
    if (sizeof(Unit) != 2 || code >= 0xDC00 || at == end || (*at & 0xFC00) != 0xDC00) {
        return illFormed;
    }
    return 0x10000 + ((code & 0x3FFu) << 10 | (static_cast<std::uint32_t>(*at++) & 0x3FF));
}

// These two write what convertQuickly has left.

template <typename Unit>
void put(Unit*& out, std::uint32_t code) noexcept {
    if (sizeof(Unit) == 2 && code > 0xFFFF) {
        *out++ = static_cast<Unit>(0xD7C0 + (code >> 10));
        code = 0xDC00 | (code & 0x3FF);
    }
    *out++ = static_cast<Unit>(code);
}

void put(char*& out, std::uint32_t code) noexcept {
    if (code < 0x10000) {
        *out++ = static_cast<char>(0xE0 | code >> 12);
    } else {
        *out++ = static_cast<char>(0xF0 | code >> 18);
        *out++ = static_cast<char>(0x80 | (code >> 12 & 0x3F));
    }
    *out++ = static_cast<char>(0x80 | (code >> 6 & 0x3F));
    *out++ = static_cast<char>(0x80 | (code & 0x3F));
}

// The length of the conversion, if the text is well-formed.

std::size_t sumOfBytes(Word word) noexcept {
    constexpr Word pairs = static_cast<Word>(0x00FF00FF00FF00FF);
    Word const sums = (word & pairs) + (word >> 8 & pairs);
    return (sums * static_cast<Word>(0x0001000100010001)) >> (8 * wordSize - 16);
}
[[maybe_unused]] std::size_t sumOfBytes(Vector words) noexcept {
    std::size_t sum = 0;
    for (std::size_t i = 0; i < sizeof words / wordSize; ++i) {
        sum += sumOfBytes(static_cast<Word>(words[i]));
    }
    return sum;
}

// All bytes but the continuations; in 16-bit text, two for the lead of four bytes.
[[gnu::noinline]] std::size_t convertedLength(Byte const* text, std::size_t n,
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
std::size_t convertedLength(Unit const* text, std::size_t n, bool) noexcept {
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

// Takes off and writes characters that begin before `stop`, as long as they are well-formed and
// four bytes can be read.
template <typename To>
void convertQuickly(To*& out, Byte const*& text, Byte const* stop, Byte const* end) noexcept {
    To* to = out;
    Byte const* at = text;
    Byte const* const last = std::min(stop, end - std::min<std::ptrdiff_t>(end - at, 3));
    Byte const* const lastWord = end - std::min<std::ptrdiff_t>(end - at, wordSize - 1);
    while (at < last) {
        if (*at < 0x80) {
            if (wordSize > 4 && at >= lastWord) {
                *to++ = static_cast<To>(*at++);
                continue;
            }
            if ((wordAt(at) & highBits) == 0) {
                for (std::size_t i = 0; i < wordSize; ++i) {
                    to[i] = static_cast<To>(at[i]);
                }
                at += wordSize;
                to += wordSize;
                continue;
            }
            do {
                *to++ = static_cast<To>(*at++);
            } while (*at < 0x80);
            if (at >= last) {
                break;
            }
        }
        std::uint32_t bytes = bytesAt(at);
        if ((bytes & 0xC0C0F0) == 0x8080E0) {
            do {
                std::uint32_t const code =
                    (bytes << 12 & 0xF000) | (bytes >> 2 & 0xFC0) | (bytes >> 16 & 0x3F);
                if (code - 0x800 >= 0xD000 && code < 0xE000) { // overlong, or a surrogate
                    out = to;
                    text = at;
                    return;
                }
                *to++ = static_cast<To>(code);
                at += 3;
                bytes = at < last ? bytesAt(at) : 0;
            } while ((bytes & 0xC0C0F0) == 0x8080E0);
        } else if ((bytes & 0xC0E0) == 0x80C0 && (bytes & 0x1E) != 0) {
            *to++ = static_cast<To>((bytes & 0x1F) << 6 | (bytes >> 8 & 0x3F));
            at += 2;
        } else {
            break;
        }
    }
    out = to;
    text = at;
}

// Writes up to three bytes behind what counts.
template <typename Unit>
void convertQuickly(char*& out, Unit const*& text, Unit const* stop, Unit const*) noexcept {
    char* to = out;
    Unit const* at = text;
    for (; at < stop; ++at) {
        std::uint32_t const code = static_cast<std::make_unsigned_t<Unit>>(*at);
        if (code < 0x80) {
            *to++ = static_cast<char>(code);
        } else if (code < 0x800) {
            auto const bytes = static_cast<std::uint16_t>(0x80C0 | code >> 6 | (code & 0x3F) << 8);
            std::memcpy(to, &bytes, sizeof bytes);
            to += 2;
        } else if (code - 0x800 < 0xD000 || (code >= 0xE000 && code < 0x10000)) {
            std::uint32_t const bytes =
                0x8080E0 | code >> 12 | (code << 2 & 0x3F00) | (code & 0x3F) << 16;
            std::memcpy(to, &bytes, sizeof bytes);
            to += 3;
        } else {
            break;
        }
    }
    out = to;
    text = at;
}

constexpr std::size_t sliceLength = 256;

// The slow path of convert: an output of another length, or text beyond ASCII.
template <typename String, typename From>
[[gnu::noinline]] Utf8Result convertFallback(String& out, From const* const begin, std::size_t n) {
    if (isAscii(begin, n)) {
        if constexpr (sizeof(From) == 1) {
            detail::convertInto(out, reinterpret_cast<char const*>(begin), n);
        } else {
            out.resize(n);
            copyAscii(out.data(), begin, n);
        }
        return {0, n};
    }
    using To = typename String::value_type;
    constexpr std::size_t most = sizeof(To) == 1 ? 4 : 1; // elements that one becomes
    From const* const end = begin + n;
    out.clear();
    if (n > sliceLength) { // else one chunk is all
        out.reserve(convertedLength(begin, n, sizeof(To) == 2));
    }
    Utf8Result result{0, n};
    To chunk[most * (sliceLength + wordSize)];
    for (From const* at = begin; at != end;) {
        From const* const stop =
            at + std::min<std::size_t>(n - static_cast<std::size_t>(at - begin), sliceLength);
        To* to = chunk;
        for (;;) {
            convertQuickly(to, at, stop, end);
            if (at >= stop) {
                break;
            }
            From const* const sequence = at;
            std::uint32_t code = takeCharacter(at, end);
            if (code == illFormed) {
                code = replacement;
                if (result.replaced++ == 0) {
                    result.position = static_cast<std::size_t>(sequence - begin);
                }
            }
            put(to, code);
        }
        out.append(chunk, static_cast<std::size_t>(to - chunk));
    }
    return result;
}

template <typename String, typename From>
Utf8Result convert(String& out, From const* text, std::size_t n) {
    if (n == out.size() && copyAscii(out.data(), text, n)) {
        return {0, n};
    }
    return convertFallback(out, text, n);
}

Byte const* bytesOf(std::string_view text) noexcept {
    return reinterpret_cast<Byte const*>(text.data());
}

} // namespace

Utf8Result Utf8::toWString(std::wstring& out, std::string_view text) {
    return convert(out, bytesOf(text), text.size());
}

Utf8Result Utf8::toHLVString(HLVString& out, std::string_view text) {
    return convert(out, bytesOf(text), text.size());
}

Utf8Result Utf8::fromWString(std::string& out, std::wstring_view text) {
    return convert(out, text.data(), text.size());
}

Utf8Result Utf8::fromHLVString(std::string& out, HLVString const& text) {
    return convert(out, text.data(), text.size());
}

bool Utf8::isValid(std::string_view text) noexcept {
    Byte const* at = bytesOf(text);
    for (Byte const* const end = at + text.size(); at != end;) {
        auto const length = std::min(static_cast<std::size_t>(end - at), sliceLength);
        Byte const* const stop = at + length;
        if (isAscii(at, length)) {
            at = stop;
            continue;
        }
        unsigned short chunk[sliceLength + wordSize]; // nobody reads it
        unsigned short* to = chunk;
        convertQuickly(to, at, stop, end);
        if (at < stop && takeCharacter(at, end) == illFormed) {
            return false;
        }
    }
    return true;
}

} // namespace Halvora
