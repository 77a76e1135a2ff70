#include "Shown.h"

namespace Halvora::test {
namespace {

constexpr CatalogueRow pumps[] = {
    {-20, L"pumpFailed", L"A pump does not start.",                    {L"pump"}         },
    {7,   L"pumpSlow",   L"Pumpe in M\u00FCnchen l\u00E4uft langsam.", {nullptr, L"rate"}},
};
constexpr CatalogueRow valves[] = {
    {-30,             L"valveStuck", L"A valve does not move.", {L"valve", L"angle", L"side"}},
    {-2147483647 - 1, L"least",      L"",                       {}                           },
    {2147483647,      L"most",       L"The last.",              {}                           },
};
constexpr Catalogue both = catalogue<pumps, valves>;
CatalogueTranslator const translator(both, "en");

TEST(Catalogue, findsTheRowsOfJoinedTables) {
    EXPECT_EQ(5u, both.getCount());
    for (CatalogueRow const& row : valves) {
        EXPECT_EQ(&row, both.find(row.code));
        EXPECT_EQ(nullptr, catalogue<pumps>.find(row.code));
    }
    for (int const code : {-31, -29, -21, -19, -1, 0, 6, 8}) {
        EXPECT_EQ(nullptr, both.find(code)) << code;
    }
    EXPECT_EQ(nullptr, Catalogue().find(0));
}

// What the interface answers for a code: its name, description and parameter names.
std::wstring answers(ITranslator const& asked, int code) {
    std::unique_ptr<wchar_t[]> const name(asked.getErrorName(code));
    std::unique_ptr<ResString> const description(asked.getErrorDescription(code));
    std::wstring all = name.get() + (L"/" + description->wstr());
    for (int param = 0; param < 5; ++param) {
        all += L"/" + std::unique_ptr<ResString>(asked.getErrorParamDesc(code, param))->wstr();
    }
    return all;
}

TEST(CatalogueTranslator, answersFromItsRowsAndElseAsTheNextOne) {
    CatalogueTranslator const valvesThenPumps(catalogue<valves>, "de", [] {
        static CatalogueTranslator const next(catalogue<pumps>);
        return &next;
    }());
    struct {
        int code;
        wchar_t const* answers;
    } const rows[] = {
        {-20, L"pumpFailed/A pump does not start./P0/pump/P2/P3/P4"                 },
        {7,   L"pumpSlow/Pumpe in M\u00FCnchen l\u00E4uft langsam./P0/P1/rate/P3/P4"},
        {-30, L"valveStuck/A valve does not move./P0/valve/angle/side/P4"           },
        {-21, L"-21/-21/P0/P1/P2/P3/P4"                                             },
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.answers, answers(translator, row.code));
        EXPECT_EQ(row.answers, answers(valvesThenPumps, row.code));
    }
    EXPECT_EQ("en", translator.getLanguage());
    EXPECT_EQ("", CatalogueTranslator(both).getLanguage());
}

TEST(CatalogueTranslator, allocatesNothingButItsResults) {
    long const before = allocations();
    delete[] translator.getErrorName(-30);
    delete translator.getErrorDescription(-30);
    delete translator.getErrorParamDesc(-30, 1);
    EXPECT_EQ(3, allocations() - before);
}

// Translates identified texts, and answers nothing else.
struct Shouting : ResString::DummyTranslator {
    void getTranslation(std::wostream& stream, ResString const& text) const override {
        stream << text.wstr() << L"!";
    }
    ResString* getErrorDescription(int) const override { return nullptr; }
    wchar_t* getErrorName(int) const override { return nullptr; }
    ResString* getErrorParamDesc(int, int) const override { return nullptr; }
};

// UTF-8, from the top bits down.
std::string utf8(std::wstring const& text) {
    std::string out;
    for (wchar_t const c : text) {
        auto const code = static_cast<unsigned>(c);
        int const more = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        unsigned const marks[] = {0, 0xC0, 0xE0, 0xF0};
        out += static_cast<char>(marks[more] | code >> 6 * more);
        for (int i = more; i-- > 0;) {
            out += static_cast<char>(0x80 | (code >> 6 * i & 0x3F));
        }
    }
    return out;
}

// In both widths.
void expectDescribed(std::wstring const& expected, Holder const& error, ITranslator const& asked) {
    std::wostringstream wide;
    std::ostringstream narrow;
    EXPECT_EQ(&wide, &describe(wide, *error.getError(), asked));
    EXPECT_EQ(&narrow, &describe(narrow, *error.getError(), asked));
    EXPECT_EQ(expected, wide.str());
    EXPECT_EQ(utf8(expected), narrow.str());
}

TEST(Describe, writesNamesSentencesAndParametersForPeople) {
    expectDescribed(L"pumpFailed (-20): A pump does not start.\n  pump: 3\n",
                    HLVError::create(-20, 3), translator);
    expectDescribed(L"pumpSlow (7): Pumpe in M\u00FCnchen l\u00E4uft langsam.\n",
                    HLVError::create(7), translator);
    expectDescribed(L"least (-2147483648)\n", HLVError::create(-2147483647 - 1), translator);
    expectDescribed(L"Error -3\n  P1: 1\n  P2: 7\n", HLVError::create(-3, true, 7), translator);
    Holder chain = HLVError::create(-3);
    chain.prependError(-30, new Param("M\xFCnchen"), nullptr, new Param(0.5));
    chain.prepend(7, Binary16());
    expectDescribed(
        L"pumpSlow (7): Pumpe in M\u00FCnchen l\u00E4uft langsam.\n"
        L"  P1: 0x00000000000000000000000000000000/00000000-0000-0000-0000-000000000000\n"
        L"valveStuck (-30): A valve does not move.\n  valve: M\u00FCnchen\n  side: 0.5\n"
        L"Error -3\n",
        chain, translator);
}

TEST(Describe, translatesIdentifiedTextsAndLetsNoTextSteerATerminal) {
    Shouting const shouting;
    CatalogueTranslator const shoutingPumps(catalogue<pumps>, "", &shouting);
    Holder const error = HLVError::create(-20, ResString(Binary16(5), std::wstring(L"S\u00FCd")),
                                          L"\xD83D\xDE00\xD83D \x1B\n\x7F\x9B|\xDC00");
    expectDescribed(L"pumpFailed (-20): A pump does not start.\n"
                    L"  pump: S\u00FCd!\n  : \U0001F600\uFFFD     |\uFFFD\n",
                    error, shoutingPumps);
    expectDescribed(L"Error -3\n  : 7\n", HLVError::create(-3, 7), shoutingPumps);
}

TEST(Describe, failedAllocationsLeakNothing) {
    Holder const error = HLVError::create(-30, "M\xFCnchen", ResString(L"x"), L"\u20AC");
    auto const act = [&](int) {
        std::ostringstream stream;
        stream.exceptions(ios::badbit);
        describe(stream, *error.getError(), translator);
    };
    SCOPED_TRACE("describe");
    EXPECT_LE(10, failEachAllocation([] { return 0; }, act, [](int) {}));
}

} // namespace
} // namespace Halvora::test
