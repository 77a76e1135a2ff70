// Identifiers as constants, as text, and as the bytes of UUIDs and GUIDs.

#include <Halvora/text/Convert.h>
#include <Halvora/types/ParseBinary16.h>

#include <cstdint>
#include <cstdio>
#include <iostream>
#include <string>

using namespace Halvora;
using namespace Halvora::literals;

namespace {

void printBytes(char const* name, unsigned char const* bytes) {
    std::printf("%-6s", name);
    for (int i = 0; i < 16; ++i) {
        std::printf(" %02x", bytes[i]);
    }
    std::printf("\n");
}

void constants() {
    constexpr Binary16 pump = "f81d4fae-7dec-11d0-a765-00a0c91e6bf6"_id;
    constexpr Binary16 valve = "0xF66B1EC9A00065A711D07DECF81D4FAF"_id;
    static_assert(pump != valve &&
                  pump == Binary16(0xF81D4FAE, 0x7DEC, 0x11D0, 0xF66B1EC9A00065A7));
    std::cout << pump << '\n' << Convert::toAString(pump) << '\n';
}

void bytes() {
    // As RFC 9562 sends a UUID: each group with its most significant byte first.
    unsigned char const sent[16] = {0xF8, 0x1D, 0x4F, 0xAE, 0x7D, 0xEC, 0x11, 0xD0,
                                    0xA7, 0x65, 0x00, 0xA0, 0xC9, 0x1E, 0x6B, 0xF6};
    Binary16 const id = Binary16::fromUuidBytes(sent);
    unsigned char uuid[16];
    id.toUuidBytes(uuid);
    printBytes("UUID", uuid);
    printBytes("here", reinterpret_cast<unsigned char const*>(&id));

    // As a GUID lies in the memory of a little-endian machine: three numbers and eight bytes.
    struct {
        std::uint32_t data1;
        std::uint16_t data2, data3;
        unsigned char data4[8];
    } const guid = {
        0xF81D4FAE, 0x7DEC, 0x11D0, {0xA7, 0x65, 0x00, 0xA0, 0xC9, 0x1E, 0x6B, 0xF6}
    };
    Binary16 const same(&guid, sizeof guid);
    std::printf("%s\n", same == id ? "the GUID is the same" : "the GUID is another");
}

void text() {
    Binary16 id;
    ParseResult const result = parseBinary16("f81d4fae-7dec-11d0-a765-00a0c91e6bf", id);
    if (result.status == PARSE_TOO_SHORT) {
        std::printf("ends after %u characters\n", static_cast<unsigned int>(result.position));
    }

    // Into memory of one's own, without an allocation.
    char line[64] = "id=";
    std::size_t length = 3;
    length +=
        "f81d4fae-7dec-11d0-a765-00a0c91e6bf6"_id.toGrouped(line + length, sizeof line - length);
    std::printf("%.*s\n", static_cast<int>(length), line);
}

} // namespace

int main() {
    constants();
    std::cout.flush();
    bytes();
    text();
}
