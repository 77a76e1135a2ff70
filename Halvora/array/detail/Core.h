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

    // A value of the width as registers hold it.
    template <std::size_t Width>
    using Bits = std::conditional_t<
        Width <= 2, std::conditional_t<Width == 1, unsigned char, unsigned short>,
        std::conditional_t<Width == 4, unsigned int,
                           std::conditional_t<Width == 8, unsigned long long, Binary16>>>;

    template <std::size_t Width>
    static Bits<Width> bitsAt(void const* value) noexcept {
        Bits<Width> bits;
        static_assert(sizeof bits == Width);
        std::memcpy(&bits, value, Width);
        return bits;
    }

    // Appends where nothing stands against it and the storage at hand is as long as a new one would
    // be; else false. An array that has elements has storage.
    static bool appendInPlace(HLVArray& array, eDataType type, void const* value,
                              std::size_t width) noexcept {
        unsigned int const size = array.m_byteSize, count = array.m_count;
        if (__builtin_expect(array.m_type != type || count == 0 || count == maxCount ||
                                 array.m_mayHoldMore || detail::RawBlock::isFull(size, width),
                             false)) {
            return false;
        }
        std::memcpy(bytesOf(array) + size, value, width);
        array.m_byteSize = size + static_cast<unsigned int>(width);
        array.m_count = static_cast<unsigned short>(count + 1);
        return true;
    }

    // The append that refuses or asks for memory. Not inline, so that the other needs no stack
    // frame. The value is a copy: it may lie in the block that is about to move.
    template <typename Value>
    [[gnu::noinline]] static int appendFallback(HLVArray& array, eDataType type, Value value) {
        int const code = appendRefusal(array, 1, type);
        if (code != 0) {
            return code;
        }
        array.m_data = detail::RawBlock::resized(array.m_data, array.m_byteSize + sizeof value);
        std::size_t const size = array.m_byteSize;
        std::memcpy(bytesOf(array) + size, &value, sizeof value);
        array.adopt(array.m_data, type, array.m_count + 1u, size + sizeof value);
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
            auto const bits = bitsAt<sizeof value>(&value);
            bool const isDone = appendInPlace(array, Type, &bits, sizeof bits);
            return isDone ? 0 : appendFallback(array, Type, bits);
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
