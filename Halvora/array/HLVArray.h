#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/Braces.h>
#include <Halvora/text/ResString.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/ElementTypes.h>
#include <Halvora/types/HalvTypes.h>
#include <Halvora/types/ResultCodes.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <type_traits>

namespace Halvora {

/// An indexable sequence of at most 65,535 values of one data type, the element type. Numbers and
/// 16-byte values lie back to back in one block of raw bytes; texts are objects. Values are never
/// converted between types.
///
/// Operations that report an `int` give 0, or a code of ResultCodes.h and leave the array
/// unchanged. The codes are tested in this order: an empty run succeeds, index or range
/// (`ERR_OUT_OF_RANGE`), type (`ERR_WRONG_TYPE`), null pointer (`ERR_NULL_POINTER`); an append
/// tests the type, then whether the result would pass 65,535 elements (`ERR_OUT_OF_RANGE`). A
/// failed allocation is `std::bad_alloc`: `init` then leaves the array empty, every other operation
/// leaves it as it was. A value or run that lies inside the array itself may be given to every
/// operation.
///
/// The storage holds exactly the elements, without spare capacity, so each append of a text moves
/// them all: `init` the array and set its elements instead. While the array holds no storage, an
/// append adopts the type of its value; once it holds storage, even of no element after
/// `removeRange`, values of other types are refused.
///
/// An array belongs to one thread at a time; operations that only read may run side by side.
class HALVTYPES_API HLVArray {
public:
    /// An empty array without storage. `type` is not tested: `DT_VOID` and unknown types are kept
    /// until an append replaces them.
    explicit HLVArray(eDataType type) noexcept;

    /// @name One element
    /// The element type is that of the value's C++ type; `Binary16` gives `DT_BINARY16`. A
    /// character is the number that it promotes to: `L'x'` is a `DT_INT32` where `wchar_t` is
    /// signed, as on x86, and a `DT_UINT32` where it is not, as on ARM; `'x'` is a `DT_INT32`
    /// everywhere.
    /// @{

    /// One `DT_BOOL`.
    explicit HLVArray(bool value);
    /// One `DT_BYTE`.
    explicit HLVArray(unsigned char value);
    /// One `DT_INT16`.
    explicit HLVArray(short value);
    /// One `DT_INT32`.
    explicit HLVArray(int value);
    /// One `DT_INT64`.
    explicit HLVArray(long long const& value);
    /// One `DT_UINT16`.
    explicit HLVArray(unsigned short value);
    /// One `DT_UINT32`.
    explicit HLVArray(unsigned int value);
    /// One `DT_UINT64`.
    explicit HLVArray(unsigned long long const& value);
    /// One `DT_FLOAT`.
    explicit HLVArray(float const& value);
    /// One `DT_DOUBLE`.
    explicit HLVArray(double const& value);
    /// One `DT_BINARY16`.
    explicit HLVArray(Binary16 const& value);
    /// One `DT_STRING`.
    explicit HLVArray(std::wstring const& value);
    /// One `DT_STRINGRES`.
    explicit HLVArray(ResString const& value);
    /// A pointer is no `bool`.
    template <typename T>
    explicit HLVArray(T*) = delete;
    /// A pointer to a member neither.
    template <typename T, typename Class>
    explicit HLVArray(T Class::*) = delete;
    /// Nor a pointer between braces.
    template <typename T>
    explicit HLVArray(T* const (&&)[1]) = delete;
    /// Nor null.
    explicit HLVArray(std::nullptr_t) = delete;
    /// Braces that were a text by accident.
    explicit HLVArray(detail::NoText<wchar_t>) = delete;

    /// @}

    /// @name A run of elements
    /// Copies of the `count` elements that `values` points to. Null gives an empty array of the
    /// type, whatever the count.
    /// @{

