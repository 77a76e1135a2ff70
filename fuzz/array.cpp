#include <iostream>

#include <tests/support/ArrayProgram.h>

#include "Bytes.h"

using namespace Halvora;

// Three arrays that work with values of two types.
void run(Bytes& bytes) {
    auto const pick = [&](unsigned int below) {
        return bytes.ConsumeIntegralInRange<unsigned int>(0, below - 1);
    };
    unsigned int const first = pick(DT_STRINGRES) + 1, second = pick(DT_STRINGRES) + 1;
    test::ArrayProgram program{
        {first,                    second},
        pick, [](long) {                        }
    };
    for (int left = 32; left > 0 && bytes.remaining_bytes() != 0; --left) {
        assert(program.step() || !(std::cerr << program.report()));
    }
}
