#include <Halvora/text/Convert.h>

#include <array>

#include <tests/support/Memory.h>
#include <tests/support/SlowSplit.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

std::wstring widened(std::string const& text) {
    return Convert::toWString(text);
}

// Each field in brackets.
template <typename Text>
std::string bracketed(std::vector<Text> const& fields) {
    std::string result;
    for (Text const& field : fields) {
        result += '[' + std::string(field.begin(), field.end()) + ']';
    }
    return result;
}

TEST(Convert, trimmingSparesTextOfNothingButTheSet) {
    std::string const usual = " \t\r\n";
    // The text, the set, and what is left when trimmed on the left, on the right, on both sides.
    std::array<std::string, 3> const rows[] = {
        {"  a b and c  ", usual,  "[a b and c  ][  a b and c][a b and c]"},
        {"\t\va\n",       usual,  "[\va\n][\t\va][\va]"                  }, // not in the set
        {" \t\r\n",       usual,  "[ \t\r\n][ \t\r\n][ \t\r\n]"          },
        {"",              usual,  "[][][]"                               },
        {" a ",           "",     "[ a ][ a ][ a ]"                      },
        {"\1a!\1",        usual,  "[\1a!\1][\1a!\1][\1a!\1]"             },
        {"\xE9 a\xE9",    "\xE9", "[ a\xE9][\xE9 a][ a]"                 },
        {" yx aYy",       "xy ",  "[aYy][ yx aY][aY]"                    },
    };
    EXPECT_TRUE(Convert::ms_strTrim == usual && Convert::ms_wstrTrim == widened(usual));
    for (auto const& [text, set, trimmed] : rows) {
        auto const check = [&expected = trimmed](auto both, auto const& chars) {
            auto left = both, right = both;
            Convert::trimLeft(left, chars);
            Convert::trimRight(right, chars);
            Convert::trim(both, chars);
            EXPECT_EQ(expected, bracketed(std::vector{left, right, both}));
        };
        auto const checkAll = [&check](auto const& of, auto const& chars) {
            check(of, chars);
            check(of, viewOf(chars));
            check(viewOf(of), viewOf(chars));
        };
        checkAll(text, set);
        checkAll(widened(text), widened(set));
    }
}

TEST(Convert, splittingByExample) {
    // The text, and what split() and splitQuoted() make of it.
    std::array<std::string, 3> const rows[] = {
        {"",                  "",                      ""                   },
        {",a",                "[][a]",                 "[][a]"              },
        {"a,,b,",             "[a][][b]",              "[a][][b]"           }, // none at the very end
        {R"(a,"b",c)",        R"([a]["b"][c])",        "[a][b][c]"          },
        {R"(a,"b,c",d)",      R"([a]["b][c"][d])",     "[a][b,c][d]"        },
        {R"("a,b,c")",        R"(["a][b][c"])",        "[a,b,c]"            },
        {R"(a,"b,c)",         R"([a]["b][c])",         "[a][b,c]"           }, // to the end
        {R"(a,"b)",           R"([a]["b])",            "[a]"                }, // dropped
        {R"(a,"b,)",          R"([a]["b])",            "[a]"                }, // dropped
        {R"(a,"",b)",         R"([a][""][b])",         "[a][][b]"           },
        {R"(a,",b)",          R"([a]["][b])",          R"([a]["][b])"       }, // a lone quote
        {R"(a,"b"x,c)",       R"([a]["b"x][c])",       R"([a][b"x,c])"      },
        {R"("a,"b,c)",        R"(["a]["b][c])",        "[a,][b][c]"         },
        {R"("a ""b"", c",d)", R"(["a ""b""][ c"][d])", R"([a ""b"][ c"][d])"}, // no escape: torn
    };
    for (auto const& [text, split, quoted] : rows) {
        std::vector<std::string> fields(3, "old");
        std::vector<std::wstring> wide(1, L"old");
        EXPECT_EQ(split, bracketed(Convert::split(text, ',', fields)));
        EXPECT_EQ(split, bracketed(Convert::split(widened(text), L',', wide)));
        EXPECT_EQ(quoted, bracketed(Convert::splitQuoted(text, ',', fields)));
        EXPECT_EQ(quoted, bracketed(Convert::splitQuoted(widened(text), L',', wide)));
    }
    std::string const separators(70000, ',');
    std::vector<std::string> fields;
    EXPECT_EQ(70000u, Convert::split(separators, ',', fields).size());
    EXPECT_EQ(70000u, Convert::split(viewOf(separators), ',', fields).size());
}

template <bool quoted, typename Text>
void checkSplitting(Text const& alphabet) {
    std::vector<Text> fields(1), expected;
    std::vector<decltype(viewOf(alphabet))> views;
    auto const split = [separator = alphabet[0]](auto const& text, auto& into) -> auto& {
        return quoted ? Convert::splitQuoted(text, separator, into)
                      : Convert::split(text, separator, into);
    };
    for (unsigned round = 0; round < 10000; ++round) {
        Text text(draw(round % 100 < 2 ? 300 : 15), alphabet[0]);
        for (auto& c : text) {
            c = alphabet[draw(alphabet.size())];
        }
        test::splitByStream<quoted>(text, alphabet[0], expected);
        ASSERT_EQ(expected, split(text, fields)) << testing::PrintToString(text);
        long const before = allocations();
        ASSERT_EQ(&fields, &split(text, fields));
        ASSERT_EQ(before, allocations()) << "fields are not reused";
        split(viewOf(text), views);
        ASSERT_EQ(expected, std::vector<Text>(views.begin(), views.end()));
        fields = std::vector<Text>(3, text); // the text may be one of the fields
        ASSERT_EQ(expected, split(fields[1], fields)) << testing::PrintToString(text);
        fields = std::vector<Text>(3, text);
        ASSERT_EQ(expected, split(viewOf(fields[1]), fields)) << testing::PrintToString(text);
    }
}

TEST(Convert, splittingAgreesWithReadingLines) {
    checkSplitting<false, std::string>({',', ',', '"', 'a', '\0', '\xE9'});
    checkSplitting<true, std::string>({',', ',', '"', '"', 'a', '\0', '\xE9'});
    checkSplitting<true, std::string>({'"', 'a', ','});
    checkSplitting<false, std::wstring>({0x12C, 0x12C, ',', '\0', 0x122});
    checkSplitting<true, std::wstring>({0x12C, 0x12C, '"', '"', ',', '\0', 0x122});
}

TEST(Convert, tokensEndWhereAFurtherCharacterFollowsTheDelimiter) {
    std::tuple<std::string, char const*, char const*> rows[] = {
        {"abc--def", "--",    "[abc][def]"},
        {",a,,b",    ",",     "[][a][][b]"},
        {"a,b,",     ",",     "[a][b,]"   },
        {",,",       ",",     "[][,]"     },
        {"a---b--",  "--",    "[a][-b--]" },
        {"",         ",",     "[]"        },
        {"a,b",      "",      "[a,b]"     },
        {"a,b",      nullptr, "[a,b]"     },
    };
    for (auto& [text, delimiter, expected] : rows) {
        char* next = nullptr;
        std::vector<std::string> tokens(1, Convert::token(text.data(), delimiter, next));
        while (char const* const token = Convert::token(nullptr, delimiter, next)) {
            tokens.push_back(token);
        }
        EXPECT_TRUE(tokens[0] == text.c_str() && next == nullptr);
        EXPECT_EQ(expected, bracketed(tokens));
    }
}

} // namespace
} // namespace Halvora::test
