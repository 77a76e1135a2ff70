// Errors by values beside pointers, handed on, thrown, and written for programs.

#include "Bench.h"

#include <Halvora/error/HLVError.h>
#include <Halvora/error/HLVErrorException.h>
#include <Halvora/error/Json.h>

#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#ifdef HALVTYPES_WITH_ABSEIL
#    include <absl/status/status.h>
#    include <absl/strings/str_cat.h>
#endif
#ifdef HALVTYPES_WITH_BOOST
#    include <boost/exception/all.hpp>
#endif
#ifdef HALVTYPES_WITH_FMT
#    include <fmt/format.h>
#endif
#ifdef HALVTYPES_WITH_GLIB
#    include <glib.h>
#endif
#ifdef HALVTYPES_WITH_QT
#    include <QJsonArray>
#    include <QJsonDocument>
#    include <QJsonObject>
#endif

using namespace Halvora;
using bench::addSame;
using Param = HLVError::Param;

namespace {

constexpr char text[] = "sensor out of range";
constexpr int depth = 3;

// One error with a text and a number, made and destroyed. The alternatives keep one text of both.
void addCreating() {
    constexpr char name[] = "create, destroy";
    addSame(name, 1, "ours", -20, [] { return HLVError::create(-20, text, 7)->getCode(); });
    addSame(name, 1, "limit", -20, [] {
        return std::make_unique<HLVError>(-20, new Param(text), new Param(7))->getCode();
    });
#ifdef HALVTYPES_WITH_GLIB
    addSame(name, 1, "GError", -20, [] {
        GError* const error = g_error_new(1, -20, "%s %d", text, 7);
        int const code = error->code;
        g_error_free(error);
        return code;
    });
#endif
#ifdef HALVTYPES_WITH_ABSEIL
    addSame(name, 1, "abseil", absl::StatusCode::kInternal,
            [] { return absl::InternalError(absl::StrCat(text, " ", 7)).code(); });
#endif
}

// Raised by values beside the same by pointers.
void addRaising() {
    constexpr char name[] = "three errors: raise, destroy";
    addSame(name, depth, "ours", -depth, [] {
        HLVError::Holder holder;
        for (int i = 0; i < depth; ++i) {
            holder.prepend(-i - 1, text, i);
        }
        return holder.getError()->getCode();
    });
    addSame(name, depth, "limit", -depth, [] {
        std::unique_ptr<HLVError> error;
        for (int i = 0; i < depth; ++i) {
            error = std::make_unique<HLVError>(-i - 1, nullptr, error.release(), new Param(text),
                                               new Param(i), nullptr);
        }
        return error->getCode();
    });
#ifdef HALVTYPES_WITH_GLIB
    addSame(name, depth, "GError", -1, [] {
        GError* error = g_error_new(1, -1, "Error %d\n  P1: %s\n  P2: %d", -1, text, 0);
        g_prefix_error(&error, "Error %d\n  P1: %s\n  P2: %d\n---\n", -2, text, 1);
        g_prefix_error(&error, "Error %d\n  P1: %s\n  P2: %d\n---\n", -3, text, 2);
        int const code = error->code;
        g_error_free(error);
        return code;
    });
#endif
}

// What a vector does with them while it grows.
template <typename Owner>
void addMoves(char const* who, std::size_t n) {
    addSame("owners of errors in a vector that grows", n, who, n, [n] {
        std::vector<Owner> all;
        for (std::size_t i = 0; i < n; ++i) {
            all.push_back(Owner(new HLVError(-1)));
        }
        return all.size();
    });
}

// An exception with a trace, which a layer between extends and throws on. The limit throws the bare
// trace.
template <typename Make, typename Extend, typename TraceOf>
void addThrow(char const* who, Make make, Extend extend, TraceOf traceOf) {
    using Exception = decltype(make());
    addSame("throw, add trace, catch", 1, who, "io -> pump", [make, extend, traceOf] {
        try {
            try {
                throw make();
            } catch (Exception& e) {
                extend(e);
                throw;
            }
        } catch (Exception& e) {
            return std::string(traceOf(e));
        }
    });
}

#ifdef HALVTYPES_WITH_BOOST
using Code = boost::error_info<struct CodeTag, int>;
using Text = boost::error_info<struct TextTag, std::string>;
struct Failure : virtual std::exception, virtual boost::exception {};
#endif

std::string nestedTrace() {
    try {
        try {
            throw std::runtime_error("io");
        } catch (std::runtime_error const&) {
            std::throw_with_nested(std::runtime_error("pump"));
        }
    } catch (std::runtime_error const& outer) {
        try {
            std::rethrow_if_nested(outer);
        } catch (std::runtime_error const& inner) {
            return inner.what() + std::string(" -> ") + outer.what();
        }
    }
    return "";
}

void addThrows() {
    addThrow(
        "ours", [] { return HLVErrorException(new HLVError(-1), "io"); },
        [](HLVErrorException& e) { e.addTrace("pump"); },
        [](HLVErrorException& e) { return e.trace(); });
    addThrow(
        "limit", [] { return std::string("io"); }, [](std::string& e) { e += " -> pump"; },
        [](std::string& e) { return e; });
    addSame("throw, add trace, catch", 1, "std::nested_exception", "io -> pump", nestedTrace);
#ifdef HALVTYPES_WITH_BOOST
    addThrow(
        "boost::exception",
        [] {
            Failure failure;
            failure << Code(-1) << Text("io");
            return failure;
        },
        [](Failure& e) { *boost::get_error_info<Text>(e) += " -> pump"; },
        [](Failure& e) { return *boost::get_error_info<Text>(e); });
#endif
}

// A chain of three, each with a text and a number, as a line of JSON; written by hand where there
// is nothing of the kind, without a look at what would have to be escaped.
template <typename Print>
void addJson(char const* who, Print print) {
    HLVError::Holder holder;
    for (int i = 0; i < depth; ++i) {
        holder.prepend(-i - 1, text, i);
    }
    std::ostringstream line;
    writeJson(line, *holder.getError());
    auto const isRight = [whole = line.str()](std::string const& all) { return all == whole; };
    bench::addPrint("chain: JSON line", depth, who, isRight,
                    [holder, whole = line.str(), print](std::ostream& stream) {
                        print(stream, *holder.getError(), whole);
                    });
}

// What the chain is printed from: code, text, number.
template <typename Visitor>
void forEachError(HLVError const& error, Visitor visitor) {
    for (auto const* at = &error; at != nullptr; at = at->getPrecedingError()) {
        int number = 0;
        at->getParam1()->getValue(number);
        visitor(at->getCode(), at->getParam0()->getDataString(), number, at == &error);
    }
}

void writeByStream(std::ostream& stream, HLVError const& error) {
    stream << "{\"chain\":[";
    forEachError(error, [&](int code, std::wstring const& wide, int number, bool isFirst) {
        stream << (isFirst ? "" : ",") << "{\"code\":" << code
               << ",\"params\":[{\"type\":\"String\",\"value\":\""
               << std::string(wide.begin(), wide.end())
               << "\"},{\"type\":\"Int32\",\"value\":" << number << "}]}";
    });
    stream << "]}\n";
}

#ifdef HALVTYPES_WITH_FMT
void writeByFmt(std::ostream& stream, HLVError const& error) {
    fmt::memory_buffer line;
    auto out = fmt::appender(line);
    fmt::format_to(out, "{{\"chain\":[");
    forEachError(error, [&](int code, std::wstring const& wide, int number, bool isFirst) {
        fmt::format_to(out,
                       "{}{{\"code\":{},\"params\":[{{\"type\":\"String\",\"value\":\"{}\"}},"
                       "{{\"type\":\"Int32\",\"value\":{}}}]}}",
                       isFirst ? "" : ",", code, std::string(wide.begin(), wide.end()), number);
    });
    fmt::format_to(out, "]}}\n");
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
}
#endif

#ifdef HALVTYPES_WITH_QT
void writeByQt(std::ostream& stream, HLVError const& error) {
    QJsonArray chain;
    forEachError(error, [&](int code, std::wstring const& wide, int number, bool) {
        chain.append(QJsonObject{
            {"code",   code                                               },
            {"params",
             QJsonArray{QJsonObject{{"type", "String"}, {"value", QString::fromStdWString(wide)}},
                        QJsonObject{{"type", "Int32"}, {"value", number}}}}
        });
    });
    QByteArray const line = QJsonDocument(QJsonObject{
                                              {"chain", chain}
    })
                                .toJson(QJsonDocument::Compact);
    stream.write(line.data(), line.size()).put('\n');
}
#endif

void addJsonLines() {
    using Line = std::string const&;
    addJson("ours",
            [](std::ostream& stream, HLVError const& error, Line) { writeJson(stream, error); });
    addJson("limit", [](std::ostream& stream, HLVError const&, Line whole) { stream << whole; });
    addJson("a plain stream", [](std::ostream& stream, HLVError const& error, Line) {
        writeByStream(stream, error);
    });
#ifdef HALVTYPES_WITH_FMT
    addJson("fmt",
            [](std::ostream& stream, HLVError const& error, Line) { writeByFmt(stream, error); });
#endif
#ifdef HALVTYPES_WITH_QT
    addJson("QJsonDocument",
            [](std::ostream& stream, HLVError const& error, Line) { writeByQt(stream, error); });
#endif
}

} // namespace

int main(int argc, char** argv) {
    addCreating();
    addRaising();
    for (std::size_t const n : {16u, 256u, 4096u}) {
        addMoves<HLVError::Holder>("ours", n);
        addMoves<std::unique_ptr<HLVError>>("limit", n);
        addMoves<std::shared_ptr<HLVError>>("std::shared_ptr", n);
    }
    addThrows();
    addJsonLines();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
