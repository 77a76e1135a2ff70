#include <Halvora/text/ResString.h>

#include <climits>
#include <memory>

#include <Halvora/text/Convert.h>
#include <tests/support/Forms.h>
#include <tests/support/Memory.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

// What is read as a packed or raw form, and that no text is.
HALV_COMPILES(isRead, ResString().set(argument<T>()));
HALV_COMPILES(isPacked, ResString::set(argument<T>(), 1, nullptr));
HALV_COMPILES(isMeasured, ResString::size(argument<T>()));
HALV_COMPILES(isMeasuredWithin, ResString::sizeWithin(argument<T>(), 1));
HALV_COMPILES(isReadRaw, VarChar::set(argument<T>(), argument<VarChar&>()));
HALV_COMPILES(isWidened,
              VarChar::set(argument<T>(), argument<std::wstring&>(), argument<unsigned short&>()));
HALV_COMPILES(isCompared, VarChar::equal(argument<T>(), L"", 0));
HALV_COMPILES(isMeasuredRaw, VarChar::size(argument<T>()));
HALV_COMPILES(isRawWithin, VarChar::sizeWithin(argument<T>(), 1));
template <int count, typename... T>
constexpr bool allHave = ((isRead<T> + isPacked<T> + isMeasured<T> + isMeasuredWithin<T> +
                               isReadRaw<T> + isWidened<T> + isCompared<T> + isMeasuredRaw<T> +
                               isRawWithin<T> ==
                           count) &&
                          ...);
static_assert(allHave<9, char (&)[9], char const*, unsigned char const (&)[9], std::nullptr_t>);
static_assert(allHave<0, char const (&)[9], wchar_t*, wchar_t (&)[9], char16_t const*,
                      char32_t (&)[9], decltype((u8"x"))>);

// A view is never converted where nobody asks for it, and nothing else is taken for one.
struct ToView {
    operator std::wstring_view() const;
};
static_assert(!std::is_convertible_v<std::wstring_view, ResString> &&
              !std::is_constructible_v<ResString, ToView>);

std::string const idBytes = "0123456789abcdef";
Binary16 const id(idBytes.data(), 16);

HLVString unitsOf(std::wstring const& text) {
    HLVString units;
    Convert::toHLVString(units, text);
    return units;
}

TEST(ResString, textByExample) {
    std::wstring const longest(128, L'x'), longer(65537, L'x'), withZero(L"a\0b", 3);
    std::pair<std::wstring, std::wstring> const rows[] = {
        {withZero,       withZero     }, // a counted text keeps its zeros
        {L"\xE9\x20AC",  L"\xE9\x20AC"},
        {L"\x1F600",     L"\xF600"    }, // cut to 16 bits
        {L"\x10041",     L"A"         }, // so another character may come out
        {longest,        longest      },
        {longest + L"x", longest      }, // and the text to 128 units
        {longer,         longest      },
    };
    for (auto const& [wide, kept] : rows) {
        auto const view = viewOf(wide);
        for (ResString const& text : {ResString(id, wide), ResString(id, unitsOf(wide)),
                                      ResString(id, view), ResString(view)}) {
            std::string narrow = "old";
            text.toStr(narrow);
            EXPECT_TRUE(same(kept, text.wstr()) && text == view && !(text != view)) << shown(wide);
            EXPECT_TRUE(text.size() == 18 + 2 * kept.size() && narrow == Convert::toAString(kept));
            EXPECT_EQ(wide.size() <= 128, ResString::fits(wide) && ResString::fits(unitsOf(wide)));
            EXPECT_EQ(wide.size() <= 128, ResString::fits(view));
        }
    }
    EXPECT_EQ(2, ResString(L"\x10000z").length()); // no end, though the unit is zero
    EXPECT_TRUE(ResString(L"ab") != ResString(L"ac") && ResString(L"ab") != viewOf<wchar_t>(L"cb"));
}

TEST(ResString, nullIsTheEmptyTextAndForm) {
    ResString text(id, std::wstring(L"old")), other = text;
    EXPECT_EQ(0, (text = static_cast<wchar_t const*>(nullptr)).length());
    EXPECT_EQ(0, (other = static_cast<unsigned short const*>(nullptr)).length());
    EXPECT_EQ(0, ResString(static_cast<unsigned short const*>(nullptr)).length());
    text.set(nullptr);
    EXPECT_TRUE(text.id() == Binary16() && ResString::size(nullptr) == 18);
    std::string slot(28, '#');
    ResString::set(nullptr, 4, &slot[1]);
    EXPECT_EQ("#" + std::string(26, '\0') + "#", slot);
    ResString::set(&text, 4, nullptr); // does nothing
}

