#pragma once

#include <Halvora/error/Characters.h>
#include <Halvora/error/HLVError.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/Utf8.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/HalvTypes.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

namespace Halvora {

namespace detail {

// What stands for itself in every text of JSON, and is one byte of UTF-8.
constexpr bool isPlain(wchar_t c) noexcept {
    return c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
}

// The characters in front of the first one that is not plain; gives the rest.
inline std::wstring_view appendPlain(std::string& out, std::wstring_view text) {
    std::size_t count = 0;
    while (count < text.size() && isPlain(text[count])) {
        ++count;
    }
    out.resize(out.size() + count);
    char* const to = &out[out.size() - count];
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = static_cast<char>(text[i]);
    }
    return text.substr(count);
}

// As UTF-8. Control characters are escaped.
inline void appendEscaped(std::string& out, std::wstring_view text) {
    std::wstring escaped;
    forEachCharacter(text, [&escaped](std::uint32_t character) {
        if (isControl(character)) {
            constexpr wchar_t digits[] = L"0123456789abcdef";
            escaped += L"\\u00";
            escaped += digits[character >> 4];
            escaped += digits[character & 0xF];
            return;
        }
        escaped += character == '"' || character == '\\' ? L"\\" : L"";
        appendCharacter(escaped, character);
    });
    std::string utf8;
    Utf8::fromWString(utf8, escaped);
    out += utf8;
}

inline void appendJson(std::string& out, std::wstring const& text) {
    out += '"';
    std::wstring_view const rest = appendPlain(out, text);
    if (!rest.empty()) {
        appendEscaped(out, rest);
    }
    out += '"';
}

// The hexadecimal form, and the grouped one under a name of its own.
inline void appendJson(std::string& out, Binary16 const& id) {
    constexpr char digits[] = "0123456789ABCDEF";
    out += "\"0x";
    for (int i = 15; i >= 0; --i) {
        out += digits[id[static_cast<unsigned char>(i)] >> 4];
        out += digits[id[static_cast<unsigned char>(i)] & 0xF];
    }
    out += "\",\"grouped\":\"";
    out += Convert::toAString(id);
    out += '"';
}

inline void appendJson(std::string& out, bool value) {
    out += value ? "true" : "false";
}

// The shortest number that reads back with the same bits, always with a point or an exponent.
template <typename T>
void appendJsonReal(std::string& out, T value) {
    char digits[32];
    std::string_view const number(
        digits,
        static_cast<std::size_t>(std::to_chars(digits, std::end(digits), value).ptr - digits));
    // "inf" or "nan": not asked of the value, which -ffast-math would not answer.
    if (number.find('n') != std::string_view::npos) {
        bool const isNaN = number.find('a') != std::string_view::npos;
        out += isNaN ? "\"NaN\"" : number[0] == '-' ? "\"-Infinity\"" : "\"Infinity\"";
        return;
    }
    out += number;
    out += number.find_first_of(".e") == std::string_view::npos ? ".0" : "";
}

template <typename T>
void appendJson(std::string& out, T value) {
    if constexpr (std::is_floating_point_v<T>) {
        appendJsonReal(out, value);
    } else {
        out += std::to_string(value);
    }
}

inline void appendJsonValue(std::string& out, HLVError::Param const& param) {
    bool const hasValue = visitValue(param, [&out](auto const& value) { appendJson(out, value); });
    out += hasValue ? "" : "null";
    if (param.getDataType() == DT_STRINGRES) {
        out += ",\"id\":";
        appendJson(out, param.getData());
    }
}

inline void appendJsonParam(std::string& out, HLVError::Param const* param) {
    if (param == nullptr) {
        out += "null";
        return;
    }
    out += "{\"type\":\"";
    out += Convert::toAString(param->getDataType());
    out += "\",\"value\":";
    appendJsonValue(out, *param);
    out += '}';
}

inline void appendJsonError(std::string& out, HLVError const& error) {
    out += "{\"code\":";
    out += std::to_string(error.getCode());
    out += ",\"params\":[";
    HLVError::Param const* const params[] = {error.getParam0(), error.getParam1(),
                                             error.getParam2()};
    int const count = params[2] != nullptr ? 3 : params[1] != nullptr ? 2 : params[0] != nullptr;
    for (int i = 0; i < count; ++i) {
        out += i == 0 ? "" : ",";
        appendJsonParam(out, params[i]);
    }
    out += "]}";
}

} // namespace detail

/// Writes the chain for programs, newest error first, as one line of JSON with its line end:
/// @code{.unparsed}
/// line  := {"chain":[error,...]}
/// error := {"code":-20,"params":[param,...]}
/// param := null | {"type":"Int32","value":3}
/// @endcode
/// Whatever the stream's flags and locale. The place of a parameter is its number; what is absent
/// in front of another one is null. The type is the name that `Convert::toAString` gives.
///
/// Integers are numbers with all their digits, 64-bit ones too. Floats and doubles are the shortest
/// number that reads back with the same bits, always with a point or an exponent; not a number and
/// the infinities are the texts `"NaN"`, `"Infinity"` and `"-Infinity"`. Texts are UTF-8; control
/// characters are escaped, and a lone surrogate, which many readers refuse, becomes U+FFFD. A
/// 16-byte value is its hexadecimal form, with the other one as `"grouped"`; a text under an
/// identifier has that as `"id"` and `"grouped"`. The tag is left out.
inline std::ostream& writeJson(std::ostream& stream, HLVError const& error) {
    std::string line;
    line.reserve(256); // most errors
    line = "{\"chain\":[";
    for (HLVError const* at = &error; at != nullptr && stream; at = at->getPrecedingError()) {
        line += at == &error ? "" : ",";
        detail::appendJsonError(line, *at);
        stream.write(line.data(), static_cast<std::streamsize>(line.size()));
        line.clear();
    }
    return stream.write("]}\n", 3);
}

} // namespace Halvora
