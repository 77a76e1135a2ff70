#include <Halvora/text/Convert.h>

#include "Bytes.h"

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
    slow.ignore(2);
    char high = 0, low = 0;
    for (unsigned char i = 16; i > 0 && slow >> high >> low;) {
        expected.set(--i, Convert::toByte(high, low));
    }
    assert(value == expected && stream.rdstate() == slow.rdstate());
    assert(stream.rdbuf()->in_avail() == slow.rdbuf()->in_avail());
}
