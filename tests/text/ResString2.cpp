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
        EXPECT_TRUE(same(wide, out) && text == viewOf(wide) && text != viewOf(out += L'x'));
    }
    EXPECT_THROW(ResString2(id, static_cast<char const*>(nullptr)), std::logic_error);
    EXPECT_THROW(ResString2(id, static_cast<wchar_t const*>(nullptr)), std::logic_error);
    EXPECT_THROW(ResString2(id, static_cast<unsigned short const*>(nullptr)), std::logic_error);
}

TEST(ResString2, equalityIsStricterThanThatOfTwoResStrings) {
    std::wstring const whole(1000, L'x'), changed = whole.substr(1) + L"y";
    struct {
        Binary16 id;
        std::wstring text;
        Binary16 otherId;
        std::wstring otherText;
        bool expected, ofResStrings;
    } const rows[] = {
        {id, L"a",  id,          L"b",       true,  true }, // the same text resource
        {id, L"a",  Binary16(9), L"a",       false, false},
        {{}, L"a",  id,          L"a",       false, true },
        {{}, L"a",  id,          L"b",       false, false},
        {id, L"a",  {},          L"a",       false, true },
        {{}, L"a",  {},          L"a",       true,  true },
        {{}, L"a",  {},          L"ab",      false, false},
        {{}, L"",   {},          L"",        true,  true },
        {{}, L"A",  {},          L"\x10041", true,  true },
        {{}, whole, {},          whole,      true,  true },
        {{}, whole, {},          changed,    false, true }, // beyond what a ResString holds
    };
    std::hash<ResString2> const hash;
    for (auto const& row : rows) {
        ResString const a(row.id, row.text), b(row.otherId, row.otherText);
        ResString2 const a2(row.id, row.text), b2(row.otherId, row.otherText);
        HLVString units;
        Convert::toHLVString(units, row.otherText);
        auto const check = [&](auto const& left, auto const& right, bool expected) {
            EXPECT_TRUE((left == right) == expected && (left != right) == !expected)
                << shown(row.text) << " with " << shown(row.otherText) << __PRETTY_FUNCTION__;
        };
        check(a, b, row.ofResStrings);
        check(a2, b2, row.expected);
        check(ResString2(a), b, row.expected || (row.ofResStrings && row.text == whole));
        check(hash(a2), hash(b2), row.expected);
        if (row.otherId == Binary16::EMPTY) { // as a text has none
            check(a2, row.otherText, row.expected);
            check(a2, row.otherText.c_str(), row.expected);
            check(a2, units, row.expected);
            check(a2, units.c_str(), row.expected);
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
    for (ResString2 const& text :
         {ResString2(id, L"\xE9\x20AC"), ResString2({}, L"!"), ResString2()}) {
        text.getText(narrow);
        text.getText(narrowStream << narrow);
        text.getText(stream);
        text.ToString(stream, Bracketing());
    }
    EXPECT_EQ("\xE9 \xE9 !!", narrowStream.str());
    EXPECT_EQ(L"\xE9\x20AC[\xE9\x20AC]!!", stream.str());
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
