#include "Module.h"

#include <Halvora/text/Convert.h>
#include <Halvora/text/CsvReader.h>
#include <Halvora/text/Utf8.h>

#include <utility>
#include <vector>

namespace HalvPython {

using namespace Halvora;

namespace {

using Tool = void (*)(std::wstring&, std::wstring const&);

template <Tool tool>
Wide trimmed(Wide text, Wide const& set) {
    tool(text.text, set.text);
    return text;
}

using Splitter = std::vector<std::wstring>& (*)(std::wstring const&, wchar_t,
                                                std::vector<std::wstring>&);

template <Splitter splitter>
std::vector<Wide> fieldsOf(Wide const& text, Wide const& separator) {
    if (separator.text.size() != 1) {
        throw py::value_error("a separator is one character");
    }
    std::vector<std::wstring> fields;
    std::vector<Wide> list;
    for (std::wstring& field : splitter(text.text, separator.text[0], fields)) {
        list.push_back({std::move(field)});
    }
    return list;
}

std::string narrowed(Wide const& text) {
    return Convert::toAString(text.text);
}

unsigned char toByte(std::string const& digits) {
    if (digits.size() != 2) {
        throw py::value_error("a byte has two digits");
    }
    return Convert::toByte(digits[0], digits[1]);
}

void addConvert(py::module_& module) {
    py::class_<Convert, std::unique_ptr<Convert, py::nodelete>>(
        module, "Convert", "Text between encodings, and the small text tools.")
        .def_static(
            "toAString", [](Wide const& text) { return py::bytes(narrowed(text)); },
            py::arg("text"), "As ISO 8859-1; what that lacks is a space.")
        .def_static(
            "toAString", [](eDataType type) { return Convert::toAString(type); }, py::arg("type"),
            "The mixed-case name of a type, such as Int32.")
        .def_static(
            "toWString",
            [](py::bytes const& text) { return Wide{Convert::toWString(std::string(text))}; },
            py::arg("text"), "From ISO 8859-1.")
        .def_static("trim", &trimmed<&Convert::trim>, py::arg("text"), py::arg("set") = " \t\r\n",
                    "Without the characters of `set` at both ends; others have to be there.")
        .def_static("trimLeft", &trimmed<&Convert::trimLeft>, py::arg("text"),
                    py::arg("set") = " \t\r\n", "Without the characters of `set` in front.")
        .def_static("trimRight", &trimmed<&Convert::trimRight>, py::arg("text"),
                    py::arg("set") = " \t\r\n", "Without the characters of `set` at the end.")
        .def_static("split", &fieldsOf<&Convert::split>, py::arg("text"), py::arg("separator"),
                    "Cut at every separator; one at the very end is followed by no field.")
        .def_static("splitQuoted", &fieldsOf<&Convert::splitQuoted>, py::arg("text"),
                    py::arg("separator"), "Cut at every separator outside double quotes.")
        .def_static("toByte", &toByte, py::arg("digits"), "The value of two hexadecimal digits.")
        .def_static(
            "toBool", [](Wide const& text) { return Convert::toBool(narrowed(text)); },
            py::arg("text"), "True for 1, and for what begins with true in any case.");
}

std::tuple<Wide, std::size_t, std::size_t> toWide(py::buffer const& source) {
    Bytes const bytes(source);
    Wide text;
    Utf8Result const result = Utf8::toWString(text.text, bytes.view());
    return {text, result.replaced, result.position};
}

std::tuple<py::bytes, std::size_t, std::size_t> toUtf8(Wide const& text) {
    std::string bytes;
    Utf8Result const result = Utf8::fromWString(bytes, text.text);
    return {py::bytes(bytes), result.replaced, result.position};
}

void addUtf8(py::module_& module) {
    py::class_<Utf8, std::unique_ptr<Utf8, py::nodelete>>(
        module, "Utf8", "Text between UTF-8 and str; what is ill-formed becomes U+FFFD.")
        .def_static("toWString", &toWide, py::arg("text"),
                    "(text, how many were replaced, where the first one began) of UTF-8 bytes.")
        .def_static("fromWString", &toUtf8, py::arg("text"),
                    "(bytes, how many were replaced, where the first one was) of a str.")
        .def_static(
            "isValid", [](py::buffer const& text) { return Utf8::isValid(Bytes(text).view()); },
            py::arg("text"), "Whether nothing would be replaced.");
}

// (records, faults) of a whole text.
std::pair<py::list, py::list> readCsv(py::buffer const& source, char separator) {
    Bytes const bytes(source);
    CsvReader reader(bytes.view(), separator);
    py::list records;
    py::list faults;
    reader.onFault([&faults](CsvReader::Fault const& fault) {
        faults.append(py::make_tuple(fault.line, fault.column, fault.what()));
    });
    for (std::vector<std::string> record; reader.next(record);) {
        py::list fields;
        for (std::string const& field : record) {
            fields.append(py::bytes(field));
        }
        records.append(fields);
    }
    return {records, faults};
}

} // namespace

void addText(py::module_& module) {
    addConvert(module);
    addUtf8(module);
    module.def(
        "readCsv", &readCsv, py::arg("text"), py::arg("separator") = ',',
        "(records, faults) of CSV bytes: a record is a list of bytes, a fault (line, column, "
        "reason).");
}

} // namespace HalvPython
