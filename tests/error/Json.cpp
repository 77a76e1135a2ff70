#include "Shown.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace Halvora::test {
namespace {

template <typename T>
using Limits = std::numeric_limits<T>;

// Whatever the stream is set to. The text of a lone parameter is cut out of its error.
std::string json(Holder const& holder) {
    std::ostringstream stream;
    stream.flags(ios::hex | ios::showbase | ios::showpos | ios::boolalpha);
    stream.width(99);
    EXPECT_EQ(&stream, &writeJson(stream, *holder.getError()));
    return stream.str();
}
template <typename Value>
std::string param(Value const& value) {
    std::string const line = json(HLVError::create(-1, value));
    EXPECT_EQ(R"({"chain":[{"code":-1,"params":[{"type":)", line.substr(0, 39));
    EXPECT_EQ("}]}]}\n", line.substr(line.size() - 6));
    return line.substr(39, line.size() - 45);
}

TEST(Json, writesNumbersWithAllTheirBits) {
    EXPECT_EQ(R"("Bool","value":true)", param(true));
    EXPECT_EQ(R"("Bool","value":false)", param(false));
    EXPECT_EQ(R"("Byte","value":255)", param(Byte(255)));
    EXPECT_EQ(R"("Int16","value":-32768)", param(short(-32768)));
    EXPECT_EQ(R"("UInt16","value":65535)", param(Unit(65535)));
    EXPECT_EQ(R"("Int32","value":-7)", param(-7));
    EXPECT_EQ(R"("UInt32","value":4294967295)", param(4294967295u));
    EXPECT_EQ(R"("Int64","value":-9223372036854775808)", param(Limits<long long>::min()));
    EXPECT_EQ(R"("UInt64","value":18446744073709551615)", param(Limits<unsigned long long>::max()));
    EXPECT_EQ(R"("Float","value":0.1)", param(0.1f));
    EXPECT_EQ(R"("Double","value":-0.0)", param(-0.0));
    EXPECT_EQ(R"("Double","value":1e+300)", param(1e300));
    EXPECT_EQ(R"("Double","value":"NaN")", param(Limits<double>::quiet_NaN()));
    EXPECT_EQ(R"("Float","value":"Infinity")", param(Limits<float>::infinity()));
    EXPECT_EQ(R"("Double","value":"-Infinity")", param(-Limits<double>::infinity()));
}

TEST(Json, writesTextsAsUtf8AndIdentifiersInBothForms) {
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    std::string const forms = R"("0x0102030405060708DEF09ABC12345678",)"
                              R"("grouped":"12345678-9abc-def0-0807-060504030201")";
    EXPECT_EQ(R"("Binary16","value":)" + forms, param(id));
    EXPECT_EQ(R"("ResString","value":"t","id":)" + forms, param(ResString(id, std::wstring(L"t"))));
    EXPECT_EQ("\"String\",\"value\":\"\xC3\xA9\\\"\\\\/\\u0000\\u001f ~\\u007f\\u009f\xC2\xA0\"",
              param(std::wstring(L"\u00E9\"\\/\0\x1F ~\x7F\x9F\xA0", 11)));
    EXPECT_EQ(70019u, param(std::wstring(70000, L'a')).size());
    EXPECT_EQ("\"String\",\"value\":\"\xF0\x9F\x98\x80\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD-"
              "\xEF\xBF\xBD\"",
              param(L"\xD83D\xDE00\U0001F600\xDC00\xD800-\xD83D"));
}

TEST(Json, writesAChainInOneLineAndAParameterAtItsPlace) {
    Holder holder(new HLVError(0, nullptr, nullptr, new Param(1)));
    holder.prepend(2147483647);
    EXPECT_EQ(R"({"chain":[{"code":2147483647,"params":[]},)"
              R"({"code":0,"params":[null,null,{"type":"Int32","value":1}]}]})"
              "\n",
              json(holder));
}

// Bits at random in every type that may be hard to read.
TEST(Json, isReadByAnotherProgram) {
    if (std::system("python3 -c ''") != 0) {
        GTEST_SKIP() << "python3 is missing: apt install python3";
    }
    FILE* const reader = popen(R"(python3 -c '
import json, struct, sys
lines = sys.stdin.buffer.read().decode().split("\n")
assert len(lines) == 501 and lines.pop() == ""
for number, line in enumerate(lines):
    new, old = json.loads(line, parse_constant=sys.exit)["chain"] # nothing bare
    text, bits, real = [param["value"] for param in old["params"]]
    text.encode()
    assert old["code"] == number and new["params"][1]["value"] == "NaN"
    assert real in (0, struct.unpack("d", struct.pack("Q", bits))[0])')",
                               "w");
    ASSERT_NE(nullptr, reader);
    std::uint64_t bits = 1;
    for (int line = 0; line < 500; ++line) {
        std::wstring units;
        double number = 0;
        for (int i = 0; i < 40; ++i) {
            bits = bits * 0x5851F42D4C957F2D + 0x14057B7EF767814F;
            units += static_cast<wchar_t>((bits >> 32) >> bits % 32 | (i % 4 == 0 ? 0xD800 : 0));
            std::memcpy(&number, &bits, sizeof number);
        }
        Holder holder = HLVError::create(line, units, bits, std::isfinite(number) ? number : 0.);
        holder.prepend(-line, ResString(units), Limits<double>::quiet_NaN());
        EXPECT_GE(std::fputs(json(holder).c_str(), reader), 0);
    }
    EXPECT_EQ(0, pclose(reader));
}

} // namespace
} // namespace Halvora::test