    /// A run of `DT_BOOL`.
    HLVArray(unsigned short count, bool const* values);
    /// A run of `DT_BYTE`.
    HLVArray(unsigned short count, unsigned char const* values);
    /// A run of `DT_INT16`.
    HLVArray(unsigned short count, short const* values);
    /// A run of `DT_INT32`.
    HLVArray(unsigned short count, int const* values);
    /// A run of `DT_INT64`.
    HLVArray(unsigned short count, long long const* values);
    /// A run of `DT_UINT16`.
    HLVArray(unsigned short count, unsigned short const* values);
    /// A run of `DT_UINT32`.
    HLVArray(unsigned short count, unsigned int const* values);
    /// A run of `DT_UINT64`.
    HLVArray(unsigned short count, unsigned long long const* values);
    /// A run of `DT_FLOAT`.
    HLVArray(unsigned short count, float const* values);
    /// A run of `DT_DOUBLE`.
    HLVArray(unsigned short count, double const* values);
    /// A run of `DT_BINARY16`.
    HLVArray(unsigned short count, Binary16 const* values);
    /// A run of `DT_STRING`.
    HLVArray(unsigned short count, std::wstring const* values);
    /// A run of `DT_STRINGRES`.
    HLVArray(unsigned short count, ResString const* values);
    /// The values between the braces of `HLVArray({1, 2, 3})`, which are of one type.
    template <typename T, std::size_t N, typename = std::enable_if_t<detail::isElementValue<T>>>
    explicit HLVArray(T (&&values)[N]) : HLVArray(N, static_cast<T const*>(values)) {
        static_assert(N <= 65535);
    }

    /// @}

    /// @name Ticks and identifiers
    /// As the constructors, but with the element type that shares its C++ type with another.
    /// @{

    /// One `DT_ID`.
    static HLVArray createID(Binary16 const& value);
    /// A run of `DT_ID`.
    static HLVArray createID(unsigned short count, Binary16 const* values);
    /// One `DT_TICK`.
    static HLVArray createTick(unsigned long long const& value);
    /// A run of `DT_TICK`.
    static HLVArray createTick(unsigned short count, unsigned long long const* values);

    /// @}

    /// @name Copies
    /// Copies are deep and hold exactly the elements. A moved-from array is an empty one of its
    /// type without storage.
    /// @{

    /// A copy.
    HLVArray(HLVArray const& other);
    /// Takes over the storage of `other`.
    HLVArray(HLVArray&& other) noexcept;
    /// Becomes a copy.
    HLVArray& operator=(HLVArray const& other);
    /// As `moveFrom`; `other` keeps its type.
    HLVArray& operator=(HLVArray&& other) noexcept;
    /// Destroys the elements.
    virtual ~HLVArray();
    /// Nothing is copied.
    void swap(HLVArray& other) noexcept;
    /// As the member.
    friend void swap(HLVArray& a, HLVArray& b) noexcept { a.swap(b); }

    /// @}

    /// @name The whole contents
    /// @{

    /// Becomes an empty array of `type` without storage. The type is not tested.
    void clear(eDataType type) noexcept;

    /// Becomes `count` zero or empty elements of `type`. Always 0; `DT_VOID` and unknown types
    /// change nothing.
    int init(unsigned short count, eDataType type);

    /// Takes over the type, elements and storage of `source`, which is left empty with `type`. An
    /// array that is its own source stays as it is.
    void moveFrom(HLVArray& source, eDataType type) noexcept;

    /// Appends the elements of `other`; an array added to itself doubles. An empty array of another
    /// type is refused too.
    int add(HLVArray const& other);

    /// Removes `count` elements from `start` on. The storage is not shrunk.
    int removeRange(unsigned short start, unsigned short count);

    /// @}

    /// @name Setters
    /// Overwrite the element at `index`: `ERR_OUT_OF_RANGE` where there is none, `ERR_WRONG_TYPE`
    /// in an array of another type.
    /// @{

