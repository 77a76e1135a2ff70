#include "Options.h"

#include <charconv>

#include <getopt.h>

#include "Errors.h"

using namespace Halvora;

namespace {

// Above all characters, so that they are no short options.
enum Letter : int { kindOption = 256, offset, stride, capacity, count, json, hex, version };

option const longOptions[] = {
    {"kind",     required_argument, nullptr, kindOption},
    {"offset",   required_argument, nullptr, offset    },
    {"stride",   required_argument, nullptr, stride    },
    {"capacity", required_argument, nullptr, capacity  },
    {"count",    required_argument, nullptr, count     },
    {"json",     no_argument,       nullptr, json      },
    {"hex",      no_argument,       nullptr, hex       },
    {"version",  no_argument,       nullptr, version   },
    {"help",     no_argument,       nullptr, 'h'       },
    {nullptr,    0,                 nullptr, 0         },
};

template <typename... Values>
void complain(Options& options, int code, Values const&... values) {
    if (options.wrong.getError() == nullptr) {
        options.wrong = HLVError::Holder(HLVError::create(code, values...));
    }
}

void parseNumber(Options& options, char const* name, std::uint64_t least, std::uint64_t most,
                 std::optional<std::uint64_t>& number) {
    std::string_view const text = optarg;
    bool const isHex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    char const* const end = text.data() + text.size();
    std::uint64_t value = 0;
    auto const result = std::from_chars(text.data() + (isHex ? 2 : 0), end, value, isHex ? 16 : 10);
    if (result.ec != std::errc() || result.ptr != end || value < least || value > most) {
        complain(options, badNumber, name, text,
                 std::to_string(least) + " to " + std::to_string(most));
    }
    number = value;
}

void takeKind(Options& options) {
    options.kind = findKind(optarg);
    if (options.kind == nullptr) {
        complain(options, badKind, optarg);
    }
}

void takeOption(Options& options, int letter, char const* argument) {
    constexpr std::uint64_t most = INT64_MAX; // as offsets in files; the sum of two still fits
    switch (letter) {
    case kindOption: return takeKind(options);
    case offset: return parseNumber(options, "--offset", 0, most, options.offset);
    case stride: return parseNumber(options, "--stride", 1, most, options.stride);
    case capacity: return parseNumber(options, "--capacity", 0, UINT16_MAX, options.capacity);
    case count: return parseNumber(options, "--count", 0, most, options.count);
    case json: options.isJson = true; return;
    case hex: options.isHexDump = true; return;
    case version: options.isVersion = true; return;
    case 'h': options.isHelp = true; return;
    case ':': return complain(options, missingValue, argument);
    default: return complain(options, unknownOption, argument);
    }
}

} // namespace

Options parseOptions(int argc, char** argv) {
    Options options;
    opterr = 0; // complaints come from here
    optind = 0;
    for (int letter; (letter = getopt_long(argc, argv, ":h", longOptions, nullptr)) != -1;) {
        takeOption(options, letter, argv[optind - 1]);
    }
    if (options.kind == nullptr) {
        complain(options, badKind);
    } else if (options.capacity && !options.kind->isSlot) {
        complain(options, noSlot, options.kind->name);
    }
    if (optind < argc) {
        options.path = argv[optind];
    }
    if (optind + 1 < argc) {
        complain(options, secondFile, argv[optind + 1]);
    }
    return options;
}
