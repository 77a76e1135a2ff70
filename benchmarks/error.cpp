// Chains of three errors with two parameters each: made, copied, printed, destroyed. What longer
// chains cost.

#include "Bench.h"

#include <Halvora/error/HLVError.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <forward_list>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
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
using bench::addBoth;
using bench::addPrint;
using bench::addSame;
using bench::stopUnless;
using Param = HLVError::Param;

namespace {

constexpr char text[] = "sensor out of range";
constexpr wchar_t wide[] = L"sensor out of range";
constexpr int depth = 3;
constexpr char chainName[] = "chain: make, copy, print, destroy";

HLVError* makeChain(int n) {
    HLVError* error = nullptr;
    for (int i = 0; i < n; ++i) {
        error = new HLVError(-i - 1, nullptr, error, new Param(text), new Param(i), nullptr);
    }
    return error;
}

// Whether a printed chain holds the three codes, the text three times and the three numbers, in
// whatever form: contenders do comparable work and print texts of their own.
bool holdsChain(std::string const& printed) {
    std::set<int> numbers;
    std::regex const number("(^|[^-\\w])(-?[0-9]+)\\b");
    for (std::sregex_iterator at(printed.begin(), printed.end(), number), end; at != end; ++at) {
        numbers.insert(std::stoi((*at)[2]));
    }
    std::regex const pattern(text);
    auto const texts = std::distance(std::sregex_iterator(printed.begin(), printed.end(), pattern),
                                     std::sregex_iterator());
    return texts == depth && numbers == std::set<int>{-3, -2, -1, 0, 1, 2};
}

template <typename Print>
void addChain(char const* who, Print print) {
    addPrint(chainName, depth, who, holdsChain, print);
}

#ifdef HALVTYPES_WITH_BOOST
using Code = boost::error_info<struct CodeTag, int>;
using Text = boost::error_info<struct TextTag, std::string>;
using Number = boost::error_info<struct NumberTag, int>;
struct Failure : virtual std::exception, virtual boost::exception {};
#endif

void throwNested(int level) {
    std::string const what =
        "Error -" + std::to_string(level) + ": " + text + ", " + std::to_string(level - 1);
    if (level == 1) {
        throw std::runtime_error(what);
    }
    try {
        throwNested(level - 1);
    } catch (...) {
        std::throw_with_nested(std::runtime_error(what));
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

void addContenders() {
    addChain("std::nested_exception", [](std::ostream& stream) { // not copied
        try {
            throwNested(depth);
        } catch (std::exception const& e) {
            printNested(e, stream);
        }
    });
#ifdef HALVTYPES_WITH_GLIB
    addChain("GError", [](std::ostream& stream) {
        GError* error = nullptr;
        g_set_error(&error, 1, -1, "Error %d\n  P1: %s\n  P2: %d", -1, text, 0);
        g_prefix_error(&error, "Error %d\n  P1: %s\n  P2: %d\n---\n", -2, text, 1);
        g_prefix_error(&error, "Error %d\n  P1: %s\n  P2: %d\n---\n", -3, text, 2);
        GError* const copy = g_error_copy(error);
        stream << copy->message;
        g_error_free(copy);
        g_error_free(error);
    });
#endif
#ifdef HALVTYPES_WITH_ABSEIL
    addChain("abseil", [](std::ostream& stream) {
        absl::Status status(absl::StatusCode::kInternal, "Error -3");
        for (int level = 1; level <= depth; ++level) {
            std::string const name = "Error -" + std::to_string(level);
            status.SetPayload(name + " P1", absl::Cord(text));
            status.SetPayload(name + " P2", absl::Cord(std::to_string(level - 1)));
        }
        absl::Status copy(status);
        copy.SetPayload("copied", absl::Cord()); // it is shared until it is changed
        stream << copy;
    });
#endif
#ifdef HALVTYPES_WITH_BOOST
    addChain("boost::exception", [](std::ostream& stream) {
        Failure first;
        first << Code(-1) << Text(text) << Number(0);
        Failure second;
        second << Code(-2) << Text(text) << Number(1)
               << boost::errinfo_nested_exception(boost::copy_exception(first));
        Failure third;
        third << Code(-3) << Text(text) << Number(2)
              << boost::errinfo_nested_exception(boost::copy_exception(second));
        Failure const copy(third);
        stream << boost::diagnostic_information(copy);
    });
#endif
}

// What the chain and its copy need: 6 errors, 12 parameters, 6 texts, in their sizes, the texts
// with what they hold.
void allocateChains() {
    void* blocks[24];
    for (int i = 0; i < 24; ++i) {
        blocks[i] = ::operator new(i < 6 ? sizeof(HLVError) : i < 18 ? sizeof(Param) : sizeof wide);
        if (i >= 18) {
            std::memcpy(blocks[i], wide, sizeof wide);
        }
    }
    benchmark::DoNotOptimize(blocks);
    for (void* block : blocks) {
        ::operator delete(block);
    }
}

// What the chain is when every part of it goes through the stream's own output.
void insertChain(std::ostream& stream) {
    for (int i = depth; i > 0; --i) {
        stream << "Error " << -i << "\n  P1: " << text << "\n  P2: " << i - 1;
        if (i != 1) {
            stream << "\n---------------------------------------------------\n";
        }
    }
}

void addChains() {
    addChain("ours", [](std::ostream& stream) {
        HLVError::Holder const holder(makeChain(depth));
        HLVError::Holder const copy(holder);
        stream << copy;
    });
    add(chainName, depth, "limit", allocateChains);
    addChain("floor", [](std::ostream& stream) {
        allocateChains();
        insertChain(stream);
    });
    HLVError::Holder const three(makeChain(depth));
    std::ostringstream printed;
    printed << three;
    auto const isSame = [whole = printed.str()](std::string const& all) { return all == whole; };
    addPrint("chain: print", depth, "ours", holdsChain,
             [three](std::ostream& stream) { stream << three; });
    addPrint("chain: print", depth, "floor", isSame, insertChain);
    addPrint("chain: print", depth, "limit", isSame,
             [whole = printed.str()](std::ostream& stream) { stream << whole; });

    std::string const message = "Error -1004996";
    HLVError const error(-1004996);
    addSame("message", 1, "ours", message, [error] { return error.messageA(); });
    addSame("message", 1, "limit", message, [] {
        char digits[32];
        int const length = std::snprintf(digits, sizeof digits, "Error %d", -1004996);
        return std::string(digits, static_cast<std::size_t>(length));
    });
    addSame("message", 1, "string stream", message, [] {
        std::ostringstream stream;
        stream << "Error " << -1004996;
        return stream.str();
    });
}

// What grows with the length of a chain.
void addLongChain(int n) {
    auto const size = static_cast<std::size_t>(n);
    HLVError::Holder const chain(makeChain(n));
    add("long chain: make, destroy", size, "ours",
        [n] { HLVError::Holder const holder(makeChain(n)); });
    add("long chain: copy, destroy", size, "ours", [chain] { HLVError::Holder const copy(chain); });
    addPrint(
        "long chain: print", size, "ours", [](std::string const& all) { return !all.empty(); },
        [chain](std::ostream& stream) { stream << chain; });
    std::forward_list<int> codes;
    for (int i = 0; i < n; ++i) {
        codes.push_front(-i - 1);
    }
    addBoth( // the oldest error is -1
        "long chain: getByCode", size, -1,
        [chain] { return chain.getError()->getByCode(-1)->getCode(); },
        [codes] { return *std::find(codes.begin(), codes.end(), -1); });
}

} // namespace

int main(int argc, char** argv) {
    addChains();
    addContenders();
    for (int const n : {16, 256, 4096, 65536}) {
        addLongChain(n);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
