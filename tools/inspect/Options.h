#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <Halvora/error/Holder.h>

#include "Record.h"

// What the command line asks for.
struct Options {
    bool isHelp = false;
    bool isVersion = false;
    bool isJson = false;
    bool isHexDump = false;
    Kind const* kind = nullptr;
    std::optional<std::uint64_t> offset;
    std::optional<std::uint64_t> stride;
    std::optional<std::uint64_t> capacity;
    std::optional<std::uint64_t> count;
    std::string path = "-";          // of the file; "-" is standard input
    Halvora::HLVError::Holder wrong; // the first thing that is, if any
};

Options parseOptions(int argc, char** argv);
