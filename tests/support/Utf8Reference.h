#pragma once

#include <Halvora/text/Utf8.h>

#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace Halvora::test {

// A text as numbers, one a character, and what had to be replaced.
struct Decoded {
    explicit Decoded(std::size_t length) : result{0, length} {}
    void take(bool isCharacter, unsigned long code, std::size_t at) {
        codes.push_back(isCharacter ? code : 0xFFFD);
        result.position = isCharacter || result.replaced != 0 ? result.position : at;
        result.replaced += isCharacter ? 0 : 1;
    }
    std::vector<unsigned long> codes;
    Utf8Result result;
};

// The table of well-formed sequences: the least and the greatest that each byte of one may be. The
// last row is what begins none.
inline Decoded slowDecode(std::string_view text) {
    static constexpr std::string_view table[] = {
        {"\x00\x7F", 2},
        "\xC2\xDF\x80\xBF",
        "\xE0\xE0\xA0\xBF\x80\xBF",
        "\xE1\xEC\x80\xBF\x80\xBF",
        "\xED\xED\x80\x9F\x80\xBF",
        "\xEE\xEF\x80\xBF\x80\xBF",
        "\xF0\xF0\x90\xBF\x80\xBF\x80\xBF",
        "\xF1\xF3\x80\xBF\x80\xBF\x80\xBF",
        "\xF4\xF4\x80\x8F\x80\xBF\x80\xBF",
        "\x80\xFF",
    };
    auto const number = [](char c) { return static_cast<unsigned char>(c); };
    Decoded decoded(text.size());
    for (std::size_t at = 0, fitting; at < text.size(); at += fitting) {
        auto const fits = [&](std::string_view row, std::size_t i) {
            return 2 * i < row.size() && at + i < text.size() &&
                   number(text[at + i]) >= number(row[2 * i]) &&
                   number(text[at + i]) <= number(row[2 * i + 1]);
        };
        auto const* row = table;
        while (!fits(*row, 0)) {
            ++row;
        }
        unsigned long code = number(text[at]);
        for (fitting = 1; fits(*row, fitting); ++fitting) {
            code = code * 64 + number(text[at + fitting]) % 64;
        }
        static constexpr unsigned long lead[] = {0, 0xC0ul << 6, 0xE0ul << 12, 0xF0ul << 18};
        bool const isWhole = 2 * fitting == row->size() && row != std::end(table) - 1;
        decoded.take(isWhole, code - lead[fitting - 1], at);
    }
    return decoded;
}

// Elements of 32 bits are characters, those of 16 bits UTF-16.
template <typename Text>
Decoded slowDecodeUnits(Text const& text) {
    constexpr bool isUtf16 = sizeof(text[0]) == 2;
    Decoded decoded(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        auto const code = static_cast<unsigned long>(text[at]) & (isUtf16 ? 0xFFFF : 0xFFFFFFFF);
        auto const next = at + 1 < text.size() ? static_cast<unsigned long>(text[at + 1]) : 0;
        bool const isPair = isUtf16 && code / 0x400 == 0x36 && next / 0x400 == 0x37;
        decoded.take(isPair || (code <= 0x10FFFF && code / 0x800 != 0x1B),
                     isPair ? 0x10000 + code % 0x400 * 0x400 + next % 0x400 : code, at);
        at += isPair ? 1 : 0;
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
        int const trailing = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        int const lead = trailing == 0 ? 0 : 0xFF00 >> (trailing + 1);
        text += static_cast<char>(lead + static_cast<int>(code >> 6 * trailing));
        for (int i = trailing - 1; i >= 0; --i) {
            text += static_cast<char>(0x80 + (code >> 6 * i) % 64);
        }
    }
    return text;
}

inline bool operator==(Utf8Result const& a, Utf8Result const& b) {
    return a.replaced == b.replaced && a.position == b.position;
}

// The library beside these. The outputs keep what they held before. A view has nothing behind it,
// as a sanitizer sees, or each second time what its last sequence may lack.
struct Utf8Outputs {
    std::wstring wide;
    HLVString units;
    std::string bytes;
    bool isPart = true;

    bool decodes(std::string_view of) {
        isPart = !isPart;
        std::vector<char> whole(of.begin(), of.end());
        whole.insert(whole.end(), isPart ? 3 : 0, '\x80');
        std::string_view const text(whole.data(), of.size());
        auto const [codes, result] = slowDecode(text);
        return Utf8::toWString(wide, text) == result && Utf8::toHLVString(units, text) == result &&
               wide == slowUnits<std::wstring>(codes) && units == slowUnits<HLVString>(codes) &&
               Utf8::isValid(text) == (result.replaced == 0);
    }
    bool encodes(std::wstring const& text) {
        std::vector<wchar_t> const alone(text.begin(), text.end());
        auto const [codes, result] = slowDecodeUnits(text);
        return Utf8::fromWString(bytes, {alone.data(), alone.size()}) == result &&
               bytes == slowEncode(codes);
    }
    bool encodes(HLVString const& text) {
        auto const [codes, result] = slowDecodeUnits(text);
        return Utf8::fromHLVString(bytes, text) == result && bytes == slowEncode(codes);
    }
};

} // namespace Halvora::test
