#pragma once

/// @file
/// `std::format` for `Binary16`, `HLVError`, `HLVError::Param` and `KrVersion`, where the standard
/// library has it: the text that they write to a stream under the classic locale, with the fill,
/// alignment and width of a text.

#if defined(__has_include)
#    if __has_include(<version>)
#        include <version>
#    endif
#endif

#if defined(__cpp_lib_format)

#    include <Halvora/error/HLVError.h>
#    include <Halvora/text/Convert.h>
#    include <Halvora/types/Binary16.h>
#    include <Halvora/version/KrVersion.h>

#    include <algorithm>
#    include <format>
#    include <locale>
#    include <sstream>
#    include <string>
#    include <string_view>
#    include <type_traits>

namespace Halvora::detail {

template <typename T, typename Char>
struct StreamFormatter : std::formatter<std::basic_string_view<Char>, Char> {
    template <typename Context>
    auto format(T const& value, Context& context) const {
        std::basic_ostringstream<Char> stream;
        stream.imbue(std::locale::classic());
        stream << value;
        return std::formatter<std::basic_string_view<Char>, Char>::format(stream.str(), context);
    }
};

} // namespace Halvora::detail

/// The whole chain.
template <typename Char>
struct std::formatter<Halvora::HLVError, Char>
    : Halvora::detail::StreamFormatter<Halvora::HLVError, Char> {};

/// The value alone.
template <typename Char>
struct std::formatter<Halvora::HLVError::Param, Char>
    : Halvora::detail::StreamFormatter<Halvora::HLVError::Param, Char> {};

/// The number, and the release type where it is written.
template <typename Char>
struct std::formatter<Halvora::KrVersion, Char>
    : Halvora::detail::StreamFormatter<Halvora::KrVersion, Char> {};

/// `{}` is the hexadecimal, `{:g}` the grouped form.
template <typename Char>
struct std::formatter<Halvora::Binary16, Char> {
    /// Takes `g` or nothing; all else is `std::format_error`.
    template <typename Context>
    constexpr auto parse(Context& context) {
        auto at = context.begin();
        m_isGrouped = at != context.end() && *at == static_cast<Char>('g');
        if (m_isGrouped) {
            ++at;
        }
        if (at != context.end() && *at != static_cast<Char>('}')) {
            throw std::format_error("Binary16 takes {} or {:g}");
        }
        return at;
    }

    /// Writes the form that was asked for.
    template <typename Context>
    auto format(Halvora::Binary16 const& value, Context& context) const {
        std::basic_string<Char> text;
        if (!m_isGrouped) {
            std::basic_ostringstream<Char> stream;
            stream.imbue(std::locale::classic());
            value.write(stream);
            text = stream.str();
        } else if constexpr (std::is_same_v<Char, char>) {
            text = Halvora::Convert::toAString(value);
        } else {
            text = Halvora::Convert::toWString(value);
        }
        return std::ranges::copy(text, context.out()).out;
    }

private:
    bool m_isGrouped = false;
};

#endif
