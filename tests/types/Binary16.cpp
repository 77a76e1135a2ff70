#include <Halvora/text/Convert.h>
#include <Halvora/types/ParseBinary16.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iomanip>
#include <locale>
#include <random>
#include <set>
#include <sstream>

using namespace Halvora;
using namespace Halvora::literals;

namespace {

using Byte = unsigned char;
using Bytes = std::array<Byte, 16>;

// "6B A7", byte 0 first.
template <typename Value>
std::string listOf(Value const& value) {
    std::ostringstream list;
    for (Byte i = 0; i < 16; ++i) {
        list << std::hex << std::setw(3) << +value[i];
    }
    return list.str();
}

TEST(Binary16, isWhatItWasMadeOfAndShowsItAsText) {
    Binary16 const zero;
    struct {
        Binary16 value;
        char const* hexadecimal;
        char const* grouped;
    } const rows[] = {
        {zero,                                 "0x00000000000000000000000000000000",   "00000000-0000-0000-0000-000000000000"           },
        {-1,                                   "0x000000000000000000000000FFFFFFFF",   "ffffffff-0000-0000-0000-000000000000"           },
        {-2ll,                                 "0x0000000000000000FFFFFFFFFFFFFFFE",   "fffffffe-ffff-ffff-0000-000000000000"           },
        {true,                                 "0x00000000000000000000000000000001",   "00000001-0000-0000-0000-000000000000"           },
        {1.0f,                                 "0x0000000000000000000000003F800000",   "3f800000-0000-0000-0000-000000000000"           },
        {1.0,                                  "0x00000000000000003FF0000000000000",   "00000000-0000-3ff0-0000-000000000000"           },
        {Binary16(0x12345678,                  0x9ABC,                                 0xDEF0,                                            0x0102030405060708),
         "0x0102030405060708DEF09ABC12345678", "12345678-9abc-def0-0807-060504030201"},
        {Binary16("abc", 3), "0x00000000000000000000000000636261",
         "00636261-0000-0000-0000-000000000000"},
        {Binary16(nullptr,                                  10),                                    "0x00000000000000000000000000000000",
         "00000000-0000-0000-0000-000000000000"},
        {Binary16::MAX,                     "0xFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF",
         "ffffffff-ffff-ffff-ffff-ffffffffffff"},
        {Binary16::fromUuidBytes("ABCDEFGHIJKLMNOP"),                                    "0x504F4E4D4C4B4A494748454641424344",
         "41424344-4546-4748-494a-4b4c4d4e4f50"                                                      },
        {"6ba7b810-9dad-11d1-80b4-00c04fd430c8"_id,                                    "0xC830D44FC000B48011D19DAD6BA7B810",
         "6ba7b810-9dad-11d1-80b4-00c04fd430c8"         },
    };
    for (auto const& row : rows) {
        std::ostringstream written, inserted;
        std::wostringstream wide;
        row.value.write(written);
        EXPECT_EQ(row.hexadecimal, written.str());
        inserted << std::setw(36) << std::left << row.value << '|';
        wide << row.value;
        EXPECT_EQ(row.hexadecimal + std::string("  |"), inserted.str());
        EXPECT_EQ(Convert::toWString(row.hexadecimal), wide.str());
        EXPECT_EQ(row.grouped, Convert::toAString(row.value));
        EXPECT_EQ(Convert::toWString(row.grouped), Convert::toWString(row.value));
    }
}

template <typename Char>
void expectTextInBuffer(Binary16 const& value,
                        std::size_t (Binary16::*put)(Char*, std::size_t) const noexcept,
                        std::string const& expected) {
    Char buffer[40];
    for (std::size_t capacity = 0; capacity < 40; ++capacity) {
        std::fill_n(buffer, 40, Char('~'));
        bool const fits = capacity >= expected.size();
        EXPECT_EQ(fits ? expected.size() : 0, (value.*put)(buffer, capacity));
        std::string const left(40 - (fits ? expected.size() : 0), '~');
        EXPECT_EQ((fits ? expected : "") + left, std::string(buffer, buffer + 40)) << capacity;
    }
    EXPECT_EQ(0u, (value.*put)(nullptr, 40));
}

TEST(Binary16, textGoesIntoABufferThatHoldsAllOfIt) {
    Binary16 const value(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    std::string const hexadecimal = "0x0102030405060708DEF09ABC12345678";
    expectTextInBuffer<char>(value, &Binary16::toHexadecimal, hexadecimal);
    expectTextInBuffer<wchar_t>(value, &Binary16::toHexadecimal, hexadecimal);
    expectTextInBuffer<char>(value, &Binary16::toGrouped, Convert::toAString(value));
    expectTextInBuffer<wchar_t>(value, &Binary16::toGrouped, Convert::toAString(value));
}

// Steps on a value and on plain bytes; each answers what it does.
class Program {
public:
    explicit Program(unsigned int seed) : m_random(seed) {}

    std::string step() {
        auto const bits = static_cast<long long>(m_random() << 32 ^ m_random() >> m_random() % 64);
        switch (m_random() % 18) {
        case 0: return set("bool", bits % 2 == 0);
        case 1: return set("byte", static_cast<Byte>(bits));
        case 2: return set("short", static_cast<short>(bits));
        case 3: return set("unsigned short", static_cast<unsigned short>(bits));
        case 4: return set("int", static_cast<int>(bits));
        case 5: return set("unsigned", static_cast<unsigned int>(bits));
        case 6: return set("long", static_cast<long>(bits));
        case 7: return set("unsigned long", static_cast<unsigned long>(bits));
        case 8: return set("long long", bits);
        case 9: return set("unsigned long long", static_cast<unsigned long long>(bits));
        case 10: return set("float", static_cast<float>(bits));
        case 11: return set("double", static_cast<double>(bits));
        case 12: return setByte(static_cast<Byte>(bits % 20), static_cast<Byte>(bits >> 8));
        case 13: return setWhole();
        case 14: return assignBytes();
        case 15: return assignNull();
        case 16: return takeRun(static_cast<unsigned int>(bits & 63));
        default: return throughUuid();
        }
    }
    Binary16 value;
    Bytes expected = {};

private:
    template <typename T>
    std::string set(char const* type, T const& number) {
        std::copy_n(reinterpret_cast<Byte const*>(&number), sizeof number, expected.begin());
        bool const isSet = value.set(number) == 0;
        T back{};
        value.get(back);
        if constexpr (sizeof number >= sizeof(int)) {
            Bytes alone = {};
            std::copy_n(expected.begin(), sizeof number, alone.begin());
            EXPECT_EQ(listOf(alone), listOf(Binary16(number)));
        }
        EXPECT_TRUE(isSet && back == number) << type;
        return std::string("set ") + type;
    }
    std::string setByte(Byte index, Byte byte) {
        EXPECT_EQ(index < 16 ? 0 : -1004996, value.set(index, byte));
        if (index < 16) {
            expected[index] = byte;
        }
        return "set byte " + std::to_string(index);
    }
    std::string setWhole() {
        std::generate(expected.begin(), expected.end(), [&] { return Byte(m_random()); });
        EXPECT_EQ(0, value.set(Binary16(expected.data(), 16)));
        return "set all";
    }
    std::string assignBytes() {
        Byte raw[17]; // from an odd address
        std::generate(raw, raw + 17, [&] { return Byte(m_random()); });
        std::copy_n(raw + 1, 16, expected.begin());
        value = raw + 1;
        return "assign bytes";
    }
    std::string assignNull() {
        expected = {};
        value.set(Binary16::MAX);
        value = nullptr;
        return "assign null over MAX";
    }
    std::string takeRun(unsigned int length) {
        std::vector<Byte> const raw(1 + length, Byte(m_random())); // its end is the heap block's
        expected = {};
        for (unsigned int i = 0; i < std::min(16u, length); ++i) {
            expected[i] = raw[1 + i];
        }
        value = Binary16(raw.data() + 1, length);
        return "take " + std::to_string(length) + " bytes";
    }
    std::string throughUuid() {
        Bytes uuid = {};
        Byte const order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
        value.toUuidBytes(uuid.data());
        for (Byte i = 0; i < 16; ++i) {
            EXPECT_EQ(expected[order[i]], uuid[i]) << "byte " << +i << " of the UUID";
        }
        value.toUuidBytes(&value); // over itself
        EXPECT_EQ(Binary16(uuid.data(), 16), value);
        value = Binary16::fromUuidBytes(uuid.data());
        return "as a UUID and back";
    }

    std::mt19937_64 m_random;
};

TEST(Binary16, holdsWhatAProgramOfRandomStepsLeavesInPlainBytes) {
    for (unsigned int seed = 0; seed < 200; ++seed) {
        Program program(seed);
        std::string steps;
        for (int i = 0; i < 100 && !::testing::Test::HasFailure(); ++i) {
            steps += program.step() + ", ";
            EXPECT_EQ(listOf(program.expected), listOf(program.value))
                << "after: " << steps.substr(std::max<std::size_t>(100, steps.size()) - 100);
        }
    }
}

TEST(Binary16, anIndexBehindTheBytesIsRefused) {
    Binary16 value;
    for (Byte const index : {Byte{16}, Byte{31}, Byte{255}}) {
        EXPECT_EQ(-1004996, value.set(index, 1)) << +index;
        try {
            ADD_FAILURE() << value[index];
        } catch (std::out_of_range const& e) {
            EXPECT_STREQ("out_of_range", e.what());
        }
    }
    EXPECT_EQ(Binary16::EMPTY, value);
    EXPECT_EQ(Binary16::MIN, Binary16::fromUuidBytes(nullptr));
    Binary16::MAX.toUuidBytes(nullptr);
    bool isSet = false;
    Binary16(0x80).get(isSet); // not the 1 that set(true) writes
    EXPECT_TRUE(isSet);
}

TEST(Binary16, comparisonAndHashSeeEveryBit) {
    std::set<std::size_t> hashes;
    for (int i = 0; i < 128; ++i) {
        auto const byte = static_cast<Byte>(i / 8);
        Binary16 zero, one;
        one.set(byte, static_cast<Byte>(1 << i % 8));
        hashes.insert(std::hash<Binary16>()(one));
        for (Byte behind = 15; behind > byte; --behind) {
            zero.set(behind, 0xFF); // decides nothing
        }
        EXPECT_TRUE(zero < one && zero <= one && one > zero && one >= zero && zero != one) << i;
        EXPECT_FALSE(one < zero || one <= zero || zero > one || zero >= one || zero == one) << i;
        EXPECT_TRUE(one <= one && one >= one && !(one < one) && !(one > one)) << i;
    }
    EXPECT_EQ(128u, hashes.size());
}

// Constants, of which nothing is left to do when the program is loaded.
constexpr Binary16 constant("0x0102030405060708DEF09ABC12345678"_id);
static_assert(constant == Binary16(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708) &&
              constant != Binary16(-1) && Binary16(1u) < Binary16(2l) && Binary16() <= 0 &&
              Binary16(256) < Binary16(1ull) && Binary16(-1ll) > Binary16(-1) &&
              Binary16(1) >= 1ul);
#if defined(__cpp_nontype_template_args) && __cpp_nontype_template_args >= 201911
template <Binary16 Id>
constexpr Binary16 argument = Id;
static_assert(argument<constant> == constant && (constant <=> Binary16(1)) > 0);
#endif

} // namespace
