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
    Utf8Result result;

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
    Decoded decoded{
        {           },
        { 0, text.size()}
    };
    for (std::size_t at = 0, fitting; at < text.size(); at += fitting) {
        auto const fits = [&](Row const& row, std::size_t i) {
            auto const byte = at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0;
            return i < row.length && byte >= row.range[i][0] && byte <= row.range[i][1];
        };
        Row const* row = table;
        while (!fits(*row, 0)) {
            ++row;
        }
        unsigned long code = static_cast<unsigned char>(text[at]) & bits[row->length - 1];
        for (fitting = 1; fits(*row, fitting); ++fitting) {
            code = code * 64 + static_cast<unsigned char>(text[at + fitting]) % 64;
        }
        bool const isWhole = fitting == row->length && row != std::end(table) - 1;
        isWhole ? decoded.codes.push_back(code) : decoded.replace(at);
    }
    return decoded;
}

// Elements of 32 bits are characters, those of 16 bits UTF-16.
template <typename Text>
Decoded slowDecodeUnits(Text const& text) {
    constexpr bool isUtf16 = sizeof(text[0]) == 2;
    Decoded decoded{
        {           },
        { 0, text.size()}
    };
    for (std::size_t at = 0; at < text.size(); ++at) {
        auto const code = static_cast<unsigned long>(text[at]) & (isUtf16 ? 0xFFFF : 0xFFFFFFFF);
        auto const next = at + 1 < text.size() ? static_cast<unsigned long>(text[at + 1]) : 0;
        if (isUtf16 && code >= 0xD800 && code < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            decoded.codes.push_back(0x10000 + (code - 0xD800) * 0x400 + (next - 0xDC00));
            ++at;
        } else if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) {
            decoded.replace(at);
        } else {
            decoded.codes.push_back(code);
        }
    }
    return decoded;
}

template <typename Text>
Text slowUnits(std::vector<unsigned long> const& codes) {
    using Unit = typename Text::value_type;
    Text text;
    for (unsigned long const code : codes) {
        bool const isPair = sizeof(Unit) == 2 && code > 0xFFFF;
        text.append(isPair ? 1 : 0, static_cast<Unit>(0xD7C0 + code / 0x400));
        text += static_cast<Unit>(isPair ? 0xDC00 + code % 0x400 : code);
    }
    return text;
}

inline std::string slowEncode(std::vector<unsigned long> const& codes) {
    std::string text;
    for (unsigned long const code : codes) {
        if (code < 0x80) {
            text += static_cast<char>(code);
            continue;
        }
        int const trailing = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        text += static_cast<char>((0xFF00 >> (trailing + 1)) + (code >> 6 * trailing));
        for (int i = trailing - 1; i >= 0; --i) {
            text += static_cast<char>(0x80 + (code >> 6 * i) % 64);
        }
    }
    return text;
}

inline bool operator==(Utf8Result const& a, Utf8Result const& b) {
    return a.replaced == b.replaced && a.position == b.position;
}

// The library beside these. The outputs keep what they held before.
struct Utf8Outputs {
    std::wstring wide;
    HLVString units;
    std::string bytes;

    bool decodes(std::string_view text) {
        auto const [codes, result] = slowDecode(text);
        return Utf8::toWString(wide, text) == result && Utf8::toHLVString(units, text) == result &&
               wide == slowUnits<std::wstring>(codes) && units == slowUnits<HLVString>(codes) &&
               Utf8::isValid(text) == (result.replaced == 0);
    }
    bool encodes(std::wstring const& text) {
        auto const [codes, result] = slowDecodeUnits(text);
        return Utf8::fromWString(bytes, text) == result && bytes == slowEncode(codes);
    }
    bool encodes(HLVString const& text) {
        auto const [codes, result] = slowDecodeUnits(text);
        return Utf8::fromHLVString(bytes, text) == result && bytes == slowEncode(codes);
    }
};

} // namespace Halvora::test
