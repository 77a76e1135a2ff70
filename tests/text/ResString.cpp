#include <Halvora/text/ResString.h>

#include <climits>
#include <memory>

#include <Halvora/text/Convert.h>
#include <tests/support/Forms.h>
#include <tests/support/Memory.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

// How many functions read this as a packed or raw form; texts are refused by all.
#define READS(name, ...)                      \
    template <typename Form, typename = void> \
    constexpr int name = 0;                   \
    template <typename Form>                  \
    constexpr int name<Form, decltype(void(__VA_ARGS__))> = 1
READS(setsText, ResString().set(std::declval<Form>()));
READS(setsSlot, ResString::set(std::declval<Form>(), 1, nullptr));
READS(hasSize, ResString::size(std::declval<Form>()));
READS(hasSizeWithin, ResString::sizeWithin(std::declval<Form>(), 1));
READS(hasRawSize, VarChar::size(std::declval<Form>()));
READS(hasRawSizeWithin, VarChar::sizeWithin(std::declval<Form>(), 1));
READS(setsRaw, VarChar::set(std::declval<Form>(), std::declval<VarChar&>()));
READS(setsWide, VarChar::set(std::declval<Form>(), std::declval<std::wstring&>(),
                             std::declval<unsigned short&>()));
READS(equals, VarChar::equal(std::declval<Form>(), L"", 0));
template <typename Form>
constexpr int readers =
    setsText<Form> + setsSlot<Form> + hasSize<Form> + hasSizeWithin<Form> + hasRawSize<Form> +
    hasRawSizeWithin<Form> + setsRaw<Form> + setsWide<Form> + equals<Form>;
static_assert(readers<char (&)[9]> == 9 && readers<char const*> == 9 &&
              readers<unsigned char const (&)[9]> == 9 && readers<std::nullptr_t> == 9);
static_assert(readers<char const (&)[9]> + readers<wchar_t*> + readers<wchar_t (&)[9]> +
                  readers<char16_t const*> + readers<char32_t (&)[9]> +
                  readers<decltype((u8"x"))> ==
              0);

// A view is never converted where nobody asks for it, and nothing else is taken for one.
struct ToView {
    operator std::wstring_view() const;
    operator std::string_view() const;
};
static_assert(!std::is_convertible_v<std::wstring_view, ResString> &&
              !std::is_constructible_v<ResString, ToView> &&
              !std::is_constructible_v<VarChar, ToView>);

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
        {withZero,          withZero     }, // a counted text keeps its zeros
        {L"\xE9\x20AC",     L"\xE9\x20AC"},
        {wideUnit(0x1F600), L"\xF600"    }, // cut to 16 bits
        {wideUnit(0x10041), L"A"         }, // so another character may come out
        {longest,           longest      },
        {longest + L"x",    longest      }, // and the text to 128 units
        {longer,            longest      },
    };
    for (auto const& [wide, kept] : rows) {
        auto const view = viewOf(wide);
        for (ResString const& text : {ResString(id, wide), ResString(id, unitsOf(wide)),
                                      ResString(id, view), ResString(view)}) {
            EXPECT_TRUE(same(kept, text.wstr())) << "of " << shown(wide);
            EXPECT_TRUE(text == view && !(text != view)) << shown(wide);
            EXPECT_EQ(18 + 2 * kept.size(), text.size());
        }
        bool const fits = wide.size() <= 128;
        EXPECT_TRUE(fits == ResString::fits(wide) && fits == ResString::fits(view) &&
                    fits == ResString::fits(unitsOf(wide)));
    }
    auto const early = wideUnit(0x10000) + L'z'; // no end, though the unit is zero
    EXPECT_EQ(sizeof(wchar_t) == 2 ? 0 : 2, ResString(early.c_str()).length());
    std::string narrow = "old";
    ResString(L"\xE9\x20AC").toStr(narrow);
    EXPECT_EQ("\xE9 ", narrow);
    EXPECT_TRUE(ResString(L"ab") != ResString(L"ac") && ResString(L"ab") != viewOf<wchar_t>(L"cb"));
}

TEST(ResString, nullIsTheEmptyTextAndForm) {
    ResString text(id, std::wstring(L"old")), other = text;
    EXPECT_EQ(0, (text = static_cast<wchar_t const*>(nullptr)).length());
    EXPECT_EQ(0, (other = static_cast<unsigned short const*>(nullptr)).length());
    EXPECT_EQ(0, ResString(static_cast<unsigned short const*>(nullptr)).length());
    text = ResString(id, std::wstring(L"old"));
    text.set(nullptr);
    EXPECT_EQ(ResString(), text);
    EXPECT_TRUE(text.id() == Binary16() && text.length() == 0 && ResString::size(nullptr) == 18);
    std::string slot(28, '#');
    ResString::set(nullptr, 4, &slot[1]);
    EXPECT_EQ("#" + std::string(26, '\0') + "#", slot);
    ResString::set(&text, 4, nullptr); // does nothing
}

TEST(ResString, packedFormsLieAnywhereAndMayOverlapTheirSlots) {
    EXPECT_EQ("", wrongForms<ResString>(idBytes));
    EXPECT_EQ(idBytes + std::string("\2\0a\0\xCD\xAB", 6),
              bytesOf(ResString(id, std::wstring(L"a\xABCD"))));
}

TEST(ResString, eachAssignmentReplacesTheTextOrTheIdentifier) {
    for (unsigned round = 0; round < 2000 && !HasFailure(); ++round) {
        std::wstring const any = anyText(draw(4) == 0 ? 120 + draw(20) : draw(20));
        HLVString const units = unitsOf(any);
        std::wstring const kept = Convert::toWString(units).substr(0, 128);
        ResString text(Binary16(9), anyText(draw(130))), copy, loaded(id, std::wstring(L"old"));
        static_cast<void>(text.c_str()); // which leaves a cache
        switch (round % 5) {
        case 0: text = any; break;
        case 1: text = any.c_str(); break;
        case 2: text = units; break;
        case 3: text = units.c_str(); break;
        default: text = viewOf(any);
        }
        EXPECT_EQ(Binary16(9), text.id());
        text = Binary16(round);
        loaded.set(&text);
        copy = text;
        for (ResString const& one : {text, copy, loaded, ResString(text)}) {
            EXPECT_TRUE(same(kept, std::wstring(one.c_str())));
            EXPECT_EQ(Binary16(round), one.id());
        }
        auto const from = draw(std::min<std::size_t>(kept.size(), 127) + 1);
        text = unitsOf(kept.substr(0, 127) + L'\0'); // so that there is an end
        round % 2 == 0 ? text = text.hlv_str() + from : text = text.c_str() + from; // a part of it
        EXPECT_TRUE(same(kept.substr(0, 127).substr(from), text.wstr())) << "from " << from;
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
    for (ITranslator const* const next : {static_cast<ITranslator const*>(nullptr), &dummy}) {
        ResString::setMainTranslator(next);
        EXPECT_TRUE(ResString::getMainTranslator() == next &&
                    ResString::ms_pMainTranslator == next);
    }
}

} // namespace
} // namespace Halvora::test
