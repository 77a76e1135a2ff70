#include <Halvora/text/Convert.h>
#include <Halvora/types/ParseBinary16.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace Halvora;
using namespace Halvora::literals;

namespace {

// As narrow and as wide text; without success the value stays as it was.
void expectParsed(std::string const& text, ParseResult const& expected, Binary16 const& id) {
    Binary16 const before(-7);
    Binary16 narrow(before);
    Binary16 wide(before);
    ParseResult const result = parseBinary16(text, narrow);
    ParseResult const wideResult = parseBinary16(Convert::toWString(text), wide);
    EXPECT_EQ(expected.status, result.status) << text;
    EXPECT_EQ(expected.position, result.position) << text;
    EXPECT_EQ(expected.status == PARSE_DONE, static_cast<bool>(result)) << text;
    EXPECT_EQ(expected.status, wideResult.status) << text;
    EXPECT_EQ(expected.position, wideResult.position) << text;
    EXPECT_EQ(expected ? id : before, narrow) << text;
    EXPECT_EQ(narrow, wide) << text;
}

TEST(ParseBinary16, takesTwoFormsAndNothingElse) {
    struct {
        char const* text;
        eParseStatus status;
        std::size_t position;
    } const rows[] = {
        {"0xF102030405060708DEF09ABC12345678",     PARSE_DONE,          34},
        {"0xf102030405060708def09abc12345678",     PARSE_DONE,          34},
        {"12345678-9abc-def0-0807-0605040302f1",   PARSE_DONE,          36},
        {"12345678-9ABC-def0-0807-0605040302F1",   PARSE_DONE,          36},
        {"",                                       PARSE_TOO_SHORT,     0 },
        {"0xF102030405060708DEF09ABC1234567",      PARSE_TOO_SHORT,     33},
        {"0xF102030405060708DEF09ABC12345678\n",   PARSE_TOO_LONG,      34},
        {"0XF102030405060708DEF09ABC12345678",     PARSE_BAD_CHARACTER, 1 },
        {"0xG102030405060708DEF09ABC12345678",     PARSE_BAD_CHARACTER, 2 },
        {" 12345678-9abc-def0-0807-0605040302f1",  PARSE_BAD_CHARACTER, 0 },
        {"{12345678-9abc-def0-0807-0605040302f1}", PARSE_BAD_CHARACTER, 0 },
        {"123456789abc-def0-0807-0605040302f1",    PARSE_BAD_CHARACTER, 8 },
    };
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0xF102030405060708);
    for (auto const& row : rows) {
        expectParsed(row.text, {row.status, row.position}, id);
    }
    Binary16 value;
    EXPECT_EQ(PARSE_BAD_CHARACTER, parseBinary16(std::wstring(36, wchar_t(0x10030)), value).status);
}

ParseResult parseSlowly(std::string const& text) {
    std::string const shape = text.substr(0, 2) == "0x" ? "0x" + std::string(32, '#')
                                                        : "########-####-####-####-############";
    for (std::size_t i = 0; i < shape.size(); ++i) {
        if (i == text.size()) {
            return {PARSE_TOO_SHORT, i};
        }
        bool const isDigit =
            std::string("0123456789ABCDEFabcdef").find(text[i]) != std::string::npos;
        if (shape[i] == '#' ? !isDigit : text[i] != shape[i]) {
            return {PARSE_BAD_CHARACTER, i};
        }
    }
    return {text.size() > shape.size() ? PARSE_TOO_LONG : PARSE_DONE, shape.size()};
}

Binary16 valueOf(std::string const& text) {
    bool const isHexadecimal = text[1] == 'x';
    std::string digits = text.substr(isHexadecimal ? 2 : 0);
    digits.erase(std::remove(digits.begin(), digits.end(), '-'), digits.end());
    unsigned char const grouped[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    Binary16 value;
    for (unsigned char i = 0; i < 16; ++i) {
        auto const byte =
            static_cast<unsigned char>(std::stoi(digits.substr(2 * i, 2), nullptr, 16));
        value.set(static_cast<unsigned char>(isHexadecimal ? 15 - i : grouped[i]), byte);
    }
    return value;
}

TEST(ParseBinary16, findsWhatIsWrongInAChangedText) {
    std::mt19937_64 random(5);
    for (int round = 0; round < 20000; ++round) {
        Binary16 const id(static_cast<unsigned int>(random()), 1, 2, random());
        char buffer[40];
        std::string text(buffer,
                         round % 2 == 0 ? id.toGrouped(buffer, 40) : id.toHexadecimal(buffer, 40));
        std::size_t const at = random() % text.size();
        switch (random() % 4) {
        case 0: text[at] = static_cast<char>(random()); break;
        case 1: text[at] = "gG/:@`xX- \0"[random() % 11]; break;
        case 2: text.insert(at, 1, "0aF-x"[random() % 5]); break;
        default: text.resize(at + random() % 3 * 20, '0');
        }
        ParseResult const expected = parseSlowly(text);
        expectParsed(text, expected, expected ? valueOf(text) : id);
    }
}

// In constant expressions, and as a literal.
constexpr bool parses(std::string_view text, Binary16 const& expected) {
    Binary16 value;
    return parseBinary16(text, value) && value == expected;
}
static_assert(parses("00000001-0002-0003-0400-000000000000", Binary16(1, 2, 3, 4)));
static_assert(!parses("00000001-0002-0003-0400-00000000000", Binary16(1, 2, 3, 4)));
static_assert("00000001-0002-0003-0400-000000000000"_id == Binary16(1, 2, 3, 4));
static_assert("0x00000000000000040003000200000001"_id == Binary16(1, 2, 3, 4));

} // namespace
