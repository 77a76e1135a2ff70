#include <Halvora/text/Convert.h>
#include <Halvora/types/ParseBinary16.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace Halvora;

namespace {

void expectParsed(std::string const& text, eParseStatus status, std::size_t position,
                  Binary16 const& expected) {
    Binary16 const before(-7);
    Binary16 narrow(before);
    Binary16 wide(before);
    ParseResult const result = parseBinary16(text, narrow);
    ParseResult const wideResult = parseBinary16(Convert::toWString(text), wide);
    EXPECT_EQ(status, result.status) << text;
    EXPECT_EQ(position, result.position) << text;
    EXPECT_EQ(status == PARSE_DONE, static_cast<bool>(result)) << text;
    EXPECT_EQ(status, wideResult.status) << text;
    EXPECT_EQ(position, wideResult.position) << text;
    EXPECT_EQ(status == PARSE_DONE ? expected : before, narrow) << text;
    EXPECT_EQ(narrow, wide) << text;
}

} // namespace

TEST(ParseBinary16, takesBothFormsAndNothingElse) {
    Binary16 const value(0x12345678, 0x9ABC, 0xDEF0, 0xF102030405060708);
    std::ostringstream stream;
    value.write(stream);
    for (std::string const& form : {stream.str(), Convert::toAString(value)}) {
        expectParsed(form, PARSE_DONE, form.size(), value);
        expectParsed(form + '0', PARSE_TOO_LONG, form.size(), value);
        for (std::size_t i = 0; i < form.size(); ++i) {
            expectParsed(form.substr(0, i), PARSE_TOO_SHORT, i, value);
            for (char const wrong : {'g', '/', ':', '@', '`', ' ', '\0', '\xC1'}) {
                std::string text = form;
                text[i] = wrong;

                expectParsed(text, PARSE_BAD_CHARACTER, i, value);
            }
        }
    }
    expectParsed("0x0807060504030201f0DEbc9A78563412", PARSE_DONE, 34,
                 Binary16(0x78563412, 0xBC9A, 0xF0DE, 0x0807060504030201));
    Binary16 out(value);
    EXPECT_EQ(PARSE_BAD_CHARACTER, parseBinary16(std::wstring(36, wchar_t(0x10030)), out).status);
}
