#pragma once

#include <Halvora/Export.h>
#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <string_view>

namespace Halvora {

// Why parseBinary16 stopped.
enum eParseStatus : int {
    PARSE_DONE = 0,          // the text is one of the forms, and nothing else
    PARSE_BAD_CHARACTER = 1, // another character than the form has at this place
    PARSE_TOO_SHORT = 2,     // the text ends within the form
    PARSE_TOO_LONG = 3,      // the form is complete, but the text goes on
};

// What parseBinary16 found.
struct ParseResult {
    eParseStatus status;  // why it stopped
    std::size_t position; // of the character that was not taken; the text's length when all were

    // Whether the value was taken.
    explicit operator bool() const noexcept { return status == PARSE_DONE; }
};

// The strict counterpart of Binary16::read: takes the hexadecimal form ("0x" and 32 digits) and the
// grouped form (36 characters) as Binary16 and Convert write them, digits in either case, and
// nothing else, no white space either. Throws nothing; without success `value` is unchanged.
HALVTYPES_API ParseResult parseBinary16(std::string_view text, Binary16& value) noexcept;
HALVTYPES_API ParseResult parseBinary16(std::wstring_view text, Binary16& value) noexcept;

} // namespace Halvora
