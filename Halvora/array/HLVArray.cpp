#include <Halvora/array/HLVArray.h>

#include <algorithm>
#include <cstring>
#include <ostream>
#include <utility>

#include <Halvora/array/detail/Core.h>

namespace Halvora {

using detail::RawBlock;
using detail::TextBlock;

// storage

void HLVArray::release() noexcept {
    if (m_data == nullptr) {
        return;
    }
    if (isTextType(m_type)) {
        Core::visitTexts(*this, m_type, [](auto* texts) {
            TextBlock<std::decay_t<decltype(*texts)>> const ending(texts);
        });
    } else {
        RawBlock const ending(Core::bytesOf(*this));
    }
    adopt(nullptr, m_type, 0, 0);
}

void HLVArray::adopt(void* data, eDataType type, std::size_t count, std::size_t byteSize) noexcept {
    m_type = type;
    m_count = static_cast<unsigned short>(count);
    m_mayHoldMore = false;
    m_byteSize = static_cast<unsigned int>(byteSize);
    m_data = data;
}

// copies

HLVArray::HLVArray(eDataType type) noexcept : m_type(type) {}

HLVArray::HLVArray(HLVArray const& other) : m_type(other.m_type) {
    if (other.m_data == nullptr) {
        return;
    }
    if (isTextType(m_type)) {
        Core::visitTexts(other, m_type, [this, &other](auto const* texts) {
            Core::appendTexts(*this, texts, other.m_count, m_type);
        });
    } else {
        _set(other.m_count, other.m_data, m_type, Core::widthOf(m_type));
    }
}

HLVArray::HLVArray(HLVArray&& other) noexcept : m_type(other.m_type) {
    moveFrom(other, other.m_type);
}

HLVArray& HLVArray::operator=(HLVArray const& other) {
    if (this != &other) {
        HLVArray copy(other);
        moveFrom(copy, copy.m_type);
    }
    return *this;
}

HLVArray& HLVArray::operator=(HLVArray&& other) noexcept {
    moveFrom(other, other.m_type);
    return *this;
}

HLVArray::~HLVArray() {
    release();
}

void HLVArray::swap(HLVArray& other) noexcept {
    // All fields at once: none of them points into its array.
    unsigned char held[sizeof *this];
    std::memcpy(held, static_cast<void*>(this), sizeof held);
    std::memcpy(static_cast<void*>(this), static_cast<void*>(&other), sizeof held);
    std::memcpy(static_cast<void*>(&other), held, sizeof held);
}

// whole contents

void HLVArray::clear(eDataType type) noexcept {
    release();
    m_type = type;
}

int HLVArray::init(unsigned short count, eDataType type) {
    if (!isTextType(type)) {
        return Core::widthOf(type) == 0 ? 0 : _init(count, type, Core::widthOf(type));
    }
    clear(type);
    if (count == 0) {
        return 0;
    }
    if (type == DT_STRING) {
        Core::hold(*this, TextBlock<std::wstring>::ofEmpty(count), type, count);
    } else {
        Core::hold(*this, TextBlock<ResString>::ofEmpty(count), type, count);
    }
    return 0;
}

void HLVArray::moveFrom(HLVArray& source, eDataType type) noexcept {
    if (this == &source) {
        return;
    }
    release();
    adopt(source.m_data, source.m_type, source.m_count, source.m_byteSize);
    m_mayHoldMore = source.m_mayHoldMore;
    source.adopt(nullptr, type, 0, 0);
}

int HLVArray::add(HLVArray const& other) {
    eDataType const type = other.m_type;
    std::size_t const added = other.m_count;
    int const code = Core::appendRefusal(*this, added, type);
    if (code != 0) {
        return code;
    }
    if (isTextType(type)) {
        Core::visitTexts(other, type, [this, added, type](auto const* texts) {
            Core::appendTexts(*this, texts, added, type);
        });
        return 0;
    }
    std::size_t const oldSize = m_byteSize;
    std::size_t const addedSize = other.m_byteSize;
    if (oldSize + addedSize == 0) {
        clear(type);
        return 0;
    }
    m_data = RawBlock::resized(m_data, oldSize + addedSize);
    if (addedSize != 0) {
        std::memcpy(Core::bytesOf(*this) + oldSize, other.m_data, addedSize);
    }
    adopt(m_data, type, m_count + added, oldSize + addedSize);
    return 0;
}

int HLVArray::removeRange(unsigned short start, unsigned short count) {
    if (count == 0) {
        return 0;
    }
    int const code = Core::refusal(*this, start, count, m_type, m_data);
    if (code != 0) {
        return code;
    }
    std::size_t const end = std::size_t{start} + count;
    if (isTextType(m_type)) {
        Core::visitTexts(*this, m_type, [this, start, end](auto* texts) {
            std::move(texts + end, texts + m_count, texts + start);
        });
    } else {
        unsigned int const width = Core::widthOf(m_type);
        unsigned char* const bytes = Core::bytesOf(*this);
        std::memmove(bytes + start * width, bytes + end * width, (m_count - end) * width);
        m_byteSize -= count * width;
    }
    m_mayHoldMore = true;
    m_count = static_cast<unsigned short>(m_count - count);
    return 0;
}

// fixed-width elements

int HLVArray::_init(unsigned short count, eDataType type, unsigned int width) {
    if (!Core::hasWidth(type, width)) {
        return ERR_WRONG_TYPE;
    }
    clear(type);
    if (count != 0) {
        std::size_t const size = std::size_t{count} * width;
        RawBlock block = RawBlock::ofSize(size);
        std::memset(block.data(), 0, size);
        Core::hold(*this, std::move(block), type, count);
    }
    return 0;
}

int HLVArray::_add(void const* value, eDataType type, unsigned int width) {
    if (!Core::hasWidth(type, width)) {
        return ERR_WRONG_TYPE;
    }
    if (value == nullptr) {
        int const code = Core::appendRefusal(*this, 1, type);
        return code != 0 ? code : ERR_NULL_POINTER;
    }
    if (Core::appendInPlace(*this, type, value, width)) {
        return 0;
    }
    switch (width) {
    case 1: return Core::appendFallback(*this, type, Core::bitsAt<1>(value));
    case 2: return Core::appendFallback(*this, type, Core::bitsAt<2>(value));
    case 4: return Core::appendFallback(*this, type, Core::bitsAt<4>(value));
    case 8: return Core::appendFallback(*this, type, Core::bitsAt<8>(value));
    default: return Core::appendFallback(*this, type, Core::bitsAt<16>(value));
    }
}

int HLVArray::_set(unsigned short count, void const* values, eDataType type, unsigned int width) {
    if (values == nullptr && count != 0) {
        return ERR_NULL_POINTER;
    }
    if (!Core::hasWidth(type, width)) {
        return ERR_WRONG_TYPE;
    }
    std::size_t const size = std::size_t{count} * width;
    if (m_count >= count && m_type == type) {
        if (size != 0) {
            std::memmove(m_data, values, size);
        }
        m_mayHoldMore = m_mayHoldMore || m_count > count;
        m_count = count;
        m_byteSize = static_cast<unsigned int>(size);
        return 0;
    }
    HLVArray old(m_type); // outlives the copy, since the values may be part of it
    old.moveFrom(*this, m_type);
    RawBlock block = RawBlock::ofSize(size);
    if (size != 0) {
        std::memcpy(block.data(), values, size);
    }
    Core::hold(*this, std::move(block), type, count);
    return 0;
}

int HLVArray::_setIndex(unsigned short index, void const* value, eDataType type,
                        unsigned int width) {
    return _setRange(index, 1, value, type, width);
}

int HLVArray::_setRange(unsigned short start, unsigned short count, void const* values,
                        eDataType type, unsigned int width) {
    if (count == 0) {
        return 0;
    }
    // An array that has elements is never of DT_VOID.
    eDataType const fitting = Core::hasWidth(type, width) ? type : DT_VOID;
    int const code = Core::refusal(*this, start, count, fitting, values);
    if (code == 0) {
        std::memmove(Core::bytesOf(*this) + std::size_t{start} * width, values,
                     std::size_t{count} * width);
    }
    return code;
}

// reading

void const* HLVArray::getData() const noexcept {
    return isTextType(m_type) ? nullptr : m_data;
}

HLVArray HLVArray::operator[](unsigned short index) const {
    HLVArray element(DT_BYTE);
    if (index >= m_count) {
        return element;
    }
    if (isTextType(m_type)) {
        Core::visitTexts(*this, m_type, [this, &element, index](auto const* texts) {
            Core::appendTexts(element, texts + index, 1, m_type);
        });
    } else {
        unsigned int const width = Core::widthOf(m_type);
        element._set(1, Core::bytesOf(*this) + std::size_t{index} * width, m_type, width);
    }
    return element;
}

bool HLVArray::operator==(HLVArray const& other) const noexcept {
    if (m_type != other.m_type || m_count != other.m_count) {
        return false;
    }
    if (m_count == 0) {
        return true;
    }
    if (isTextType(m_type)) {
        return Core::visitTexts(*this, m_type, [&](auto const* texts) {
            return std::equal(texts, texts + m_count, static_cast<decltype(texts)>(other.m_data));
        });
    }
    return std::memcmp(m_data, other.m_data, m_byteSize) == 0;
}

} // namespace Halvora

namespace {

template <typename Stream>
Stream& write(Stream& stream, Halvora::HLVArray const& array) {
    stream << static_cast<unsigned int>(array.getCount()) << ';' << ' '
           << static_cast<int>(array.getDataType());
    return stream;
}

} // namespace

std::ostream& std::operator<<(std::ostream& stream, Halvora::HLVArray const& array) {
    return write(stream, array);
}

std::wostream& std::operator<<(std::wostream& stream, Halvora::HLVArray const& array) {
    return write(stream, array);
}
