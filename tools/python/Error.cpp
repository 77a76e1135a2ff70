#include "Translator.h"

#include <Halvora/error/Describe.h>
#include <Halvora/error/HLVErrorException.h>
#include <Halvora/error/Json.h>
#include <Halvora/types/ElementTypes.h>

#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <type_traits>
#include <utility>
#include <vector>

namespace HalvPython {

using namespace Halvora;

namespace {

// A part of a chain shares the ownership of the whole: whatever Python keeps stays.
using Shared = std::shared_ptr<HLVError const>;
using Param = HLVError::Param;

struct Error {
    Shared error;
};

} // namespace

template <>
inline constexpr bool isOwn<Error> = true;

template <>
inline constexpr bool isOwn<HLVError::List> = true;

namespace {

std::unique_ptr<Param> paramOfInteger(py::handle value) {
    py::detail::make_caster<int> narrow;
    if (narrow.load(value, false)) {
        return std::make_unique<Param>(static_cast<int>(narrow));
    }
    py::detail::make_caster<long long> wide;
    if (wide.load(value, false)) {
        return std::make_unique<Param>(static_cast<long long>(wide));
    }
    return std::make_unique<Param>(as<unsigned long long>(value));
}

// The data type follows from the Python type; integers take the narrowest that holds them.
std::unique_ptr<Param> paramOf(py::handle value) {
    if (py::isinstance<py::bool_>(value)) {
        return std::make_unique<Param>(as<bool>(value));
    }
    if (py::isinstance<py::int_>(value)) {
        return paramOfInteger(value);
    }
    if (py::isinstance<py::float_>(value)) {
        return std::make_unique<Param>(as<double>(value));
    }
    if (py::isinstance<py::str>(value)) {
        return std::make_unique<Param>(as<Wide>(value).text);
    }
    if (py::isinstance<ResString>(value)) {
        return std::make_unique<Param>(as<ResString>(value));
    }
    return std::make_unique<Param>(as<Binary16>(value));
}

Error create(int code, py::args const& values, std::optional<Error> const& preceding) {
    if (values.size() > 3) {
        throw py::value_error("an error has at most three parameters");
    }
    std::unique_ptr<Param> params[3];
    for (std::size_t i = 0; i < values.size(); ++i) {
        params[i] = paramOf(values[i]);
    }
    std::unique_ptr<HLVError> chain(preceding ? new HLVError(*preceding->error) : nullptr);
    auto error = std::unique_ptr<HLVError>(new HLVError(code, nullptr, chain.get(), params[0].get(),
                                                        params[1].get(), params[2].get()));
    static_cast<void>(chain.release());
    for (std::unique_ptr<Param>& param : params) {
        static_cast<void>(param.release());
    }
    return {std::move(error)};
}

py::object valueOf(Param const& param) {
    py::object result = py::none();
    ElementTypes::visit(param.getDataType(), [&](auto const& row) {
        using Row = std::decay_t<decltype(row)>;
        if constexpr (Row::type == DT_STRING) {
            result = py::cast(Wide{param.getDataString()});
        } else if constexpr (Row::type == DT_STRINGRES) {
            result = py::cast(ResString(param.getData(), param.getDataString()));
        } else {
            typename Row::Value value;
            param.getValue(value);
            result = py::cast(value);
        }
    });
    return result;
}

// Absent parameters are None.
py::tuple params(Error const& self) {
    Param const* const all[] = {self.error->getParam0(), self.error->getParam1(),
                                self.error->getParam2()};
    py::list values;
    for (Param const* param : all) {
        values.append(param != nullptr ? valueOf(*param) : py::none());
    }
    return py::tuple(values);
}

std::optional<Error> part(Error const& self, HLVError const* error) {
    return error != nullptr ? std::optional(Error{Shared(self.error, error)}) : std::nullopt;
}

std::vector<Error> chain(Error const& self) {
    std::vector<Error> list;
    for (HLVError const* at = self.error.get(); at != nullptr; at = at->getPrecedingError()) {
        list.push_back({Shared(self.error, at)});
    }
    return list;
}

Wide text(Error const& self) {
    std::wostringstream stream;
    stream << *self.error;
    return {stream.str()};
}

std::string described(Error const& self, Translator const& translator) {
    std::ostringstream stream;
    describe(stream, *self.error, translator);
    return stream.str();
}

std::string json(Error const& self) {
    std::ostringstream stream;
    writeJson(stream, *self.error);
    return stream.str();
}

void raise(Error const& self, std::string const& trace) {
    throw HLVErrorException(HLVError::copy(self.error.get()), trace);
}

// An exception that carries an error gives it; every other is code -1 with its text, as an
// exception of C++ is, and what caused it precedes it.
Error fromException(py::object const& exception) {
    py::list causes;
    py::object at = exception;
    for (; !at.is_none() && !py::hasattr(at, "error"); at = at.attr("__cause__")) {
        bool const isRing = causes.contains(at);
        if (isRing || PyExceptionInstance_Check(at.ptr()) == 0) {
            break;
        }
        causes.append(at);
    }
    bool const hasError = py::hasattr(at, "error") && py::isinstance<Error>(at.attr("error"));
    std::unique_ptr<HLVError> chain(
        hasError ? new HLVError(*at.attr("error").cast<Error const&>().error) : nullptr);
    for (std::size_t i = causes.size(); i-- > 0;) {
        std::string const name = py::str(causes[i].get_type().attr("__name__"));
        std::wstring const what =
            as<Wide>(py::str(py::str(name) + py::str(": ") + py::str(causes[i]))).text;
        auto param = std::make_unique<Param>(what);
        auto next = std::unique_ptr<HLVError>(
            new HLVError(-1, nullptr, chain.get(), param.get(), nullptr, nullptr));
        static_cast<void>(param.release());
        static_cast<void>(chain.release());
        chain = std::move(next);
    }
    if (chain == nullptr) {
        throw py::type_error("no exception");
    }
    return {std::move(chain)};
}

PyObject* exceptionType = nullptr; // lives as long as the process

void translate(std::exception_ptr pointer) {
    try {
        std::rethrow_exception(pointer);
    } catch (HLVErrorException& e) {
        py::object const error =
            py::reinterpret_borrow<py::object>(exceptionType)(py::str(e.what()));
        error.attr("error") = Error{Shared(HLVError::copy(e.error()))};
        error.attr("trace") = py::reinterpret_steal<py::object>(PyUnicode_DecodeUTF8(
            e.trace().data(), static_cast<Py_ssize_t>(e.trace().size()), "replace"));
        PyErr_SetObject(exceptionType, error.ptr());
    }
}

using List = HLVError::List;

std::vector<Error> entries(List const& list) {
    std::vector<Error> all;
    for (auto at = list.begin(); !at.end(); ++at) {
        all.push_back({Shared(HLVError::copy(*at))});
    }
    return all;
}

Error entryAt(List const& list, long long index) {
    index += index < 0 ? list.getCount() : 0;
    check(index < 0 || index >= list.getCount() ? ERR_OUT_OF_RANGE : 0);
    auto at = list.begin();
    for (; index > 0; --index) {
        ++at;
    }
    return {Shared(HLVError::copy(*at))};
}

py::object entriesAt(List const& list, py::slice const& slice) {
    return py::cast(entries(list))[slice];
}

void addList(py::object const& scope) {
    py::class_<List>(scope, "List",
                     "Errors and warnings in the order in which they were added.\n\n"
                     "It holds copies and gives copies: whatever is deleted first, the rest stays.")
        .def(py::init<>(), "An empty list.")
        .def(
            "add",
            [](List& list, Error const& error) {
                return list.add(std::make_unique<HLVError>(*error.error));
            },
            py::arg("error"), "Adds a copy, but not of code 0; whether it is an error.")
        .def("clear", &List::clear, "Removes all entries.")
        .def("getCount", &List::getCount, "The number of entries.")
        .def("getErrorCount", &List::getErrorCount, "The number of codes below 0.")
        .def("getWarningCount", &List::getWarningCount, "The number of codes above 0.")
        .def("__len__", &List::getCount)
        .def(
            "__iter__", [](List const& list) { return py::iter(py::cast(entries(list))); },
            "Iterates over copies of what the list holds now.")
        .def("__getitem__", &entryAt, py::arg("index"),
             "A copy of an entry; from the end below 0. Takes as long as the index is big.")
        .def("__getitem__", &entriesAt, py::arg("slice"), "Copies of entries, as Python's list.");
}

void addValues(py::class_<Error>& type) {
    type.def(py::init(&create), py::arg("code"), py::arg("preceding") = py::none(),
             "Up to three values of bool, int, float, str, Binary16 or ResString; `preceding` is "
             "copied.")
        .def_static("fromException", &fromException, py::arg("exception"),
                    "The error of an exception that carries one; of every other, code -1 and its "
                    "text, preceded by its cause.")
        .def(
            "getCode", [](Error const& self) { return self.error->getCode(); }, "The code.")
        .def("params", &params, "The three parameters; an absent one is None.");
}

void addChain(py::class_<Error>& type) {
    type.def(
            "getPrecedingError",
            [](Error const& self) { return part(self, self.error->getPrecedingError()); },
            "The error that this one wraps, or None.")
        .def(
            "getBaseError",
            [](Error const& self) { return Error{Shared(self.error, self.error->getBaseError())}; },
            "The end of the chain, which is this error itself when it wraps none.")
        .def(
            "getByCode",
            [](Error const& self, int code) { return part(self, self.error->getByCode(code)); },
            py::arg("code"), "The first error of the chain with the code, or None.")
        .def(
            "isError", [](Error const& self) { return HLVError::isError(self.error.get()); },
            "Whether the code is below 0.")
        .def(
            "isWarning", [](Error const& self) { return HLVError::isWarning(self.error.get()); },
            "Whether the code is above 0.");
}

void addOutput(py::class_<Error>& type) {
    type.def(
            "message", [](Error const& self) { return self.error->messageA(); },
            "Error and the code.")
        .def("describe", &described, py::arg("translator"), "The chain in a translator's words.")
        .def("toJson", &json, "The chain as a line of JSON.")
        .def("throw", &raise, py::arg("trace") = "", "Raises it, through C++'s own exception.")
        .def(
            "__iter__", [](Error const& self) { return py::iter(py::cast(chain(self))); },
            "Iterates over the chain, from this error down.")
        .def("__str__", &text)
        .def("__repr__",
             [](Error const& self) { return "<HLVError " + self.error->messageA() + ">"; });
}

void addException(py::module_& module) {
    exceptionType = PyErr_NewExceptionWithDoc(
        "halvtypes.HLVErrorException",
        "An exception of C++ with its chain in `error`, and its `trace`.", nullptr, nullptr);
    if (exceptionType == nullptr) {
        throw py::error_already_set();
    }
    module.add_object("HLVErrorException", exceptionType);
    py::register_local_exception_translator(&translate);
}

} // namespace

void addErrors(py::module_& module) {
    py::class_<Error> type(module, "HLVError",
                           "A code, up to three values, and the error that this one wraps. It does "
                           "not change.\n\nBelow 0 is an error, above 0 a warning.");
    addValues(type);
    addChain(type);
    addOutput(type);
    addList(type);
    addException(module);
}

} // namespace HalvPython
