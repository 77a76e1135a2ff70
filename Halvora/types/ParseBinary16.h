#pragma once

#include <Halvora/Export.h>
#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <string_view>

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
    /// Index of the first character that does not belong, in characters; the text's length when
    /// none does not or the text is too short.
    std::size_t position;

    /// Whether the value was taken.
    explicit operator bool() const noexcept { return status == PARSE_DONE; }
};

/// @name Strict parsing
/// Takes the hexadecimal form ("0x" and 32 digits) and the grouped form (36 characters), digits in
/// either case, and nothing else, no white space either. A text that begins with "0x" is held
/// against the hexadecimal form, every other against the grouped one. Without success `value` is
/// unchanged. To read from a stream without checks there is Binary16::read().
/// @{

/// Reads the whole of `text` into `value`.
HALVTYPES_API ParseResult parseBinary16(std::string_view text, Binary16& value) noexcept;
/// Reads the whole of `text` into `value`.
HALVTYPES_API ParseResult parseBinary16(std::wstring_view text, Binary16& value) noexcept;
/// @}

} // namespace Halvora
