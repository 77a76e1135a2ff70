#include <Halvora/Abi.h>

#if defined(__ELF__)
// Text that GDB runs when it loads the library, to find the printers. It lies beside the debug
// information and goes with it: a stripped library is not larger.
asm(R"(
    .pushsection .debug_gdb_scripts, "MS", %progbits, 1
    .byte 4
    .ascii "gdb.inlined.HalvTypes\n"
    .incbin "auto-load.py"
    .byte 0
    .popsection
)");
#endif

namespace Halvora::abi {

char const HALVTYPES_ABI = 3; // the major version, for whoever looks

} // namespace Halvora::abi
