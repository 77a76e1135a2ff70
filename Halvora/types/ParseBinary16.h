#pragma once

#include <Halvora/Export.h>
#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <string_view>
#include <type_traits>

namespace Halvora {

/// Why parseBinary16() stopped.
enum eParseStatus : int {
    PARSE_DONE = 0,          ///< the text is one of the two forms, and nothing else
    PARSE_BAD_CHARACTER = 1, ///< another character than the form has at this place
    PARSE_TOO_SHORT = 2,     ///< the text ends within the form
    PARSE_TOO_LONG = 3,      ///< the form is complete, but the text goes on
};

/// What parseBinary16() found.
struct ParseResult {
    eParseStatus status; ///< why it stopped
    /// Where it stopped, in characters: at the first one that does not belong, else at the end of
    /// the text.
    std::size_t position;

    /// Whether the value was taken.
    constexpr explicit operator bool() const noexcept { return status == PARSE_DONE; }
};

namespace detail {

// A form character by character: a capital letter stands for a digit of the byte of that number, A
// being byte 0; everything else stands for itself.
inline constexpr std::string_view hexadecimalForm = "0xPPOONNMMLLKKJJIIHHGGFFEEDDCCBBAA";
inline constexpr std::string_view groupedForm = "DDCCBBAA-FFEE-HHGG-IIJJ-KKLLMMNNOOPP";

inline constexpr unsigned int noDigit = 16; // a bit that no digit has

// What the characters from '0' to 'f' are worth as digits.
struct DigitValues {
    unsigned char of['f' - '0' + 1] = {};

    constexpr DigitValues() noexcept {
        for (unsigned int i = 0; i < sizeof of; ++i) {
            unsigned int const letter = ((i + '0') | 0x20u) - 'a'; // of either case
            of[i] = static_cast<unsigned char>(i < 10       ? i
                                               : i < 16     ? noDigit | i
                                               : letter < 6 ? letter + 10
                                                            : noDigit);
        }
    }
};
inline constexpr DigitValues digitValues;

template <typename Char>
constexpr unsigned int digitValue(Char c) noexcept {
    unsigned int const at = static_cast<unsigned int>(c) - '0';
    return at < sizeof digitValues.of ? digitValues.of[at] : noDigit;
}

// Unchecked, the six characters behind '9' go on with 10, and what else is none is 0.
constexpr unsigned char byteOfDigits(char high, char low) noexcept {
    return static_cast<unsigned char>((digitValue(high) & 15) << 4 | (digitValue(low) & 15));
}

// Where the first digit of each byte stands in a form.
struct DigitPlaces {
    unsigned char of[16] = {};

    constexpr explicit DigitPlaces(std::string_view form) noexcept {
        for (std::size_t i = 0; i < 16; ++i) {
            of[i] = static_cast<unsigned char>(form.find(static_cast<char>('A' + i)));
        }
    }
};
inline constexpr DigitPlaces hexadecimalPlaces{hexadecimalForm};
inline constexpr DigitPlaces groupedPlaces{groupedForm};

// Finds what is wrong with a text that is not of the form.
template <typename Char>
constexpr ParseResult faultOf(std::basic_string_view<Char> text, std::string_view form) noexcept {
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (i == text.size()) {
            return {PARSE_TOO_SHORT, i};
        }
        bool const isDigit = form[i] >= 'A' && form[i] < 'A' + 16;
        if (isDigit ? (digitValue(text[i]) & noDigit) != 0
                    : text[i] != static_cast<Char>(form[i])) {
            return {PARSE_BAD_CHARACTER, i};
        }
    }
    return {PARSE_TOO_LONG, form.size()};
}

// Whether every digit and hyphen of a text as long as its form is one, and then the value.
template <typename Char>
constexpr bool takes(Char const* text, bool isHexadecimal, Binary16& value) noexcept {
    unsigned char const* const places = isHexadecimal ? hexadecimalPlaces.of : groupedPlaces.of;
    Binary16 parsed;
    unsigned int all = 0; // what is no digit leaves a bit
    for (std::size_t i = 0; i < 16; ++i) {
        unsigned int const high = digitValue(text[places[i]]);
        unsigned int const low = digitValue(text[places[i] + 1u]);
        all |= high | low;
        parsed.m_bytes[i] = static_cast<unsigned char>(high << 4 | low);
    }
    if ((all & noDigit) != 0 || (!isHexadecimal && (text[8] != '-' || text[13] != '-' ||
                                                    text[18] != '-' || text[23] != '-'))) {
        return false;
    }
    value = parsed;
    return true;
}

template <typename Char>
constexpr ParseResult parse(std::basic_string_view<Char> text, Binary16& value) noexcept {
    bool const isHexadecimal = text.size() > 1 && text[0] == '0' && text[1] == 'x';
    std::string_view const form = isHexadecimal ? hexadecimalForm : groupedForm;
    if (text.size() == form.size() && takes(text.data(), isHexadecimal, value)) {
        return {PARSE_DONE, text.size()};
    }
    return faultOf(text, form);
}

struct Parsed {
    Binary16 value;
    ParseResult result;

