#include "Module.h"

#include <Halvora/types/ElementTypes.h>
#include <Halvora/types/HalvTypes.h>
#include <Halvora/types/Round.h>

#include <optional>
#include <string>
#include <vector>

namespace HalvPython {

using namespace Halvora;

namespace {

void addEnumerations(py::module_& module) {
    py::enum_<eDataType> types(module, "eDataType", py::arithmetic(), "The scalar data types.");
    types.value("DT_VOID", DT_VOID);
    ElementTypes::forEach([&](auto row) {
        types.value((std::string("DT_") + HalvTypes::dataTypeToString(row.type)).c_str(), row.type);
    });
    types.export_values();
    py::enum_<eDataTypeGroup>(module, "eDataTypeGroup", py::arithmetic(),
                              "The groups of data types.")
        .value("DTG_VOID", DTG_VOID)
        .value("DTG_BOOL", DTG_BOOL)
        .value("DTG_NUMERIC", DTG_NUMERIC)
        .value("DTG_STRING", DTG_STRING)
        .value("DTG_TICK", DTG_TICK)
        .value("DTG_ID", DTG_ID)
        .value("DTG_BINARY16", DTG_BINARY16)
        .export_values();
}

std::optional<eDataType> commonType(eDataType a, eDataType b) {
    eDataType common = DT_VOID;
    bool const isFound = HalvTypes::getSmallestCommonDataType(a, b, common);
    return isFound ? std::optional(common) : std::nullopt;
}

std::vector<eDataType> typesOf(eDataTypeGroup group) {
    eDataType const* types = nullptr;
    int count = 0;
    HalvTypes::getDataTypeGroup(group, types, count);
    return {types, types + count};
}

} // namespace

void addTypes(py::module_& module) {
    addEnumerations(module);
    py::class_<HalvTypes, std::unique_ptr<HalvTypes, py::nodelete>>(module, "HalvTypes",
                                                                    "The catalogue of data types.")
        .def_static("getDataTypeGroup", py::overload_cast<eDataType>(&HalvTypes::getDataTypeGroup),
                    py::arg("type"), "The group of a type.")
        .def_static("getDataTypeGroup", &typesOf, py::arg("group"),
                    "The types of a group, in the library's order.")
        .def_static("getMaxDataType", &HalvTypes::getMaxDataType, py::arg("group"),
                    "The widest type of a group.")
        .def_static("getSmallestCommonDataType", &commonType, py::arg("a"), py::arg("b"),
                    "The type that values of both are widened to; None without one.")
        .def_static("dataTypeToString", &HalvTypes::dataTypeToString, py::arg("type"),
                    "The upper-case name, such as INT32.")
        .def_static(
            "elementWidth", [](eDataType type) { return elementWidth(type); }, py::arg("type"),
            "The size of a value in bytes; 0 for texts and DT_VOID.");

    py::class_<Round, std::unique_ptr<Round, py::nodelete>>(
        module, "Round", "Rounding of measured and configured quantities, exact to the bit.")
        .def_static("convert", py::overload_cast<double const&>(&Round::convert), py::arg("value"),
                    "The nearest int, halves away from zero.")
        .def_static("convert", py::overload_cast<double, int>(&Round::convert), py::arg("value"),
                    py::arg("digits"), "value * 10**digits as an int, halves away from zero.")
        .def_static("round", py::overload_cast<double const&>(&Round::round), py::arg("value"),
                    "floor(value + 0.5): halves go upward.")
        .def_static("round", py::overload_cast<double, int>(&Round::round), py::arg("value"),
                    py::arg("digits"), "Rounded to decimal digits, halves upward.");
}

} // namespace HalvPython
