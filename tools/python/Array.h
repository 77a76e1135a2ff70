#pragma once

#include "Module.h"

#include <Halvora/array/HLVArray.h>

#include <cstddef>
#include <utility>

namespace HalvPython {

/// An array, and how many views of its elements Python holds. It changes only while there is none.
struct Array {
    explicit Array(Halvora::HLVArray array) : value(std::move(array)) {}

    Halvora::HLVArray value;
    mutable int exports = 0;
};

/// Keeps an array as it is while it is read: a new object may make Python collect garbage, whose
/// finalizers are anybody's code.
class Kept {
public:
    explicit Kept(Array const& array) noexcept : m_array(array) { ++m_array.exports; }
    Kept(Kept const&) = delete;
    Kept& operator=(Kept const&) = delete;
    ~Kept() { --m_array.exports; }

private:
    Array const& m_array;
};

template <>
inline constexpr bool isOwn<Array> = true;

/// Lets Python read an array's numbers and 16-byte values where they are.
void giveBuffer(PyHeapTypeObject* type);

/// The elements that another object lends, for as long as this lives.
struct Buffer {
    /// Throws Python's own exception when `source` lends none.
    explicit Buffer(py::handle source);
    Buffer(Buffer const&) = delete;
    Buffer& operator=(Buffer const&) = delete;
    ~Buffer() { PyBuffer_Release(&view); }

    /// Their size in bytes; throws when they are not of `type`, or do not lie back to back.
    std::size_t sizeAs(Halvora::eDataType type) const;

    Py_buffer view;
};

/// What C++ calls an operation on values of a type.
template <Halvora::eDataType Type>
struct Named;

#define HALVTYPES_NAMED(TYPE, NAME)                                                               \
    template <>                                                                                   \
    struct Named<Halvora::TYPE> {                                                                 \
        using Value = Halvora::ElementValue<Halvora::TYPE>;                                       \
        static constexpr char const* name = #NAME;                                                \
        static int setRange(Halvora::HLVArray& array, unsigned short start, unsigned short count, \
                            Value const* values) {                                                \
            return array.setRange##NAME(start, count, values);                                    \
        }                                                                                         \
        static Value const* get(Halvora::HLVArray const& array) {                                 \
            unsigned short count = 0;                                                             \
            Value const* values = nullptr;                                                        \
            array.get##NAME(count, values);                                                       \
            return values;                                                                        \
        }                                                                                         \
    }

HALVTYPES_NAMED(DT_BOOL, Bool);
HALVTYPES_NAMED(DT_BYTE, Byte);
HALVTYPES_NAMED(DT_INT16, Int16);
HALVTYPES_NAMED(DT_INT32, Int32);
HALVTYPES_NAMED(DT_INT64, Int64);
HALVTYPES_NAMED(DT_UINT16, UInt16);
HALVTYPES_NAMED(DT_UINT32, UInt32);
HALVTYPES_NAMED(DT_UINT64, UInt64);
HALVTYPES_NAMED(DT_FLOAT, Float);
HALVTYPES_NAMED(DT_DOUBLE, Double);
HALVTYPES_NAMED(DT_STRING, String);
HALVTYPES_NAMED(DT_TICK, Tick);
HALVTYPES_NAMED(DT_ID, ID);
HALVTYPES_NAMED(DT_BINARY16, Bin16);
HALVTYPES_NAMED(DT_STRINGRES, ResString);

#undef HALVTYPES_NAMED

} // namespace HalvPython
