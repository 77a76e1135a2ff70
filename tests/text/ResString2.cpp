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
HALV_COMPILES(compares, argument<ResString2>() == argument<T>());
static_assert(compares<ResString> && compares<Derived> && compares<wchar_t const (&)[2]> &&
              !compares<char const*> && !compares<std::nullptr_t> && !compares<int>);

Binary16 const id(1, 2, 3, 4), other(9);

TEST(ResString2, everySourceIsKeptWholeButNoNull) {
    for (std::wstring const& wide : {std::wstring(), std::wstring(1000, L'\xE9')}) {
        std::string const narrow(wide.size(), '\xE9');
        HLVString const units(wide.size(), 0xE9);
        for (ResString2 const& text :
             {ResString2(id, narrow), ResString2(id, narrow.c_str()), ResString2(id, wide),
              ResString2(id, wide.c_str()), ResString2(id, units), ResString2(id, units.c_str())}) {
            std::wstring out(200, 'x');
            text.getText(out);
            EXPECT_TRUE(same(wide, out) && text == ResString2(id, L""));
        }
    }
    EXPECT_THROW(ResString2(id, static_cast<char const*>(nullptr)), std::logic_error);
    EXPECT_THROW(ResString2(id, static_cast<wchar_t const*>(nullptr)), std::logic_error);
    EXPECT_THROW(ResString2(id, static_cast<unsigned short const*>(nullptr)), std::logic_error);
}

TEST(ResString2, equalityIsStricterThanThatOfTwoResStrings) {
    struct {
        Binary16 id;
        std::wstring text;
        Binary16 otherId;
        std::wstring otherText;
        bool expected, ofResStrings;
    } const rows[] = {
        {id, L"a",  id,    L"b",  true,  true }, // the same text resource
        {id, L"a",  other, L"a",  false, false},
        {{}, L"a",  id,    L"a",  false, true },
        {{}, L"a",  other, L"a",  false, true }, // so equality of ResString is not transitive
        {{}, L"a",  id,    L"b",  false, false},
        {{}, L"a",  {},    L"a",  true,  true },
        {{}, L"a",  {},    L"ab", false, false},
        {{}, L"ab", {},    L"ac", false, false},
        {{}, L"",   {},    L"",   true,  true },
        {{}, L"",   id,    L"",   false, true },
    };
    std::hash<ResString2> const hash;
    for (auto const& row : rows) {
        ResString const a(row.id, row.text), b(row.otherId, row.otherText);
        ResString2 const a2(a), b2(row.otherId, row.otherText);
        SCOPED_TRACE(shown(row.text) + " with " + shown(row.otherText));
        EXPECT_TRUE((a == b) == row.ofResStrings && (b != a) == !row.ofResStrings);
        EXPECT_TRUE((a2 == b2) == row.expected && (b2 != a2) == !row.expected);
        EXPECT_TRUE((a2 == b) == row.expected && (b2 != a) == !row.expected);
        EXPECT_EQ(row.expected, hash(a2) == hash(b2));
    }
}

TEST(ResString2, aWholeTextEqualsTheSameTextWithoutAnId) {
    std::wstring const whole(1000, L'x'), changed = whole.substr(1) + L"y";
    struct {
        Binary16 id;
        std::wstring text, compared;
        bool expected;
    } const rows[] = {
        {{}, L"a",  L"a",       true },
        {id, L"a",  L"a",       false},
        {{}, L"a",  L"b",       false},
        {{}, L"a",  L"ab",      false},
        {{}, L"ab", L"a",       false},
        {{}, L"",   L"",        true },
        {id, L"",   L"",        false},
        {{}, L"A",  L"\x10041", true }, // cut to 16 bits
        {{}, whole, whole,      true },
        {{}, whole, changed,    false},
    };
    for (auto const& [textId, wide, compared, expected] : rows) {
        ResString2 const text(textId, wide);
        HLVString units;
        Convert::toHLVString(units, compared);
        auto const check = [&](auto const& with) {
            EXPECT_TRUE((text == with) == expected && (text != with) == !expected)
                << shown(wide) << " with " << shown(compared) << __PRETTY_FUNCTION__;
        };
        check(compared);
        check(compared.c_str());
        check(units);
        check(units.c_str());
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
    ResString2 const text(id, L"\xE9\x20AC"), anonymous({}, L"!"), none;
    std::string narrow = "old";
    std::ostringstream narrowStream;
    std::wostringstream stream;
    text.getText(narrow);
    text.getText(narrowStream);
    text.getText(stream);
    for (ResString2 const& each : {text, anonymous, none}) {
        each.ToString(stream, Bracketing());
    }
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

} // namespace
} // namespace Halvora::test
