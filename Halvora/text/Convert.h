#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/Braces.h>
#include <Halvora/text/HLVString.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/HalvTypes.h>
#include <Halvora/types/ParseBinary16.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Halvora {

/// Text between three encodings, and the small text tools. Static members only, without state.
///
/// Narrow text is ISO 8859-1: byte n is the character U+00nn. Wide text holds one character an
/// element, `HLVString` one 16-bit code unit. Where `wchar_t` has 16 bits, on Windows, wide text is
/// UTF-16 and "character" means a code unit of it. Each element is converted by itself; neither
/// UTF-8, nor surrogate pairs, nor a locale plays a part. Lengths count elements.
///
/// Memory that runs out is reported by `std::bad_alloc`, a result that 32 bits cannot hold (from
/// 2^28 wide characters on) by `std::length_error`, and nothing else fails; an output argument then
/// holds unspecified text or fields. A null pointer given where a string is asked for meets the
/// string's own constructor, which throws `std::logic_error` with libstdc++.
class HALVTYPES_API Convert {
    template <typename View, typename Field, typename Char = typename View::value_type>
    using IfFieldOf = std::enable_if_t<std::is_same_v<Field, View> ||
                                       std::is_same_v<Field, std::basic_string<Char>>>;

public:
    /// There are no instances.
    explicit Convert() = delete; // explicit: else the braces of an aggregate would make one

    /// @name Encodings
    /// Widening keeps the element's unsigned value. To 16 bits, a wide character is cut to its low
    /// 16 bits, which may be those of another: U+10041 becomes `A`; as UTF-16, on Windows, its two
    /// elements stay as they are. To narrow, a value above 0xFF becomes a space. The result has
    /// exactly as many elements as were read, zeros included. `out` is replaced whole. One pass, at
    /// most one allocation, none when `out` has the capacity.
    /// @{

    /// 16-bit to wide, up to the first zero unit; nothing for null.
    static void toWString(std::wstring& out, unsigned short const* units);
    /// 16-bit to wide, the whole text.
    static void toWString(std::wstring& out, HLVString const& text);
    /// 16-bit to wide, the whole text as a new string.
    static std::wstring toWString(HLVString const& text);
    /// Narrow to wide, up to the first zero byte; nothing for null.
    static void toWString(std::wstring& out, char const* text);
    /// Narrow to wide, the whole text.
    static void toWString(std::wstring& out, std::string const& text);
    /// Narrow to wide, the whole text as a new string.
    static std::wstring toWString(std::string const& text);

    /// 16-bit to narrow, exactly `length` units; nothing for null.
    static void toAString(std::string& out, unsigned int length, unsigned short const* units);
    /// 16-bit to narrow, the whole text as a new string.
    static std::string toAString(HLVString const& text);
    /// Wide to narrow, exactly `length` characters; nothing for null.
    static void toAString(std::string& out, unsigned int length, wchar_t const* chars);
    /// The empty text, whatever the length.
    static void toAString(std::string& out, unsigned int, std::nullptr_t) { out.clear(); }
    /// Wide to narrow, the whole text as a new string.
    static std::string toAString(std::wstring const& text);

    /// Wide to 16-bit, the whole text.
    static void toHLVString(HLVString& out, std::wstring const& text);
    /// Narrow to 16-bit, the whole text.
    static void toHLVString(HLVString& out, std::string const& text);

    /// A narrow view to wide.
    template <typename View, typename = detail::IfNarrowView<View>>
    static void toWString(std::wstring& out, View const& text) {
        _widen(out, text.data(), text.size());
    }
    /// A narrow view to wide, as a new string.
    template <typename View, typename = detail::IfNarrowView<View>, typename = void>
    static std::wstring toWString(View const& text) {
        std::wstring out;
        _widen(out, text.data(), text.size());
        return out;
    }
    /// A wide view to narrow.
    template <typename View, typename = detail::IfWideView<View>>
    static void toAString(std::string& out, View const& text) {
        _narrow(out, text.data(), text.size());
    }
    /// A wide view to narrow, as a new string.
    template <typename View, typename = detail::IfWideView<View>, typename = void>
    static std::string toAString(View const& text) {
        std::string out;
        _narrow(out, text.data(), text.size());
        return out;
    }
    /// A narrow or a wide view to 16-bit.
    template <typename View, typename = detail::IfView<View>>
    static void toHLVString(HLVString& out, View const& text) {
        _toUnits(out, text.data(), text.size());
    }

