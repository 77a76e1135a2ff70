#include <Halvora/text/Convert.h>
#include <Halvora/types/ParseBinary16.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <random>
#include <set>

using namespace Halvora;
using namespace Halvora::literals;

namespace {

using Byte = unsigned char;

// In a buffer with just the room for it; one of one character less is not touched.
template <typename Char, std::size_t Length>
void expectInBuffer(std::string const& expected, Binary16 const& value,
                    std::size_t (Binary16::*put)(Char*, std::size_t) const noexcept) {
    Char text[Length + 1] = {};
    EXPECT_EQ(0u, (value.*put)(text, Length - 1) + (value.*put)(nullptr, Length));
    EXPECT_EQ(Char(), text[0]);
    EXPECT_EQ(Length, (value.*put)(text, Length));
    EXPECT_EQ(expected, std::string(text, text + Length));
}

TEST(Binary16, showsItsBytesInTwoForms) {
    struct {
        Binary16 value;
        std::string hexadecimal, grouped;
    } const rows[] = {
        {-1,                                   "0x000000000000000000000000FFFFFFFF",   "ffffffff-0000-0000-0000-000000000000"           },
        {-2ll,                                 "0x0000000000000000FFFFFFFFFFFFFFFE",   "fffffffe-ffff-ffff-0000-000000000000"           },
        {1.0f,                                 "0x0000000000000000000000003F800000",   "3f800000-0000-0000-0000-000000000000"           },
        {Binary16(0x12345678,                  0x9ABC,                                 0xDEF0,                                            0x0102030405060708),
         "0x0102030405060708DEF09ABC12345678", "12345678-9abc-def0-0807-060504030201"},
        {Binary16("abc", 3), "0x00000000000000000000000000636261",
         "00636261-0000-0000-0000-000000000000"},
        {Binary16(nullptr,                                  10),                                    "0x00000000000000000000000000000000",
         "00000000-0000-0000-0000-000000000000"},
        {Binary16::fromUuidBytes("ABCDEFGHIJKLMNOP"),                     "0x504F4E4D4C4B4A494748454641424344",
         "41424344-4546-4748-494a-4b4c4d4e4f50"},
        {"6ba7b810-9dad-11d1-80b4-00c04fd430c8"_id,                                    "0xC830D44FC000B48011D19DAD6BA7B810",
         "6ba7b810-9dad-11d1-80b4-00c04fd430c8"                        },
    };
    for (auto const& row : rows) {
        std::ostringstream stream;
        std::wostringstream wide;
        row.value.write(stream);
        stream << std::setw(36) << std::left << row.value << '|';
        wide << row.value;
        EXPECT_EQ(row.hexadecimal + row.hexadecimal + "  |", stream.str());
        EXPECT_EQ(Convert::toWString(row.hexadecimal), wide.str());
        EXPECT_EQ(row.grouped, Convert::toAString(row.value));
        EXPECT_EQ(Convert::toWString(row.grouped), Convert::toWString(row.value));
        std::ostringstream uuid; // its bytes are the text without the hyphens
        Byte bytes[16];
        row.value.toUuidBytes(bytes);
        for (Byte const byte : bytes) {
            uuid << std::hex << std::setw(2) << std::setfill('0') << +byte;
        }
        std::string digits = row.grouped;
        digits.erase(std::remove(digits.begin(), digits.end(), '-'), digits.end());
        EXPECT_EQ(digits, uuid.str());
        EXPECT_EQ(row.value, Binary16::fromUuidBytes(bytes));
        expectInBuffer<char, 36>(row.grouped, row.value, &Binary16::toGrouped);
        expectInBuffer<wchar_t, 36>(row.grouped, row.value, &Binary16::toGrouped);
        expectInBuffer<char, 34>(row.hexadecimal, row.value, &Binary16::toHexadecimal);
        expectInBuffer<wchar_t, 34>(row.hexadecimal, row.value, &Binary16::toHexadecimal);
    }
}

// A value and the plain bytes that it should hold; each step answers what it does.
struct Program {
    std::mt19937_64 random;
    Binary16 value = {};
    std::string expected = std::string(16, '\0');

