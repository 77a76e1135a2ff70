#pragma once

#include <Halvora/text/Convert.h>

#include <istream>

namespace Halvora::test {

// Binary16::read by one formatted extraction a digit.
inline void readSlowly(std::istream& stream, Binary16& value) {
    value = Binary16();
    char high = 0, low = 0;
    stream.ignore(2);
    for (unsigned char i = 16; i > 0; --i) {
        if (stream >> high >> low) {
            value.set(i - 1, Convert::toByte(high, low));
        }
    }
}

} // namespace Halvora::test
