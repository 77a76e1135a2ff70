#pragma once

#include <Halvora/error/Characters.h>
#include <Halvora/error/HLVError.h>
#include <Halvora/text/ITranslator.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/Utf8.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>

namespace Halvora {

namespace detail {

// Writes a text so that it neither breaks its line nor steers a terminal.
template <typename Char>
void describeText(std::basic_ostream<Char>& stream, std::wstring_view text) {
    std::wstring readable;
    forEachCharacter(text, [&readable](std::uint32_t character) {
        appendCharacter(readable, isNone(character)      ? 0xFFFD
                                  : isControl(character) ? 0x20
                                                         : character);
    });
    if constexpr (sizeof(Char) == 1) {
        std::string narrow;
        Utf8::fromWString(narrow, readable);
        stream << narrow;
    } else {
        stream << readable;
    }
}

// "name (code): sentence", or "Error code" of a code that the translator does not know.
inline std::wstring headOf(HLVError const& error, ITranslator const& translator) {
    int const code = error.getCode();
    std::wstring const number = std::to_wstring(code);
    std::unique_ptr<wchar_t[]> const given(translator.getErrorName(code));
    std::unique_ptr<ResString> const sentence(translator.getErrorDescription(code));
    std::wstring const name = given != nullptr && given[0] != 0 ? given.get() : number;
    std::wstring const description = sentence != nullptr ? sentence->wstr() : std::wstring();
    if (name == number && (description == number || description.empty())) {
        return error.message();
    }
    std::wstring const head = name == number ? name : name + L" (" + number + L")";
    return description.empty() ? head : head + L": " + description;
}

inline std::wstring nameOf(HLVError const& error, int number, ITranslator const& translator) {
    std::unique_ptr<ResString> const name(translator.getErrorParamDesc(error.getCode(), number));
    return name != nullptr && name->length() != 0 ? name->wstr() : L"P" + std::to_wstring(number);
}

template <typename Char>
void describeValue(std::basic_ostream<Char>& stream, HLVError::Param const& param,
                   ITranslator const& translator) {
    if (param.getDataType() == DT_STRING) {
        describeText(stream, param.getDataString());
    } else if (param.getDataType() == DT_STRINGRES) {
        std::wostringstream text;
        translator.getTranslation(text, ResString(param.getData(), param.getDataString()));
        describeText(stream, text.str());
    } else {
        stream << param;
    }
}

template <typename Char>
void describeError(std::basic_ostream<Char>& stream, HLVError const& error,
                   ITranslator const& translator) {
    describeText(stream, headOf(error, translator));
    stream << '\n';
    HLVError::Param const* const params[] = {error.getParam0(), error.getParam1(),
                                             error.getParam2()};
    for (int i = 0; i < 3; ++i) {
        if (params[i] != nullptr) {
            describeText(stream, L"  " + nameOf(error, i + 1, translator) + L": ");
            describeValue(stream, *params[i], translator);
            stream << '\n';
        }
    }
}

template <typename Char>
std::basic_ostream<Char>& describeChain(std::basic_ostream<Char>& stream, HLVError const& first,
                                        ITranslator const& translator) {
    stream.width(0); // meant for one insertion, not for a line among others
    for (HLVError const* error = &first; error != nullptr; error = error->getPrecedingError()) {
        describeError(stream, *error, translator);
    }
    return stream;
}

} // namespace detail

/// Writes the chain for people, newest error first, in the translator's words and as UTF-8:
/// @code{.unparsed}
/// pumpFailed (-20): A pump does not start.
///   pump: 3
/// sensorSilent (-10): A sensor does not answer.
///   sensor: München
/// @endcode
/// Each line ends with a line end. A code that the translator does not know gives `Error -7`, its
/// parameters are `P1` to `P3`. Texts under an identifier are translated; in all texts control
/// characters become spaces, lone surrogates U+FFFD. Other values go through the stream's own
/// output, under its flags and locale.
inline std::ostream& describe(std::ostream& stream, HLVError const& error,
                              ITranslator const& translator) {
    return detail::describeChain(stream, error, translator);
}
/// As the narrow form, with wide characters.
inline std::wostream& describe(std::wostream& stream, HLVError const& error,
                               ITranslator const& translator) {
    return detail::describeChain(stream, error, translator);
}

} // namespace Halvora
