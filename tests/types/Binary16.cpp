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

// A value and the plain bytes that it should hold; each step answers what it does.
struct Program {
    std::mt19937_64 random;
    Binary16 value = {};
    Bytes expected = {};

    template <typename T>
    std::string set(T const& number) {
        std::copy_n(reinterpret_cast<Byte const*>(&number), sizeof number, expected.begin());
        bool const isSet = value.set(number) == 0;
        T back{};
        value.get(back);
        EXPECT_TRUE(isSet && back == number);
        if constexpr (sizeof number >= sizeof(int)) {
            EXPECT_EQ(Binary16(expected.data(), sizeof number), Binary16(number));
        }
        return std::string("set of type ") + typeid(T).name();
    }
    template <typename... Types>
    std::string setOneOf() {
        std::string step;
        std::size_t pick = random() % sizeof...(Types);
        auto const bits = static_cast<long long>(random() >> random() % 64);
        ((pick-- == 0 ? void(step = set(static_cast<Types>(bits))) : void()), ...);
        return step;
    }
    std::string setByte() {
        auto const index = static_cast<Byte>(random() % 20), byte = static_cast<Byte>(random());
        EXPECT_EQ(index < 16 ? 0 : -1004996, value.set(index, byte));
        if (index < 16) {
            expected[index] = byte;
        }
        return "set byte " + std::to_string(index);
    }
    std::string assign(std::size_t length) {
        std::vector<Byte> raw(1 + length); // from an odd address up to the end of its block
        std::generate(raw.begin(), raw.end(), [&] { return static_cast<Byte>(random()); });
        expected = {};
        std::copy(raw.begin() + 1, raw.begin() + 1 + std::min<long>(16, long(length)),
                  expected.begin());
        value = Binary16::MAX;
        if (length == 16 || length == 0) {
            value = length == 0 ? nullptr : raw.data() + 1;
        } else {
            EXPECT_EQ(0, value.set(Binary16(raw.data() + 1, static_cast<unsigned int>(length))));
        }
        return "assign " + std::to_string(length) + " bytes";
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
    std::string step() {
        switch (random() % 8) {
        case 0: return setByte();
        case 1: return assign(random() % 40);
        case 2: return assign(random() % 2 * 16);
        case 3: return throughUuid();
        default:
            return setOneOf<bool, Byte, short, unsigned short, int, unsigned int, long,
                            unsigned long, long long, unsigned long long, float, double>();
        }
    }
};

TEST(Binary16, holdsWhatRandomStepsLeaveInPlainBytes) {
    for (unsigned int seed = 0; seed < 200; ++seed) {
        Program program = {std::mt19937_64(seed)};
        std::string steps;
        for (int i = 0; i < 100 && !HasFailure(); ++i) {
            steps += program.step() + ", ";
            EXPECT_EQ(listOf(program.expected), listOf(program.value))
                << "after ..." << steps.substr(std::max<std::size_t>(120, steps.size()) - 120);
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