    /// Sets a `DT_BOOL`.
    int setBool(unsigned short index, bool value);
    /// A pointer is no `bool`.
    template <typename T>
    int setBool(unsigned short, T*) = delete;
    /// Sets a `DT_BYTE`.
    int setByte(unsigned short index, unsigned char value);
    /// Sets a `DT_INT16`.
    int setInt16(unsigned short index, short value);
    /// Sets a `DT_INT32`.
    int setInt32(unsigned short index, int value);
    /// Sets a `DT_INT64`.
    int setInt64(unsigned short index, long long const& value);
    /// Sets a `DT_UINT16`.
    int setUInt16(unsigned short index, unsigned short value);
    /// Sets a `DT_UINT32`.
    int setUInt32(unsigned short index, unsigned int value);
    /// Sets a `DT_UINT64`.
    int setUInt64(unsigned short index, unsigned long long const& value);
    /// Sets a `DT_FLOAT`.
    int setFloat(unsigned short index, float const& value);
    /// Sets a `DT_DOUBLE`.
    int setDouble(unsigned short index, double const& value);
    /// Sets a `DT_TICK`.
    int setTick(unsigned short index, unsigned long long const& value);
    /// Sets a `DT_ID`.
    int setID(unsigned short index, Binary16 const& value);
    /// Sets a `DT_BINARY16`.
    int setBin16(unsigned short index, Binary16 const& value);
    /// Sets a `DT_STRING`.
    int setString(unsigned short index, std::wstring const& value);
    /// Sets a `DT_STRINGRES`.
    int setResString(unsigned short index, ResString const& value);

    /// @}

    /// @name Adders
    /// Append one element: `ERR_WRONG_TYPE` to an array that holds storage of another type,
    /// `ERR_OUT_OF_RANGE` to one of 65,535 elements.
    /// @{

    /// Appends a `DT_BOOL`.
    int addBool(bool value);
    /// A pointer is no `bool`.
    template <typename T>
    int addBool(T*) = delete;
    /// Appends a `DT_BYTE`.
    int addByte(unsigned char value);
    /// Appends a `DT_INT16`.
    int addInt16(short value);
    /// Appends a `DT_INT32`.
    int addInt32(int value);
    /// Appends a `DT_INT64`.
    int addInt64(long long const& value);
    /// Appends a `DT_UINT16`.
    int addUInt16(unsigned short value);
    /// Appends a `DT_UINT32`.
    int addUInt32(unsigned int value);
    /// Appends a `DT_UINT64`.
    int addUInt64(unsigned long long const& value);
    /// Appends a `DT_FLOAT`.
    int addFloat(float const& value);
    /// Appends a `DT_DOUBLE`.
    int addDouble(double const& value);
    /// Appends a `DT_TICK`.
    int addTick(unsigned long long const& value);
    /// Appends a `DT_ID`.
    int addID(Binary16 const& value);
    /// Appends a `DT_BINARY16`.
    int addBin16(Binary16 const& value);
    /// Appends a `DT_STRING`; moves all texts.
    int addString(std::wstring const& value);
    /// Appends a `DT_STRINGRES`; moves all texts.
    int addResString(ResString const& value);

    /// @}

    /// @name Range setters
    /// Overwrite the `count` elements from `start` on by those that `values` points to, all or
    /// none. No element at all succeeds; then `ERR_OUT_OF_RANGE`, `ERR_WRONG_TYPE`,
    /// `ERR_NULL_POINTER`.
    /// @{

    /// Overwrites a run of `DT_BOOL`.
    int setRangeBool(unsigned short start, unsigned short count, bool const* values);
    /// Overwrites a run of `DT_BYTE`.
    int setRangeByte(unsigned short start, unsigned short count, unsigned char const* values);
    /// Overwrites a run of `DT_INT16`.
    int setRangeInt16(unsigned short start, unsigned short count, short const* values);
    /// Overwrites a run of `DT_INT32`.
    int setRangeInt32(unsigned short start, unsigned short count, int const* values);
    /// Overwrites a run of `DT_INT64`.
    int setRangeInt64(unsigned short start, unsigned short count, long long const* values);
    /// Overwrites a run of `DT_UINT16`.
    int setRangeUInt16(unsigned short start, unsigned short count, unsigned short const* values);
    /// Overwrites a run of `DT_UINT32`.
    int setRangeUInt32(unsigned short start, unsigned short count, unsigned int const* values);
    /// Overwrites a run of `DT_UINT64`.
    int setRangeUInt64(unsigned short start, unsigned short count,
                       unsigned long long const* values);
    /// Overwrites a run of `DT_FLOAT`.
    int setRangeFloat(unsigned short start, unsigned short count, float const* values);
    /// Overwrites a run of `DT_DOUBLE`.
    int setRangeDouble(unsigned short start, unsigned short count, double const* values);
    /// Overwrites a run of `DT_TICK`.
    int setRangeTick(unsigned short start, unsigned short count, unsigned long long const* values);
    /// Overwrites a run of `DT_ID`.
    int setRangeID(unsigned short start, unsigned short count, Binary16 const* values);
    /// Overwrites a run of `DT_BINARY16`.
    int setRangeBin16(unsigned short start, unsigned short count, Binary16 const* values);
    /// Overwrites a run of `DT_STRING`.
    int setRangeString(unsigned short start, unsigned short count, std::wstring const* values);
    /// Overwrites a run of `DT_STRINGRES`.
    int setRangeResString(unsigned short start, unsigned short count, ResString const* values);

