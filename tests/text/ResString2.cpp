#include <Halvora/text/ResString2.h>

#include <memory>
#include <sstream>
#include <stdexcept>

#include <Halvora/text/Convert.h>
#include <Halvora/text/ITranslator.h>
#include <Halvora/text/ResString.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

Binary16 const id(1, 2, 3, 4);

TEST(ResString2, everySourceIsKeptWholeButNoNull) {
    for (std::wstring const& wide :
         {std::wstring(), std::wstring(L"a\xE9"), std::wstring(1000, L'\xE9')}) {
        std::string const narrow(wide.begin(), wide.end());
        HLVString const units(wide.begin(), wide.end());
        std::vector<ResString2> const texts = {
            {id, narrow        },
            {id, narrow.c_str()},
            {id, wide          },
            {id, wide.c_str()  },
            {id, units         },
            {id, units.c_str() },
        };
        for (ResString2 const& text : texts) {
            std::wstring out(200, 'x');
            text.getText(out);
            EXPECT_TRUE(same(wide, out)) << "source " << &text - &texts[0];
            EXPECT_TRUE(text == ResString2(id, L"") && !(text == ResString2({}, wide)));
        }
    }
    EXPECT_THROW(ResString2(id, static_cast<char const*>(nullptr)), std::logic_error);
    EXPECT_THROW(ResString2(id, static_cast<wchar_t const*>(nullptr)), std::logic_error);
    EXPECT_THROW(ResString2(id, static_cast<unsigned short const*>(nullptr)), std::logic_error);
}

template <typename Left, typename Right, typename = void>
constexpr bool compares = false;
template <typename Left, typename Right>
constexpr bool compares<Left, Right, decltype(void(Left() == Right()))> = true;
struct Derived : ResString2 {};
static_assert(compares<ResString2, ResString> && compares<Derived, ResString2> &&
              compares<Derived, Derived> && !compares<ResString2, char const*> &&
              !compares<ResString2, std::nullptr_t> && !compares<ResString2, int>);

struct Text {
    Binary16 id;
    std::wstring text;
};

TEST(ResString2, equalityIsDecidedByTheIdsAndWithoutThemByTheTexts) {
    Binary16 const other(9);
    struct {
        Text a, b;
        bool expected;
    } const rows[] = {
        {{id, L"a"},                           {id, L"b"},                           true },
        {{id, L"a"},                           {other, L"a"},                        false},
        {{{}, L"a"},                           {id, L"a"},                           false}, // unlike ResString
        {{{}, L"a"},                           {{}, L"a"},                           true },
        {{{}, L"a"},                           {{}, L"ab"},                          false},
        {{{}, L"ab"},                          {{}, L"a"},                           false},
        {{{}, L"a"},                           {{}, L"b"},                           false},
        {{{}, L""},                            {{}, L""},                            true },
        {{{}, L""},                            {id, L""},                            false},
        {{{}, std::wstring(127, L'x') + L"a"}, {{}, std::wstring(127, L'x') + L"b"}, false},
    };
    std::hash<ResString2> const hash;
    for (auto const& [first, second, expected] : rows) {
        ResString2 const a(first.id, first.text), b(second.id, second.text);
        ResString const shortB(second.id, second.text);
        SCOPED_TRACE(shown(first.text) + " with " + shown(second.text));
        EXPECT_TRUE((a == b) == expected && (b == a) == expected && (a != b) == !expected);
        EXPECT_TRUE((a == shortB) == expected && (a != shortB) == !expected);
        EXPECT_EQ(expected, a == ResString2(shortB));
        EXPECT_EQ(expected, hash(a) == hash(b));
    }
    EXPECT_EQ(ResString2(), ResString::EMPTY);
}

