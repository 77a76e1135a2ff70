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

// Fewer bytes are refused.
std::string_view RecordReader::wholeAt(std::uint64_t offset, std::size_t size) {
    std::string_view const bytes = m_input.at(offset, size);
    if (bytes.size() < size) {
        refuse(m_input.next() != 0 ? gap : truncated, offset, bytes.size(), size);
    }
    return bytes;
}

// Whether `bytes`, a slot's at the offset, are fill from `start` on. Slots may overlap: each byte
// is looked at once.
bool RecordReader::isFillIntact(std::uint64_t offset, std::string_view bytes, std::size_t start) {
    auto const seen = static_cast<std::size_t>(std::max(offset, m_scannedEnd) - offset);
    std::size_t const last =
        bytes.substr(std::min(seen, bytes.size())).find_last_not_of(m_kind.fill);
    if (last != std::string_view::npos) {
        m_otherEnd = offset + seen + last + 1;
    }
    m_scannedEnd = std::max(m_scannedEnd, offset + bytes.size());
    return m_otherEnd <= offset + start;
}

Record RecordReader::read(std::uint64_t offset) {
    std::size_t const head = m_kind.idSize + (m_kind.maxLength == 0 ? 0 : sizeof(unsigned short));
    std::size_t const room =
        m_kind.isSlot ? std::min(m_capacity, m_kind.maxLength) : m_kind.maxLength;
    unsigned short length = 0;
    std::memcpy(&length, wholeAt(offset, head).data() + m_kind.idSize, head - m_kind.idSize);
    if (length > room) {
        refuse(impossible, offset, length, room);
    }
    Record record;
    record.offset = offset;
    record.size = head + 2 * (m_kind.isSlot ? m_capacity : length);
    std::string_view const bytes = wholeAt(offset, record.size);
    record.isFillIntact = !m_kind.isSlot || isFillIntact(offset, bytes, head + 2u * length);
    load(m_kind, bytes.data(), record);
    return record;
}
