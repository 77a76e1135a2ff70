#include "Shown.h"

namespace Halvora::test {
namespace {

static_assert(std::extent_v<decltype(CatalogueRow::params)> == 3); // as many as an error has

constexpr CatalogueRow pumps[] = {
    {-20, L"pumpFailed", L"A pump does not start.",                    {L"pump"}         },
    {7,   L"pumpSlow",   L"Pumpe in M\u00FCnchen l\u00E4uft langsam.", {nullptr, L"rate"}},
};
constexpr CatalogueRow valves[] = {
    {-30,             L"valveStuck", L"A valve does not move.", {L"valve", L"angle", L"side"}},
    {-2147483647 - 1, L"least",      L"",                       {}                           },
    {2147483647,      L"most",       L"The last.",              {}                           },
};
constexpr CatalogueRow nameless[] = {
    {1, nullptr, L"", {}}
};
static_assert(!detail::areWhole(detail::joined<nameless>()));
#define HALF L"1234567812345678123456781234567812345678123456781234567812345678"
static_assert(detail::isKept(HALF HALF) && !detail::isKept(HALF HALF L"9"));
static_assert(detail::isKept(L"\uFFFF") && !detail::isKept(L"\U00010000"));

constexpr Catalogue both = catalogue<pumps, valves>;
CatalogueTranslator const translator(both, "en"), pumpTranslator(catalogue<pumps>);

TEST(Catalogue, findsTheRowsOfJoinedTables) {
    for (CatalogueRow const& row : valves) {
        EXPECT_TRUE(both.find(row.code) == &row && catalogue<pumps>.find(row.code) == nullptr);
    }
    for (int const code : {-31, -29, -19, 0, 6, 8}) {
        EXPECT_TRUE(both.find(code) == nullptr && Catalogue().find(code) == nullptr) << code;
    }
}

// What the interface answers for a code: its name, description and parameter names.
std::wstring answers(ITranslator const& asked, int code) {
    std::wstring all = std::unique_ptr<wchar_t[]>(asked.getErrorName(code)).get();
    all += L"/" + std::unique_ptr<ResString>(asked.getErrorDescription(code))->wstr();
    for (int param = 0; param < 5; ++param) {
        all += L"/" + std::unique_ptr<ResString>(asked.getErrorParamDesc(code, param))->wstr();
    }
    return all;
}

TEST(CatalogueTranslator, answersFromItsRowsAndElseAsTheNextOne) {
    CatalogueTranslator const valvesFirst(catalogue<valves>, "", &pumpTranslator);
    for (auto const* asked : {&translator, &valvesFirst}) {
        EXPECT_EQ(L"pumpSlow/Pumpe in M\u00FCnchen l\u00E4uft langsam./P0/P1/rate/P3/P4",
                  answers(*asked, 7));
        EXPECT_EQ(L"valveStuck/A valve does not move./P0/valve/angle/side/P4",
                  answers(*asked, -30));
        EXPECT_EQ(L"-21/-21/P0/P1/P2/P3/P4", answers(*asked, -21));
    }
    std::wostringstream texts;
    translator.getTranslation(texts, ResString(L"by text "));
    translator.getTranslation(texts, Binary16(7), L"and id");
    EXPECT_EQ(L"by text and id", texts.str());
    EXPECT_EQ("en/", translator.getLanguage() + "/" + pumpTranslator.getLanguage());
    long const before = allocations();
    delete translator.getErrorDescription(-30);
    EXPECT_EQ(1, allocations() - before);
}

} // namespace
} // namespace Halvora::test