TEST(ResString2, aWholeTextEqualsTheSameTextWithoutAnId) {
    std::wstring const whole(1000, L'x');
    struct {
        Text text;
        std::wstring compared;
        bool expected;
    } const rows[] = {
        {{{}, L"a"},  L"a",                   true },
        {{id, L"a"},  L"a",                   false}, // the text compared has no identifier
        {{{}, L"a"},  L"b",                   false},
        {{{}, L"a"},  L"ab",                  false},
        {{{}, L"ab"}, L"a",                   false},
        {{{}, L""},   L"",                    true },
        {{id, L""},   L"",                    false},
        {{{}, L"A"},  L"\x10041",             true }, // cut to 16 bits, as a ResString would
        {{{}, whole}, whole,                  true },
        {{{}, whole}, whole.substr(1),        false},
        {{{}, whole}, whole.substr(1) + L"y", false}, // beyond what a ResString holds
    };
    for (auto const& [stored, compared, expected] : rows) {
        ResString2 const text(stored.id, stored.text);
        HLVString units;
        Convert::toHLVString(units, compared);
        EXPECT_TRUE((text == compared) == expected && (text != compared) == !expected &&
                    (text == compared.c_str()) == expected &&
                    (text != compared.c_str()) == !expected && (text == units) == expected &&
                    (text != units) == !expected && (text == units.c_str()) == expected &&
                    (text != units.c_str()) == !expected)
            << shown(stored.text) << " with " << shown(compared);
    }
    EXPECT_TRUE(ResString2({}, L"x") == L"x" && ResString2({}, L"x") != L"y");
    EXPECT_TRUE(ResString2() == static_cast<wchar_t const*>(nullptr));
    EXPECT_TRUE(ResString2({}, L"x") != static_cast<unsigned short const*>(nullptr));
    long const before = allocations();
    EXPECT_TRUE(ResString2() != whole && before == allocations());
}

struct Bracketing : ResString::DummyTranslator {
    using ResString::DummyTranslator::getTranslation;
    void getTranslation(std::wostream& stream, Binary16 const& of,
                        wchar_t const* text) const override {
        stream << (of == id ? L'[' : L'?') << text << L']';
    }
};

TEST(ResString2, asksTheTranslatorOnlyForTextWithAnId) {
    ResString2 const text(id, L"\xE9\x20AC"), anonymous({}, L"!"), none;
    std::string narrow = "old";
    std::ostringstream narrowStream;
    std::wostringstream stream;
    text.getText(narrow);
    text.getText(narrowStream);
    text.getText(stream);
    text.ToString(stream, Bracketing());
    anonymous.ToString(stream, Bracketing());
    none.ToString(stream, Bracketing());
    EXPECT_EQ("\xE9 \xE9 ", narrow + narrowStream.str());
    EXPECT_EQ(L"\xE9\x20AC[\xE9\x20AC]!", stream.str());
}

TEST(ResString2, goesThroughItsInterfaceAndFailedAssignmentLeavesIt) {
    std::string const longText(1000, 'x');
    auto const setup = [] { return ResString2({}, "old"); };
    auto const act = [&](ResString2& text) {
        std::unique_ptr<ITranslatable> const copy = std::make_unique<ResString2>(id, longText);
        text = dynamic_cast<ResString2&>(*copy);
        EXPECT_EQ(ResString2(id, ""), text);
    };
    auto const check = [&](ResString2& text) { EXPECT_EQ(setup(), text = std::as_const(text)); };
    EXPECT_EQ(3, failEachAllocation(setup, act, check));
}

TEST(ResString2, eachSourceIsOneAllocation) {
    auto const check = [](auto const& text) {
        expectAllocations(1, [&] { ResString2({}, text); });
        expectAllocations(1, [&] { ResString2({}, text.c_str()); });
    };
    check(std::string(5000, 'x'));
    check(std::wstring(5000, L'x'));
    check(HLVString(5000, 'x'));
    ResString const text(std::wstring(128, L'x'));
    expectAllocations(1, [&] { ResString2{text}; });
}

} // namespace
} // namespace Halvora::test