    /// @}

    /// @name Getters
    /// The number of elements and a pointer to the first, null without storage. In an array of
    /// another type the result is `ERR_WRONG_TYPE`, and both outputs keep their values. The
    /// elements stay the array's own, at this place until it is next changed or destroyed.
    /// @{

    /// Reads `DT_BOOL`.
    int getBool(unsigned short& count, bool const*& values) const;
    /// Reads `DT_BYTE`.
    int getByte(unsigned short& count, unsigned char const*& values) const;
    /// Reads `DT_INT16`.
    int getInt16(unsigned short& count, short const*& values) const;
    /// Reads `DT_INT32`.
    int getInt32(unsigned short& count, int const*& values) const;
    /// Reads `DT_INT64`.
    int getInt64(unsigned short& count, long long const*& values) const;
    /// Reads `DT_UINT16`.
    int getUInt16(unsigned short& count, unsigned short const*& values) const;
    /// Reads `DT_UINT32`.
    int getUInt32(unsigned short& count, unsigned int const*& values) const;
    /// Reads `DT_UINT64`.
    int getUInt64(unsigned short& count, unsigned long long const*& values) const;
    /// Reads `DT_FLOAT`.
    int getFloat(unsigned short& count, float const*& values) const;
    /// Reads `DT_DOUBLE`.
    int getDouble(unsigned short& count, double const*& values) const;
    /// Reads `DT_TICK`.
    int getTick(unsigned short& count, unsigned long long const*& values) const;
    /// Reads `DT_ID`.
    int getID(unsigned short& count, Binary16 const*& values) const;
    /// Reads `DT_BINARY16`.
    int getBin16(unsigned short& count, Binary16 const*& values) const;
    /// Reads `DT_STRING`.
    int getString(unsigned short& count, std::wstring const*& values) const;
    /// Reads `DT_STRINGRES`.
    int getResString(unsigned short& count, ResString const*& values) const;

    /// @}

    /// The element type.
    eDataType getDataType() const noexcept { return m_type; }
    /// The number of elements.
    unsigned short getCount() const noexcept { return m_count; }
    /// The size of all elements in bytes; 0 for texts.
    unsigned int getByteSize() const noexcept { return m_byteSize; }
    /// The elements as the getters give them, but null for texts.
    void const* getData() const noexcept;

    /// A new array with a copy of the element at `index`; an empty `DT_BYTE` array if there is
    /// none.
    HLVArray operator[](unsigned short index) const;

    /// Equal types and elements. Numbers and 16-byte values are compared byte by byte, so 0.0 and
    /// -0.0 differ and equal NaN patterns do not; resource strings by their own equality.
    bool operator==(HLVArray const& other) const noexcept;
    /// Not equal.
    bool operator!=(HLVArray const& other) const noexcept { return !(*this == other); }