    template <typename T>
    std::string set(T const& number) {
        expected.replace(0, sizeof number, reinterpret_cast<char const*>(&number), sizeof number);
        bool const isSet = value.set(number) == 0;
        T back{};
        value.get(back);
        EXPECT_TRUE(isSet && back == number);
        if constexpr (sizeof number >= sizeof(int)) {
            EXPECT_EQ(Binary16(expected.data(), sizeof number), Binary16(number));
        }
        return std::string("set ") + typeid(T).name();
    }
    template <typename... Types>
    std::string setOneOf() {
        std::string step;
        auto pick = random() % sizeof...(Types);
        auto const bits = static_cast<long long>(random() >> random() % 64);
        ((pick-- == 0 ? void(step = set(static_cast<Types>(bits))) : void()), ...);
        return step;
    }
    std::string setByte(Byte index, char byte) {
        EXPECT_EQ(0, value.set(index, static_cast<Byte>(byte)));
        expected[index] = byte;
        return "set byte " + std::to_string(index);
    }
    std::string assign(unsigned int length) {
        std::vector<char> const raw(1 + length, char(random())); // odd address, end of the block
        expected = std::string(raw.data() + 1, std::min(16u, length));
        expected.resize(16);
        EXPECT_EQ(0, value.set(Binary16(raw.data() + 1, length)));
        value = reinterpret_cast<Byte const*>(expected.data());
        return "take " + std::to_string(length) + " bytes";
    }
    std::string step() {
        switch (random() % 8) {
        case 0: return setByte(static_cast<Byte>(random() % 16), static_cast<char>(random()));
        case 1: return assign(static_cast<unsigned int>(random() % 40));
        default:
            return setOneOf<bool, Byte, short, unsigned short, int, unsigned int, long,
                            unsigned long, long long, unsigned long long, float, double>();
        }
    }
};

TEST(Binary16, holdsWhatRandomStepsLeaveInPlainBytes) {
    Program program = {std::mt19937_64(2)};
    std::string steps;
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        steps = program.step() + ", before that " + steps.substr(0, 80);
        for (Byte at = 0; at < 16; ++at) {
            EXPECT_EQ(static_cast<Byte>(program.expected[at]), program.value[at])
                << "byte " << +at << " after " << steps;
        }
    }
}

TEST(Binary16, refusesAnIndexBehindItsBytesAndClearsForNull) {
    Binary16 value(Binary16::MAX);
    EXPECT_EQ(ERR_OUT_OF_RANGE, value.set(Byte{16}, 1));
    try {
        ADD_FAILURE() << value[16];
    } catch (std::out_of_range const& e) {
        EXPECT_STREQ("out_of_range", e.what());
    }
    value.toUuidBytes(nullptr);
    EXPECT_EQ(Binary16::MAX, value);
    value = static_cast<Byte const*>(nullptr);
    EXPECT_EQ(Binary16::EMPTY, value);
    EXPECT_TRUE(Binary16::fromUuidBytes(nullptr) == value && Binary16(nullptr, 10) == value);
    bool isSet = false;
    Binary16(0x80).get(isSet); // not the 1 that set(true) writes
    EXPECT_TRUE(isSet);
}

TEST(Binary16, comparisonAndHashSeeEveryBit) {
    std::set<std::size_t> hashes;
    for (int i = 0; i < 128; ++i) {
        Binary16 zero(Binary16::MAX), one;
        one.set(static_cast<Byte>(i / 8), static_cast<Byte>(1 << i % 8));
        hashes.insert(std::hash<Binary16>()(one));
        for (int before = i / 8; before >= 0; --before) {
            zero.set(static_cast<Byte>(before), 0); // what is behind decides nothing
        }
        EXPECT_TRUE(zero < one && zero <= one && one > zero && one >= zero && zero != one) << i;
        EXPECT_FALSE(one < zero || one <= zero || zero > one || zero >= one || zero == one) << i;
        EXPECT_TRUE(one <= one && one >= one && !(one < one) && !(one > one)) << i;
    }
    EXPECT_EQ(128u, hashes.size());
}

constexpr Binary16 constant("0x0102030405060708DEF09ABC12345678"_id);
static_assert(constant == Binary16(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708) &&
              constant != Binary16(-1) && Binary16(1u) < Binary16(2l) && Binary16() <= 0 &&
              Binary16(256) < Binary16(1ull) && Binary16(-1ll) > Binary16(-1) &&
              Binary16(1) >= 1ul && Binary16(0, 0, 0, 1ull << 56) != Binary16());
#if defined(__cpp_nontype_template_args) && __cpp_nontype_template_args >= 201911
template <Binary16 Id>
constexpr Binary16 argument = Id;
static_assert(argument<constant> == constant && (constant <=> Binary16(1)) > 0);
#endif

} // namespace
