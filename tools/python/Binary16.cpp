#include "Module.h"

#include <Halvora/types/ElementTypes.h>
#include <Halvora/types/ParseBinary16.h>

namespace HalvPython {

using namespace Halvora;

namespace {

Binary16 fromBytes(py::buffer const& source) {
    Bytes const bytes(source);
    if (bytes.behind(0) != sizeof(Binary16)) {
        throw py::value_error("an identifier has 16 bytes");
    }
    return Binary16(bytes.at(0), sizeof(Binary16));
}

Binary16 fromText(Wide const& text) {
    Binary16 value;
    if (parseBinary16(std::wstring_view(text.text), value).status != PARSE_DONE) {
        throw py::value_error("neither 0x and 32 hexadecimal digits nor 8-4-4-4-12 of them");
    }
    return value;
}

Binary16 fromUuidBytes(py::buffer const& source) {
    return Binary16::fromUuidBytes(fromBytes(source).m_bytes);
}

py::bytes toBytes(Binary16 const& value) {
    return {reinterpret_cast<char const*>(value.m_bytes), sizeof value.m_bytes};
}

py::bytes toUuidBytes(Binary16 const& value) {
    Binary16 bytes;
    value.toUuidBytes(bytes.m_bytes);
    return toBytes(bytes);
}

py::object toUuid(Binary16 const& value) {
    return py::module_::import("uuid").attr("UUID")(py::arg("bytes") = toUuidBytes(value));
}

std::string hexadecimal(Binary16 const& value) {
    std::string text(Binary16::HEXADECIMAL_LENGTH, '\0');
    value.toHexadecimal(&text[0], text.size());
    return text;
}

std::string grouped(Binary16 const& value) {
    std::string text(Binary16::GROUPED_LENGTH, '\0');
    value.toGrouped(&text[0], text.size());
    return text;
}

// For the types that a Binary16 carries: the numbers.
template <typename Visit>
void visitNumber(eDataType type, Visit visit) {
    bool const isNumber = ElementTypes::visit(type, [&](auto row) {
        using Value = typename decltype(row)::Value;
        if constexpr (std::is_arithmetic_v<Value>) {
            visit(Value());
        } else {
            throw py::type_error("not a number's type");
        }
    });
    if (!isNumber) {
        throw py::type_error("not a number's type");
    }
}

Binary16 ofNumber(eDataType type, py::handle number) {
    Binary16 value;
    visitNumber(type, [&](auto zero) { value.set(as<decltype(zero)>(number)); });
    return value;
}

py::object getNumber(Binary16 const& value, eDataType type) {
    py::object number;
    visitNumber(type, [&](auto read) {
        value.get(read);
        number = py::cast(read);
    });
    return number;
}

unsigned char byteAt(Binary16 const& value, long long index) {
    index += index < 0 ? 16 : 0;
    if (index < 0 || index >= 16) {
        throw py::index_error("a Binary16 has 16 bytes");
    }
    return value[static_cast<unsigned char>(index)];
}

void addMaking(py::class_<Binary16>& type) {
    type.def(py::init<>(), "All bytes zero.")
        .def(py::init(&fromText), py::arg("text"), "Reads either text form, strictly.")
        .def(py::init(&fromBytes), py::arg("bytes"), "Takes exactly 16 bytes as they lie.")
        .def(py::init([](unsigned a, unsigned short b, unsigned short c, unsigned long long d) {
                 return Binary16(a, b, c, d);
             }),
             py::arg("part1"), py::arg("part2"), py::arg("part3"), py::arg("part4"),
             "The four parts of an identifier.")
        .def_static("of", &ofNumber, py::arg("type"), py::arg("number"),
                    "The carrier of a number of a type, in its leading bytes.")
        .def("get", &getNumber, py::arg("type"), "The leading bytes as a number of a type.");
}

void addUuid(py::class_<Binary16>& type) {
    type.def_static("fromUuidBytes", &fromUuidBytes, py::arg("bytes"),
                    "Of the 16 bytes of a UUID, the most significant first.")
        .def("toUuidBytes", &toUuidBytes, "The 16 bytes as UUID.bytes; bytes() is UUID.bytes_le.")
        .def_static(
            "fromUuid", [](py::object const& uuid) { return fromUuidBytes(uuid.attr("bytes")); },
            py::arg("uuid"), "Of a uuid.UUID, with the same text.")
        .def("toUuid", &toUuid, "The uuid.UUID with the same text.");
}

} // namespace

void addBinary16(py::module_& module) {
    py::class_<Binary16> type(module, "Binary16",
                              "A 16-byte value, most often an identifier. It does not change.\n\n"
                              "str() is the grouped form, repr() the hexadecimal one.");
    addMaking(type);
    addUuid(type);
    type.def("toHexadecimal", &hexadecimal, "0x and 32 digits, byte 15 first.")
        .def("toGrouped", &grouped, "32 digits in five groups, as of a UUID.")
        .def("__bytes__", &toBytes)
        .def("__str__", &grouped)
        .def("__repr__", [](Binary16 const& value) { return hexadecimal(value); })
        .def("__len__", [](Binary16 const&) { return sizeof(Binary16); })
        .def("__bool__", [](Binary16 const& value) { return value != Binary16::EMPTY; })
        .def("__getitem__", &byteAt, py::arg("index"))
        .def(py::pickle(&toBytes, [](py::bytes const& bytes) { return fromBytes(bytes); }));
    addOrder(type);
    type.attr("EMPTY") = Binary16::EMPTY;
    type.attr("MIN") = Binary16::MIN;
    type.attr("MAX") = Binary16::MAX;
}

} // namespace HalvPython
