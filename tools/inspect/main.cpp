#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <iostream>

#include <Halvora/error/HLVErrorException.h>
#include <Halvora/version/KrVersion.h>

#include "../../examples/support/Endings.h"
#include "Errors.h"
#include "HexDump.h"
#include "Inspect.h"

using namespace Halvora;

namespace {

constexpr char help[] =
    R"(usage: halv-inspect --kind packed|slot|raw|raw-slot|id [option ...] [file|-]

Prints what the library laid into a file, a memory dump or, without a file, standard input:

  packed, slot   resource strings, the latter in slots of fixed capacity
  raw, raw-slot  raw strings, likewise
  id             16-byte values

  --offset N     where the first record begins, in bytes (0; in a dump its first address)
  --stride N     from one record's start to the next one's, in bytes (the record's size)
  --capacity N   what a slot has room for, in code units, up to 65535 (slot: 128, raw-slot: 512)
  --count N      how many records there must be (all up to the end)
  --hex          the input is a hexadecimal dump: of xxd, or of od -A x -t x1
  --json         one JSON object a line, also of errors
  -h, --help     this text
  --version      the library's version

Numbers are decimal, or hexadecimal behind 0x. With a stride, a damaged record is reported and the
next one read; without, nothing tells where the next one begins.

Exit status: 0; 1 when the input is truncated, impossible or unreadable, the output cannot be
written, or memory is short; 2 for wrong usage.
)";

std::unique_ptr<Source> sourceOf(Options const& options) {
    auto file = std::make_unique<File>(options.path);
    return options.isHexDump ? std::make_unique<HexDump>(std::move(file))
                             : std::unique_ptr<Source>(std::move(file));
}

int run(Options const& options) {
    try {
        Input input(sourceOf(options));
        bool const areWhole = inspect(options, input, std::cout, std::cerr);
        if (!std::cout.flush()) {
            report(options, *HLVError::create(unwritable, std::strerror(errno)), std::cerr);
            std::_Exit(1);
        }
        return areWhole ? 0 : 1;
    } catch (HLVErrorException const& e) {
        reportFile(options, *e.error(), std::cerr);
        return 1;
    }
}

} // namespace

int main(int argc, char** argv) {
    Endings const endings(1);
    Options const options = parseOptions(argc, argv);
    if (options.isJson) {
        Endings::say(R"({"chain":[{"code":-9,"params":[]}]})"
                     "\n",
                     R"({"chain":[{"code":-6,"params":[]}]})"
                     "\n");
    }
    if (options.isHelp || options.isVersion) {
        options.isHelp ? std::cout << help
                       : std::cout << "halv-inspect (HalvTypes) " << HalvTypes::ms_Version << '\n';
        return 0;
    }
    if (HLVError const* const wrong = options.wrong.getError()) {
        report(options, *wrong, std::cerr);
        std::cerr << (options.isJson ? "" : "Try 'halv-inspect --help'.\n");
        return 2;
    }
    return run(options);
}
