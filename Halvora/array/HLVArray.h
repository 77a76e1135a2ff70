#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/ResString.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/HalvTypes.h>
#include <Halvora/types/ResultCodes.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <type_traits>

namespace Halvora {

// An indexable sequence of at most 65,535 values of one data type, the element type. Fixed-width
// elements lie back to back in one block of raw bytes; texts (DT_STRING, DT_STRINGRES) are objects.
// Values are never converted between types.
//
// Operations that report an int give 0, or a code of ResultCodes.h and leave the array unchanged.
// The codes are tested in this order: an empty run succeeds, index or range (ERR_OUT_OF_RANGE),
// type (ERR_WRONG_TYPE), null pointer (ERR_NULL_POINTER); an append tests the type, then whether
// the result would pass 65,535 elements (ERR_OUT_OF_RANGE). A failed allocation is std::bad_alloc:
// init then leaves the array empty, every other operation leaves it as it was. A value or run that
// lies inside the array itself may be given to every operation.
//
// The storage holds exactly the elements, without spare capacity, so each append of a text moves
// them all: init the array and set its elements instead. While the array holds no storage, an
// append adopts the type of its value; once it holds storage, even of no element after removeRange,
// values of other types are refused.
//
// An array belongs to one thread at a time; operations that only read may run side by side.
class HALVTYPES_API HLVArray {
public:
    // An empty array without storage. The type is not tested; DT_VOID and unknown types are kept
    // until an append replaces them.
    explicit HLVArray(eDataType type) noexcept;

    // One element. `long` counts as the integer of its width.
    explicit HLVArray(bool value);
    explicit HLVArray(unsigned char value);
    explicit HLVArray(short value);
    explicit HLVArray(int value);
    explicit HLVArray(long value);
    explicit HLVArray(long long const& value);
    explicit HLVArray(unsigned short value);
    explicit HLVArray(unsigned int value);
    explicit HLVArray(unsigned long value);
    explicit HLVArray(unsigned long long const& value);
    explicit HLVArray(float const& value);
    explicit HLVArray(double const& value);
    explicit HLVArray(Binary16 const& value); // DT_BINARY16
    explicit HLVArray(std::wstring const& value);
    explicit HLVArray(ResString const& value);
    template <typename T>
    explicit HLVArray(T*) = delete; // a pointer is no bool
    template <typename T, typename Class>
    explicit HLVArray(T Class::*) = delete;
    explicit HLVArray(std::nullptr_t) = delete;

    // `count` elements. Null gives an empty array of the type, whatever the count.
    HLVArray(unsigned short count, bool const* values);
    HLVArray(unsigned short count, unsigned char const* values);
    HLVArray(unsigned short count, short const* values);
    HLVArray(unsigned short count, int const* values);
    HLVArray(unsigned short count, long const* values);
    HLVArray(unsigned short count, long long const* values);
    HLVArray(unsigned short count, unsigned short const* values);
    HLVArray(unsigned short count, unsigned int const* values);
    HLVArray(unsigned short count, unsigned long const* values);
    HLVArray(unsigned short count, unsigned long long const* values);
    HLVArray(unsigned short count, float const* values);
    HLVArray(unsigned short count, double const* values);
    HLVArray(unsigned short count, Binary16 const* values); // DT_BINARY16
    HLVArray(unsigned short count, std::wstring const* values);
    HLVArray(unsigned short count, ResString const* values);

    // As the constructors, with element type DT_ID or DT_TICK.
    static HLVArray createID(Binary16 const& value);
    static HLVArray createID(unsigned short count, Binary16 const* values);
    static HLVArray createTick(unsigned long long const& value);
    static HLVArray createTick(unsigned short count, unsigned long long const* values);

    // Copies are deep and hold exactly the elements. A moved-from array is an empty one of its type
    // without storage.
    HLVArray(HLVArray const& other);
    HLVArray(HLVArray&& other) noexcept;
    HLVArray& operator=(HLVArray const& other);
    HLVArray& operator=(HLVArray&& other) noexcept;
    virtual ~HLVArray();
    void swap(HLVArray& other) noexcept; // nothing is copied
    friend void swap(HLVArray& a, HLVArray& b) noexcept { a.swap(b); }

    // whole contents

    // Becomes an empty array of `type` without storage.
    void clear(eDataType type) noexcept;

    // Becomes `count` zero or empty elements of `type`. Always 0; DT_VOID and unknown types change
    // nothing.
    int init(unsigned short count, eDataType type);

