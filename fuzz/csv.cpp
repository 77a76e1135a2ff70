#include <tests/support/CsvReference.h>

#include "Bytes.h"

using namespace Halvora::test;

// As a text and as a stream that gives a few bytes at a time, against the rules byte by byte.
void run(Bytes& bytes) {
    char const separator = bytes.ConsumeBool() ? ',' : bytes.ConsumeIntegral<char>();
    std::size_t const limit =
        bytes.ConsumeBool() ? std::string::npos : bytes.ConsumeIntegralInRange(0u, 100u);
    std::size_t const length = bytes.ConsumeIntegralInRange(0u, 100u);
    std::string const text = bytes.ConsumeRemainingBytesAsString();
    std::string const expected = slowCsv(text, separator, limit);
    assert(expected == eventsOf(text, separator, limit));
    assert(expected == eventsOf(text, separator, limit, length));
}
