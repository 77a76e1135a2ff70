#pragma once

/// @file
/// `std::format` for the classes of this library, where the standard library has it: as text or as
/// what they write to a stream under the classic locale, with the fill, alignment and width of a
/// text. `Binary16` takes `{}` and `{:g}` only. Narrow output holds ISO 8859-1, so a character that
/// it lacks becomes a space, as everywhere in this library.

#if defined(__has_include)
#    if __has_include(<version>)
#        include <version>
#    endif
#endif

#if defined(__cpp_lib_format)

#    include <Halvora/error/HLVError.h>
#    include <Halvora/error/Holder.h>
#    include <Halvora/text/Convert.h>
#    include <Halvora/text/ResString.h>
#    include <Halvora/text/ResString2.h>
#    include <Halvora/text/VarChar.h>
#    include <Halvora/types/Binary16.h>
#    include <Halvora/types/HalvTypes.h>
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

// The text of each kind, in both widths.

inline void toText(std::string& out, ResString const& value) {
    value.toStr(out);
}
inline void toText(std::wstring& out, ResString const& value) {
    value.toWStr(out);
}
template <typename Char>
void toText(std::basic_string<Char>& out, ResString2 const& value) {
    value.getText(out);
}
inline void toText(std::string& out, VarChar const& value) {
    Convert::toAString(out, value.length(), value.pstr());
}
inline void toText(std::wstring& out, VarChar const& value) {
    value.wstr(out);
}
template <typename Char>
void toText(std::basic_string<Char>& out, eDataType value) {
    std::string_view const name = HalvTypes::dataTypeToString(value);
    out.assign(name.begin(), name.end());
}

template <typename T, typename Char>
struct TextFormatter : std::formatter<std::basic_string_view<Char>, Char> {
    template <typename Context>
    auto format(T const& value, Context& context) const {
        std::basic_string<Char> text;
        toText(text, value);
        return std::formatter<std::basic_string_view<Char>, Char>::format(text, context);
    }
};

} // namespace Halvora::detail

/// The text without its identifier.
template <typename Char>
struct std::formatter<Halvora::ResString, Char>
    : Halvora::detail::TextFormatter<Halvora::ResString, Char> {};

/// The text as it is, without its identifier and untranslated.
template <typename Char>
struct std::formatter<Halvora::ResString2, Char>
    : Halvora::detail::TextFormatter<Halvora::ResString2, Char> {};

/// The text.
template <typename Char>
struct std::formatter<Halvora::VarChar, Char>
    : Halvora::detail::TextFormatter<Halvora::VarChar, Char> {};

/// The upper-case name, such as `INT32`; `!UNKNOWN!` for a number that is no type.
template <typename Char>
struct std::formatter<Halvora::eDataType, Char>
    : Halvora::detail::TextFormatter<Halvora::eDataType, Char> {};

/// The whole chain; `<NONE>` for an empty holder.
template <typename Char>
struct std::formatter<Halvora::HLVError::Holder, Char>
    : Halvora::detail::StreamFormatter<Halvora::HLVError::Holder, Char> {};

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
