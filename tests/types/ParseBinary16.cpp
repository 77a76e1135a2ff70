#include <Halvora/text/Convert.h>
#include <Halvora/types/ParseBinary16.h>

#include <gtest/gtest.h>

using namespace Halvora;
using namespace Halvora::literals;

namespace {

// As narrow and as wide text; without success the value stays as it was.
template <typename Text>
void expectParsed(Text const& text, eParseStatus status, std::size_t position) {
    Binary16 const before(-7), id(0x12345678, 0x9ABC, 0xDEF0, 0xF102030405060708);
    Binary16 value(before);
    ParseResult const result = parseBinary16(text, value);
    EXPECT_TRUE(result.status == status && result.position == position)
        << std::string(text.begin(), text.end()) << result.status << ' ' << result.position;
    EXPECT_EQ(status == PARSE_DONE ? id : before, value);
    if constexpr (sizeof text[0] == 1) {
        expectParsed(Convert::toWString(text), status, position);
    }
}

TEST(ParseBinary16, takesTwoFormsAndNothingElse) {
    std::tuple<std::string, eParseStatus, std::size_t> const rows[] = {
        {"0xF102030405060708DEF09ABC12345678",     PARSE_DONE,          34},
        {"0xf102030405060708def09abc12345678",     PARSE_DONE,          34},
        {"12345678-9ABC-def0-0807-0605040302F1",   PARSE_DONE,          36},
        {"",                                       PARSE_TOO_SHORT,     0 },
        {"0xF102030405060708DEF09ABC12345678\n",   PARSE_TOO_LONG,      34},
        {"0XF102030405060708DEF09ABC12345678",     PARSE_BAD_CHARACTER, 1 },
        {"1xF102030405060708DEF09ABC12345678",     PARSE_BAD_CHARACTER, 1 },
        {" 12345678-9abc-def0-0807-0605040302f1",  PARSE_BAD_CHARACTER, 0 },
        {"{12345678-9abc-def0-0807-0605040302f1}", PARSE_BAD_CHARACTER, 0 },
        {"123456789abc-def0-0807-0605040302f1",    PARSE_BAD_CHARACTER, 8 },
    };
    for (auto const& [text, status, position] : rows) {
        expectParsed(text, status, position);
    }
    for (std::string const& form : {std::get<0>(rows[0]), std::get<0>(rows[2])}) {
        for (std::size_t i = 0; i < form.size(); ++i) {
            expectParsed(form.substr(0, i), PARSE_TOO_SHORT, i);
            for (char const wrong : {'g', 'G', '/', ':', '@', '`', ' ', '\0', '\xC1'}) {
                expectParsed(std::string(form).replace(i, 1, 1, wrong), PARSE_BAD_CHARACTER, i);
            }
        }
    }
    Binary16 value;
    for (auto const& [at, character] : {std::pair(7u, 0x10030), std::pair(8u, 0x1002D)}) {
        std::wstring form = L"00000000-0000-0000-0000-000000000000";
        form[at] = static_cast<wchar_t>(character); // as 16 bits it is the right one
        EXPECT_EQ(sizeof(wchar_t) == 2 ? PARSE_DONE : PARSE_BAD_CHARACTER,
                  parseBinary16(form, value).status);
        form.pop_back();
        EXPECT_EQ(sizeof(wchar_t) == 2 ? PARSE_TOO_SHORT : PARSE_BAD_CHARACTER,
                  parseBinary16(form, value).status);
    }
    char const* const none = nullptr;
    EXPECT_EQ(PARSE_TOO_SHORT, parseBinary16(none, value).status);
}

constexpr bool parses(std::string_view text) {
    Binary16 value;
    return parseBinary16(text, value) && value == Binary16(1, 2, 3, 4);
}
static_assert(parses("00000001-0002-0003-0400-000000000000") && !parses("00000001-0002"));
static_assert("00000001-0002-0003-0400-000000000000"_id == Binary16(1, 2, 3, 4));

} // namespace
