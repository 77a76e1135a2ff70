#pragma once

#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Input.h"

// A way in which the library lays a value into memory, an identifier, a text or both:
//
//     record := id:byte[16]? (length:u16le unit:u16le[length] fill:byte[...]?)?
//
// A slot is filled up to its capacity.
struct Kind {
    char const* name;
    std::size_t idSize;    // in bytes; 0 without an identifier
    std::size_t maxLength; // in code units; 0 without a text
    bool isSlot;
    char fill; // each byte behind the text of a slot
};

// Null for a name that no kind has.
Kind const* findKind(std::string_view name);

struct Record {
    std::uint64_t offset = 0;
    std::size_t size = 0; // in bytes, with the fill
    Halvora::Binary16 id;
    std::wstring text; // one code unit a character
    bool isFillIntact = true;
};

// The record at an offset; `capacity` is that of a slot, in code units. One that is cut short, or
// announces more than there can be, is refused with ERR_OUT_OF_RANGE and its offset.
Record readRecord(Input& input, Kind const& kind, std::size_t capacity, std::uint64_t offset);
