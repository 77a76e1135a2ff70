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

// An operator of the program goes before ours.
struct Number : Binary16 {
    operator int() const { return 5; }
};

// The constant's text in a buffer with just the room for it; one with less is not touched.
template <typename Char>
void expectInBuffer(std::string const& expected,
                    std::size_t (Binary16::*put)(Char*, std::size_t) const noexcept) {
    std::size_t const length = expected.size();
    std::basic_string<Char> const untouched(length + 1, Char(0x23));
    std::basic_string<Char> text(untouched);
    EXPECT_EQ(0u, (constant.*put)(&text[0], length - 1) + (constant.*put)(nullptr, length));
    EXPECT_EQ(untouched, text);
    EXPECT_EQ(length, (constant.*put)(&text[0], length));
    EXPECT_EQ(expected + '#', std::string(text.begin(), text.end()));
}

Binary16 const uuid = Binary16::fromUuidBytes("ABCDEFGHIJKLMNOP");
// Values, and their hexadecimal and grouped form.
std::tuple<Binary16, std::string, std::string> const forms[] = {
    {-1,            "0x000000000000000000000000FFFFFFFF", "ffffffff-0000-0000-0000-000000000000"},
    {-2ll,          "0x0000000000000000FFFFFFFFFFFFFFFE", "fffffffe-ffff-ffff-0000-000000000000"},
    {1.0f,          "0x0000000000000000000000003F800000", "3f800000-0000-0000-0000-000000000000"},
    {constant,      "0x0102030405060708DEF09ABC12345678", "12345678-9abc-def0-0807-060504030201"},
    {uuid,          "0x504F4E4D4C4B4A494748454641424344", "41424344-4546-4748-494a-4b4c4d4e4f50"},
    {Binary16::MIN, "0x00000000000000000000000000000000", "00000000-0000-0000-0000-000000000000"},
    {Binary16::MAX, "0xFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", "ffffffff-ffff-ffff-ffff-ffffffffffff"},
};

TEST(Binary16, showsItsBytesInTwoForms) {
    for (auto const& [value, hexadecimal, grouped] : forms) {
        std::ostringstream stream;
        std::wostringstream wide;
        stream << std::setw(36) << std::left << value << '|';
        stream << Number() << (std::ostringstream() << value).good(); // also a temporary
        wide << value;
        EXPECT_EQ(hexadecimal + "  |51", stream.str());
        EXPECT_EQ(Convert::toWString(hexadecimal), wide.str());
        EXPECT_EQ(grouped, Convert::toAString(value));
        EXPECT_EQ(Convert::toWString(grouped), Convert::toWString(value));
        std::string digits = grouped; // a UUID's bytes are the text without the hyphens
        digits.erase(std::remove(digits.begin(), digits.end(), '-'), digits.end());
        Byte bytes[16];
        value.toUuidBytes(bytes);
        for (unsigned i = 0; i < 16; ++i) {
            EXPECT_EQ(Convert::toByte(digits[2 * i], digits[2 * i + 1]), bytes[i])
                << "byte " << i << " of " << grouped;
        }
        EXPECT_EQ(value, Binary16::fromUuidBytes(bytes));
    }
    auto const& [value, hexadecimal, grouped] = forms[3];
    expectInBuffer<char>(grouped, &Binary16::toGrouped);
    expectInBuffer<wchar_t>(grouped, &Binary16::toGrouped);
    expectInBuffer<char>(hexadecimal, &Binary16::toHexadecimal);
    expectInBuffer<wchar_t>(hexadecimal, &Binary16::toHexadecimal);
}

template <typename T>
void expectHeld(T number, Binary16 const& before) {
    Binary16 value(before), expected(before);
    std::memcpy(expected.m_bytes, &number, sizeof number);
    T back{};
    EXPECT_EQ(0, value.set(number));
    value.get(back);
    EXPECT_TRUE(value == expected && back == number)
        << typeid(T).name() << ' ' << +number << " over " << before << " gives " << value;
    if constexpr (sizeof number >= sizeof(int)) {
        EXPECT_EQ(Binary16(&number, sizeof number), Binary16(number)) << typeid(T).name();
    }
}
template <typename... Types>
void expectHeldAs(long long number, Binary16 const& before) {
    (expectHeld(static_cast<Types>(number), before), ...);
}

TEST(Binary16, holdsANumberInFrontAndLeavesTheRest) {
    std::mt19937_64 random(2);
    for (unsigned i = 0; i < 5000 && !HasFailure(); ++i) {
        auto const number = static_cast<long long>(random() >> i % 64);
        expectHeldAs<bool, Byte, short, unsigned short, int, unsigned int, long, unsigned long,
                     long long, unsigned long long, float, double>(number, {i, 1, 2, random()});
    }
    bool isSet = false;
    Binary16(0x80).get(isSet); // not the 1 that set(true) writes
    EXPECT_TRUE(isSet);
}

TEST(Binary16, takesBytesAndRefusesAnIndexBehindThem) {
    for (unsigned length = 0; length < 20; ++length) {
        std::vector<Byte> bytes(1 + length); // the first of them lies at an odd address
        std::generate(bytes.begin(), bytes.end(), [at = 9u]() mutable { return Byte(at *= 11); });
        Binary16 const value(bytes.data() + 1, length);
        bytes.resize(17);
        Binary16 assigned(Binary16::MAX), built(Binary16::MAX);
        assigned = bytes.data() + 1;
        for (Byte at = 0; at < 16; ++at) {
            EXPECT_EQ(0, built.set(at, bytes[1u + at]));
            EXPECT_EQ(bytes[1u + at], value[at]) << length << ' ' << +at;
        }
        EXPECT_TRUE(assigned == value && built == value) << length;
    }
    Binary16 value;
    EXPECT_EQ(0, value.set(Binary16::MAX));
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
}

TEST(Binary16, comparisonAndHashSeeEveryBit) {
    std::set<std::size_t> hashes;
    for (int i = 0; i < 128; ++i) {
        Binary16 zero(Binary16::MAX), one;
        one.set(static_cast<Byte>(i / 8), static_cast<Byte>(1 << i % 8));
        hashes.insert(std::hash<Binary16>()(one));
        std::fill_n(zero.m_bytes, i / 8 + 1, Byte{0}); // what is behind decides nothing
        EXPECT_TRUE(zero < one && zero <= one && one > zero && one >= zero && zero != one) << i;
        EXPECT_FALSE(one < zero || one <= zero || zero > one || zero >= one || zero == one) << i;
        EXPECT_TRUE(one <= one && one >= one && !(one < one) && !(one > one)) << i;
    }
    EXPECT_EQ(128u, hashes.size());
    EXPECT_EQ(static_cast<std::size_t>(0x880BEFEBDCA8CE81), std::hash<Binary16>()(constant));
}

} // namespace