TEST(ResString, packedFormsLieAnywhereAndMayOverlapTheirSlots) {
    EXPECT_EQ("", wrongForms<ResString>(idBytes));
    EXPECT_EQ("30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66 02 00 61 00 cd ab",
              hexOf(ResString(id, std::wstring(L"a\xABCD"))));
}

struct Model {
    Binary16 id;
    std::wstring text; // its units
};

// Changes a text and its model, and says how.
std::string step(ResString& text, Model& model, ResString const& other, Model const& otherModel) {
    std::wstring const any = anyText(draw(4) == 0 ? 120 + draw(20) : draw(20));
    HLVString const units = unitsOf(any);
    switch (draw(8)) {
    case 0: text = other, model = otherModel; return "copied from the other";
    case 1: text.set(&other), model = otherModel; return "loaded from the other";
    case 2: text = model.id = Binary16(draw(3)); return "given another identifier";
    case 3: {
        model.text = model.text.substr(0, 127);
        unsigned const from = draw(model.text.size() + 1);
        text = unitsOf(model.text + L'\0'); // so that there is an end
        draw(2) == 0 ? text = text.hlv_str() + from : text = text.c_str() + from;
        model.text.erase(0, from);
        return "given its own text from unit " + std::to_string(from);
    }
    case 4: text = any; break;
    case 5: text = any.c_str(); break;
    case 6: text = units; break;
    default: text = units.c_str();
    }
    model.text = Convert::toWString(units).substr(0, 128);
    return "given the text " + shown(any);
}

TEST(ResString, anyStepsAgreeWithAModel) {
    for (int round = 0; round < 1000; ++round) {
        ResString texts[2];
        Model models[2];
        std::string steps = "after these steps:\n";
        for (int i = 0; i < 8; ++i) {
            unsigned const at = draw(2), other = 1 - at;
            steps += "  text " + std::to_string(at) + " is ";
            steps += step(texts[at], models[at], texts[other], models[other]) + '\n';
            ASSERT_TRUE(same(models[at].text, std::wstring(texts[at].c_str()))) << steps;
            ASSERT_EQ(models[at].id, texts[at].id()) << steps;
        }
    }
    ResString text(HLVString(100, 'a') + HLVString{'b', 0, 'c'});
    text = text.hlv_str() + 1;
    EXPECT_TRUE(same(std::wstring(99, L'a') + L"b", text.wstr()));
    EXPECT_EQ('c', text.hlv_str()[102]); // left by the longer text
}

// Takes three characters.
struct Sink : std::wstreambuf {
    wchar_t room[3] = {};
    Sink() { setp(room, room + 3); }
};

TEST(ResString, aStreamIsLeftAsByInsertionsOfEachCharacter) {
    for (std::wstring const text : {L"", L"a", L"ab", L"abc", L"abcd"}) {
        Sink sinks[2];
        std::wostream slow(&sinks[0]), ours(&sinks[1]);
        slow.width(2); // for the first character
        ours.width(2);
        std::for_each(text.begin(), text.end(), [&slow](wchar_t c) { slow << c; });
        ResString(text).toWStr(ours);
        EXPECT_EQ(slow.rdstate(), ours.rdstate()) << shown(text);
        EXPECT_TRUE(std::equal(sinks[0].room, sinks[0].room + 3, sinks[1].room)) << shown(text);
    }
}

TEST(DummyTranslator, writesNumbersAndDefaultTextsAsTheyAre) {
    for (int const number : {0, -10, INT_MAX, INT_MIN}) {
        auto const act = [number](ITranslator const* translator) {
            std::unique_ptr<ResString> const code(translator->getErrorDescription(number));
            std::unique_ptr<ResString> const param(translator->getErrorParamDesc(9, number));
            std::unique_ptr<wchar_t[]> const name(translator->getErrorName(number));
            std::wstring const digits = std::to_wstring(number);
            EXPECT_EQ(*code, ResString(digits));
            EXPECT_EQ(*param, ResString(L"P" + digits));
            EXPECT_EQ(name.get(), digits);
            name[19] = 0; // its last element
        };
        EXPECT_LE(2, failEachAllocation(ResString::getMainTranslator, act, [](auto) {}));
    }
    std::wostringstream stream;
    ITranslator const& dummy = *ResString::getMainTranslator();
    dummy.getTranslation(stream, ResString(id, std::wstring(2, L'\0')));
    dummy.getTranslation(stream, id, L"z");
    EXPECT_TRUE(stream.good() && dummy.getLanguage().empty());
    dummy.getTranslation(stream, id, nullptr);
    EXPECT_TRUE(stream.bad() && stream.str() == std::wstring(2, L'\0') + L"z");
    ResString::setMainTranslator(nullptr);
    EXPECT_EQ(nullptr, ResString::getMainTranslator());
    ResString::ms_pMainTranslator = &dummy;
    EXPECT_EQ(&dummy, ResString::getMainTranslator());
}

} // namespace
} // namespace Halvora::test