    // Takes over the source's type, elements and storage; the source is left empty with `type`. An
    // array that is its own source stays as it is.
    void moveFrom(HLVArray& source, eDataType type) noexcept;

    // Appends the other array's elements; adding an array to itself doubles it. Also an empty array
    // of another type is refused.
    int add(HLVArray const& other);

    // Removes `count` elements from `start` on. The storage is not shrunk.
    int removeRange(unsigned short start, unsigned short count);

    // setters: overwrite one element

    int setBool(unsigned short index, bool value);
    template <typename T>
    int setBool(unsigned short, T*) = delete; // a pointer is no bool
    int setByte(unsigned short index, unsigned char value);
    int setInt16(unsigned short index, short value);
    int setInt32(unsigned short index, int value);
    int setInt64(unsigned short index, long long const& value);
    int setUInt16(unsigned short index, unsigned short value);
    int setUInt32(unsigned short index, unsigned int value);
    int setUInt64(unsigned short index, unsigned long long const& value);
    int setFloat(unsigned short index, float const& value);
    int setDouble(unsigned short index, double const& value);
    int setTick(unsigned short index, unsigned long long const& value);
    int setID(unsigned short index, Binary16 const& value);
    int setBin16(unsigned short index, Binary16 const& value);
    int setString(unsigned short index, std::wstring const& value);
    int setResString(unsigned short index, ResString const& value);

    // adders: append one element

    int addBool(bool value);
    template <typename T>
    int addBool(T*) = delete; // a pointer is no bool
    int addByte(unsigned char value);
    int addInt16(short value);
    int addInt32(int value);
    int addInt64(long long const& value);
    int addUInt16(unsigned short value);
    int addUInt32(unsigned int value);
    int addUInt64(unsigned long long const& value);
    int addFloat(float const& value);
    int addDouble(double const& value);
    int addTick(unsigned long long const& value);
    int addID(Binary16 const& value);
    int addBin16(Binary16 const& value);
    int addString(std::wstring const& value);
    int addResString(ResString const& value);

    // range setters: overwrite `count` elements from `start` on

    int setRangeBool(unsigned short start, unsigned short count, bool const* values);
    int setRangeByte(unsigned short start, unsigned short count, unsigned char const* values);
    int setRangeInt16(unsigned short start, unsigned short count, short const* values);
    int setRangeInt32(unsigned short start, unsigned short count, int const* values);
    int setRangeInt64(unsigned short start, unsigned short count, long long const* values);
    int setRangeUInt16(unsigned short start, unsigned short count, unsigned short const* values);
    int setRangeUInt32(unsigned short start, unsigned short count, unsigned int const* values);
    int setRangeUInt64(unsigned short start, unsigned short count,
                       unsigned long long const* values);
    int setRangeFloat(unsigned short start, unsigned short count, float const* values);
    int setRangeDouble(unsigned short start, unsigned short count, double const* values);
    int setRangeTick(unsigned short start, unsigned short count, unsigned long long const* values);
    int setRangeID(unsigned short start, unsigned short count, Binary16 const* values);
    int setRangeBin16(unsigned short start, unsigned short count, Binary16 const* values);
    int setRangeString(unsigned short start, unsigned short count, std::wstring const* values);
    int setRangeResString(unsigned short start, unsigned short count, ResString const* values);

    // getters: the number of elements and a pointer to the first, null without storage. Another
    // element type gives ERR_WRONG_TYPE and leaves both outputs. The pointer reads the array's own
    // elements and is valid until the array is next changed or destroyed.

    int getBool(unsigned short& count, bool const*& values) const;
    int getByte(unsigned short& count, unsigned char const*& values) const;
    int getInt16(unsigned short& count, short const*& values) const;
    int getInt32(unsigned short& count, int const*& values) const;
    int getInt64(unsigned short& count, long long const*& values) const;
    int getUInt16(unsigned short& count, unsigned short const*& values) const;
    int getUInt32(unsigned short& count, unsigned int const*& values) const;
    int getUInt64(unsigned short& count, unsigned long long const*& values) const;
    int getFloat(unsigned short& count, float const*& values) const;
    int getDouble(unsigned short& count, double const*& values) const;
    int getTick(unsigned short& count, unsigned long long const*& values) const;
    int getID(unsigned short& count, Binary16 const*& values) const;
    int getBin16(unsigned short& count, Binary16 const*& values) const;
    int getString(unsigned short& count, std::wstring const*& values) const;
    int getResString(unsigned short& count, ResString const*& values) const;

