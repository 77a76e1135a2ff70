#pragma once

#include <Halvora/array/HLVArray.h>

#include <cstring>
#include <type_traits>
#include <utility>

#include <Halvora/array/detail/RawBlock.h>
#include <Halvora/array/detail/TextBlock.h>

namespace Halvora {

// What the operations of arrays have in common. Who writes first asks one of the two refusals.
struct __attribute__((visibility("hidden"))) HLVArray::Core {
    static constexpr std::size_t maxCount = 65535;

    // In memory: the operations look widths up often.
    static constexpr auto widths = detail::elementWidths();

    static constexpr unsigned int widthOf(eDataType type) noexcept {
        return isDataType(type) ? widths[static_cast<unsigned int>(type)] : 0;
    }

    static constexpr bool hasWidth(eDataType type, unsigned int width) noexcept {
        return width != 0 && width == widthOf(type);
    }

    // Why `values` cannot overwrite the `count` elements from `start` on, count > 0; 0 if they can.
    static int refusal(HLVArray const& array, std::size_t start, std::size_t count, eDataType type,
                       void const* values) noexcept {
        if (start + count > array.m_count) {
            return ERR_OUT_OF_RANGE;
        }
        if (type != array.m_type) {
            return ERR_WRONG_TYPE;
        }
        return values == nullptr ? ERR_NULL_POINTER : 0;
    }

    // Why `count` elements of the type cannot be appended; 0 if they can.
    static int appendRefusal(HLVArray const& array, std::size_t count, eDataType type) noexcept {
        if (array.m_data != nullptr && array.m_type != type) {
            return ERR_WRONG_TYPE;
        }
        return array.m_count + count > maxCount ? ERR_OUT_OF_RANGE : 0;
    }

    // storage

    // The array's storage as an owner of its own. When this ends, the array owns what it then owns.
    template <typename Block>
    class Lent : public Block {
    public:
        explicit Lent(HLVArray& array) noexcept
            : Block(static_cast<typename Block::Data*>(array.m_data)), m_array(array) {}
        ~Lent() { m_array.m_data = this->release(); }

    private:
        HLVArray& m_array;
    };

    // The array, which owns no storage, becomes the owner of the block.
    template <typename Block>
    static void hold(HLVArray& array, Block block, eDataType type, std::size_t count) noexcept {
        array.adopt(block.release(), type, count, count * widthOf(type));
    }

    static unsigned char* bytesOf(HLVArray const& array) noexcept {
        return static_cast<unsigned char*>(array.m_data);
    }

    template <typename Text>
    static Text* textsOf(HLVArray const& array) noexcept {
        return static_cast<Text*>(array.m_data);
    }

    // Calls `visit` with the texts of an array of the text type.
    template <typename Visit>
    static auto visitTexts(HLVArray const& array, eDataType type, Visit visit) {
        return type == DT_STRING ? visit(textsOf<std::wstring>(array))
                                 : visit(textsOf<ResString>(array));
    }

    // appends

    // Appends if the storage at hand is as long as a new one would be; else false.
    static bool appendInPlace(HLVArray& array, void const* value, std::size_t width) noexcept {
        std::size_t const size = array.m_byteSize;
        if (array.m_data == nullptr || array.m_mayHoldMore ||
            !detail::RawBlock::isAlike(size, size + width)) {
            return false;
        }
        std::memcpy(bytesOf(array) + size, value, width);
        array.m_byteSize += static_cast<unsigned int>(width);
        ++array.m_count;
        return true;
    }

    // The width is a constant, so that a copy is a single move.
    template <unsigned int Width>
    static int append(HLVArray& array, void const* value, eDataType type) {
        int const code = appendRefusal(array, 1, type);
        if (code != 0 || appendInPlace(array, value, Width)) {
            return code;
        }
        return appendFallback<Width>(array, value, type);
    }

    // The append that asks for memory. Not inline, so that the other needs no stack frame.
    template <unsigned int Width>
    [[gnu::noinline]] static int appendFallback(HLVArray& array, void const* value,
                                                eDataType type) {
        unsigned char copy[Width]; // the value may lie in the block that is about to move
        std::memcpy(copy, value, Width);
        std::size_t const size = array.m_byteSize;
        Lent<detail::RawBlock>(array).resize(size + Width);
        std::memcpy(bytesOf(array) + size, copy, Width);
        array.adopt(array.m_data, type, array.m_count + 1u, size + Width);
        return 0;
    }

    // Copies of the texts, which may be the array's own, behind its own.
    template <typename Text>
    static void appendTexts(HLVArray& array, Text const* texts, std::size_t count, eDataType type) {
        using Block = detail::TextBlock<Text>;
        std::size_t const oldCount = array.m_count;
        Block all = Block::joined(Lent<Block>(array), oldCount, texts, count);
        hold(array, std::move(all), type, oldCount + count);
    }

    // the families of the typed operations

    // For constructors: on a failed allocation the array owns nothing.
    template <eDataType Type>
    static void build(HLVArray& array, unsigned short count, ElementValue<Type> const* values) {
        if (count == 0 || values == nullptr) {
            return;
        }
        if constexpr (isTextType(Type)) {
            appendTexts(array, values, count, Type);
        } else {
            array._set(count, values, Type, sizeof *values);
        }
    }

    template <eDataType Type>
    static int set(HLVArray& array, unsigned short start, unsigned short count,
                   ElementValue<Type> const* values) {
        int const code = count != 0 ? refusal(array, start, count, Type, values) : 0;
        if (code != 0 || count == 0) {
            return code;
        }
        if constexpr (isTextType(Type)) {
            detail::assignTexts(textsOf<ElementValue<Type>>(array) + start, values, count);
        } else {
            constexpr std::size_t width = sizeof *values;
            std::memmove(bytesOf(array) + start * width, values, count * width);
        }
        return 0;
    }

    template <eDataType Type>
    static int add(HLVArray& array, ElementValue<Type> const& value) {
        if constexpr (!isTextType(Type)) {
            return append<sizeof value>(array, &value, Type);
        } else {
            int const code = appendRefusal(array, 1, Type);
            if (code == 0) {
                appendTexts(array, &value, 1, Type);
            }
            return code;
        }
    }

    template <eDataType Type>
    static int get(HLVArray const& array, unsigned short& count,
                   ElementValue<Type> const*& values) noexcept {
        if (array.m_type != Type) {
            return ERR_WRONG_TYPE;
        }
        count = array.m_count;
        values = static_cast<ElementValue<Type> const*>(array.m_data);
        return 0;
    }
};

} // namespace Halvora
