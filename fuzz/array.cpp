#include <tests/support/ArrayProgram.h>

#include <iostream>

#include "Bytes.h"

using namespace Halvora;

// Three arrays that work with values of two types.
void run(Bytes& bytes) {
    auto const pick = [&](unsigned int below) {
        return bytes.ConsumeIntegralInRange<unsigned int>(0, below - 1);
    };
    auto const pickType = [&] { return static_cast<eDataType>(pick(DT_STRINGRES) + 1); };
    eDataType const first = pickType(), second = pickType();
    test::ArrayProgram program(first, second, pick);
    for (int left = 32; left > 0 && bytes.remaining_bytes() != 0; --left) {
        if (!program.step()) {
            std::cerr << program.report();
            std::abort();
        }
    }
}