    // The element type, the number of elements, their size in bytes (0 for texts), and the storage
    // of fixed-width elements (null for texts).
    eDataType getDataType() const noexcept { return m_type; }
    unsigned short getCount() const noexcept { return m_count; }
    unsigned int getByteSize() const noexcept { return m_byteSize; }
    void const* getData() const noexcept;

#if __SIZEOF_LONG__ == 8
    // The same for `long`, which is what std::int64_t and std::uint64_t are here. Templates, so
    // that a null pointer stays unambiguous.
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, unsigned long>>>
    static HLVArray createTick(unsigned short count, T const* values) {
        return createTick(count, reinterpret_cast<unsigned long long const*>(values));
    }
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, long>>>
    int setRangeInt64(unsigned short start, unsigned short count, T const* values) {
        return setRangeInt64(start, count, reinterpret_cast<long long const*>(values));
    }
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, unsigned long>>>
    int setRangeUInt64(unsigned short start, unsigned short count, T const* values) {
        return setRangeUInt64(start, count, reinterpret_cast<unsigned long long const*>(values));
    }
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, unsigned long>>>
    int setRangeTick(unsigned short start, unsigned short count, T const* values) {
        return setRangeTick(start, count, reinterpret_cast<unsigned long long const*>(values));
    }
    int getInt64(unsigned short& count, long const*& values) const {
        return getAs<long long>(&HLVArray::getInt64, count, values);
    }
    int getUInt64(unsigned short& count, unsigned long const*& values) const {
        return getAs<unsigned long long>(&HLVArray::getUInt64, count, values);
    }
    int getTick(unsigned short& count, unsigned long const*& values) const {
        return getAs<unsigned long long>(&HLVArray::getTick, count, values);
    }
#endif

    // A new array with a copy of one element; an empty DT_BYTE array where there is none.
    HLVArray operator[](unsigned short index) const;

    // Equal types and elements. Fixed-width elements are compared byte by byte, so 0.0 and -0.0
    // differ and equal NaN patterns do not; resource strings by their own equality.
    bool operator==(HLVArray const& other) const noexcept;
    bool operator!=(HLVArray const& other) const noexcept {
        return !(*this == other);
    }

protected:
    // The operations on fixed-width elements that the typed ones stand on. `width` is the element
    // width of `type` in bytes; another width, like a type that has none, is ERR_WRONG_TYPE.

    // As init.
    int _init(unsigned short count, eDataType type, unsigned int width);
    int _add(void const* value, eDataType type, unsigned int width);
    // Replaces the contents, in the storage at hand, which is not shrunk, when the type is the same
    // and the count does not grow. The null pointer is tested first. On a failed allocation the
    // array is empty and keeps its type.
    int _set(unsigned short count, void const* values, eDataType type, unsigned int width);
    int _setIndex(unsigned short index, void const* value, eDataType type, unsigned int width);
    int _setRange(unsigned short start, unsigned short count, void const* values, eDataType type,
                  unsigned int width);

private:
    struct Rows;

    template <typename Row>
    void build(unsigned short count, typename Row::Value const* values);
    template <typename Row>
    int setElement(unsigned short index, typename Row::Value const& value);
    template <typename Row>
    int addElement(typename Row::Value const& value);
    template <typename Row>
    int setElements(unsigned short start, unsigned short count, typename Row::Value const* values);
    template <typename Row>
    int getElements(unsigned short& count, typename Row::Value const*& values) const;

    // Through the getter of the type's twin of the same width.
    template <typename Twin, typename T>
    int getAs(int (HLVArray::*getter)(unsigned short&, Twin const*&) const, unsigned short& count,
              T const*& values) const {
        Twin const* found = nullptr;
        int const result = (this->*getter)(count, found);
        if (result == 0) {
            values = reinterpret_cast<T const*>(found);
        }
        return result;
    }

    template <unsigned int Width>
    int append(void const* value, eDataType type);
    template <unsigned int Width>
    int appendToNewBlock(void const* value, eDataType type);

    void release() noexcept;
    void adopt(void* data, eDataType type, std::size_t count, std::size_t byteSize) noexcept;

    eDataType m_type;
    unsigned short m_count = 0;
    bool m_mayHoldMore = false; // the storage, than the elements
    unsigned int m_byteSize = 0;
    void* m_data = nullptr;
};

} // namespace Halvora

namespace std {

// "<count>; <type number>", by the stream's own integer output. In this namespace, so that every
// user of a stream finds it.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::HLVArray const& array);
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::HLVArray const& array);

} // namespace std
