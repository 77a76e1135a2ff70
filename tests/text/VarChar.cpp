#include <Halvora/text/VarChar.h>

#include <tests/support/Forms.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

using namespace std::string_literals;

TEST(VarChar, textByExample) {
    std::pair<std::wstring, std::string> const rows[] = {
        {L"",                      "\0\0"s         },
        {L"ab",                    "\2\0a\0b\0"s   },
        {L"a\0"s,                  "\2\0a\0\0\0"s  }, // a counted text keeps its zeros
        {L"\xE9",                  "\1\0\xE9\0"s   },
        {L"\x20AC",                "\1\0\xAC\x20"s },
        {L'A' + wideUnit(0x1F600), "\2\0A\0\0\xF6"s}, // cut to 16 bits
        {wideUnit(0x10041),        "\1\0A\0"s      }, // so another character may come out
    };
    for (auto const& [text, raw] : rows) {
        EXPECT_EQ(raw, bytesOf(VarChar(text))) << shown(text);
    }
}

TEST(VarChar, everySourceIsCutTo512Units) {
    for (unsigned const length : {0u, 1u, 17u, 256u, 512u, 513u, 600u}) {
        std::wstring const wide(length, L'\xE9'), kept = wide.substr(0, 512);
        std::string const narrow(length, '\xE9');
        VarChar counted("old"), narrowCounted("old"), raw("old"), assigned("old");
        counted.set(wide.data(), static_cast<unsigned short>(length));
        narrowCounted.set(narrow.data(), length);
        VarChar::set(narrow.c_str(), &raw);
        EXPECT_EQ(&assigned, &(assigned = viewOf(narrow)));
        std::pair<char const*, VarChar> const sources[] = {
            {"a wide string",             VarChar(wide)          },
            {"a wide text and a length",  counted                },
            {"a copy",                    VarChar(counted)       },
            {"a narrow text, its length", narrowCounted          },
            {"a narrow text to its zero", VarChar(narrow.c_str())},
            {"a form in memory",          raw                    },
            {"an assigned view",          assigned               },
            {"a wide view",               VarChar(viewOf(wide))  },
            {"a narrow view",             VarChar(viewOf(narrow))},
        };
        for (auto const& [source, value] : sources) {
            SCOPED_TRACE(source + (" of " + std::to_string(length)));
            EXPECT_TRUE(same(kept, value.wstr()));
            EXPECT_TRUE(value == viewOf(wide) && value != viewOf(L'?' + wide) &&
                        value != viewOf('?' + narrow));
        }
        EXPECT_EQ(VarChar::fits(wide) && VarChar::fits(narrow), length <= 512);
        EXPECT_EQ(VarChar::fits(viewOf(wide)), length <= 512);
    }
    std::string const text(600, '\0');
    VarChar value("old");
    EXPECT_EQ(0, (value.set(text.data(), -1), value.length()));
    EXPECT_EQ(512, (value.set(text.data(), 65536 + 3), value.length()));
}

TEST(VarChar, nullIsTheEmptyTextAndForm) {
    wchar_t const* const wide = nullptr;
    char const* const narrow = nullptr;
    VarChar values[] = {narrow, "old", "old", "old", "old"};
    values[1].set(nullptr, 0);
    values[2].set(wide, 3);
    values[3].set(narrow, 3);
    VarChar::set(nullptr, values[4]);
    for (VarChar const& value : values) {
        EXPECT_TRUE(value == VarChar() && VarChar::equal(&value, wide, 0));
        EXPECT_EQ(value.length(), VarChar().length());
    }
    EXPECT_TRUE(VarChar::equal(nullptr, L"", 0) && VarChar::size(nullptr) == 2);
    EXPECT_FALSE(VarChar::equal(&values[0], wide, 1) || VarChar::equal(&"\1\0a"[0], wide, 1));
    VarChar::set("text", nullptr); // does nothing, nor does this
    VarChar::set(L"text", 4, 4, nullptr);
}

TEST(VarChar, rawFormsAndSlotsLieAnywhere) {
    EXPECT_EQ("", wrongForms<VarChar>(""));
    EXPECT_TRUE(
        VarChar::equal(&"\2\0A\0\xE9"[0], (L'A' + wideUnit(0x100E9)).c_str(), 2)); // cut to 16 bits
    EXPECT_FALSE(VarChar::equal(&"\2\0A\0\xE9"[0], L"A\x1E9", 2));
    for (unsigned const length : {511u, 512u, 513u, 768u, 1024u, 65535u}) { // none is longer
        std::wstring const text(length, L'a');
        HLVString const raw = static_cast<unsigned short>(length) + HLVString(length, 'a');
        EXPECT_EQ(length <= 512, VarChar::equal(raw.data(), text.data(), length)) << length;
    }
    std::string slots(17, '#');
    VarChar::set(L"abc", 2, 4, &slots[1]);
    VarChar::set(static_cast<wchar_t const*>(nullptr), 3, 1, &slots[12]);
    EXPECT_EQ("#\2\0a\0b\0"
              "0000#\0\0"
              "00#"s,
              slots);
}

TEST(VarChar, orderIsThatOfTheStoredBytes) {
    std::wstring const longer(256, L'a');
    std::pair<std::wstring, std::wstring> const rows[] = {
        {L"",           L"a"         },
        {L"a",          L"b"         },
        {L"b",          L"ab"        },
        {longer,        L"a"         },
        {L"\x100",      L"\xFF"      },
        {L"\xFF",       L"\x1FF"     },
        {L"a\x100",     L"ab"        },
        {longer,        longer + L"a"},
        {longer + L"a", longer + L"b"},
    };
    for (auto const& [less, more] : rows) {
        VarChar const a(less), b(more), c(a);
        EXPECT_TRUE(a < b && a <= b && !(a > b) && !(a >= b) && a != b && !(a == b)) << shown(less);
        EXPECT_TRUE(b > a && b >= a && !(b < a) && !(b <= a)) << shown(less);
        EXPECT_TRUE(a == c && a <= c && a >= c && !(a != c) && !(a < c) && !(a > c)) << shown(less);
        std::hash<VarChar> const hash;
        EXPECT_TRUE(hash(a) == hash(c) && hash(a) != hash(b)) << shown(less);
    }
}

} // namespace
} // namespace Halvora::test
