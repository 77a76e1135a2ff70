#include <tests/support/CsvReference.h>

#include "Bytes.h"

using namespace Halvora::test;

// A stream that gives a few bytes at a time has to give what the text gives, and the lines add up.
void run(Bytes& bytes) {
    char const separator = bytes.ConsumeBool() ? ',' : bytes.ConsumeIntegral<char>();
    std::size_t const limit =
        bytes.ConsumeBool() ? std::string::npos : bytes.ConsumeIntegralInRange(0u, 100u);
    std::size_t const length = bytes.ConsumeIntegralInRange(0u, 100u);
    std::string const text = bytes.ConsumeRemainingBytesAsString();
    std::string const events = eventsOf(text, separator, limit);
    assert(events == eventsOf(text, separator, limit, length));
}
