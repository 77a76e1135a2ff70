#pragma once

#include <Halvora/text/Utf8.h>

#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace Halvora::test {

// A text as numbers, one a character, and what had to be replaced.
struct Decoded {
    std::vector<unsigned long> codes;
    Utf8Result result{0, 0};

    void add(unsigned long code) { codes.push_back(code); }
    void replace(std::size_t position) {
        codes.push_back(0xFFFD);
        result.position = result.replaced++ == 0 ? position : result.position;
    }
};

// The table of well-formed sequences: what each byte of one may be.
inline Decoded slowDecode(std::string_view text) {
    static constexpr struct Row {
        std::size_t length;
        unsigned char range[4][2];
    } table[] = {
        {1, {{0x00, 0x7F}}                                          },
        {2, {{0xC2, 0xDF}, {0x80, 0xBF}}                            },
        {3, {{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}}              },
        {3, {{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}}              },
        {3, {{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}}              },
        {3, {{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}}              },
        {4, {{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
        {4, {{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
        {4, {{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}}},
        {1, {{0x80, 0xFF}}                                          }, // begins no sequence
    };
    static constexpr unsigned char bits[] = {0x7F, 0x1F, 0x0F, 0x07};
    Decoded decoded;
    decoded.result.position = text.size();
    for (std::size_t at = 0; at < text.size();) {
        auto const byte = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]); };
        Row const* row = table;
        while (byte(0) < row->range[0][0] || byte(0) > row->range[0][1]) {
            ++row;
        }
        std::size_t fitting = 1;
        unsigned long code = byte(0) & bits[row->length - 1];
        while (fitting < row->length && at + fitting < text.size() &&
               byte(fitting) >= row->range[fitting][0] && byte(fitting) <= row->range[fitting][1]) {
            code = code * 64 + byte(fitting) % 64;
            ++fitting;
        }
        if (fitting < row->length || row == std::end(table) - 1) {
            decoded.replace(at);
        } else {
            decoded.add(code);
        }
        at += fitting;
    }
    return decoded;
}

// Elements of 32 bits are characters, those of 16 bits UTF-16.
template <typename Text>
Decoded slowDecodeUnits(Text const& text) {
    constexpr bool isUtf16 = sizeof(text[0]) == 2;
    Decoded decoded;
    decoded.result.position = text.size();
    for (std::size_t at = 0; at < text.size(); ++at) {
        auto const code = static_cast<unsigned long>(text[at]) & (isUtf16 ? 0xFFFF : 0xFFFFFFFF);
        auto const next = at + 1 < text.size() ? static_cast<unsigned long>(text[at + 1]) : 0;
        if (isUtf16 && code >= 0xD800 && code < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            decoded.add(0x10000 + (code - 0xD800) * 0x400 + (next - 0xDC00));
            ++at;
        } else if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) {
            decoded.replace(at);
        } else {
            decoded.add(code);
        }
    }
    return decoded;
}

template <typename Text>
Text slowUnits(std::vector<unsigned long> const& codes) {
    using Unit = typename Text::value_type;
    Text text;
    for (unsigned long const code : codes) {
        if (sizeof(Unit) == 2 && code > 0xFFFF) {
            text += static_cast<Unit>(0xD800 + (code - 0x10000) / 0x400);
            text += static_cast<Unit>(0xDC00 + (code - 0x10000) % 0x400);
        } else {
            text += static_cast<Unit>(code);
        }
    }
    return text;
}

inline std::string slowEncode(std::vector<unsigned long> const& codes) {
    std::string text;
    for (unsigned long const code : codes) {
        static constexpr unsigned long first[] = {0, 0xC0, 0xE0, 0xF0};
        unsigned const trailing = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        unsigned long rest = code;
        std::string tail;
        for (unsigned i = 0; i < trailing; ++i, rest /= 64) {
            tail.insert(tail.begin(), static_cast<char>(0x80 + rest % 64));
        }
        text += static_cast<char>(first[trailing] + rest) + tail;
    }
    return text;
}

} // namespace Halvora::test
