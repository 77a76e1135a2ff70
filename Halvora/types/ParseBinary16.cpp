#include <Halvora/types/ParseBinary16.h>

#include <Halvora/types/detail/Hex.h>

namespace Halvora {

namespace {

// A form character by character: a capital letter stands for a digit of the byte of that number, A
// being byte 0; everything else stands for itself.
constexpr std::string_view hexForm = "0xPPOONNMMLLKKJJIIHHGGFFEEDDCCBBAA";
constexpr std::string_view groupedForm = "DDCCBBAA-FFEE-HHGG-IIJJ-KKLLMMNNOOPP";

template <typename Char>
constexpr bool isHexDigit(Char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

template <typename Char>
ParseResult parse(std::basic_string_view<Char> text, Binary16& value) noexcept {
    std::string_view const form =
        text.size() > 1 && text[0] == '0' && text[1] == 'x' ? hexForm : groupedForm;
    unsigned char bytes[16] = {};
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (i == text.size()) {
            return {PARSE_TOO_SHORT, i};
        }
        bool const wantsDigit = form[i] >= 'A' && form[i] <= 'P';
        if (wantsDigit ? !isHexDigit(text[i]) : text[i] != static_cast<Char>(form[i])) {
            return {PARSE_BAD_CHARACTER, i};
        }
        if (wantsDigit) {
            unsigned char& byte = bytes[form[i] - 'A'];
            byte = static_cast<unsigned char>(
                byte << 4 | detail::hexDigitValue(static_cast<unsigned char>(text[i])));
        }
    }
    if (text.size() > form.size()) {
        return {PARSE_TOO_LONG, form.size()};
    }
    value = bytes;
    return {PARSE_DONE, text.size()};
}

} // namespace

ParseResult parseBinary16(std::string_view text, Binary16& value) noexcept {
    return parse(text, value);
}

ParseResult parseBinary16(std::wstring_view text, Binary16& value) noexcept {
    return parse(text, value);
}

} // namespace Halvora
