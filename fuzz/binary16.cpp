#include "Bytes.h"

#include <tests/support/ReadReference.h>

using namespace Halvora;

// Against one formatted extraction a digit.
void run(Bytes& bytes) {
    auto const flags = bytes.ConsumeBool() ? std::ios_base::skipws : std::ios_base::dec;
    std::string const text = bytes.ConsumeRemainingBytesAsString();
    std::istringstream stream(text), slow(text);
    stream.flags(flags);
    slow.flags(flags);
    Binary16 value = Binary16::MAX, expected;
    value.read(stream);
    test::readSlowly(slow, expected);
    assert(value == expected && stream.rdstate() == slow.rdstate());
    assert(stream.rdbuf()->in_avail() == slow.rdbuf()->in_avail());
}
