#include "Array.h"

#include <Halvora/types/ElementTypes.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace HalvPython {

using namespace Halvora;

namespace {

template <typename Row>
using ValueOf = typename Row::Value;

// Elements outside of an array, so that Python's code, which runs when they are read, finds the
// array whole and may even change it.
template <typename Row>
HLVArray runOf(Row, std::size_t count, ValueOf<Row> const* values) {
    check(count > 0xFFFF ? ERR_OUT_OF_RANGE : 0);
    auto const n = static_cast<unsigned short>(count);
    if constexpr (Row::type == DT_ID) {
        return HLVArray::createID(n, values);
    } else if constexpr (Row::type == DT_TICK) {
        return HLVArray::createTick(n, values);
    } else {
        return HLVArray(n, values);
    }
}

template <typename Value>
Value valueOf(py::handle source) {
    if constexpr (std::is_same_v<Value, std::wstring>) {
        return as<Wide>(source).text;
    } else {
        return as<Value>(source);
    }
}

template <typename Row>
HLVArray runOf(Row row, py::handle values) {
    auto const list = py::reinterpret_steal<py::object>(PySequence_Tuple(values.ptr()));
    if (!list) {
        throw py::error_already_set();
    }
    py::tuple const given = py::reinterpret_borrow<py::tuple>(list);
    auto const run = std::make_unique<ValueOf<Row>[]>(given.size());
    for (std::size_t i = 0; i < given.size(); ++i) {
        run[i] = valueOf<ValueOf<Row>>(given[i]);
    }
    return runOf(row, given.size(), static_cast<ValueOf<Row> const*>(run.get()));
}

template <typename Row>
HLVArray runOfBuffer(Row row, py::handle source) {
    using Value = ValueOf<Row>;
    Buffer const buffer(source);
    std::size_t const size = buffer.sizeAs(row.type);
    auto const* values = static_cast<Value const*>(buffer.view.buf);
    std::unique_ptr<Value[]> aligned;
    if (size == 0 || reinterpret_cast<std::uintptr_t>(values) % alignof(Value) != 0) {
        aligned = std::make_unique<Value[]>(size / sizeof(Value));
        std::copy_n(static_cast<char const*>(buffer.view.buf), size,
                    reinterpret_cast<char*>(aligned.get()));
        values = aligned.get();
    }
    return runOf(row, size / sizeof(Value), values);
}

HLVArray runOf(eDataType type, py::handle values) {
    HLVArray run(type);
    bool const isKnown = ElementTypes::visit(type, [&](auto row) {
        if constexpr (!row.isText && row.type != DT_BOOL) { // another byte than 0 and 1 is no bool
            if (PyObject_CheckBuffer(values.ptr())) {
                run = runOfBuffer(row, values);
                return;
            }
        }
        run = runOf(row, values);
    });
    check(isKnown ? 0 : ERR_WRONG_TYPE);
    return run;
}

HLVArray oneOf(eDataType type, py::handle value) {
    return runOf(type, py::make_tuple(value));
}

template <typename Value>
py::object toObject(Value const& value) {
    if constexpr (std::is_same_v<Value, std::wstring>) {
        return toStr(value);
    } else {
        return py::cast(value);
    }
}

py::list toList(Array const& array) {
    Kept const kept(array);
    py::list list(array.value.getCount());
    ElementTypes::visit(array.value.getDataType(), [&](auto row) {
        auto const* const values = Named<row.type>::get(array.value);
        for (std::size_t i = 0; i < list.size(); ++i) {
            PyList_SET_ITEM(list.ptr(), i, toObject(values[i]).release().ptr());
        }
    });
    return list;
}

std::size_t placeOf(Array const& array, long long index) {
    long long const count = array.value.getCount();
    index += index < 0 ? count : 0;
    check(index < 0 || index >= count ? ERR_OUT_OF_RANGE : 0);
    return static_cast<std::size_t>(index);
}

py::object getItem(Array const& array, long long index) {
    std::size_t const place = placeOf(array, index);
    py::object item;
    ElementTypes::visit(array.value.getDataType(), [&](auto row) {
        item = toObject(Named<row.type>::get(array.value)[place]);
    });
    return item;
}

// Of `count` elements, which lie `step` apart.
template <typename Row>
HLVArray pick(Row row, ValueOf<Row> const* first, std::size_t count, py::ssize_t step) {
    if (step == 1) {
        return runOf(row, count, first);
    }
    auto const picked = std::make_unique<ValueOf<Row>[]>(count);
    for (std::size_t i = 0; i < count; ++i) {
        picked[i] = first[static_cast<py::ssize_t>(i) * step];
    }
    return runOf(row, count, static_cast<ValueOf<Row> const*>(picked.get()));
}

Array getSlice(Array const& array, py::slice const& slice) {
    py::ssize_t start = 0, stop = 0, step = 0;
    if (PySlice_Unpack(slice.ptr(), &start, &stop, &step) != 0) { // may run Python's code
        throw py::error_already_set();
    }
    auto const count = static_cast<std::size_t>(
        PySlice_AdjustIndices(array.value.getCount(), &start, &stop, step));
    HLVArray part(array.value.getDataType());
    if (count != 0) {
        ElementTypes::visit(part.getDataType(), [&](auto row) {
            part = pick(row, Named<row.type>::get(array.value) + start, count, step);
        });
    }
    return Array(std::move(part));
}

// Python's code may have changed the array while it gave the values.
HLVArray& changed(Array& array) {
    if (array.exports != 0) {
        throw py::buffer_error("a view of the array is in use; it cannot be changed");
    }
    return array.value;
}

void setRange(Array& array, std::size_t start, HLVArray const& values) {
    int code = 0;
    ElementTypes::visit(values.getDataType(), [&](auto row) {
        using Operation = Named<row.type>;
        check(start > 0xFFFF ? ERR_OUT_OF_RANGE : 0);
        code = Operation::setRange(changed(array), static_cast<unsigned short>(start),
                                   values.getCount(), Operation::get(values));
    });
    check(code);
}

void setItem(Array& array, long long index, py::handle value) {
    HLVArray const one = oneOf(array.value.getDataType(), value);
    setRange(array, placeOf(array, index), one);
}

void extend(Array& array, py::handle values) {
    if (py::isinstance<Array>(values)) {
        check(changed(array).add(values.cast<Array const&>().value));
        return;
    }
    HLVArray const run = runOf(array.value.getDataType(), values);
    if (run.getCount() != 0) {
        check(changed(array).add(run));
    }
}

// addInt32() and its like: the type is the name's, so an empty array adopts it.
template <typename Row>
void addChanges(std::string const& name, std::string const& label, py::class_<Array>& type) {
    type.def(("add" + name).c_str(),
             [](Array& array, py::object const& value) {
                 HLVArray const one = oneOf(Row::type, value);
                 check(changed(array).add(one));
             },
             py::arg("value"),
             ("Adds a " + label +
              " at the end, also to an empty array of any type, which it turns into one "
              "of that; WrongTypeError for other arrays.")
                 .c_str());
    type.def(("set" + name).c_str(),
             [](Array& array, std::size_t index, py::object const& value) {
                 setRange(array, index, oneOf(Row::type, value));
             },
             py::arg("index"), py::arg("value"),
             ("Replaces the " + label +
              " at `index`, which counts from the start; WrongTypeError in an "
              "array of another type, OutOfRangeError behind its end.")
                 .c_str());
    type.def(("setRange" + name).c_str(),
             [](Array& array, std::size_t start, py::object const& values) {
                 setRange(array, start, runOf(Row::type, values));
             },
             py::arg("start"), py::arg("values"),
             ("Replaces the " + label +
              " values from `start` on; WrongTypeError in an array of another "
              "type, OutOfRangeError when they reach behind its end.")
                 .c_str());
}

template <typename Row>
void addNames(Row, py::class_<Array>& type) {
    std::string const name = Named<Row::type>::name;
    std::string const label = std::string("DT_") + HalvTypes::dataTypeToString(Row::type);
    addChanges<Row>(name, label, type);
    type.def(
        ("get" + name).c_str(),
        [](Array const& array) {
            check(array.value.getDataType() == Row::type ? 0 : ERR_WRONG_TYPE);
            return toList(array);
        },
        ("The values, each a " + label + ", as a list; WrongTypeError in an array of another type.")
            .c_str());
}

std::string shown(Array const& array) {
    constexpr std::size_t most = 20; // elements, so that a line stays one
    py::list list = toList(array);
    std::string const rest = list.size() > most ? ", ..." : "";
    py::object const first = list[py::slice(0, most, 1)];
    std::string text = py::repr(first);
    text.insert(text.size() - 1, rest);
    std::string const type = HalvTypes::dataTypeToString(array.value.getDataType());
    return "HLVArray(DT_" + type + ", " + text + ")";
}

// Python's habits: made of values, and read as a sequence.
void addSequence(py::class_<Array>& type) {
    type.def(py::init([](eDataType dataType) { return Array(HLVArray(dataType)); }),
             py::arg("type"), "Empty, of a type.")
        .def(py::init([](eDataType dataType, py::object const& values) {
                 return Array(runOf(dataType, values));
             }),
             py::arg("type"), py::arg("values"), "Of an iterable, or of a buffer of the type.")
        .def("__len__", [](Array const& array) { return array.value.getCount(); })
        .def("__getitem__", &getItem, py::arg("index"))
        .def("__getitem__", &getSlice, py::arg("slice"))
        .def("__setitem__", &setItem, py::arg("index"), py::arg("value"))
        .def("__iter__",
             [](py::object const& self) {
                 static_cast<void>(self.cast<Array const&>()); // raises for none
                 return py::reinterpret_steal<py::object>(PySeqIter_New(self.ptr()));
             })
        .def(
            "__eq__", [](Array const& a, Array const& b) { return a.value == b.value; },
            py::is_operator())
        .def("__repr__", &shown)
        .def("__copy__", [](Array const& array) { return Array(array.value); })
        .def("__deepcopy__",
             [](Array const& array, py::object const&) { return Array(array.value); });
}

// What changes or gives many values at once.
void addValues(py::class_<Array>& type) {
    type.def(
            "append",
            [](Array& array, py::object const& value) {
                HLVArray const one = oneOf(array.value.getDataType(), value);
                check(changed(array).add(one));
            },
            py::arg("value"), "Adds a value of the array's type at the end.")
        .def("extend", &extend, py::arg("values"),
             "Adds the values of an iterable, a buffer of the type or an array at the end.")
        .def("tolist", &toList, "The values as a list.");
}

// The names of C++ that are the same for each type of element.
void addOperations(py::class_<Array>& type) {
    type.def(
            "getDataType", [](Array const& array) { return array.value.getDataType(); },
            "The element type.")
        .def(
            "getCount", [](Array const& array) { return array.value.getCount(); },
            "The number of elements.")
        .def(
            "getByteSize", [](Array const& array) { return array.value.getByteSize(); },
            "The size of all elements in bytes; 0 for texts.")
        .def(
            "clear", [](Array& array, eDataType t) { changed(array).clear(t); }, py::arg("type"),
            "Becomes an empty array of a type.")
        .def(
            "init",
            [](Array& array, unsigned short count, eDataType t) {
                check(elementWidth(t) == 0 && !isTextType(t) ? ERR_WRONG_TYPE : 0);
                check(changed(array).init(count, t));
            },
            py::arg("count"), py::arg("type"), "Becomes zero or empty elements of a type.")
        .def("add", &extend, py::arg("values"), "As extend().")
        .def(
            "removeRange",
            [](Array& array, unsigned short start, unsigned short count) {
                check(changed(array).removeRange(start, count));
            },
            py::arg("start"), py::arg("count"), "Removes `count` elements from `start` on.");
}

} // namespace

void addArray(py::module_& module) {
    py::class_<Array> type(
        module, "HLVArray", py::custom_type_setup(&giveBuffer),
        "At most 65,535 values of one data type.\n\n"
        "memoryview() reads numbers without a copy, and 16-byte values as rows of 16 bytes. While "
        "such a view is in use, whatever would change the array raises BufferError.");
    addSequence(type);
    addValues(type);
    addOperations(type);
    type.def(py::pickle(
        [](Array const& array) { return py::make_tuple(array.value.getDataType(), toList(array)); },
        [](py::tuple const& state) { return Array(runOf(state[0].cast<eDataType>(), state[1])); }));
    ElementTypes::forEach([&](auto row) { addNames(row, type); });
}

} // namespace HalvPython
