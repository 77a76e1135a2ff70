#include <Halvora/text/Convert.h>
#include <Halvora/types/ParseBinary16.h>

#include "Bytes.h"

using namespace Halvora;

// What is taken as one of the forms is that form of the value, but for the case of the digits.
void parse(std::string text) {
    Binary16 value;
    if (!parseBinary16(text, value)) {
        return;
    }
    bool const isGrouped = text.size() == Binary16::GROUPED_LENGTH;
    std::ostringstream written;
    isGrouped ? written << Convert::toAString(value) : written << value;
    std::transform(text.begin() + 2, text.end(), text.begin() + 2, isGrouped ? tolower : toupper);
    assert(isGrouped ? text.substr(2) == written.str().substr(2) : text == written.str());
}

// Against one formatted extraction a digit.
void run(Bytes& bytes) {
    auto const flags = bytes.ConsumeBool() ? std::ios_base::skipws : std::ios_base::dec;
    std::string const text = bytes.ConsumeRemainingBytesAsString();
    parse(text);
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
