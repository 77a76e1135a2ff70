#include <Halvora/text/ITranslator.h>

#include <climits>
#include <memory>
#include <sstream>

#include <Halvora/text/ResString.h>
#include <tests/support/Memory.h>

namespace Halvora::test {
namespace {

using Dummy = ResString::DummyTranslator;

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
    Binary16 const id(7);
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
    ResString::ms_pMainTranslator = first;
    EXPECT_EQ(first, ResString::getMainTranslator());
}

} // namespace
} // namespace Halvora::test
