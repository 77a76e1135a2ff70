#include "Module.h"

#include <Halvora/text/Convert.h>
#include <Halvora/text/VarChar.h>

namespace HalvPython {

using namespace Halvora;

namespace {

// The library takes wide text and keeps the low 16 bits of each: here these are UTF-16.
VarChar ofUnits(Units const& units) {
    return VarChar(Convert::toWString(units.text));
}

VarChar fromRaw(py::buffer const& source, std::size_t offset) {
    return readForm<VarChar>(source, offset,
                             [](void const* form, VarChar& value) { VarChar::set(form, value); });
}

void writeSlot(VarChar const& value, py::buffer const& buffer, std::size_t offset,
               unsigned short capacity) {
    std::wstring const text = value.wstr();
    Bytes const bytes(buffer, true);
    void* const slot = bytes.at(offset, 2 + std::size_t{2} * capacity);
    VarChar::set(text.data(), value.length(), capacity, slot);
}

py::bytes slot(VarChar const& value, unsigned short capacity) {
    std::string bytes(2 + std::size_t{2} * capacity, '\0');
    VarChar::set(value.wstr().data(), value.length(), capacity, &bytes[0]);
    return bytes;
}

Units text(VarChar const& value) {
    return {HLVString(value.pstr(), value.length())};
}

} // namespace

void addVarChar(py::module_& module) {
    py::class_<VarChar> type(
        module, "VarChar",
        "A text of at most 512 UTF-16 units, longer ones are cut. It does not change.\n\n"
        "The order is that of the stored bytes, not one of texts.");
    type.def(py::init(&ofUnits), py::arg("text") = "", "A text.")
        .def_static("fromRaw", &fromRaw, py::arg("buffer"), py::arg("offset") = 0,
                    "Reads the raw form at `offset`; ValueError when it is not whole.")
        .def_static("sizeWithin", &sizeOfForm<VarChar>, py::arg("buffer"), py::arg("offset") = 0,
                    "The bytes that the raw form at `offset` takes; 0 when it is not whole.")
        .def_static(
            "fits", [](Units const& units) { return units.text.size() <= VarChar::maxLength; },
            py::arg("text"), "Whether a text would be kept whole.")
        .def("raw", &formOf<VarChar>, "The raw form.")
        .def("__bytes__", &formOf<VarChar>)
        .def("slot", &slot, py::arg("capacity"), "A slot of 2 + 2 * capacity bytes.")
        .def("writeSlot", &writeSlot, py::arg("buffer"), py::arg("offset"), py::arg("capacity"),
             "Writes such a slot into a buffer.")
        .def("length", &VarChar::length, "The length in units.")
        .def(
            "size", [](VarChar const& value) { return value.size(); },
            "The size of the raw form in bytes.")
        .def("wstr", &text, "The text.")
        .def("__str__", &text)
        .def("__repr__",
             [](VarChar const& value) {
                 return "VarChar(" + std::string(py::repr(py::cast(text(value)))) + ")";
             })
        .def("__len__", &VarChar::length)
        .def(
            py::pickle(&formOf<VarChar>, [](py::bytes const& bytes) { return fromRaw(bytes, 0); }));
    addOrder(type);
    type.attr("maxLength") = static_cast<unsigned short>(VarChar::maxLength);
}

} // namespace HalvPython
