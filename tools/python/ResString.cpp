#include "Translator.h"

#include <Halvora/error/Characters.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/ResString2.h>

#include <functional>
#include <pybind11/operators.h>
#include <sstream>

namespace HalvPython {

using namespace Halvora;

// None without an override in Python.
template <typename... Arguments>
py::object Translator::ask(char const* name, Arguments const&... arguments) const {
    py::function const own = py::get_override(this, name);
    return own ? own(arguments...) : py::none();
}

void Translator::getTranslation(std::wostream& stream, ResString const& text) const {
    getTranslation(stream, text.id(), text.wstr().c_str());
}

void Translator::getTranslation(std::wostream& stream, Binary16 const& id,
                                wchar_t const* defaultText) const {
    py::gil_scoped_acquire const gil;
    // Texts of 16-bit units come here widened unit by unit.
    Units units;
    Convert::toHLVString(units.text, std::wstring(defaultText != nullptr ? defaultText : L""));
    py::object const answer = ask("getTranslation", id, units);
    stream << (answer.is_none() ? Convert::toWString(units.text) : as<Wide>(answer).text);
}

ResString* Translator::getErrorDescription(int code) const {
    py::gil_scoped_acquire const gil;
    py::object const answer = ask("getErrorDescription", code);
    return answer.is_none() ? m_default.getErrorDescription(code)
                            : new ResString(as<Units>(answer).text);
}

wchar_t* Translator::getErrorName(int code) const {
    py::gil_scoped_acquire const gil;
    py::object const answer = ask("getErrorName", code);
    if (answer.is_none()) {
        return m_default.getErrorName(code);
    }
    std::wstring const name = as<Wide>(answer).text;
    auto* const copy = new wchar_t[name.size() + 1];
    name.copy(copy, name.size());
    copy[name.size()] = L'\0';
    return copy;
}

ResString* Translator::getErrorParamDesc(int code, int param) const {
    py::gil_scoped_acquire const gil;
    py::object const answer = ask("getErrorParamDesc", code, param);
    return answer.is_none() ? m_default.getErrorParamDesc(code, param)
                            : new ResString(as<Units>(answer).text);
}

std::string const& Translator::getLanguage() const {
    py::gil_scoped_acquire const gil;
    py::object const answer = ask("getLanguage");
    m_language = answer.is_none() ? std::string() : as<std::string>(answer);
    return m_language;
}

namespace {

// What a `ResString2` is in Python: the library's shows its identifier to translators alone.
struct Text2 {
    Binary16 id;
    Units units;
    ResString2 value{id, units.text};
};

} // namespace

template <>
inline constexpr bool isOwn<Text2> = true;

namespace {

ResString fromPacked(py::buffer const& source, std::size_t offset) {
    return readForm<ResString>(source, offset,
                               [](void const* form, ResString& value) { value.set(form); });
}

void writeSlot(ResString const& value, py::buffer const& buffer, std::size_t offset,
               unsigned short capacity) {
    Bytes const bytes(buffer, true);
    ResString::set(static_cast<void const*>(&value), capacity,
                   bytes.at(offset, (capacity + std::size_t{9}) * 2));
}

py::bytes slot(ResString const& value, unsigned short capacity) {
    std::string bytes((capacity + std::size_t{9}) * 2, '\0');
    ResString::set(static_cast<void const*>(&value), capacity, &bytes[0]);
    return bytes;
}

Units text(ResString const& value) {
    return {HLVString(value.hlv_str(), value.length())};
}

std::string shown(char const* type, Binary16 const& id, Units const& units) {
    return std::string(type) + "(" + std::string(py::repr(py::cast(id))) + ", " +
           std::string(py::repr(py::cast(units))) + ")";
}

void addForms(py::class_<ResString>& type) {
    type.def(py::init([](Units const& units) { return ResString(units.text); }),
             py::arg("text") = "", "A text without identifier.")
        .def(py::init(
                 [](Binary16 const& id, Units const& units) { return ResString(id, units.text); }),
             py::arg("id"), py::arg("text"), "A text under an identifier.")
        .def_static("fromPacked", &fromPacked, py::arg("buffer"), py::arg("offset") = 0,
                    "Reads the packed form at `offset`; ValueError when it is not whole.")
        .def_static("sizeWithin", &sizeOfForm<ResString>, py::arg("buffer"), py::arg("offset") = 0,
                    "The bytes that the packed form at `offset` takes; 0 when it is not whole.")
        .def_static(
            "fits", [](Units const& units) { return ResString::fits(units.text); }, py::arg("text"),
            "Whether a text would be kept whole.")
        .def("packed", &formOf<ResString>, "The packed form.")
        .def("__bytes__", &formOf<ResString>)
        .def("slot", &slot, py::arg("capacity"), "A slot of (capacity + 9) * 2 bytes.")
        .def("writeSlot", &writeSlot, py::arg("buffer"), py::arg("offset"), py::arg("capacity"),
             "Writes such a slot into a buffer.");
}

void addPackedText(py::module_& module) {
    py::class_<ResString> type(
        module, "ResString",
        "An identified text of at most 128 UTF-16 units, longer ones are cut. It does not change.\n"
        "\nA text without identifier equals the same text under every one: there is no hash.");
    addForms(type);
    type.def(
            "id", [](ResString const& value) { return value.id(); }, "The identifier.")
        .def("length", &ResString::length, "The length of the text in units.")
        .def(
            "size", [](ResString const& value) { return value.size(); },
            "The size of the packed form in bytes.")
        .def("wstr", &text, "The text.")
        .def("__str__", &text)
        .def("__repr__",
             [](ResString const& value) { return shown("ResString", value.id(), text(value)); })
        .def("__len__", &ResString::length)
        .def(py::self == py::self)
        .def(py::self != py::self)
        .def(py::pickle(&formOf<ResString>,
                        [](py::bytes const& bytes) { return fromPacked(bytes, 0); }));
    type.attr("maxLength") = static_cast<unsigned short>(ResString::maxLength);
    type.attr("__hash__") = py::none();
}

Wide translated(Text2 const& text, Translator const& translator) {
    std::wostringstream stream;
    text.value.ToString(stream, translator);
    std::wstring joined; // a character of two units comes as two elements
    detail::forEachCharacter(stream.str(), [&joined](std::uint32_t character) {
        joined += static_cast<wchar_t>(character);
    });
    return {joined};
}

void addTranslator(py::module_& module) {
    py::class_<Translator>(module, "Translator",
                           "Base of translators written in Python: override what is known, return "
                           "None for the default.")
        .def(py::init<>(), "A subclass with an __init__ of its own calls this one.")
        .def(
            "getTranslation",
            [](Translator const&, Binary16 const&, Units const& units) { return units; },
            py::arg("id"), py::arg("defaultText"), "The text for an identifier.")
        .def(
            "getErrorDescription", [](Translator const&, int) { return py::object(py::none()); },
            py::arg("code"), "A sentence about an error code, or None.")
        .def(
            "getErrorName", [](Translator const&, int) { return py::object(py::none()); },
            py::arg("code"), "The name of an error code, or None.")
        .def(
            "getErrorParamDesc", [](Translator const&, int, int) { return py::object(py::none()); },
            py::arg("code"), py::arg("param"), "The name of a parameter from 1 on, or None.")
        .def(
            "getLanguage", [](Translator const&) { return ""; }, "The name of the language.");
}

void addTranslated(py::module_& module) {
    py::class_<Text2>(module, "ResString2",
                      "An identified text of any length, written by a translator.")
        .def(py::init([](Units const& units) {
                 return Text2{{}, units};
             }),
             py::arg("text") = "", "A text without identifier.")
        .def(py::init([](Binary16 const& id, Units const& units) {
                 return Text2{id, units};
             }),
             py::arg("id"), py::arg("text"), "A text under an identifier.")
        .def(py::init([](ResString const& other) {
                 return Text2{other.id(), text(other)};
             }),
             py::arg("text"), "Both parts of a ResString.")
        .def(
            "id", [](Text2 const& value) { return value.id; }, "The identifier.")
        .def(
            "getText", [](Text2 const& value) { return value.units; },
            "The text as it is, without a translator.")
        .def("ToString", &translated, py::arg("translator"),
             "What the translator makes of it; the text itself without an identifier.")
        .def("__str__", [](Text2 const& value) { return value.units; })
        .def("__repr__",
             [](Text2 const& value) { return shown("ResString2", value.id, value.units); })
        .def("__hash__", [](Text2 const& value) { return std::hash<ResString2>()(value.value); })
        .def(
            "__eq__", [](Text2 const& a, Text2 const& b) { return a.value == b.value; },
            py::is_operator());
}

} // namespace

void addResString(py::module_& module) {
    addPackedText(module);
    addTranslator(module);
    addTranslated(module);
}

} // namespace HalvPython
