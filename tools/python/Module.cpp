#include "Module.h"

#include <Halvora/types/ResultCodes.h>

#include <algorithm>
#include <cstring>

namespace pybind11::detail {

using HalvPython::Units;
using HalvPython::Wide;

bool type_caster<Wide>::load(handle source, bool) {
    if (!PyUnicode_Check(source.ptr())) {
        return false;
    }
    Py_ssize_t const length = PyUnicode_GET_LENGTH(source.ptr());
    value.text.resize(static_cast<std::size_t>(length));
    if (PyUnicode_AsWideChar(source.ptr(), &value.text[0], length) != length) {
        throw error_already_set();
    }
    return true;
}

handle type_caster<Wide>::cast(Wide const& wide, return_value_policy, handle) {
    return HalvPython::toStr(wide.text).release();
}

bool type_caster<Units>::load(handle source, bool) {
    if (!PyUnicode_Check(source.ptr())) {
        return false;
    }
    auto const bytes = reinterpret_steal<object>(
        PyUnicode_AsEncodedString(source.ptr(), "utf-16-le", "surrogatepass"));
    if (!bytes) {
        throw error_already_set();
    }
    auto const size = static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr()));
    value.text.resize(size / 2);
    std::memcpy(&value.text[0], PyBytes_AS_STRING(bytes.ptr()), size);
    return true;
}

handle type_caster<Units>::cast(Units const& units, return_value_policy, handle) {
    int order = -1; // little-endian
    return PyUnicode_DecodeUTF16(reinterpret_cast<char const*>(units.text.data()),
                                 static_cast<Py_ssize_t>(units.text.size() * 2), "surrogatepass",
                                 &order);
}

} // namespace pybind11::detail

namespace HalvPython {

static_assert(sizeof(wchar_t) == 4, "a character an element");

py::str toStr(std::wstring const& text) {
    auto const isNone = [](wchar_t unit) { return static_cast<char32_t>(unit) > 0x10FFFF; };
    if (std::any_of(text.begin(), text.end(), isNone)) {
        std::wstring replaced = text;
        std::replace_if(replaced.begin(), replaced.end(), isNone, L'\xFFFD');
        return toStr(replaced);
    }
    auto str = py::reinterpret_steal<py::str>(
        PyUnicode_FromWideChar(text.data(), static_cast<Py_ssize_t>(text.size())));
    if (!str) {
        throw py::error_already_set();
    }
    return str;
}

Bytes::Bytes(py::handle source, bool isWritten) {
    if (PyObject_GetBuffer(source.ptr(), &m_view, isWritten ? PyBUF_WRITABLE : PyBUF_SIMPLE) != 0) {
        throw py::error_already_set();
    }
}

unsigned char* Bytes::at(std::size_t offset, std::size_t size) const {
    if (size > behind(offset)) {
        throw py::index_error("the buffer ends too early");
    }
    return static_cast<unsigned char*>(m_view.buf) + offset;
}

std::size_t Bytes::behind(std::size_t offset) const {
    auto const size = static_cast<std::size_t>(m_view.len);
    if (offset > size) {
        throw py::index_error("the offset lies behind the buffer");
    }
    return size - offset;
}

std::string_view Bytes::view() const {
    return {static_cast<char const*>(m_view.buf), static_cast<std::size_t>(m_view.len)};
}

namespace {

// Each code has an exception of its own, which is Python's usual one too.
py::object newError(py::module_& module, char const* name, char const* doc, py::tuple bases,
                    int code) {
    py::dict members;
    members["code"] = code;
    std::string const path = std::string("halvtypes.") + name;
    auto type = py::reinterpret_steal<py::object>(
        PyErr_NewExceptionWithDoc(path.c_str(), doc, bases.ptr(), members.ptr()));
    if (!type) {
        throw py::error_already_set();
    }
    module.add_object(name, type);
    return type;
}

void addResultCodes(py::module_& module) {
    py::object const base =
        newError(module, "ResultError", "An operation reported `code`; its object is unchanged.",
                 py::make_tuple(py::handle(PyExc_Exception)), 0);
    newError(module, "OutOfRangeError", "An index or range lies outside the object.",
             py::make_tuple(base, py::handle(PyExc_IndexError)), Halvora::ERR_OUT_OF_RANGE);
    newError(module, "WrongTypeError", "A value of another type than the array's.",
             py::make_tuple(base, py::handle(PyExc_TypeError)), Halvora::ERR_WRONG_TYPE);
    module.attr("ERR_OUT_OF_RANGE") = Halvora::ERR_OUT_OF_RANGE;
    module.attr("ERR_WRONG_TYPE") = Halvora::ERR_WRONG_TYPE;
    module.attr("ERR_NULL_POINTER") = Halvora::ERR_NULL_POINTER;
}

} // namespace

void check(int result) {
    if (result == 0) {
        return;
    }
    bool const isRange = result == Halvora::ERR_OUT_OF_RANGE;
    py::object const type = py::module_::import("halvtypes")
                                .attr(isRange                             ? "OutOfRangeError"
                                      : result == Halvora::ERR_WRONG_TYPE ? "WrongTypeError"
                                                                          : "ResultError");
    py::object const error = type(isRange ? "out of range" : "the array holds another type");
    error.attr("code") = result;
    PyErr_SetObject(type.ptr(), error.ptr());
    throw py::error_already_set();
}

PYBIND11_MODULE(halvtypes, module) {
    module.doc() = "The core value types of the Halvora family, as C++ has them.";
    addResultCodes(module);
    addTypes(module);
    addBinary16(module);
    addText(module);
    addResString(module);
    addVarChar(module);
    addArray(module);
    addErrors(module);
    addVersion(module);
}

} // namespace HalvPython
