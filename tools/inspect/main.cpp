#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <iostream>
#include <optional>

#include <getopt.h>

#include <Halvora/error/HLVErrorException.h>
#include <Halvora/error/Json.h>
#include <Halvora/text/Utf8.h>

#include "../../examples/support/Endings.h"
#include "Errors.h"
#include "Input.h"
#include "Output.h"
#include "Record.h"

using namespace Halvora;

namespace {

constexpr char help[] =
    R"(usage: halv-inspect --kind packed|slot|raw|raw-slot|id [option ...] [file|-]

Prints what the library laid into a file, a memory dump or, without a file, standard input:

  packed, slot   resource strings, the latter in slots of fixed capacity
  raw, raw-slot  raw strings, likewise
  id             16-byte values

  --offset N     where the first record begins, in bytes (0)
  --stride N     from one record's start to the next one's, in bytes (the record's size)
  --capacity N   what a slot has room for, in code units, up to 65535 (slot: 128, raw-slot: 512)
  --count N      how many records there must be (all up to the end)
    --json         one JSON object a line, also of errors

Numbers are decimal, or hexadecimal behind 0x. With a stride, a damaged record is reported and the
next one read; without, nothing tells where the next one begins.

Exit status: 0; 1 when the input is truncated, impossible or unreadable, the output cannot be
written, or memory is short; 2 for wrong usage.
)";

struct Options {
    bool isJson = false;
    Kind const* kind = nullptr;
    std::optional<std::uint64_t> offset;
    std::optional<std::uint64_t> stride;
    std::optional<std::uint64_t> capacity;
    std::optional<std::uint64_t> count;
    std::string path;
};

option const longOptions[] = {
    {"kind",     required_argument, nullptr, 'k'},
    {"offset",   required_argument, nullptr, 'o'},
    {"stride",   required_argument, nullptr, 's'},
    {"capacity", required_argument, nullptr, 'c'},
    {"count",    required_argument, nullptr, 'n'},
    {"json",     no_argument,       nullptr, 'j'},
    {"help",     no_argument,       nullptr, 'h'},
    {nullptr,    0,                 nullptr, 0  },
};

bool complain(std::string const& what) {
    std::cerr << "halv-inspect: " << what << '\n';
    return false;
}

bool parseNumber(std::uint64_t least, std::uint64_t most, std::optional<std::uint64_t>& number) {
    std::string_view const text = optarg;
    bool const isHex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    char const* const end = text.data() + text.size();
    std::uint64_t value = 0;
    auto const result = std::from_chars(text.data() + (isHex ? 2 : 0), end, value, isHex ? 16 : 10);
    if (result.ec != std::errc() || result.ptr != end || value < least || value > most) {
        return complain("\"" + std::string(text) + "\" is no number from " + std::to_string(least) +
                        " to " + std::to_string(most));
    }
    number = value;
    return true;
}

bool parseOption(int letter, Options& options) {
    constexpr std::uint64_t most = INT64_MAX; // as offsets in files; the sum of two still fits
    switch (letter) {
    case 'k': options.kind = findKind(optarg); return true;
    case 'o': return parseNumber(0, most, options.offset);
    case 's': return parseNumber(1, most, options.stride);
    case 'c': return parseNumber(0, UINT16_MAX, options.capacity);
    case 'n': return parseNumber(0, most, options.count);
    case 'j': return options.isJson = true;
    case 'h': std::exit(std::cout << help << std::flush ? 0 : 1);
    default: return false; // getopt_long has complained
    }
}

// False for wrong usage; standard error then says why.
bool parseOptions(int argc, char** argv, Options& options) {
    for (int letter; (letter = getopt_long(argc, argv, "", longOptions, nullptr)) != -1;) {
        if (!parseOption(letter, options)) {
            return false;
        }
    }
    options.path = optind < argc ? argv[optind] : "-";
    return (options.kind != nullptr || complain("no --kind, or an unknown one")) &&
           (options.kind->isSlot || !options.capacity ||
            complain("only slots have a --capacity")) &&
           (optind + 1 >= argc || complain("more than one file"));
}

// The error, wrapped in the file where it is.
HLVError::Holder inFile(Options const& options, HLVError const& error) {
    HLVError::Holder holder = HLVError::copy(&error);
    std::wstring path = L"standard input";
    if (options.path != "-") {
        Utf8::toWString(path, options.path);
    }
    holder.prepend(badInput, path);
    return holder;
}

void report(Options const& options, HLVError::Holder const& holder) {
    static CatalogueTranslator const translator(catalogue<reports>, "en");
    options.isJson ? writeJson(std::cerr, *holder.getError())
                   : describe(std::cerr, *holder.getError(), translator);
}

// The record's size in bytes; 0 when it cannot be read, and standard error then says why.
std::size_t printRecord(Options const& options, Input& input, std::uint64_t offset) {
    try {
        auto const capacity = options.capacity.value_or(options.kind->maxLength);
        auto const record =
            readRecord(input, *options.kind, static_cast<std::size_t>(capacity), offset);
        (options.isJson ? printJson : printText)(std::cout, *options.kind, record);
        return record.size;
    } catch (HLVErrorException const& e) {
        report(options, inFile(options, *e.error()));
        return 0;
    }
}

// Whether all records could be read. An empty input has none; nothing behind an offset is an error.
bool printRecords(Options const& options) {
    Input input(options.path);
    std::uint64_t offset = options.offset.value_or(0);
    bool areWhole = true;
    for (std::uint64_t i = 0; i < options.count.value_or(UINT64_MAX) && std::cout; ++i) {
        bool const isEnd = input.at(offset, 1).empty();
        if (isEnd && !options.count && (i != 0 || offset == 0)) {
            break;
        }
        std::size_t const size = printRecord(options, input, offset);
        areWhole = areWhole && size != 0;
        if (size == 0 && (isEnd || !options.stride)) {
            break;
        }
        offset += options.stride.value_or(size);
    }
    return areWhole;
}

} // namespace

int main(int argc, char** argv) {
    Endings const endings(1);
    Options options;
    if (!parseOptions(argc, argv, options)) {
        std::cerr << "Try 'halv-inspect --help'.\n";
        return 2;
    }
    try {
        bool const areWhole = printRecords(options);
        if (!std::cout.flush()) {
            report(options, HLVError::create(unwritable, std::strerror(errno)));
            std::_Exit(1);
        }
        return areWhole ? 0 : 1;
    } catch (HLVErrorException const& e) {
        report(options, inFile(options, *e.error()));
    }
    return 1;
}
