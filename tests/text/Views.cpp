#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/ResString2.h>
#include <Halvora/text/VarChar.h>

#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

struct ToView {
    operator std::wstring_view() const;
};
// A view is never converted where nobody asks for it, and nothing else is taken for one.
static_assert(!std::is_convertible_v<std::wstring_view, ResString>);
static_assert(!std::is_constructible_v<ResString, ToView>);
static_assert(!std::is_constructible_v<ResString2, Binary16, ToView>);
static_assert(std::is_invocable_v<decltype(&Convert::toBool), std::string>); // has no overload

// What each gives for a view is what it gives for a string.
template <typename Text>
void checkTools(Text const& text, Text const& set) {
    using View = std::basic_string_view<typename Text::value_type>;
    auto const separator = text.empty() ? text[0] : text[draw(text.size())];
    auto const splits = [&](auto split) {
        std::vector<Text> expected, fields(3, text);
        std::vector<View> views;
        split(text, expected);
        split(View(text), views);
        split(View(fields[1]), fields);
        ASSERT_EQ(expected, fields) << testing::PrintToString(text);
        ASSERT_EQ(expected, std::vector<Text>(views.begin(), views.end()));
    };
    splits([&](auto of, auto& into) { Convert::split(of, separator, into); });
    splits([&](auto of, auto& into) { Convert::splitQuoted(of, separator, into); });
    auto const trims = [&](auto trim) {
        Text whole = text, byView = text;
        View view = text;
        trim(whole, set);
        trim(byView, View(set));
        trim(view, set);
        ASSERT_TRUE(whole == byView && whole == view) << testing::PrintToString(text);
    };
    trims([](auto& of, auto const& by) { Convert::trimLeft(of, by); });
    trims([](auto& of, auto const& by) { Convert::trimRight(of, by); });
    trims([](auto& of, auto const& by) { Convert::trim(of, by); });
}

TEST(Views, areReadAsStrings) {
    for (int i = 0; i < 3000 && !HasFatalFailure(); ++i) {
        std::string narrow, set;
        for (auto length = draw(20); length > 0; --length) {
            narrow += "a\"\",; \xE9\0"[draw(8)];
            set += "a ;"[draw(3)];
        }
        checkTools(narrow, set);
        checkTools(Convert::toWString(narrow), Convert::toWString(set));

        std::wstring const wide = anyText(draw(600));
        std::wstring_view const view = wide;
        HLVString units, expected;
        Convert::toHLVString(units, view);
        Convert::toHLVString(expected, wide);
        EXPECT_EQ(expected, units);
        Convert::toHLVString(units, std::string_view(narrow));
        EXPECT_EQ(narrow, Convert::toAString(units));
        EXPECT_EQ(Convert::toAString(wide), Convert::toAString(view));
        EXPECT_EQ(Convert::toWString(narrow), Convert::toWString(std::string_view(narrow)));

        Binary16 const id(7);
        EXPECT_EQ(ResString(wide).wstr(), ResString(view).wstr());
        EXPECT_TRUE(ResString(id, view).id() == id &&
                    ResString::fits(view) == ResString::fits(wide));
        EXPECT_TRUE(ResString2(Binary16(), view) == wide && ResString2(Binary16(), wide) == view);
        EXPECT_TRUE(ResString(wide) == view && !(ResString(wide) != view) &&
                    VarChar(wide) == view && VarChar(L"no" + wide) != view);
        EXPECT_TRUE(VarChar(view) == VarChar(wide) && VarChar::fits(view) == VarChar::fits(wide));
        EXPECT_EQ(VarChar(narrow.c_str()), VarChar(std::string_view(narrow.c_str())));
    }
}

} // namespace
} // namespace Halvora::test
