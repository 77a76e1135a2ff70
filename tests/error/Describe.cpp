#include "Shown.h"

namespace Halvora::test {
namespace {

constexpr CatalogueRow rows[] = {
    {-30,             L"valveStuck", L"A valve does not move.", {L"valve", L"angle", L"side"}},
    {-2147483647 - 1, L"least",      L"",                       {}                           },
};
CatalogueTranslator const translator(catalogue<rows>);

// In both widths, the narrow one as UTF-8.
void expectDescribed(std::wstring const& text, Holder const& error,
                     ITranslator const& asked = translator) {
    std::wostringstream wide;
    std::ostringstream narrow;
    wide.width(40), narrow.width(40); // for one insertion, not for a line among others
    describe(wide, *error.getError(), asked) << L'.';
    describe(narrow, *error.getError(), asked) << '.';
    std::string bytes;
    Utf8::fromWString(bytes, text + L".");
    EXPECT_EQ(text + L".", wide.str());
    EXPECT_EQ(bytes, narrow.str());
}

// Translates identified texts, and answers nothing else but one sentence: null or an empty name.
struct Shouting : ResString::DummyTranslator {
    void getTranslation(std::wostream& stream, ResString const& text) const override {
        stream << text.wstr() << L"!";
    }
    ResString* getErrorDescription(int code) const override {
        return code == -2 ? new ResString(L"A sentence.") : nullptr;
    }
    wchar_t* getErrorName(int code) const override { return code < 0 ? nullptr : new wchar_t[1](); }
    ResString* getErrorParamDesc(int, int param) const override {
        return param == 1 ? nullptr : new ResString();
    }
};

TEST(Describe, writesNamesSentencesAndParametersForPeople) {
    Holder chain = HLVError::create(-3, 0.5);
    chain.prependError(-30, new Param("M\xFCnchen"), nullptr, new Param(true));
    expectDescribed(L"valveStuck (-30): A valve does not move.\n  valve: M\u00FCnchen\n  side: "
                    L"1\nError -3\n  P1: 0.5\n",
                    chain);
    expectDescribed(L"least (-2147483648)\n", HLVError::create(rows[1].code));
    ResString const identified(Binary16(5), std::wstring(L"S\u00FCd"));
    Holder shouted = HLVError::create(-1);
    shouted.prepend(-2);
    shouted.prepend(1, identified, L"\xD800\xDC00\xD83D \x1B\n\x7F\x9B|\xDC00");
    expectDescribed(L"Error 1\n  P1: S\u00FCd!\n  P2: \U00010000\uFFFD     |\uFFFD\n"
                    L"-2: A sentence.\nError -1\n",
                    shouted, Shouting());
}

} // namespace
} // namespace Halvora::test
