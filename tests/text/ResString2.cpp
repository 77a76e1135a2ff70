#include <Halvora/text/ResString2.h>

#include <memory>

#include <Halvora/text/Convert.h>
#include <Halvora/text/ITranslator.h>
#include <Halvora/text/ResString.h>
#include <tests/support/Memory.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

struct Derived : ResString2 {};
constexpr auto equals = [](auto&& other) -> decltype(void(ResString2() == other)) {};
template <typename T>
constexpr bool compares = std::is_invocable_v<decltype(equals), T>;
static_assert(compares<ResString> && compares<Derived> && compares<wchar_t const (&)[2]> &&
              !compares<char const*> && !compares<std::nullptr_t> && !compares<int>);

Binary16 const id(1, 2, 3, 4);

TEST(ResString2, everySourceIsKeptWholeButNoNull) {
    std::wstring const wide(1000, L'\xE9');
    std::string const narrow(1000, '\xE9');
    HLVString const units(1000, 0xE9);
    for (ResString2 const& text :
         {ResString2({}, narrow), ResString2({}, narrow.c_str()), ResString2({}, wide),
          ResString2({}, wide.c_str()), ResString2({}, units), ResString2({}, units.c_str()),
          ResString2({}, viewOf(narrow)), ResString2({}, viewOf(wide))}) {
        std::wstring out(200, 'x');
        text.getText(out);
        EXPECT_TRUE(same(wide, out));
        EXPECT_TRUE(text == viewOf(wide) && text != viewOf(out += L'x'));
    }
    auto const check = [](auto const* null) {
        EXPECT_EQ("ResString2: the text is null",
                  refusal<std::logic_error>([null] { ResString2(id, null); }));
    };
    check(static_cast<char const*>(nullptr));
    check(static_cast<wchar_t const*>(nullptr));
    check(static_cast<unsigned short const*>(nullptr));
}

template <typename Left, typename Right>
void expectEquality(bool expected, Left const& left, Right const& right) {
    EXPECT_TRUE((left == right) == expected && (left != right) == !expected) << __PRETTY_FUNCTION__;
}

std::wstring const whole(70000, L'x'), changed = whole.substr(1) + L"y";
// Two identified texts, and whether they are equal as ResString2 and as ResString.
std::tuple<Binary16, std::wstring, Binary16, std::wstring, bool, bool> const pairs[] = {
    {id, L"a",  id,          L"b",              true,  true }, // the same text resource
    {id, L"a",  Binary16(9), L"a",              false, false},
    {{}, L"a",  id,          L"a",              false, true },
    {{}, L"a",  id,          L"b",              false, false},
    {id, L"a",  {},          L"a",              false, true },
    {{}, L"a",  {},          L"a",              true,  true },
    {{}, L"a",  {},          L"ab",             false, false},
    {{}, L"",   {},          L"",               true,  true },
    {{}, L"A",  {},          wideUnit(0x10041), true,  true },
    {{}, whole, {},          whole,             true,  true },
    {{}, whole, {},          changed,           false, true }, // beyond what a ResString holds
};

TEST(ResString2, equalityIsStricterThanThatOfTwoResStrings) {
    for (auto const& [idA, textA, idB, textB, expected, ofResStrings] : pairs) {
        SCOPED_TRACE(shown(textA) + " with " + shown(textB));
        ResString const a(idA, textA), b(idB, textB);
        ResString2 const a2(idA, textA), b2(idB, textB);
        expectEquality(ofResStrings, a, b);
        expectEquality(expected, a2, b2);
        expectEquality(expected || (ofResStrings && textA == whole), ResString2(a), b);
        expectEquality(expected, std::hash<ResString2>()(a2), std::hash<ResString2>()(b2));
        if (idB == Binary16::EMPTY) { // as a text has none
            HLVString units;
            Convert::toHLVString(units, textB);
            expectEquality(expected, a2, textB);
            expectEquality(expected, a2, textB.c_str());
            expectEquality(expected, a2, units);
            expectEquality(expected, a2, units.c_str());
        }
    }
    EXPECT_TRUE(ResString2() == static_cast<wchar_t const*>(nullptr));
    EXPECT_TRUE(ResString2({}, L"x") != static_cast<unsigned short const*>(nullptr));
}

struct Bracketing : ResString::DummyTranslator {
    using ResString::DummyTranslator::getTranslation;
    void getTranslation(std::wostream& stream, Binary16 const& of,
                        wchar_t const* text) const override {
        stream << (of == id ? L'[' : L'?') << text << L']';
    }
};

TEST(ResString2, asksTheTranslatorOnlyForTextWithAnId) {
    std::string narrow = "old";
    std::ostringstream narrowStream;
    std::wostringstream stream;
    for (auto const& text : {ResString2(id, L"\xE9\x20AC"), ResString2({}, L"!"), ResString2()}) {
        text.getText(narrow);
        text.getText(narrowStream << narrow);
        text.getText(stream);
        text.ToString(stream, Bracketing());
    }
    EXPECT_EQ("\xE9 \xE9 !!", narrowStream.str());
    EXPECT_EQ(L"\xE9\x20AC[\xE9\x20AC]!!", stream.str());
}

TEST(ResString2, goesThroughItsInterfaceAndFailedAssignmentLeavesIt) {
    auto const setup = [] { return ResString2({}, "old"); };
    auto const act = [](ResString2& text) {
        std::unique_ptr<ITranslatable> const copy =
            std::make_unique<ResString2>(id, std::wstring(1000, L'x').c_str());
        text = ResString2(dynamic_cast<ResString2&>(*copy));
        EXPECT_EQ(ResString2(id, ""), text);
    };
    auto const check = [&](ResString2& text) { EXPECT_EQ(setup(), text = std::as_const(text)); };
    EXPECT_EQ(5, failEachAllocation(setup, act, check));
}

} // namespace
} // namespace Halvora::test
