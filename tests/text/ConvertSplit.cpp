#include <Halvora/text/Convert.h>

#include <Halvora/text/CsvReader.h>
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
        {"xyx",        "yx",   "xyx",     "xyx",     "xyx"    },
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
        {"a",                 "[a]",                   "[a]"                },
        {",a",                "[][a]",                 "[][a]"              },
        {"a,,b,",             "[a][][b]",              "[a][][b]"           }, // none at the very end
        {",",                 "[]",                    "[]"                 },
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

template <typename Text, typename Char = typename Text::value_type>
void checkSplitting(Text const& alphabet) {
    using Split = std::vector<Text>& (*)(Text const&, Char, std::vector<Text>&);
    Split const ours[] = {Convert::split, Convert::splitQuoted};
    Split const slow[] = {splitByStream, splitQuotedByStream};
    static Text const empty; // with an address below that of any field
    std::vector<Text> fields(1), expected;
    EXPECT_TRUE(Convert::split(empty, alphabet[0], fields).empty());
    for (unsigned round = 0; round < 20000; ++round) {
        Text text(draw(round % 100 < 2 ? 300 : 15), alphabet[0]);
        for (auto& c : text) {
            c = alphabet[draw(alphabet.size())];
        }
        SCOPED_TRACE(testing::PrintToString(text) + (round % 2 == 0 ? " split" : " splitQuoted"));
        Split const split = ours[round % 2];
        slow[round % 2](text, alphabet[0], expected);
        ASSERT_EQ(expected, split(text, alphabet[0], fields));
        long const before = allocations();
        ASSERT_EQ(&fields, &split(text, alphabet[0], fields));
        ASSERT_EQ(before, allocations()) << "fields are not reused";
        fields.assign(2, text); // the text may be one of the fields
        ASSERT_EQ(expected, split(fields[1], alphabet[0], fields));
    }
}

TEST(Convert, splittingAgreesWithReadingLines) {
    checkSplitting<std::string>({',', ',', '"', '"', 'a', '\0', '\xE9'});
    checkSplitting<std::string>({'"', 'a', ','});
    checkSplitting<std::wstring>({0x12C, 0x12C, '"', '"', ',', '\0', 0x122});
}

// Of the records of up to ten characters, those that splitQuoted does not read as CSV have a quoted
// field with a quote or a leading separator, and show in the number of fields or a quote.
TEST(Convert, aTornRecordShows) {
    auto const hasQuote = [](std::string const& field) { return field.find('"') != field.npos; };
    for (unsigned number = 0; number < 59049; ++number) {
        std::string text;
        for (unsigned rest = number; rest != 0; rest /= 3) {
            text += "a,\""[rest % 3];
        }
        std::vector<std::string> record, fields;
        CsvReader reader(text);
        bool const isRecord = reader.next(record) && !record.back().empty();
        if (isRecord && Convert::splitQuoted(text, ',', fields) != record) {
            ASSERT_TRUE(std::any_of(record.begin(), record.end(), [&](std::string const& field) {
                return hasQuote(field) || field[0] == ',';
            })) << text;
            ASSERT_TRUE(fields.size() != record.size() ||
                        std::any_of(fields.begin(), fields.end(), hasQuote))
                << text;
        }
    }
}

// All tokens, each in brackets.
std::string tokens(std::string text, char const* delimiter) {
    char* next = nullptr;
    std::string result = std::string("[") + Convert::token(text.data(), delimiter, next) + "]";
    while (next != nullptr) {
        result += std::string("[") + Convert::token(nullptr, delimiter, next) + "]";
    }
    EXPECT_EQ(nullptr, Convert::token(nullptr, delimiter, next));
    return result;
}

TEST(Convert, tokensEndWhereAFurtherCharacterFollowsTheDelimiter) {
    struct {
        char const *text, *delimiter, *expected;
    } const rows[] = {
        {"abc--def", "--",    "[abc][def]"},
        {"a,,b",     ",",     "[a][][b]"  },
        {",a",       ",",     "[][a]"     },
        {"ab,",      ",",     "[ab,]"     },
        {"a,b,",     ",",     "[a][b,]"   },
        {",,",       ",",     "[][,]"     },
        {"a---b",    "--",    "[a][-b]"   },
        {"a-b",      "--",    "[a-b]"     },
        {"--",       "--",    "[--]"      },
        {"",         ",",     "[]"        },
        {"a,b",      "",      "[a,b]"     },
        {"a,b",      nullptr, "[a,b]"     },
    };
    for (auto const& [text, delimiter, expected] : rows) {
        EXPECT_EQ(expected, tokens(text, delimiter)) << text;
    }
}

} // namespace
} // namespace Halvora::test