    /// @}

    /// @name Trimming
    /// Removes characters that are in `set` from the ends of `text`, but leaves a text alone that
    /// holds no others.
    /// @{

    static std::string const ms_strTrim;   ///< The usual set: `" \t\r\n"`.
    static std::wstring const ms_wstrTrim; ///< The same, wide.

    /// Removes leading characters that are in `set`.
    static void trimLeft(std::string& text, std::string const& set);
    /// Removes leading characters that are in `set`.
    static void trimLeft(std::wstring& text, std::wstring const& set);
    /// Removes trailing characters that are in `set`.
    static void trimRight(std::string& text, std::string const& set);
    /// Removes trailing characters that are in `set`.
    static void trimRight(std::wstring& text, std::wstring const& set);
    /// Removes leading and trailing characters that are in `set`.
    static void trim(std::string& text, std::string const& set);
    /// Removes leading and trailing characters that are in `set`.
    static void trim(std::wstring& text, std::wstring const& set);

    /// Removes leading characters that are in `set` from a view; the text stays as it is.
    template <typename View, typename = detail::IfView<View>>
    static void trimLeft(View& text, detail::Same<View> set) {
        _trimLeftView(text, set);
    }
    /// Removes leading characters that are in the view `set`.
    template <typename View, typename = detail::IfView<View>>
    static void trimLeft(std::basic_string<typename View::value_type>& text, View const& set) {
        _trimLeftView(text, set);
    }
    /// Removes trailing characters that are in `set` from a view; the text stays as it is.
    template <typename View, typename = detail::IfView<View>>
    static void trimRight(View& text, detail::Same<View> set) {
        _trimRightView(text, set);
    }
    /// Removes trailing characters that are in the view `set`.
    template <typename View, typename = detail::IfView<View>>
    static void trimRight(std::basic_string<typename View::value_type>& text, View const& set) {
        _trimRightView(text, set);
    }
    /// Removes leading and trailing characters that are in `set` from a view; the text stays as it
    /// is.
    template <typename View, typename = detail::IfView<View>>
    static void trim(View& text, detail::Same<View> set) {
        _trimLeftView(text, set);
        _trimRightView(text, set);
    }
    /// Removes leading and trailing characters that are in the view `set`, which must not lie in
    /// `text`.
    template <typename View, typename = detail::IfView<View>>
    static void trim(std::basic_string<typename View::value_type>& text, View const& set) {
        _trimLeftView(text, set);
        _trimRightView(text, set);
    }

    /// @}

    /// @name Splitting
    /// Replaces `fields` by the pieces of `text` and returns it. `text` may be one of the strings
    /// in `fields`, whose elements are reused.
    /// @{

    /// Cuts `text` at every separator. An empty text has no fields, neighbouring separators have an
    /// empty field between them, and a separator at the very end is followed by no field: `a,,b,`
    /// gives `a`, an empty field and `b`.
    static std::vector<std::string>& split(std::string const& text, char separator,
                                           std::vector<std::string>& fields);
    /// Cuts wide `text` at every separator, by the rules of the narrow form.
    static std::vector<std::wstring>& split(std::wstring const& text, wchar_t separator,
                                            std::vector<std::wstring>& fields);
    /// Braces that were a text by accident.
    static std::vector<std::string>& split(detail::NoText<char>, char,
                                           std::vector<std::string>&) = delete;
    /// Braces that were a text by accident.
    static std::vector<std::wstring>& split(detail::NoText<wchar_t>, wchar_t,
                                            std::vector<std::wstring>&) = delete;

    /// Cuts `text` at every separator outside double quotes.
    ///
    /// A field that begins and ends with a quote loses both. One that only begins with a quote goes
    /// on, separators included, to the next quote or the end of the text; a separator directly
    /// behind that quote is skipped, anything else there begins the next field: `a,"b,c",d` and
    /// `a,"b,c"d` give `a`, `b,c` and `d`. One that only begins with a quote is dropped when
    /// no text follows its separator or nothing separates it: `a,"b` gives one field. A lone quote
    /// is kept. No escape puts a quote inside a quoted field: this is for texts known to have none,
    /// and `CsvReader` for CSV from elsewhere.
    static std::vector<std::string>& splitQuoted(std::string const& text, char separator,
                                                 std::vector<std::string>& fields);
    /// Cuts wide `text` at every separator outside double quotes, by the rules of the narrow form.
    static std::vector<std::wstring>& splitQuoted(std::wstring const& text, wchar_t separator,
                                                  std::vector<std::wstring>& fields);
    /// Braces that were a text by accident.
    static std::vector<std::string>& splitQuoted(detail::NoText<char>, char,
                                                 std::vector<std::string>&) = delete;
    /// Braces that were a text by accident.
    static std::vector<std::wstring>& splitQuoted(detail::NoText<wchar_t>, wchar_t,
                                                  std::vector<std::wstring>&) = delete;