    constexpr explicit Parsed(std::string_view text) noexcept : result(parse(text, value)) {}
};

} // namespace detail

/// @name Strict parsing
/// Takes the hexadecimal form ("0x" and 32 digits) and the grouped form (36 characters), digits in
/// either case, and nothing else, no white space either. A text that begins with "0x" is held
/// against the hexadecimal form, every other against the grouped one. Without success `value` is
/// unchanged. To read from a stream without checks there is Binary16::read(), for identifiers in
/// the source the literal `_id`.
/// @{

/// Reads the whole of `text` into `value`.
[[nodiscard]] HALVTYPES_API_INLINE constexpr ParseResult parseBinary16(std::string_view text,
                                                                       Binary16& value) noexcept {
    return detail::parse(text, value);
}
/// Reads the whole of `text` into `value`.
[[nodiscard]] HALVTYPES_API_INLINE constexpr ParseResult parseBinary16(std::wstring_view text,
                                                                       Binary16& value) noexcept {
    return detail::parse(text, value);
}
/// Reads a zero-terminated text, narrow or wide, into `value`; null is the empty text.
template <typename Char,
          typename = std::enable_if_t<std::is_same_v<Char, char> || std::is_same_v<Char, wchar_t>>>
[[nodiscard]] constexpr ParseResult parseBinary16(Char const* text, Binary16& value) noexcept {
    using View = std::basic_string_view<Char>;
    return detail::parse(text == nullptr ? View() : View(text), value);
}
/// @}

/// What a program takes in by `using namespace Halvora::literals;`.
namespace literals {

// The form of a literal that makes every use a constant expression, in C++17 too, is an extension
// of GCC and Clang.
#if defined(__clang__)
#    pragma clang diagnostic push
#    pragma clang diagnostic ignored "-Wgnu-string-literal-operator-template"
#else
#    pragma GCC diagnostic push
#    pragma GCC diagnostic ignored "-Wpedantic"
#endif

/// The identifier that a text between quotes states, in one of the two forms of parseBinary16();
/// another text does not compile: `"12345678-9abc-def0-0807-060504030201"_id`. Always a constant.
template <typename Char, Char... Text>
constexpr Binary16 operator""_id() noexcept {
    static_assert(std::is_same_v<Char, char>, "an identifier is written as narrow text");
    constexpr Char text[] = {Text..., 0};
    constexpr detail::Parsed parsed(std::string_view(text, sizeof...(Text)));
    static_assert(parsed.result.status == PARSE_DONE,
                  "neither 0x and 32 hexadecimal digits nor 8-4-4-4-12 of them");
    return parsed.value;
}

#if defined(__clang__)
#    pragma clang diagnostic pop
#else
#    pragma GCC diagnostic pop
#endif

} // namespace literals

} // namespace Halvora
