// Chains of three errors with two parameters each: made, copied, printed, destroyed. And what
// longer chains and lists cost.

#include "Bench.h"

#include <Halvora/error/HLVError.h>
#include <Halvora/error/HLVErrorException.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <sstream>
#include <stdexcept>

#ifdef HALVTYPES_WITH_ABSEIL
#    include <absl/status/status.h>
#    include <absl/strings/cord.h>
#endif
#ifdef HALVTYPES_WITH_BOOST
#    include <boost/exception/all.hpp>
#endif
#ifdef HALVTYPES_WITH_GLIB
#    include <glib.h>
#endif

using namespace Halvora;
using bench::add;
using Param = HLVError::Param;

namespace {

constexpr char text[] = "sensor out of range";
constexpr int depth = 3;
constexpr char chainName[] = "chain: make, copy, print, destroy";

HLVError* makeChain(int n) {
    HLVError* error = nullptr;
    for (int i = 0; i < n; ++i) {
        error = new HLVError(-i - 1, nullptr, error, new Param(text), new Param(i), nullptr);
    }
    return error;
}

// Where all of them print to: a buffer that stays.
class Sink {
public:
    std::ostringstream& rewound() {
        m_stream->seekp(0);
        return *m_stream;
    }

private:
    std::shared_ptr<std::ostringstream> m_stream = std::make_shared<std::ostringstream>();
};

#ifdef HALVTYPES_WITH_BOOST
using Text = boost::error_info<struct TextTag, std::string>;
using Number = boost::error_info<struct NumberTag, int>;
struct Failure : virtual std::exception, virtual boost::exception {};
#endif

void throwNested(int level) {
    try {
        if (level > 1) {
            throwNested(level - 1);
        }
        throw std::runtime_error("Error -1: sensor out of range, 0");
    } catch (...) {
        std::throw_with_nested(std::runtime_error("Error -" + std::to_string(level) + ": " + text));
    }
}

void printNested(std::exception const& e, std::ostream& stream) {
    stream << e.what() << '\n';
    try {
        std::rethrow_if_nested(e);
    } catch (std::exception const& nested) {
        printNested(nested, stream);
    }
}

void addContenders(Sink sink) {
    add(chainName, depth, "std::nested_exception", [sink]() mutable {
        try {
            throwNested(depth - 1);
        } catch (std::exception const& e) {
            printNested(e, sink.rewound());
        }
    });
#ifdef HALVTYPES_WITH_GLIB
    add(chainName, depth, "GError", [sink]() mutable {
        GError* error = nullptr;
        g_set_error(&error, 1, -1, "Error %d\n  P1: %s\n  P2: %d", -1, text, 0);
        g_prefix_error(&error, "Error %d\n  P1: %s\n  P2: %d\n---\n", -2, text, 1);
        g_prefix_error(&error, "Error %d\n  P1: %s\n  P2: %d\n---\n", -3, text, 2);
        GError* const copy = g_error_copy(error);
        sink.rewound() << copy->message;
        g_error_free(copy);
        g_error_free(error);
    });
#endif
#ifdef HALVTYPES_WITH_ABSEIL
    add(chainName, depth, "abseil", [sink]() mutable {
        absl::Status status(absl::StatusCode::kInternal, "Error -3");
        for (char const level : {'1', '2', '3'}) {
            status.SetPayload(std::string("text") + level, absl::Cord(text));
            status.SetPayload(std::string("number") + level, absl::Cord(std::string(1, level)));
        }
        absl::Status copy(status);
        copy.SetPayload("copied", absl::Cord()); // it is shared until it is changed
        sink.rewound() << copy;
    });
#endif
#ifdef HALVTYPES_WITH_BOOST
    add(chainName, depth, "boost::exception", [sink]() mutable {
        Failure first;
        first << Text(text) << Number(0);
        Failure second;
        second << Text(text) << Number(1)
               << boost::errinfo_nested_exception(boost::copy_exception(first));
        Failure third;
        third << Text(text) << Number(2)
              << boost::errinfo_nested_exception(boost::copy_exception(second));
        Failure const copy(third);
        sink.rewound() << boost::diagnostic_information(copy);
    });
#endif
}

void addChains(Sink sink) {
    add(chainName, depth, "ours", [sink]() mutable {
        HLVError::Holder const holder(makeChain(depth));
        HLVError::Holder const copy(holder);
        sink.rewound() << copy;
    });
    // What the chain and its copy need: 6 errors, 12 parameters, 6 texts, in their sizes.
    add(chainName, depth, "limit", [] {
        void* blocks[24];
        for (int i = 0; i < 24; ++i) {
            blocks[i] = ::operator new(i < 6 ? sizeof(HLVError) : i < 18 ? sizeof(Param) : 80);
        }
        benchmark::DoNotOptimize(blocks);
        for (void* block : blocks) {
            ::operator delete(block);
        }
    });
    HLVError::Holder const three(makeChain(depth));
    add("chain: print", depth, "ours", [three, sink]() mutable { sink.rewound() << three; });
    std::ostringstream printed;
    printed << three;
    add("chain: print", depth, "limit", [text = printed.str(), sink]() mutable {
        sink.rewound().write(text.data(), static_cast<std::streamsize>(text.size()));
    });
    add("message", 1, "ours", [] {
        HLVError const error(-1004996);
        benchmark::DoNotOptimize(error.messageA());
    });
    add("message", 1, "limit", [] {
        char digits[32];
        std::string made(digits, static_cast<std::size_t>(
                                     std::snprintf(digits, sizeof digits, "Error %d", -1004996)));
        benchmark::DoNotOptimize(made);
    });
    add("message", 1, "string stream", [] {
        std::ostringstream stream;
        stream << "Error " << -1004996;
        benchmark::DoNotOptimize(stream.str());
    });
}

void addGrowth(Sink sink, int n) {
    auto const size = static_cast<std::size_t>(n);
    add("long chain: make, destroy", size, "ours",
        [n] { HLVError::Holder const holder(makeChain(n)); });
    HLVError::Holder const chain(makeChain(n));
    add("long chain: copy, destroy", size, "ours", [chain] { HLVError::Holder const copy(chain); });
    add("long chain: print", size, "ours", [chain, sink]() mutable { sink.rewound() << chain; });
    auto const list = std::make_shared<HLVError::List>();
    for (int i = 0; i < n; ++i) {
        list->add(new HLVError(-1));
    }
    add("list: walk", size, "ours", [list] {
        int sum = 0;
        for (auto at = list->begin(); !at.end(); ++at) {
            sum += (*at)->getCode();
        }
        benchmark::DoNotOptimize(sum);
    });
}

} // namespace

int main(int argc, char** argv) {
    Sink const sink;
    addChains(sink);
    addContenders(sink);
    for (int const n : {16, 256, 4096, 65536}) {
        addGrowth(sink, n);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