    /// Cuts a view into strings or into views of the same text, by the rules of `split`. It may lie
    /// in one of the strings.
    template <typename View, typename Field, typename = detail::IfView<View>,
              typename = IfFieldOf<View, Field>>
    static std::vector<Field>& split(View const& text, typename View::value_type separator,
                                     std::vector<Field>& fields) {
        return _splitView(text, separator, false, fields);
    }
    /// Cuts a view into strings or into views of the same text, by the rules of `splitQuoted`. It
    /// may lie in one of the strings.
    template <typename View, typename Field, typename = detail::IfView<View>,
              typename = IfFieldOf<View, Field>>
    static std::vector<Field>& splitQuoted(View const& text, typename View::value_type separator,
                                           std::vector<Field>& fields) {
        return _splitView(text, separator, true, fields);
    }

    /// Cuts the first token out of `text` in place: writes a zero over the start of the first
    /// `delimiter` behind which at least one character follows, points `next` behind it and returns
    /// `text`.
    ///
    /// A null `text` goes on at `next`; when that is null too, so is the result. Without such a
    /// delimiter `text` is the last token and `next` becomes null. An empty or null `delimiter`
    /// never splits.
    static char* token(char* text, char const* delimiter, char*& next) noexcept;

    /// @}

    /// @name Values and their text
    /// @{

    /// 16 times the value of `high` plus that of `low`. `0` to `9`, `A` to `F` and `a` to `f` are
    /// digits, the six from `':'` to `'?'` count as 10 to 15, everything else as 0.
    HALVTYPES_API_INLINE static unsigned char toByte(char high, char low) noexcept {
        return detail::byteOfDigits(high, low);
    }

    /// True for exactly `1`, and for a text that, after white space, begins with `true` in any
    /// case, whatever follows (`TRUEST`); false for every other.
    static bool toBool(std::string text);

    /// The mixed-case name of the type (`Int32`); empty for `DT_VOID` and unknown types.
    static std::string toAString(eDataType type);

    /// The grouped form of an identifier, 36 lower-case characters: the three leading parts as
    /// numbers, then bytes 8 to 15 in order, as in `12345678-9abc-def0-0807-060504030201`.
    static std::string toAString(Binary16 const& value);
    /// The grouped form of an identifier, wide.
    static std::wstring toWString(Binary16 const& value);
    /// Not offered: a number is no identifier.
    template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T> || std::is_enum_v<T>>>
    static std::string toAString(T) = delete;
    /// Not offered: a number is no identifier.
    template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T> || std::is_enum_v<T>>>
    static std::wstring toWString(T) = delete;

    /// @}

private:
    // what the functions for views stand on
    static void _widen(std::wstring& out, char const* text, std::size_t n);
    static void _narrow(std::string& out, wchar_t const* text, std::size_t n);
    static void _toUnits(HLVString& out, char const* text, std::size_t n);
    static void _toUnits(HLVString& out, wchar_t const* text, std::size_t n);
    template <typename Text, typename View>
    static void _trimLeftView(Text& text, View set);
    template <typename Text, typename View>
    static void _trimRightView(Text& text, View set);
    template <typename View, typename Field>
    static bool _liesIn(View text, std::vector<Field> const& fields);
    template <typename View, typename Field>
    static std::vector<Field>& _splitView(View text, typename View::value_type separator,
                                          bool isQuoted, std::vector<Field>& fields);

    template <typename Text>
    static std::vector<Text>& _split(Text const& text, typename Text::value_type separator,
                                     std::vector<Text>& fields);
    template <typename Text>
    static std::vector<Text>& _splitQuoted(Text const& text, typename Text::value_type separator,
                                           std::vector<Text>& fields);
};

} // namespace Halvora

#include <Halvora/text/ConvertInline.h>
