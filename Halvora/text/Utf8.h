#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/HLVString.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace Halvora {

/// What a conversion of `Utf8` had to replace.
struct Utf8Result {
    /// How many ill-formed sequences or elements became U+FFFD.
    std::size_t replaced;
    /// Where the first of them begins, in elements of the input; the input's length if there is
    /// none.
    std::size_t position;
};

/// Text between UTF-8, the encoding of files, terminals and protocols, and the library's wide and
/// 16-bit text.
///
/// Every character of Unicode can be converted and comes back the same. Wide text holds a character
/// an element, or UTF-16 where `wchar_t` has 16 bits; 16-bit text holds UTF-16: characters above
/// U+FFFF are surrogate pairs, where `Convert` knows only single elements.
///
/// What is ill-formed is replaced by U+FFFD and counted. In UTF-8 that is each maximal subpart of
/// an ill-formed sequence, as The Unicode Standard recommends and browsers do: the longest
/// beginning of a sequence that could have gone on, else one byte. Overlong forms, surrogates and
/// values above U+10FFFF are ill-formed. In wide and 16-bit text it is each element that is no
/// character: a surrogate without its other half (in wide text of 32 bits each one), or a value
/// above U+10FFFF.
///
/// Zeros are characters like all others, and no byte order mark is added or removed. `out` is
/// replaced whole. One allocation at most for text that is well-formed, and none when `out` has the
/// capacity; `fromHLVString` may ask for 6 bytes for a surrogate pair. Memory that runs out is
/// reported by `std::bad_alloc`, and nothing else fails; `out` then holds unspecified text. All
/// take time linear in the length.
class HALVTYPES_API Utf8 {
public:
    explicit Utf8() = delete;

    /// Converts UTF-8 to wide text.
    static Utf8Result toWString(std::wstring& out, std::string_view text);
    /// Converts UTF-8 to 16-bit text, with surrogate pairs.
    static Utf8Result toHLVString(HLVString& out, std::string_view text);
    /// Converts wide text to UTF-8.
    static Utf8Result fromWString(std::string& out, std::wstring_view text);
    /// Converts 16-bit text to UTF-8; surrogate pairs become one character.
    static Utf8Result fromHLVString(std::string& out, HLVString const& text);

    /// Whether `text` is well-formed UTF-8, so that nothing would be replaced.
    static bool isValid(std::string_view text) noexcept;
};

} // namespace Halvora
