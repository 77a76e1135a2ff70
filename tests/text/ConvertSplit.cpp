#include <Halvora/text/Convert.h>

#include <tests/support/Memory.h>
#include <tests/support/SlowSplit.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

std::wstring widened(std::string const& text) {
    return Convert::toWString(text);
}

TEST(Convert, trimmingSparesTextOfNothingButTheSet) {
    std::string const usual = " \t\r\n";
    struct {
        std::string text, set, left, right, both;
    } const rows[] = {
        {"  a b  ",    usual,  "a b  ",   "  a b",   "a b"    },
        {"\t\va\n",    usual,  "\va\n",   "\t\va",   "\va"    }, // not in the set
        {" \t\r\n",    usual,  " \t\r\n", " \t\r\n", " \t\r\n"},
        {"",           usual,  "",        "",        ""       },
        {"xxa",        "x",    "a",       "xxa",     "a"      },
        {" a ",        "",     " a ",     " a ",     " a "    },
        {"\xE9 a\xE9", "\xE9", " a\xE9",  "\xE9 a",  " a"     },
    };
    EXPECT_TRUE(Convert::ms_strTrim == usual && Convert::ms_wstrTrim == widened(usual));
    for (auto const& row : rows) {
        auto const check = [](auto text, auto const& set) {
            auto left = text, right = text;
            Convert::trimLeft(left, set);
            Convert::trimRight(right, set);
            Convert::trim(text, set);
            return (left += '/') += (right += '/') += text;
        };
        std::string const expected = row.left + '/' + row.right + '/' + row.both;
        EXPECT_EQ(expected, check(row.text, row.set)) << row.text;
        EXPECT_EQ(widened(expected), check(widened(row.text), widened(row.set))) << row.text;
    }
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

TEST(Convert, splittingByExample) {
    struct {
        std::string text, split, quoted;
    } const rows[] = {
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
    for (auto const& row : rows) {
        std::vector<std::string> fields(3, "old");
        std::vector<std::wstring> wide(1, L"old");
        EXPECT_EQ(row.split, bracketed(Convert::split(row.text, ',', fields)));
        EXPECT_EQ(row.split, bracketed(Convert::split(widened(row.text), L',', wide)));
        EXPECT_EQ(row.quoted, bracketed(Convert::splitQuoted(row.text, ',', fields)));
        EXPECT_EQ(row.quoted, bracketed(Convert::splitQuoted(widened(row.text), L',', wide)));
    }
}

template <bool quoted, typename Text>
void checkSplitting(Text const& alphabet) {
    std::vector<Text> fields(1), expected;
    auto const separator = alphabet[0];
    auto const split = [&](Text const& text) -> auto& {
        return quoted ? Convert::splitQuoted(text, separator, fields)
                      : Convert::split(text, separator, fields);
    };
    for (unsigned round = 0; round < 10000; ++round) {
        Text text(draw(round % 100 < 2 ? 300 : 15), separator);
        for (auto& c : text) {
            c = alphabet[draw(alphabet.size())];
        }
        test::splitByStream<quoted>(text, separator, expected);
        ASSERT_EQ(expected, split(text)) << testing::PrintToString(text);
        long const before = allocations();
        ASSERT_EQ(&fields, &split(text));
        ASSERT_EQ(before, allocations()) << "fields are not reused";
        fields.assign(2, text); // the text may be one of the fields
        ASSERT_EQ(expected, split(fields[1])) << testing::PrintToString(text);
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
    struct {
        std::string text;
        char const *delimiter, *tokens;
    } rows[] = {
        {"abc--def", "--",    "[abc][def]"},
        {"a,,b",     ",",     "[a][][b]"  },
        {",a",       ",",     "[][a]"     },
        {"a,b,",     ",",     "[a][b,]"   },
        {",,",       ",",     "[][,]"     },
        {"a---b",    "--",    "[a][-b]"   },
        {"",         ",",     "[]"        },
        {"a,b",      "",      "[a,b]"     },
        {"a,b",      nullptr, "[a,b]"     },
    };
    for (auto& [text, delimiter, expected] : rows) {
        std::string tokens;
        char* next = text.data(); // where a null text goes on
        do {
            tokens += std::string("[") + Convert::token(nullptr, delimiter, next) + ']';
        } while (next != nullptr);
        EXPECT_EQ(expected, tokens);
        EXPECT_EQ(nullptr, Convert::token(nullptr, delimiter, next));
    }
    char text[] = "a,b", *next = nullptr;
    EXPECT_TRUE(Convert::token(text, ",", next) == text && next == text + 2);
}

} // namespace
} // namespace Halvora::test
