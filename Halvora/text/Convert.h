#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/HLVString.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/HalvTypes.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

namespace Halvora {

// Text between three encodings, and the small text tools. Static members only, without state.
//
// Narrow text is ISO 8859-1: byte n is the character U+00nn. Wide text holds one character an
// element, HLVString one 16-bit code unit. Each element is converted by itself; neither UTF-8, nor
// surrogate pairs, nor a locale plays a part. Lengths count elements. Memory that runs out is
// reported by std::bad_alloc, and nothing else fails; an output argument then holds unspecified
// text or fields.
class HALVTYPES_API Convert {
public:
    Convert() = delete;

    // encodings
    //
    // Widening keeps the element's unsigned value. To 16 bits, a wide character is cut to its low
    // 16 bits. To narrow, a value above 0xFF becomes a space. The result has exactly as many
    // elements as were read: a zero inside a counted source is kept, a bare pointer is read up to
    // the first zero, and a null one is the empty text. `out` is replaced whole. One pass, at most
    // one allocation, none when `out` has the capacity.

    static void toWString(std::wstring& out, unsigned short const* units);
    static void toWString(std::wstring& out, HLVString const& text);
    static std::wstring toWString(HLVString const& text);
    static void toWString(std::wstring& out, char const* text);
    static void toWString(std::wstring& out, std::string const& text);
    static std::wstring toWString(std::string const& text);

    // `length` elements are read from the pointer, and none for null.
    static void toAString(std::string& out, unsigned int length, unsigned short const* units);
    static std::string toAString(HLVString const& text);
    static void toAString(std::string& out, unsigned int length, wchar_t const* chars);
    static void toAString(std::string& out, unsigned int, std::nullptr_t) { out.clear(); }
    static std::string toAString(std::wstring const& text);

    static void toHLVString(HLVString& out, std::wstring const& text);
    static void toHLVString(HLVString& out, std::string const& text);

    // trimming: removes leading and trailing characters that are in `set`, except from a text that
    // holds no other: that one keeps them all

    static std::string const ms_strTrim;   // " \t\r\n", the usual set
    static std::wstring const ms_wstrTrim; // the same, wide

    static void trimLeft(std::string& text, std::string const& set);
    static void trimLeft(std::wstring& text, std::wstring const& set);
    static void trimRight(std::string& text, std::string const& set);
    static void trimRight(std::wstring& text, std::wstring const& set);
    static void trim(std::string& text, std::string const& set);
    static void trim(std::wstring& text, std::wstring const& set);

    // splitting: replaces `fields` by the pieces of `text` and returns it. `text` may be one of the
    // strings in `fields`, whose elements are reused.

    // Cuts at every separator. An empty text has no fields, neighbouring separators have an empty
    // field between them, and a separator at the very end is followed by no field: "a,,b," gives
    // "a", "" and "b".
    static std::vector<std::string>& split(std::string const& text, char separator,
                                           std::vector<std::string>& fields);
    static std::vector<std::wstring>& split(std::wstring const& text, wchar_t separator,
                                            std::vector<std::wstring>& fields);

    // As split, with fields in double quotes. A field that begins and ends with a quote loses both.
    // One that only begins with a quote goes on, separators included, to the next quote or the end
    // of the text; a separator directly behind that quote belongs to the field: a,"b,c",d gives
    // three fields. One that only begins with a quote is dropped when no text follows its separator
    // or nothing separates it: a,"b gives one field. A lone quote is kept. No escape puts a quote
    // inside a quoted field.
    static std::vector<std::string>& splitQuoted(std::string const& text, char separator,
                                                 std::vector<std::string>& fields);
    static std::vector<std::wstring>& splitQuoted(std::wstring const& text, wchar_t separator,
                                                  std::vector<std::wstring>& fields);

    // Cuts the first token out of `text` in place: writes a zero over the start of the first
    // `delimiter` behind which at least one character follows, points `next` behind it and returns
    // `text`. A null text goes on at `next`; when that is null too, so is the result. Without such
    // a delimiter `text` is the last token and `next` becomes null. An empty or null delimiter
    // never splits.
    static char* token(char* text, char const* delimiter, char*& next) noexcept;

    // values

    // 16 * high + low. '0' to '9', 'A' to 'F', 'a' to 'f' are digits, ':' to '?' count as 10 to 15,
    // everything else as 0.
    static unsigned char toByte(char high, char low) noexcept;

    // True for exactly "1", and for a text that, after white space, begins with "true" in any case
    // ("TRUE", "  true", "true."); false for every other.
    static bool toBool(std::string text);

    // The mixed-case name of the type ("Int32"); empty for DT_VOID and unknown types.
    static std::string toAString(eDataType type);

    // The grouped form of an identifier, 36 lower-case characters: the three leading parts as
    // numbers, then bytes 8 to 15 in order, as in 12345678-9abc-def0-0807-060504030201.
    static std::string toAString(Binary16 const& value);
    static std::wstring toWString(Binary16 const& value);
    template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T> || std::is_enum_v<T>>>
    static std::string toAString(T) = delete; // a number is no identifier
    template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T> || std::is_enum_v<T>>>
    static std::wstring toWString(T) = delete;

private:
    template <typename Text>
    static void _trimLeft(Text& text, Text const& set);
    template <typename Text>
    static void _trimRight(Text& text, Text const& set);
    template <typename Text>
    static void _trim(Text& text, Text const& set);
    template <typename Text>
    static std::vector<Text>& _split(Text const& text, typename Text::value_type separator,
                                     std::vector<Text>& fields);
    template <typename Text>
    static std::vector<Text>& _splitQuoted(Text const& text, typename Text::value_type separator,
                                           std::vector<Text>& fields);
};

} // namespace Halvora
