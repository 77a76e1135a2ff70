#include <Halvora/types/Binary16.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <locale>
#include <random>

using namespace Halvora;

namespace {

using Byte = unsigned char;

template <typename T>
void expectNumber(T const& number) {
    Byte bytes[16] = {9, 8, 7, 6, 5, 4, 3, 2, 1, 2, 3, 4, 5, 6, 7, 8};
    Binary16 value(bytes, 16);
    std::memcpy(bytes, &number, sizeof number);
    EXPECT_EQ(0, value.set(number));
    T back{};
    value.get(back);
    EXPECT_TRUE(Binary16(bytes, 16) == value && number == back) << typeid(T).name();
    if constexpr (sizeof(T) >= sizeof(int)) {
        EXPECT_EQ(Binary16(bytes, sizeof number), Binary16(number)) << typeid(T).name();
    }
}

template <typename... T>
void expectNumbers(T const&... numbers) {
    (expectNumber(numbers), ...);
}

TEST(Binary16, numbersLieInTheLeadingBytesAndLeaveTheOthers) {
    using Word = unsigned short;
    expectNumbers(true, false, Byte{254}, short{-2}, Word{65534}, -2, ~1u, -2L, ~1ul, -2LL, ~1ull,
                  -1.5f, -1.5);
    bool isSet = false;
    Binary16(0x80).get(isSet); // not the 1 that set(true) writes
    EXPECT_TRUE(isSet);
    EXPECT_EQ(Binary16("\x78\x56\x34\x12\xBC\x9A\xF0\xDE\x8\x7\x6\x5\x4\x3\x2\x1", 16),
              Binary16(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708));
}

TEST(Binary16, bytesComeFromAnyAddressAndGoByIndex) {
    for (unsigned int length = 0; length <= 40; ++length) {
        std::vector<Byte> const raw(1 + length, 0xFF); // the run begins at an odd address
        Binary16 value(raw.data() + 1, length);
        for (Byte i = 0; i < 16; ++i) {
            EXPECT_EQ(i < length ? 0xFF : 0, value[i]) << +i << " of " << length;
        }
        value = length < 16 ? nullptr : raw.data() + 1;
        EXPECT_EQ(length < 16 ? Binary16::MIN : Binary16::MAX, value);
    }
    Binary16 value(nullptr, 10);
    for (Byte const index : {Byte{16}, Byte{31}, Byte{255}}) {
        EXPECT_EQ(ERR_OUT_OF_RANGE, value.set(index, 1));
        try {
            ADD_FAILURE() << value[index];
        } catch (std::out_of_range const& e) {
            EXPECT_STREQ("out_of_range", e.what());
        }
    }
    EXPECT_EQ(Binary16::EMPTY, value);
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

// A locale with wide digits of its own.
struct Circled : std::ctype<wchar_t> {
    char const* do_widen(char const* from, char const* end, wchar_t* to) const override {
        return std::transform(from, end, to, [](char c) { return 0x2400 + c; }), end;
    }
};

// A field width is spent on the first insertion: "0", and L"0x" on a wide stream.
template <typename Char>
void expectText(Binary16 const& value, std::size_t width) {
    bool const left = width % 2 == 0;
    constexpr std::size_t first = sizeof(Char) == 1 ? 1 : 2;
    std::basic_string<Char> expected = {'0', 'x'};
    for (int i = 0; i < 32; ++i) {
        int const byte = value[static_cast<Byte>(15 - i / 2)];
        int const digit = "0123456789ABCDEF"[i % 2 == 0 ? byte / 16 : byte % 16];
        expected += static_cast<Char>(first == 1 ? digit : digit + 0x2400);
    }
    expected.insert(left ? first : 0, std::max(width, first) - first, '*');
    std::basic_ostringstream<Char> stream;
    stream.imbue(std::locale(std::locale(), new Circled));
    stream << (left ? std::left : std::right) << std::setfill(Char('*'))
           << std::setw(static_cast<int>(width));
    EXPECT_EQ(&stream, &value.write(stream));
    EXPECT_EQ(expected, stream.str()) << "width " << width;
}

TEST(Binary16, theTextIsWrittenAsInsertionsOfItsCharacters) {
    std::mt19937_64 random(2);
    for (std::size_t width = 0; width < 40; ++width) {
        Binary16 const value(0x0189ABEF, 0xCD23, 0x4567, random());
        expectText<char>(value, width);
        expectText<wchar_t>(value, width);
    }
}

// Formatted extractions, one a character.
std::istream& readSlowly(std::istream& stream, Binary16& value) {
    auto const valueOf = [](char digit) {
        std::size_t const at = std::string("0123456789:;<=>?ABCDEFabcdef").find(digit);
        return at < 16 ? at : at < 22 ? at - 6 : at < 28 ? at - 12 : 0;
    };
    value = Binary16();
    char high = 0, low = 0;
    stream.ignore(2);
    for (int i = 15; i >= 0 && stream >> high >> low; --i) {
        value.set(static_cast<Byte>(i), static_cast<Byte>(valueOf(high) * 16 + valueOf(low)));
    }
    return stream;
}

TEST(Binary16, readingIsAsGoodAsFormattedExtractions) {
    std::mt19937 random(3);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 72, ' '), outcomes[2];
        for (char& c : text) {
            c = random() % 9 == 0 ? static_cast<char>(random())
                                  : " \t\n\v\f\r0123456789:;<=>?ABCDEFabcdef/@G`g"[random() % 39];
        }
        auto const mask = static_cast<std::ios::iostate>(random() % 8);
        for (bool const slow : {false, true}) {
            std::istringstream stream(text);
            stream.exceptions(mask);
            stream >> (round % 4 == 0 ? std::noskipws : std::skipws);
            Binary16 value = Binary16::MAX;
            std::ostringstream outcome;
            try {
                slow ? readSlowly(stream, value) : value.read(stream);
            } catch (std::ios::failure const&) {
                outcome << "thrown ";
            }
            value.write(outcome) << stream.rdstate() << stream.rdbuf();
            outcomes[slow] = outcome.str();
        }
        EXPECT_EQ(outcomes[true], outcomes[false]) << text;
    }
}

// Throws behind its text.
struct Breaking : std::stringbuf {
    using std::stringbuf::stringbuf;
    int_type underflow() override { throw gptr(); }
};

TEST(Binary16, anExceptionOfTheBufferIsKeptInTheStateOrGoesOn) {
    for (unsigned int i = 0; i < 68; ++i) {
        Breaking buffer(std::string(i / 2, 'F'));
        std::istream stream(&buffer);
        stream.exceptions(i % 2 == 0 ? std::ios::goodbit : std::ios::badbit);
        Binary16 value = Binary16::MAX;
        try {
            value.read(stream);
            EXPECT_EQ(0, i % 2);
        } catch (char*) {
            EXPECT_EQ(1, i % 2);
        }
        EXPECT_TRUE(stream.bad() && value[0] == 0) << i;
    }
}

} // namespace
