#include <Halvora/text/VarChar.h>

#include <cstring>

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
template <typename T>
constexpr int uses = isRead<T> + isWidened<T> + isCompared<T> + isMeasured<T> + isMeasuredWithin<T>;
template <int count, typename... T>
constexpr bool allHave = ((uses<T> == count) && ...);
static_assert(allHave<5, char (&)[9], char*, char const*, unsigned char*, void const*, VarChar*,
                      unsigned char const (&)[9], std::nullptr_t>);
static_assert(allHave<0, char const (&)[9], wchar_t*, wchar_t const (&)[9], char16_t const*,
                      char32_t (&)[9], decltype((u8"x"))>);

TEST(VarChar, textByExample) {
    std::wstring const withZero(L"a\0", 2);
    std::pair<std::wstring, char const*> const rows[] = {
        {L"",         "00 00"            },
        {L"ab",       "02 00 61 00 62 00"},
        {withZero,    "02 00 61 00 00 00"}, // a counted text keeps its zeros
        {L"\xE9",     "01 00 E9 00"      },
        {L"\x20AC",   "01 00 AC 20"      },
        {L"A\x1F600", "02 00 41 00 00 F6"}, // cut to 16 bits
        {L"\x10041",  "01 00 41 00"      }, // so another character may come out
    };
    for (auto const& [text, raw] : rows) {
        EXPECT_EQ(raw, hexOf(bytesOf(VarChar(text)))) << shown(text);
    }
}

TEST(VarChar, everySourceIsCutTo512Units) {
    for (unsigned const length : {0u, 1u, 17u, 255u, 256u, 511u, 512u, 513u, 600u}) {
        std::wstring const text = anyText(length), kept = text.substr(0, 512);
        std::string const narrow(length, '\xE9');
        VarChar counted("old"), ended("old"), narrowCounted("old");
        counted.set(text.data(), static_cast<unsigned short>(length));
        ended.set(narrow.c_str());
        narrowCounted.set(narrow.data(), length);
        for (VarChar const& value : {VarChar(text), VarChar("old") = text, VarChar(counted)}) {
            EXPECT_TRUE(same(rawForm(kept), bytesOf(value))) << length;
        }
        std::string const raw = rawForm(std::wstring(kept.size(), L'\xE9'));
        std::string buffer(raw.size() + 2, '#');
        VarChar::set(narrow.c_str(), &buffer[1]);
        for (VarChar const& value : {VarChar(narrow.c_str()), ended, narrowCounted}) {
            EXPECT_TRUE(same(raw, bytesOf(value))) << length;
        }
        EXPECT_TRUE(same("#" + raw + "#", buffer)) << length;
        EXPECT_TRUE(VarChar::fits(text) == (length <= 512) &&
                    VarChar::fits(narrow) == (length <= 512));
    }
}

TEST(VarChar, aCountedNarrowTextTakesAnyInteger) {
    auto const length = [](auto count) {
        std::string const text(600, '\0');
        VarChar value("old");
        value.set(text.data(), count);
        return value.length();
    };
    EXPECT_EQ(0, length(0) + length(-1) + length(-1ll));
    EXPECT_EQ(3, length(3u));
    EXPECT_EQ(200, length(static_cast<unsigned char>(200)));
    EXPECT_EQ(512, length(65536 + 3));
    EXPECT_EQ(512, length(~0ull));
}

TEST(VarChar, sizeWithinIsThatOfAWholeForm) {
    checkSizeWithin<VarChar>(2);
}

TEST(VarChar, lengthFieldsAreTakenAsTheyStandByAllButObjects) {
    struct {
        unsigned field, size;
    } const rows[] = {
        {0,     2   },
        {1,     4   },
        {512,   1026},
        {513,   1028},
        {768,   1538},
        {1024,  2050},
        {32767, 0   },
        {65535, 0   },
    };
    for (auto const& [field, size] : rows) {
        std::wstring const text = anyText(std::min(field, 1024u)), kept = text.substr(0, 512);
        std::string const raw = "<" + rawForm(text, field - text.size());
        VarChar value("old");
        std::wstring out = L"old";
        unsigned short length = 9;
        VarChar::set(&raw[1], value);
        VarChar::set(&raw[1], out, length);
        EXPECT_TRUE(same(rawForm(kept), bytesOf(value))) << field;
        EXPECT_TRUE(same(value.wstr(), out)) << field;
        EXPECT_TRUE(length == kept.size() && VarChar::size(&raw[1]) == size) << field;
        // A form that is too long equals no text, not even one of as many characters.
        for (unsigned const compared : {field, value.length() + 0u}) {
            EXPECT_EQ(field <= 512, VarChar::equal(&raw[1], text.data(), compared)) << field;
        }
    }
}

