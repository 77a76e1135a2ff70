#include "Array.h"

#include <Halvora/types/ElementTypes.h>

#include <cstring>
#include <memory>
#include <string>
#include <type_traits>

namespace HalvPython {

using namespace Halvora;

namespace {

// Whether a buffer's elements are the array's own. `l` is `q` where `long` has 64 bits.
bool isFormat(std::string format, std::string const& own) {
    if (!format.empty() && std::strchr("@=<", format[0]) != nullptr) {
        format.erase(0, 1);
    }
    if (sizeof(long) == sizeof(long long) && (format == "l" || format == "L")) {
        format = format == "l" ? "q" : "Q";
    }
    return format == own;
}

std::string formatOf(eDataType type) {
    std::string format = "B";
    ElementTypes::visit(type, [&](auto row) {
        using Value = typename decltype(row)::Value;
        if constexpr (std::is_arithmetic_v<Value>) {
            format = py::format_descriptor<Value>::format();
        }
    });
    return format;
}

// What a view says of the elements, which lives as long as the view.
struct Layout {
    explicit Layout(HLVArray const& array)
        : format(formatOf(array.getDataType())),
          width(elementWidth(array.getDataType())),
          dimensions(width == sizeof(Binary16) ? 2 : 1),
          shape{array.getCount(), width},
          strides{width, 1} {}

    std::string format;
    Py_ssize_t width;
    int dimensions;
    Py_ssize_t shape[2];
    Py_ssize_t strides[2];
};

// The part of it that may throw.
Array& fill(PyObject* self, Py_buffer& view, int flags) {
    Array& array = py::cast<Array&>(py::handle(self));
    if ((flags & PyBUF_WRITABLE) != 0) {
        throw py::buffer_error("elements are read, not written");
    }
    if (elementWidth(array.value.getDataType()) == 0) {
        throw py::buffer_error("only numbers and 16-byte values lie in a buffer");
    }
    auto layout = std::make_unique<Layout>(array.value);
    static char nothing = 0;
    void const* const data = array.value.getData();
    view.buf = data != nullptr ? const_cast<void*>(data) : &nothing;
    view.len = array.value.getByteSize();
    view.readonly = 1;
    view.itemsize = layout->strides[layout->dimensions - 1];
    view.format = (flags & PyBUF_FORMAT) != 0 ? &layout->format[0] : nullptr;
    view.ndim = layout->dimensions;
    view.shape = (flags & PyBUF_ND) != 0 ? layout->shape : nullptr;
    view.strides = (flags & PyBUF_STRIDES) == PyBUF_STRIDES ? layout->strides : nullptr;
    view.suboffsets = nullptr;
    view.internal = layout.release();
    return array;
}

int getBuffer(PyObject* self, Py_buffer* view, int flags) {
    view->obj = nullptr;
    try {
        ++fill(self, *view, flags).exports;
    } catch (std::exception const& e) {
        PyErr_SetString(PyExc_BufferError, e.what());
        return -1;
    }
    view->obj = py::handle(self).inc_ref().ptr();
    return 0;
}

void releaseBuffer(PyObject* self, Py_buffer* view) {
    delete static_cast<Layout*>(view->internal);
    --py::cast<Array&>(py::handle(self)).exports;
}

} // namespace

Buffer::Buffer(py::handle source) {
    if (PyObject_GetBuffer(source.ptr(), &view, PyBUF_STRIDES | PyBUF_FORMAT) != 0) {
        throw py::error_already_set();
    }
}

std::size_t Buffer::sizeAs(eDataType type) const {
    check(isFormat(view.format != nullptr ? view.format : "B", formatOf(type)) ? 0
                                                                               : ERR_WRONG_TYPE);
    if (PyBuffer_IsContiguous(&view, 'C') == 0) {
        throw py::buffer_error("the elements do not lie back to back");
    }
    auto const size = static_cast<std::size_t>(view.len);
    if (size % elementWidth(type) != 0) {
        throw py::value_error("no whole number of elements");
    }
    return size;
}

void giveBuffer(PyHeapTypeObject* type) {
    type->as_buffer.bf_getbuffer = &getBuffer;
    type->as_buffer.bf_releasebuffer = &releaseBuffer;
    type->ht_type.tp_as_buffer = &type->as_buffer;
}

} // namespace HalvPython
