#include "Shown.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>

namespace Halvora::test {
namespace {

template <typename T>
using Limits = std::numeric_limits<T>;

std::string json(HLVError const* error) {
    std::ostringstream stream;
    stream.flags(ios::hex | ios::showbase | ios::showpos | ios::boolalpha); // change nothing
    stream.width(9);
    EXPECT_EQ(&stream, &writeJson(stream, *error));
    return stream.str();
}

// What stands between the type's name and the end of the parameter.
std::string paramOf(Param const& param) {
    std::string const line = json(HLVError::create(-1, param).get());
    std::string const head = R"({"chain":[{"code":-1,"params":[{"type":)", tail = "}]}]}\n";
    EXPECT_EQ(head, line.substr(0, head.size()));
    EXPECT_EQ(tail, line.substr(line.size() - tail.size()));
    return line.substr(head.size(), line.size() - head.size() - tail.size());
}

TEST(Json, writesNumbersWithAllTheirBits) {
    struct {
        Param param;
        char const* json;
    } const rows[] = {
        {Param(true),                              R"("Bool","value":true)"                  },
        {Param(Byte(255)),                         R"("Byte","value":255)"                   },
        {Param(short(-32768)),                     R"("Int16","value":-32768)"               },
        {Param(Unit(65535)),                       R"("UInt16","value":65535)"               },
        {Param(-7),                                R"("Int32","value":-7)"                   },
        {Param(4294967295u),                       R"("UInt32","value":4294967295)"          },
        {Param(Limits<long long>::min()),          R"("Int64","value":-9223372036854775808)" },
        {Param(Limits<unsigned long long>::max()), R"("UInt64","value":18446744073709551615)"},
        {Param(0.1f),                              R"("Float","value":0.1)"                  },
        {Param(-0.0),                              R"("Double","value":-0.0)"                },
        {Param(3.0),                               R"("Double","value":3.0)"                 },
        {Param(0.1),                               R"("Double","value":0.1)"                 },
        {Param(1e300),                             R"("Double","value":1e+300)"              },
        {Param(Limits<double>::denorm_min()),      R"("Double","value":5e-324)"              },
        {Param(Limits<double>::quiet_NaN()),       R"("Double","value":"NaN")"               },
        {Param(Limits<float>::infinity()),         R"("Float","value":"Infinity")"           },
        {Param(-Limits<double>::infinity()),       R"("Double","value":"-Infinity")"         },
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.json, paramOf(row.param));
    }
}

TEST(Json, writesTextsAsUtf8AndIdentifiersInBothForms) {
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    std::string const forms = R"("0x0102030405060708DEF09ABC12345678",)"
                              R"("grouped":"12345678-9abc-def0-0807-060504030201")";
    std::string const string = R"("String","value":)";
    EXPECT_EQ(string + "\"\xC3\xA9\\\"\\\\/\"", paramOf(Param("\xE9\"\\/")));
    EXPECT_EQ(string + R"("\u0000\u000a\u001b\u007f\u009f")",
              paramOf(Param(std::wstring(L"\0\n\x1B\x7F\x9F", 5))));
    EXPECT_EQ(string + "\"\xF0\x9F\x98\x80\xF0\x9F\x98\x80\"",
              paramOf(Param(L"\xD83D\xDE00\U0001F600")));
    EXPECT_EQ(string + "\"\xEF\xBF\xBD\xEF\xBF\xBD-\xEF\xBF\xBD\"",
              paramOf(Param(L"\xDC00\xD800-\xD83D")));
    EXPECT_EQ(R"("Binary16","value":)" + forms, paramOf(Param(id)));
    EXPECT_EQ(R"("ResString","value":"t","id":)" + forms,
              paramOf(Param(ResString(id, std::wstring(L"t")))));
}

TEST(Json, writesAChainInOneLineAndAParameterAtItsPlace) {
    Holder holder(new HLVError(0, nullptr, nullptr, new Param(1)));
    holder.prependError(-2, nullptr, new Param(2));
    holder.prepend(2147483647);
    EXPECT_EQ(R"({"chain":[{"code":2147483647,"params":[]},)"
              R"({"code":-2,"params":[null,{"type":"Int32","value":2}]},)"
              R"({"code":0,"params":[null,null,{"type":"Int32","value":1}]}]})"
              "\n",
              json(holder.getError()));
}

template <typename T>
void readsBack(T value, T (*read)(char const*, char**)) {
    std::string const json = paramOf(Param(value));
    T const back = read(json.c_str() + json.rfind(':') + 1, nullptr);
    EXPECT_EQ(0, std::memcmp(&value, &back, sizeof value)) << json;
}

TEST(Json, floatsReadBackWithTheSameBits) {
    std::uint64_t bits = 1;
    for (int i = 0; i < 2000; ++i) {
        bits = bits * 0x5851F42D4C957F2D + 0x14057B7EF767814F;
        double number = 0;
        float single = 0;
        std::memcpy(&number, &bits, sizeof number);
        std::memcpy(&single, reinterpret_cast<char const*>(&bits) + 4, sizeof single);
        std::isfinite(number) ? readsBack(number, std::strtod) : void();
        std::isfinite(single) ? readsBack(single, std::strtof) : void();
    }
}

// Wide units at random, surrogates and what is no character among them, in every type of text.
TEST(Json, isReadByOtherPrograms) {
    bool const hasReaders = std::system("python3 -c '' && echo 0 | jq . > /dev/null") == 0;
    if (!hasReaders) {
        GTEST_SKIP() << "python3 or jq is missing: apt install python3 jq";
    }
    std::string const name = testing::TempDir() + "halvtypes-errors.json";
    std::ofstream file(name, std::ios::binary);
    unsigned random = 1;
    for (int line = 0; line < 500; ++line) {
        std::wstring units;
        for (int i = 0; i < 40; ++i) {
            random = random * 1664525 + 1013904223;
            unsigned const ranges[] = {0x100, 0xD800, 0xE000, 0x120000, 0xFFFFFFFF};
            units += static_cast<wchar_t>((random >> 3) % ranges[random >> 29 & 3] +
                                          (random >> 31 ? 0xD800 : 0));
        }
        Holder holder = HLVError::create(line, units, Limits<double>::quiet_NaN());
        holder.prepend(-line, ResString(units), Limits<long long>::min() + line, 0.1f);
        writeJson(file, *holder.getError());
    }
    file.close();
    EXPECT_EQ(0, std::system(("jq -e '.chain|length==2' " + name + " > /dev/null").c_str()));
    std::string const script =
        "import json,sys\n"
        "for n,l in enumerate(open(sys.argv[1],encoding=\"utf-8\",newline=\"\\n\")):\n"
        "    new,old=json.loads(l)[\"chain\"]\n"
        "    assert new[\"params\"][1][\"value\"]==n-2**63 and old[\"code\"]==n\n"
        "    old[\"params\"][0][\"value\"].encode()\n"
        "assert n==499";
    EXPECT_EQ(0, std::system(("python3 -c '" + script + "' " + name).c_str()));
    std::remove(name.c_str());
}

TEST(Json, failedAllocationsLeakNothing) {
    Holder const error = HLVError::create(-30, "M\xFCnchen", ResString(L"x"), Binary16());
    auto const act = [&](int) {
        std::ostringstream stream;
        stream.exceptions(ios::badbit);
        writeJson(stream, *error.getError());
    };
    EXPECT_LE(5, failEachAllocation([] { return 0; }, act, [](int) {}));
}

} // namespace
} // namespace Halvora::test
