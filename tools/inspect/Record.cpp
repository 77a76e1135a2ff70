#include "Record.h"

#include <algorithm>
#include <cstring>

#include <Halvora/error/HLVErrorException.h>
#include <Halvora/text/ResString.h>

#include <Halvora/text/VarChar.h>

#include "Errors.h"

using namespace Halvora;

namespace {

constexpr Kind kinds[] = {
    {"packed",   16, ResString::maxLength, false, 0   },
    {"slot",     16, ResString::maxLength, true,  0   },
    {"raw",      0,  VarChar::maxLength,   false, 0   },
    {"raw-slot", 0,  VarChar::maxLength,   true,  0x30},
    {"id",       16, 0,                    false, 0   },
};

// Sizes in bytes, lengths in units.
[[noreturn]] void refuse(Report code, std::uint64_t offset, std::uint64_t found,
                         std::uint64_t wanted) {
    throw HLVErrorException(HLVError::create(code, offset, found, wanted), "");
}

// Fewer bytes are refused.
std::string_view wholeAt(Input& input, std::uint64_t offset, std::size_t size) {
    std::string_view const bytes = input.at(offset, size);
    if (bytes.size() < size) {
        refuse(truncated, offset, bytes.size(), size);
    }
    return bytes;
}

void load(Kind const& kind, char const* bytes, Record& record) {
    if (kind.maxLength == 0) {
        record.id = Binary16(bytes, sizeof record.id);
    } else if (kind.idSize != 0) {
        ResString text;
        text.set(bytes);
        record.id = text.id();
        text.toWStr(record.text);
    } else {
        unsigned short length = 0;
        VarChar::set(bytes, record.text, length);
    }
}

} // namespace

Kind const* findKind(std::string_view name) {
    auto const* const found = std::find_if(std::begin(kinds), std::end(kinds),
                                           [name](Kind const& kind) { return kind.name == name; });
    return found == std::end(kinds) ? nullptr : found;
}

Record readRecord(Input& input, Kind const& kind, std::size_t capacity, std::uint64_t offset) {
    std::size_t const head = kind.idSize + (kind.maxLength == 0 ? 0 : sizeof(unsigned short));
    std::size_t const room = kind.isSlot ? std::min(capacity, kind.maxLength) : kind.maxLength;
    unsigned short length = 0;
    std::memcpy(&length, wholeAt(input, offset, head).data() + kind.idSize, head - kind.idSize);
    if (length > room) {
        refuse(impossible, offset, length, room);
    }
    std::size_t const size = head + 2 * (kind.isSlot ? capacity : length);
    std::string_view const bytes = wholeAt(input, offset, size);
    Record record;
    record.offset = offset;
    record.size = size;
    std::string_view const fill = bytes.substr(head + 2u * length);
    record.isFillIntact = fill.find_first_not_of(kind.fill) == std::string_view::npos;
    load(kind, bytes.data(), record);
    return record;
}
