#include <Halvora/text/Utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include <Halvora/text/detail/Utf8Characters.h>
#include <Halvora/text/detail/Utf8Length.h>

namespace Halvora {

namespace {

using detail::Byte;
using detail::bytesAt;
using detail::highBits;
using detail::wordSize;

constexpr std::uint32_t replacement = 0xFFFD;

// What costs some code.
#ifdef HALV_UTF8_X86
constexpr bool countsLate = true; // not before an output is found too small
constexpr std::size_t frontLength = 128;
#    define HALV_APART [[gnu::noinline]] // with all registers for itself
#else
constexpr bool countsLate = false;
constexpr std::size_t frontLength = 0; // of any
#    define HALV_APART
#endif

// Takes off and writes characters that begin before `stop`, as long as they are well-formed and
// four bytes can be read.
template <typename To>
HALV_APART void convertQuickly(To*& out, Byte const*& text, Byte const* stop,
                               Byte const* end) noexcept {
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
            if ((detail::wordAt(at) & highBits) == 0) {
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
#ifdef HALV_UTF8_X86
            if (last - at > 9 && at[3] >= 0xE0 && at[9] >= 0xE0) {
                if (auto const count = detail::convertThreesX86(to, at, last); count != 0) {
                    to += count;
                    at += 3 * count;
                    continue;
                }
            }
#endif
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

// Writes up to one byte behind what counts.
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

// The same for characters of up to two bytes near the end, if there may be some code for it.
template <typename To, typename From>
void convertEnd([[maybe_unused]] To*& to, [[maybe_unused]] From const*& at,
                [[maybe_unused]] From const* stop, [[maybe_unused]] From const* end) noexcept {
#ifdef HALV_UTF8_X86
    if constexpr (sizeof(From) == 1) {
        while (at < stop) {
            std::uint32_t const lead = *at;
            std::uint32_t const next = end - at > 1 ? at[1] : 0;
            if (lead < 0x80) {
                *to++ = static_cast<To>(lead);
                at += 1;
            } else if (lead - 0xC2 < 0x1E && detail::isContinuation(next)) {
                *to++ = static_cast<To>((lead & 0x1F) << 6 | (next & 0x3F));
                at += 2;
            } else {
                return;
            }
        }
    }
#endif
}

constexpr std::size_t sliceLength = 256;
[[maybe_unused]] constexpr std::size_t chunkBytes = 8192; // for ASCII

// The elements that one element becomes at most.
template <typename To>
constexpr std::size_t mostOf = sizeof(To) == 1 ? 4 : 1;

// Takes off and writes the characters that begin before `stop`.
template <typename To, typename From>
void convertSlice(To*& to, From const*& at, From const* stop, From const* begin, From const* end,
                  Utf8Result& result) noexcept {
    for (;;) {
        From const* next = stop;
#ifdef HALV_UTF8_X86
        if constexpr (sizeof(From) != 1) {
            next = detail::convertX86(to, at, stop);
        }
#endif
        convertQuickly(to, at, next, end);
        convertEnd(to, at, next, end);
        if (at >= stop) {
            return;
        }
        if (at >= next) {
            continue;
        }
        From const* const sequence = at;
        std::uint32_t code = detail::takeCharacter(at, end);
        if (code == detail::illFormed) {
            code = replacement;
            if (result.replaced++ == 0) {
                result.position = static_cast<std::size_t>(sequence - begin);
            }
        }
        detail::put(to, code);
    }
}

#ifdef HALV_UTF8_X86

// Replaces the output. One that is new is not filled first.
template <typename String, typename To>
void assign(String& out, To const* text, std::size_t n) {
    if (n == out.size()) {
        std::memcpy(out.data(), text, n * sizeof *text);
    } else if (n > out.capacity()) {
        detail::renew(out, text, n);
    } else {
        out.assign(text, n);
    }
}

// The slow path of convert for a text of one slice.
template <typename String, typename From>
[[gnu::noinline, gnu::flatten]] Utf8Result convertShort(String& out, From const* text,
                                                        std::size_t n) {
    using To = typename String::value_type;
    // A few units of 16 bits are copied as one register of 32 bytes.
    alignas(sizeof(To) == 2 ? 32 : alignof(To)) To chunk[mostOf<To> * (sliceLength + wordSize)];
    To* to = chunk + n;
    Utf8Result result{0, n};
    if (!detail::copyAscii(chunk, text, n)) {
        to = chunk;
        From const* at = text;
        convertSlice(to, at, text + n, text, text + n, result);
    }
    assign(out, chunk, static_cast<std::size_t>(to - chunk));
    return result;
}

template <typename String, typename From>
[[gnu::noinline]] bool convertAsciiOnce(String& out, From const* text, std::size_t n) {
    typename String::value_type chunk[chunkBytes / sizeof(typename String::value_type)];
    bool const isAscii = detail::copyAscii(chunk, text, n);
    if (isAscii) {
        assign(out, chunk, n);
    }
    return isAscii;
}

#endif

// Whether all is ASCII, and then its conversion.
template <typename String, typename From>
bool convertAscii(String& out, From const* text, std::size_t n) {
#ifdef HALV_UTF8_X86
    if (n <= chunkBytes / sizeof(typename String::value_type)) {
        return convertAsciiOnce(out, text, n); // one pass
    }
#endif
    if (!detail::isAscii(text, n)) {
        return false;
    }
    if constexpr (sizeof(From) == 1) {
        detail::convertInto(out, reinterpret_cast<char const*>(text), n);
    } else {
        out.resize(n);
        detail::copyAscii(out.data(), text, n);
    }
    return true;
}

// The slow path of convert: an output of another length, or text beyond ASCII.
template <typename String, typename From>
[[gnu::noinline]] Utf8Result convertFallback(String& out, From const* const begin, std::size_t n) {
    if (convertAscii(out, begin, n)) {
        return {0, n};
    }
    using To = typename String::value_type;
    From const* const end = begin + n;
    // Exactly for all, if what is left is well-formed.
    auto const reserve = [&out, end](std::size_t length, From const* left) {
        auto const count = static_cast<std::size_t>(end - left);
        out.reserve(length + detail::convertedLength(left, count, sizeof(To) == 2));
    };
    out.clear();
    if (!countsLate && n > sliceLength) { // else one chunk is all
        reserve(0, begin);
    }
    Utf8Result result{0, n};
    To chunk[mostOf<To> * (sliceLength + wordSize)];
    for (From const* at = begin; at != end;) {
        From const* const stop =
            at + std::min<std::size_t>(n - static_cast<std::size_t>(at - begin), sliceLength);
        To* to = chunk;
        convertSlice(to, at, stop, begin, end, result);
        auto const length = static_cast<std::size_t>(to - chunk);
        if (countsLate && length > out.capacity() - out.size()) {
            reserve(out.size() + length, at);
        }
        out.append(chunk, length);
    }
    return result;
}

#ifdef HALV_UTF8_X86
// What the front of convert has no room for.
template <typename String, typename From>
[[gnu::noinline]] Utf8Result convertBehind(String& out, From const* text, std::size_t n) {
    if (n <= sliceLength && (n < frontLength || n != out.size())) {
        return convertShort(out, text, n);
    }
#    ifdef HALV_LONG_RUNS
    static_assert(frontLength >= detail::longLength);
    if (n == out.size()) {
        return detail::copyAsciiOr(out, text, n, convertFallback<String, From>);
    }
#    else
    if (n == out.size() && detail::copyAscii(out.data(), text, n)) {
        return {0, n};
    }
#    endif
    return convertFallback(out, text, n);
}
#endif

template <typename String, typename From>
[[gnu::flatten]] Utf8Result convert(String& out, From const* text, std::size_t n) {
    if (n == out.size() && (frontLength == 0 || n < frontLength) &&
        detail::copyAscii(out.data(), text, n)) {
        return {0, n};
    }
#ifdef HALV_UTF8_X86
    return convertBehind(out, text, n);
#else
    return convertFallback(out, text, n);
#endif
}

// Without the preparations that pay in a longer text.
[[maybe_unused]] bool isValidShort(Byte const* at, Byte const* end) noexcept {
    while (end - at >= std::ptrdiff_t{wordSize} && (detail::wordAt(at) & highBits) == 0) {
        at += wordSize;
    }
    while (at != end) {
        std::uint32_t const lead = *at;
        if (lead < 0x80) {
            ++at;
        } else if (lead - 0xC2 < 0x1E && end - at > 1 && detail::isContinuation(at[1])) {
            at += 2;
        } else if (detail::takeCharacter(at, end) == detail::illFormed) {
            return false;
        }
    }
    return true;
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
#ifdef HALV_UTF8_X86
    if (text.size() <= 32) {
        return isValidShort(at, at + text.size());
    }
#endif
    for (Byte const* const end = at + text.size(); at != end;) {
        auto const length = std::min(static_cast<std::size_t>(end - at), sliceLength);
        Byte const* const stop = at + length;
        if (detail::isAscii(at, length)) {
            at = stop;
            continue;
        }
        unsigned short chunk[sliceLength + wordSize]; // nobody reads it
        unsigned short* to = chunk;
        while (at < stop) {
            convertQuickly(to, at, stop, end);
            convertEnd(to, at, stop, end);
            if (at < stop && detail::takeCharacter(at, end) == detail::illFormed) {
                return false;
            }
        }
    }
    return true;
}

} // namespace Halvora