TEST(VarChar, equalByExample) {
    std::string const raw = "<" + rawForm(L"AB\xE9");
    struct {
        wchar_t const* text;
        unsigned length;
        bool expected;
    } const rows[] = {
        {L"AB\xE9",    3, true },
        {L"AB\xE9z",   3, true },
        {L"AB\xE9",    2, false},
        {L"AB\xE9z",   4, false},
        {L"AC\xE9",    3, false},
        {L"AB\x1E9",   3, false},
        {L"AB\x100E9", 3, true }, // its low 16 bits are the unit
        {nullptr,      3, false},
        {nullptr,      0, false},
    };
    for (auto const& [text, length, expected] : rows) {
        EXPECT_EQ(expected, VarChar::equal(&raw[1], text, length)) << &text - &rows[0].text;
    }
    EXPECT_TRUE(VarChar::equal(rawForm(L"").data(), nullptr, 0));
}

TEST(VarChar, slotsByExample) {
    struct {
        wchar_t const* text;
        unsigned length, capacity;
        std::string expected;
    } const rows[] = {
        {L"ab",      2, 4, "02 00 61 00 62 00 30 30 30 30"},
        {L"ab",      1, 2, "01 00 61 00 30 30"            },
        {L"ab",      2, 2, "02 00 61 00 62 00"            },
        {L"ab",      2, 1, "01 00 61 00"                  },
        {L"ab",      2, 0, "00 00"                        },
        {L"ab",      0, 1, "00 00 30 30"                  },
        {L"\x1F600", 1, 1, "01 00 00 F6"                  },
        {nullptr,    2, 2, "00 00 30 30 30 30"            },
    };
    for (auto const& [text, length, capacity, expected] : rows) {
        std::string slot(4 + 2 * capacity, '#');
        VarChar::set(text, length, capacity, &slot[1]);
        EXPECT_EQ("23 " + expected + " 23", hexOf(slot)) << length << " in " << capacity;
    }
    for (unsigned const capacity : {511u, 512u, 513u, 600u}) {
        std::wstring const text = anyText(600);
        std::string slot(2 + 2 * capacity + 1, '#');
        std::string expected = rawForm(text.substr(0, std::min(capacity, 512u)));
        expected.resize(2 + 2 * capacity, '0');
        VarChar::set(text.data(), 600, capacity, slot.data());
        EXPECT_TRUE(same(expected + "#", slot)) << capacity;
    }
}

TEST(VarChar, nullIsTheEmptyTextAndForm) {
    VarChar value("old"), loaded("old");
    value.set(nullptr, 0);
    VarChar::set(nullptr, loaded);
    EXPECT_TRUE(value == VarChar() && loaded == VarChar());
    value.set(static_cast<wchar_t const*>(nullptr), 3);
    EXPECT_EQ(rawForm(L""), bytesOf(value));
    EXPECT_TRUE(VarChar::equal(nullptr, L"", 0) && !VarChar::equal(nullptr, L"a", 1));
    EXPECT_EQ(2, VarChar::size(nullptr));
    VarChar::set("text", nullptr); // does nothing, nor does this
    VarChar::set(L"text", 4, 4, nullptr);
}

// The result of each comparison, and of that of the hashes.
template <typename T>
std::string relations(T const& a, T const& b) {
    std::hash<T> const hash;
    std::string text;
    for (bool const relation : {hash(a) == hash(b), a == b, a != b, a<b, a <= b, a> b, a >= b}) {
        text += relation ? '1' : '0';
    }
    return text;
}

TEST(VarChar, orderIsThatOfTheStoredBytes) {
    std::wstring const long256(256, L'a');
    std::pair<std::wstring, std::wstring> const lessRows[] = {
        {L"",       L"a"    },
        {L"a",      L"b"    },
        {L"b",      L"ab"   },
        {long256,   L"a"    },
        {L"\x100",  L"\xFF" },
        {L"\xFF",   L"\x1FF"},
        {L"a\x100", L"ab"   },
    };
    for (auto const& [less, more] : lessRows) {
        EXPECT_EQ("0011100", relations(VarChar(less), VarChar(more))) << shown(less) << shown(more);
    }
    for (int round = 0; round < 5000; ++round) {
        std::size_t const lengths[] = {0, 1, 1, 2, 255, 256, 257, 512};
        std::wstring const a = anyText(lengths[draw(8)]), other = anyText(lengths[draw(8)]);
        std::wstring b = draw(2) == 0 ? a : other;
        if (!b.empty() && draw(4) != 0) {
            b[draw(b.size())] = static_cast<wchar_t>(draw(0x10000));
        }
        ASSERT_EQ(relations(rawForm(a), rawForm(b)), relations(VarChar(a), VarChar(b)))
            << shown(a) << " with " << shown(b);
    }
}

TEST(VarChar, resultsAreOneAllocation) {
    VarChar const value(std::wstring(512, L'x'));
    unsigned short length = 0;
    std::wstring const used(512, L'x');
    expectAllocations(1, [&] { value.wstr(); });
    expectReuse(1, used, [&](auto& out) { value.wstr(out); });
    expectReuse(1, used, [&](auto& out) { VarChar::set(&value, out, length); });
}

} // namespace
} // namespace Halvora::test
