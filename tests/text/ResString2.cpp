#include <Halvora/text/ResString2.h>

#include <climits>
#include <memory>
#include <sstream>
#include <stdexcept>

#include <Halvora/text/ResString.h>
#include <tests/support/Memory.h>

namespace Halvora::test {
namespace {

using Dummy = ResString::DummyTranslator;
Binary16 const id(1, 2, 3, 4);

struct Grouped : std::numpunct<wchar_t> {
    std::string do_grouping() const override { return "\1"; }
};

TEST(DummyTranslator, writesNumbersWhateverTheGlobalLocale) {
    std::locale const before = std::locale::global({std::locale::classic(), new Grouped});
    for (int const number : {0, 7, -10, 1000, INT_MAX, INT_MIN}) {
        auto const act = [number](ITranslator const* translator) {
            std::unique_ptr<ResString> const code(translator->getErrorDescription(number));
            std::unique_ptr<ResString> const param(translator->getErrorParamDesc(9, number));
            std::unique_ptr<wchar_t[]> const name(translator->getErrorName(number));
            std::wstring const digits = std::to_wstring(number);
            EXPECT_EQ(digits + L" P" + digits + L" " + digits,
                      code->wstr() + L" " + param->wstr() + L" " + name.get());
            EXPECT_TRUE(code->id() == Binary16() && param->id() == Binary16());
            name[19] = 0; // its last element
        };
        EXPECT_LE(3, failEachAllocation(ResString::getMainTranslator, act, [](auto) {}));
    }
    std::locale::global(before);
}

TEST(DummyTranslator, writesDefaultTextsAndMarksTheStreamBadForNull) {
    std::wostringstream stream;
    Dummy().getTranslation(stream, ResString(id, std::wstring(2, L'\0')));
    Dummy().getTranslation(stream, id, L"z");
    EXPECT_TRUE(stream.good());
    Dummy().getTranslation(stream, id, nullptr);
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(std::wstring(2, L'\0') + L"z", stream.str());
    stream.clear();
    stream.exceptions(std::ios_base::badbit);
    EXPECT_THROW(Dummy().getTranslation(stream, id, nullptr), std::ios_base::failure);
}

TEST(ResString, mainTranslatorIsASlot) {
    auto const* const first = dynamic_cast<Dummy const*>(ResString::getMainTranslator());
    ASSERT_TRUE(first != nullptr && first->getLanguage().empty());
    ResString::setMainTranslator(nullptr);
    EXPECT_EQ(nullptr, ResString::getMainTranslator());
    ResString::setMainTranslator(first);
    EXPECT_EQ(first, ResString::getMainTranslator());
}

struct Bracketing : Dummy {
    using Dummy::getTranslation;
    void getTranslation(std::wostream& stream, Binary16 const& of,
                        wchar_t const* text) const override {
        stream << (of == id ? L'[' : L'?') << text << L']';
    }
};

TEST(ResString2, keepsEverySourceWholeButNoNull) {
    std::string const narrow(1000, '\xE9');
    std::wstring const wide(1000, L'\xE9');
    HLVString const units(1000, 0xE9);
    std::vector<ResString2> texts = {ResString2(id, narrow), ResString2(id, narrow.c_str())};
    texts.insert(texts.end(), {ResString2(id, wide), ResString2(id, wide.c_str())});
    texts.insert(texts.end(), {ResString2(id, units), ResString2(id, units.c_str())});
    for (ResString2 const& text : texts) {
        std::wstring out(200, 'x');
        text.getText(out);
        EXPECT_EQ(wide, out) << &text - &texts[0];
    }
    EXPECT_THROW(ResString2(id, static_cast<char const*>(nullptr)), std::logic_error);
    EXPECT_THROW(ResString2(id, static_cast<wchar_t const*>(nullptr)), std::logic_error);
    EXPECT_THROW(ResString2(id, static_cast<unsigned short const*>(nullptr)), std::logic_error);
}

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

} // namespace
} // namespace Halvora::test
