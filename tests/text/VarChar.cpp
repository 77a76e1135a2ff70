#include <Halvora/text/VarChar.h>

#include <tests/support/Forms.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

// What is read as a raw form, and that no text is.
HALV_COMPILES(isRead, VarChar::set(argument<T>(), argument<VarChar&>()));
HALV_COMPILES(isWidened,
              VarChar::set(argument<T>(), argument<std::wstring&>(), argument<unsigned short&>()));
HALV_COMPILES(isCompared, VarChar::equal(argument<T>(), L"", 0));
HALV_COMPILES(isMeasured, VarChar::size(argument<T>()));
HALV_COMPILES(isMeasuredWithin, VarChar::sizeWithin(argument<T>(), 1));
template <int count, typename... T>
constexpr bool allHave =
    ((isRead<T> + isWidened<T> + isCompared<T> + isMeasured<T> + isMeasuredWithin<T> == count) &&
     ...);
static_assert(allHave<5, char (&)[9], char const*, unsigned char const (&)[9], std::nullptr_t>);
static_assert(allHave<0, char const (&)[9], wchar_t*, wchar_t (&)[9], char16_t const*,
                      char32_t (&)[9], decltype((u8"x"))>);

TEST(VarChar, textByExample) {
    std::wstring const withZero(L"a\0", 2);
    std::pair<std::wstring, char const*> const rows[] = {
        {L"",         "00 00"            },
        {L"ab",       "02 00 61 00 62 00"},
        {withZero,    "02 00 61 00 00 00"}, // a counted text keeps its zeros
        {L"\xE9",     "01 00 e9 00"      },
        {L"\x20AC",   "01 00 ac 20"      },
        {L"A\x1F600", "02 00 41 00 00 f6"}, // cut to 16 bits
        {L"\x10041",  "01 00 41 00"      }, // so another character may come out
    };
    for (auto const& [text, raw] : rows) {
        EXPECT_EQ(raw, hexOf(VarChar(text))) << shown(text);
    }
}

TEST(VarChar, everySourceIsCutTo512Units) {
    for (unsigned const length : {0u, 1u, 17u, 256u, 511u, 512u, 513u, 600u}) {
        std::wstring const wide(length, L'\xE9'), kept = wide.substr(0, 512);
        std::string const narrow(length, '\xE9');
        VarChar counted("old"), ended("old"), narrowCounted("old"), raw("old");
        counted.set(wide.data(), static_cast<unsigned short>(length));
        ended.set(narrow.c_str());
        narrowCounted.set(narrow.data(), length);
        VarChar::set(narrow.c_str(), &raw);
        for (VarChar const& value : {VarChar(wide), raw = wide, VarChar(counted), ended,
                                                    narrowCounted, VarChar(narrow.c_str()), raw}) {
            EXPECT_TRUE(same(kept, value.wstr())) << length;
        }
        EXPECT_TRUE(VarChar::fits(wide) == (length <= 512) &&
                    VarChar::fits(narrow) == VarChar::fits(wide));
    }
}

TEST(VarChar, aCountedNarrowTextTakesAnyInteger) {
    auto const length = [text = std::string(600, '\0')](auto count) {
        VarChar value("old");
        value.set(text.data(), count);
        return value.length();
    };
    EXPECT_EQ(0, length(0) + length(-1) + length(-1ll));
    EXPECT_EQ(203, length(3u) + length(static_cast<unsigned char>(200)));
    EXPECT_EQ(1024, length(65536 + 3) + length(~0ull));
}

