#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

using namespace Halvora;

// Made by this program's own statics, from the library's.
static Binary16 const values[] = {Binary16::MIN, Binary16::MAX, Binary16::EMPTY};
static std::string const trim = Convert::ms_strTrim;
static std::wstring const wideText = Convert::ms_wstrTrim + ResString::EMPTY.wstr();
static KrVersion const version = HalvTypes::ms_Version;
static std::string const language = ResString::getMainTranslator()->getLanguage();

TEST(StartStop, theStaticsOfAProgramCanUseThoseOfTheLibrary) {
    EXPECT_TRUE(values[0] == Binary16() && values[2] == Binary16() && values[1][15] == 0xFF);
    EXPECT_TRUE(trim == " \t\r\n" && wideText == L" \t\r\n" && language.empty());
    EXPECT_EQ(39686u, version.getRevision());
}