    /// @name `long`
    /// Where `long` has 64 bits it is taken as `long long`, being what `std::int64_t` is there.
    /// Where it has 32 bits no element type has its name, and it does not compile.
    /// @{

#if __SIZEOF_LONG__ == 8 || defined(HALVTYPES_BUILD)
    // The library has them everywhere, for programs that were linked when they compiled.
    /// One `DT_INT64`.
    explicit HLVArray(long value);
    /// One `DT_UINT64`.
    explicit HLVArray(unsigned long value);
    /// A run of `DT_INT64`.
    HLVArray(unsigned short count, long const* values);
    /// A run of `DT_UINT64`.
    HLVArray(unsigned short count, unsigned long const* values);
#else
    explicit HLVArray(long) = delete;
    explicit HLVArray(unsigned long) = delete;
    HLVArray(unsigned short, long const*) = delete;
    HLVArray(unsigned short, unsigned long const*) = delete;
#endif
#if __SIZEOF_LONG__ == 8
    // Templates, so that a null pointer stays unambiguous.
    /// A run of `DT_TICK`.
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, unsigned long>>>
    static HLVArray createTick(unsigned short count, T const* values) {
        return createTick(count, reinterpret_cast<unsigned long long const*>(values));
    }
    /// Overwrites a run of `DT_INT64`.
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, long>>>
    int setRangeInt64(unsigned short start, unsigned short count, T const* values) {
        return setRangeInt64(start, count, reinterpret_cast<long long const*>(values));
    }
    /// Overwrites a run of `DT_UINT64`.
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, unsigned long>>>
    int setRangeUInt64(unsigned short start, unsigned short count, T const* values) {
        return setRangeUInt64(start, count, reinterpret_cast<unsigned long long const*>(values));
    }
    /// Overwrites a run of `DT_TICK`.
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, unsigned long>>>
    int setRangeTick(unsigned short start, unsigned short count, T const* values) {
        return setRangeTick(start, count, reinterpret_cast<unsigned long long const*>(values));
    }
    /// Reads `DT_INT64`.
    int getInt64(unsigned short& count, long const*& values) const {
        return getAs<long long>(&HLVArray::getInt64, count, values);
    }
    /// Reads `DT_UINT64`.
    int getUInt64(unsigned short& count, unsigned long const*& values) const {
        return getAs<unsigned long long>(&HLVArray::getUInt64, count, values);
    }
    /// Reads `DT_TICK`.
    int getTick(unsigned short& count, unsigned long const*& values) const {
        return getAs<unsigned long long>(&HLVArray::getTick, count, values);
    }
#endif

    /// @}

protected:
    /// @name Fixed width
    /// What the typed operations stand on. `width` is the size of a value of `type` in bytes;
    /// another width, like a type that has none, is `ERR_WRONG_TYPE`.
    /// @{

    /// As `init`.
    int _init(unsigned short count, eDataType type, unsigned int width);
    /// Appends the element that `value` points to.
    int _add(void const* value, eDataType type, unsigned int width);
    /// Becomes a copy of `count` elements, in the storage at hand, which is not shrunk, when the
    /// type is the same and the count does not grow. The null pointer is tested first. On a failed
    /// allocation the array is empty and keeps its type.
    int _set(unsigned short count, void const* values, eDataType type, unsigned int width);
    /// Overwrites the element at `index`.
    int _setIndex(unsigned short index, void const* value, eDataType type, unsigned int width);
    /// Overwrites `count` elements from `start` on.
    int _setRange(unsigned short start, unsigned short count, void const* values, eDataType type,
                  unsigned int width);

    /// @}

private:
    struct Core; // what the operations have in common

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

    void release() noexcept;
    void adopt(void* data, eDataType type, std::size_t count, std::size_t byteSize) noexcept;

    eDataType m_type;
    unsigned short m_count = 0;
    bool m_mayHoldMore = false; // the storage, than the elements
    unsigned int m_byteSize = 0;
    void* m_data = nullptr; // of a detail::RawBlock, or of a detail::TextBlock of the type's texts
};

} // namespace Halvora

namespace std {

/// Writes `<count>; <number of the type>` by the stream's own integer output. In this namespace, so
/// that every user of a stream finds it.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::HLVArray const& array);
#if defined(HALVTYPES_BUILD)
// Not declared to programs; older ones find it in the library.
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::HLVArray const& array);
#endif

} // namespace std
