#pragma once

#include <Halvora/text/HLVString.h>
#include <Halvora/types/Binary16.h>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Halvora {
class KrVersion;
class ResString;
class VarChar;
} // namespace Halvora

namespace HalvPython {

namespace py = pybind11;

/// A `str` of wide text, a character an element; what is above U+10FFFF becomes U+FFFD.
py::str toStr(std::wstring const& text);

/// Wide text on its way from or to a Python `str`, a character an element.
struct Wide {
    std::wstring text; ///< Lone surrogates are kept; what is above U+10FFFF goes out as U+FFFD.
};

/// 16-bit text on its way from or to a Python `str`, as UTF-16. Lone surrogates are kept.
struct Units {
    Halvora::HLVString text; ///< The code units.
};

/// The bytes of whatever has the buffer protocol, held for as long as this lives.
class Bytes {
public:
    /// Throws Python's own exception when `source` has no bytes to give; `isWritten` asks for
    /// bytes that may be changed.
    explicit Bytes(py::handle source, bool isWritten = false);
    Bytes(Bytes const&) = delete;
    Bytes& operator=(Bytes const&) = delete;
    /// Gives the bytes back.
    ~Bytes() { PyBuffer_Release(&m_view); }

    /// The `size` bytes from `offset` on; throws `IndexError` when they do not lie inside.
    unsigned char* at(std::size_t offset, std::size_t size = 0) const;
    /// How many bytes lie from `offset` on; throws `IndexError` for an offset outside.
    std::size_t behind(std::size_t offset) const;
    /// All of them as text.
    std::string_view view() const;

private:
    Py_buffer m_view;
};

/// The packed or raw form that lies whole `offset` bytes into a buffer, as `set(form, value)` reads
/// it; `ValueError` when none does.
template <typename T, typename Set>
T readForm(py::handle source, std::size_t offset, Set set) {
    Bytes const bytes(source);
    if (T::sizeWithin(bytes.at(offset), bytes.behind(offset)) == 0) {
        throw py::value_error("no whole form lies there");
    }
    T value;
    set(static_cast<void const*>(bytes.at(offset)), value);
    return value;
}

/// The bytes that the form takes; 0 when it is not whole.
template <typename T>
std::size_t sizeOfForm(py::buffer const& source, std::size_t offset) {
    Bytes const bytes(source);
    return T::sizeWithin(bytes.at(offset), bytes.behind(offset));
}

/// The form with which every object of such a type begins.
template <typename T>
py::bytes formOf(T const& value) {
    return {reinterpret_cast<char const*>(&value), value.size()};
}

/// Adds `==` and `!=`, by which `type` also has its `hash`.
template <typename T>
void addEquality(py::class_<T>& type) {
    type.def(
            "__eq__", [](T const& a, T const& b) { return a == b; }, py::is_operator())
        .def(
            "__ne__", [](T const& a, T const& b) { return a != b; }, py::is_operator())
        .def("__hash__", [](T const& value) { return std::hash<T>()(value); });
}

/// Adds all six comparisons and the `hash`.
template <typename T>
void addOrder(py::class_<T>& type) {
    addEquality(type);
    type.def(
            "__lt__", [](T const& a, T const& b) { return a < b; }, py::is_operator())
        .def(
            "__le__", [](T const& a, T const& b) { return !(b < a); }, py::is_operator())
        .def(
            "__gt__", [](T const& a, T const& b) { return b < a; }, py::is_operator())
        .def(
            "__ge__", [](T const& a, T const& b) { return !(a < b); }, py::is_operator());
}

/// Throws the exception that carries a result code; nothing for 0.
void check(int result);

/// Whether the module has a class of its own for a type.
template <typename T>
inline constexpr bool isOwn = std::is_enum_v<T>;
template <>
inline constexpr bool isOwn<Halvora::Binary16> = true;
template <>
inline constexpr bool isOwn<Halvora::KrVersion> = true;
template <>
inline constexpr bool isOwn<Halvora::ResString> = true;
template <>
inline constexpr bool isOwn<Halvora::VarChar> = true;

/// The value of C++ that `source` stands for; throws `TypeError` when it is none, or not in range.
template <typename T>
T as(py::handle source) {
    py::detail::make_caster<T> caster;
    if (!caster.load(source, !std::is_same_v<T, bool>)) {
        throw py::type_error("no value of the type, or not in its range: " +
                             std::string(py::repr(source)));
    }
    if constexpr (std::is_same_v<T, Wide>) {
        return py::detail::cast_op<T&&>(std::move(caster)); // it lies in the caster, not in Python
    } else {
        return py::detail::cast_op<T>(caster);
    }
}

// What each source adds to the module.
void addTypes(py::module_& module);
void addBinary16(py::module_& module);
void addText(py::module_& module);
void addResString(py::module_& module);
void addVarChar(py::module_& module);
void addArray(py::module_& module);
void addErrors(py::module_& module);
void addVersion(py::module_& module);

} // namespace HalvPython

namespace pybind11::detail {

/// An object whose `__init__` has not run raises `TypeError` wherever it is used: there is no value
/// in it yet.
template <typename T>
class type_caster<T, enable_if_t<HalvPython::isOwn<T>>> : public type_caster_base<T> {
public:
    bool load(handle source, bool convert) {
        if (this->typeinfo != nullptr &&
            isinstance(source, reinterpret_cast<PyObject*>(this->typeinfo->type)) &&
            !reinterpret_cast<instance*>(source.ptr())
                 ->get_value_and_holder(this->typeinfo)
                 .holder_constructed()) {
            throw type_error("__init__ has not run");
        }
        return type_caster_base<T>::load(source, convert);
    }
};

template <>
struct type_caster<HalvPython::Wide> {
    PYBIND11_TYPE_CASTER(HalvPython::Wide, const_name("str"));
    bool load(handle source, bool);
    static handle cast(HalvPython::Wide const& wide, return_value_policy, handle);
};

template <>
struct type_caster<HalvPython::Units> {
    PYBIND11_TYPE_CASTER(HalvPython::Units, const_name("str"));
    bool load(handle source, bool);
    static handle cast(HalvPython::Units const& units, return_value_policy, handle);
};

} // namespace pybind11::detail