TEST(VarChar, nullIsTheEmptyTextAndForm) {
    wchar_t const* const wide = nullptr;
    VarChar values[4] = {"old", "old", "old", "old"};
    values[0].set(nullptr, 0);
    values[1].set(wide, 3);
    values[2].set(static_cast<char const*>(nullptr), 3);
    VarChar::set(nullptr, values[3]);
    for (VarChar const& value : values) {
        EXPECT_EQ(VarChar(static_cast<char const*>(nullptr)), value);
    }
    EXPECT_TRUE(VarChar::equal(nullptr, L"", 0) && VarChar::equal(&values[0], wide, 0));
    EXPECT_FALSE(VarChar::equal(nullptr, L"a", 1) || VarChar::equal(&values[0], wide, 1));
    EXPECT_TRUE(VarChar::size(nullptr) == 2 && VarChar::sizeWithin(nullptr, 99) == 0);
    VarChar::set("text", nullptr); // does nothing, nor does this
    VarChar::set(L"text", 4, 4, nullptr);
}

TEST(VarChar, rawFormsAndSlotsLieAnywhere) {
    for (unsigned const field : {0u, 1u, 10u, 511u, 512u, 513u, 768u, 1024u, 32767u, 65535u}) {
        Forms<VarChar> const forms{field, "", std::string(2 * field, 'u')};
        for (std::size_t const more : {0, 1, 2, 3}) { // bytes, of the form or behind its head
            EXPECT_TRUE(forms.isMeasured(more)) << field << " units, " << more << " bytes";
            EXPECT_TRUE(forms.isMeasured(2 * field + more)) << field << " units, " << more;
        }
        for (unsigned const capacity : {0u, 1u, 10u, 511u, 512u, 513u, 600u}) {
            EXPECT_TRUE(forms.isHandled(1, capacity, 0)) << field << " units, slot " << capacity;
        }
    }
    std::string slot(12, '#');
    VarChar::set(L"abc", 2, 4, &slot[1]);
    EXPECT_EQ(std::string("#\2\0a\0b\0"
                          "0000#",
                          12),
              slot);
}

TEST(VarChar, aRawFormEqualsItsText) {
    VarChar const raw(L"AB\xE9");
    std::pair<std::wstring, bool> const rows[] = {
        {L"AB\xE9",    true },
        {L"AB",        false},
        {L"AB\xE9z",   false},
        {L"AC\xE9",    false},
        {L"AB\x1E9",   false},
        {L"AB\x100E9", true }, // cut to 16 bits
    };
    for (auto const& [text, expected] : rows) {
        auto const length = static_cast<unsigned>(text.size());
        EXPECT_EQ(expected, VarChar::equal(&raw, text.data(), length)) << shown(text);
    }
}

// The result of each comparison, and of that of the hashes.
template <typename T>
std::string relations(T const& a, T const& b) {
    std::hash<T> const hash;
    std::string text;
    for (bool const is : {hash(a) == hash(b), a == b, a != b, a<b, a <= b, a> b, a >= b}) {
        text += is ? '1' : '0';
    }
    return text;
}

TEST(VarChar, orderIsThatOfTheStoredBytes) {
    std::pair<std::wstring, std::wstring> const lessRows[] = {
        {L"",              L"a" },
        {L"a",             L"b" },
        {L"b",             L"ab"},
        {std::wstring(256, L'a'), L"a"},
        {L"\x100",                L"\xFF"             },
        {L"\xFF",                L"\x1FF" },
        {L"a\x100",                L"ab"           },
    };
    for (auto const& [less, more] : lessRows) {
        EXPECT_EQ("0011100", relations(VarChar(less), VarChar(more))) << shown(less) << shown(more);
    }
    auto const bytesOf = [](VarChar const& value) {
        return std::string(reinterpret_cast<char const*>(&value), value.size());
    };
    for (int round = 0; round < 5000; ++round) {
        std::size_t const lengths[] = {0, 1, 1, 2, 255, 256, 257, 512};
        std::wstring const a = anyText(lengths[draw(8)]);
        std::wstring b = draw(2) == 0 ? a : anyText(lengths[draw(8)]);
        if (!b.empty() && draw(4) != 0) {
            b[draw(b.size())] = static_cast<wchar_t>(draw(0x10000));
        }
        VarChar const left(a), right(b);
        ASSERT_EQ(relations(bytesOf(left), bytesOf(right)), relations(left, right))
            << shown(a) << " with " << shown(b);
    }
}

} // namespace
} // namespace Halvora::test
