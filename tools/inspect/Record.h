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

// Reads records of one kind; `capacity` is that of a slot, in code units.
class RecordReader {
public:
    RecordReader(Input& input, Kind const& kind, std::size_t capacity)
        : m_input(input), m_kind(kind), m_capacity(capacity) {}

    // The record at an offset, not smaller than the one before. One that is cut short, or announces
    // more than there can be, is thrown as a HLVErrorException with its offset.
    Record read(std::uint64_t offset);

private:
    std::string_view wholeAt(std::uint64_t offset, std::size_t size);
    bool isFillIntact(std::uint64_t offset, std::string_view bytes, std::size_t start);

    Input& m_input;
    Kind const& m_kind;
    std::size_t m_capacity;
    std::uint64_t m_scannedEnd = 0; // of the bytes that were looked at for the fill ...
    std::uint64_t m_otherEnd = 0;   // ... and of the last one among them that is no fill
};
