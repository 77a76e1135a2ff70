#include <Halvora/text/Convert.h>

#include <Halvora/text/CsvReader.h>
#include <tests/support/SlowSplit.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

std::wstring widened(std::string const& text) {
    return Convert::toWString(text);
}

// Runs trim(text, set) in both widths.
template <typename Narrow, typename Wide>
std::string trimmed(Narrow narrow, Wide wide, std::string text, std::string const& set) {
    std::wstring wideText = widened(text);
    narrow(text, set);
    wide(wideText, widened(set));
    EXPECT_TRUE(same(widened(text), wideText)) << "the wide form differs";
    return text;
}

TEST(Convert, trimmingSparesTextOfNothingButTheSet) {
    std::string const usual = Convert::ms_strTrim;
    EXPECT_TRUE(usual == " \t\r\n" && Convert::ms_wstrTrim == L" \t\r\n");
    struct {
        std::string text, set, left, right, both;
    } const rows[] = {
        {"  a b  ",      usual,  "a b  ",     "  a b",    "a b"  },
        {" \ta\v b\n\r", usual,  "a\v b\n\r", " \ta\v b", "a\v b"},
        {"\va",          usual,  "\va",       "\va",      "\va"  }, // not in the set
        {"   ",          usual,  "   ",       "   ",      "   "  },
        {"",             usual,  "",          "",         ""     },
        {"xxa",          "x",    "a",         "xxa",      "a"    },
        {"xyx",          "yx",   "xyx",       "xyx",      "xyx"  },
        {" a ",          "",     " a ",       " a ",      " a "  },
        {"\xE9 a\xE9",   "\xE9", " a\xE9",    "\xE9 a",   " a"   },
        {{' ', 0, ' '},  " ",    {0, ' '},    {' ', 0},   {0}    },
    };
    using Narrow = void (*)(std::string&, std::string const&);
    using Wide = void (*)(std::wstring&, std::wstring const&);
    auto const run = [](Narrow narrow, Wide wide, auto const& row) {
        return trimmed(narrow, wide, row.text, row.set);
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text) + " by " + testing::PrintToString(row.set));
        EXPECT_EQ(row.left, run(Convert::trimLeft, Convert::trimLeft, row));
        EXPECT_EQ(row.right, run(Convert::trimRight, Convert::trimRight, row));
        EXPECT_EQ(row.both, run(Convert::trim, Convert::trim, row));
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

template <typename Text>
Text drawText(Text const& alphabet, std::size_t longest) {
    Text text(draw(longest + 1), alphabet[0]);
    for (auto& c : text) {
        c = alphabet[draw(alphabet.size())];
    }
    return text;
}

template <typename Text, typename Char = typename Text::value_type>
void checkSplitting(Text const& alphabet) {
    using Split = std::vector<Text>& (*)(Text const&, Char, std::vector<Text>&);
    Split const functions[] = {Convert::split, Convert::splitQuoted};
    Split const slowly[] = {splitByStream, splitQuotedByStream};
    static Text const empty; // with an address below that of any field
    std::vector<Text> fields(1), expected;
    EXPECT_TRUE(Convert::split(empty, alphabet[0], fields).empty());
    for (unsigned round = 0; round < 20000; ++round) {
        Text const text = drawText(alphabet, round % 100 < 2 ? 300 : 14);
        SCOPED_TRACE(testing::PrintToString(text) + (round % 2 == 0 ? " split" : " splitQuoted"));
        Split const split = functions[round % 2];
        slowly[round % 2](text, alphabet[0], expected);
        ASSERT_EQ(expected, split(text, alphabet[0], fields));
        long const before = allocations();
        ASSERT_EQ(&fields, &split(text, alphabet[0], fields));
        ASSERT_EQ(before, allocations()) << "fields are not reused";
        fields = std::vector<Text>(2, text); // the text may be one of the fields
        ASSERT_EQ(expected, split(fields[1], alphabet[0], fields));
    }
}

TEST(Convert, splittingAgreesWithReadingLines) {
    checkSplitting<std::string>({',', ',', '"', '"', 'a', '\0', '\xE9'});
    checkSplitting<std::string>({'"', 'a', ','});
    checkSplitting<std::wstring>({0x12C, 0x12C, '"', '"', ',', '\0', 0x122});
}

// Of all records of up to ten characters, those that splitQuoted does not read as CSV.
TEST(Convert, tornRecordsHaveAQuotedFieldOfAKindAndShow) {
    for (unsigned number = 0; number < 59049; ++number) {
        std::string text;
        for (unsigned rest = number; rest != 0; rest /= 3) {
            text += "a,\""[rest % 3];
        }
        std::vector<std::string> record, fields;
        CsvReader reader(text);
        if (!reader.next(record) || record.back().empty()) {
            continue; // no CSV, or an empty last field, which is no field
        }
        Convert::splitQuoted(text, ',', fields);
        auto const any = [](auto const& of, auto is) {
            return std::any_of(of.begin(), of.end(), is);
        };
        auto const hasQuote = [](auto const& field) { return field.find('"') != field.npos; };
        bool const isTorn = fields != record;
        ASSERT_TRUE(!isTorn || any(record, hasQuote) || any(record, [](auto const& field) {
            return field[0] == ',';
        })) << text;
        ASSERT_TRUE(!isTorn || fields.size() != record.size() || any(fields, hasQuote)) << text;
    }
}

TEST(Convert, eachFieldIsOneAllocationWhichMayFail) {
    auto const check = [](auto const& text) {
        std::vector const used(1, text);
        expectReuse(2, used, [&](auto& out) { Convert::split(text, ',', out); });
        expectReuse(2, used, [&](auto& out) { Convert::splitQuoted(text, ',', out); });
    };
    check(std::string(5000, 'x'));
    check(std::wstring(5000, L'x'));
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

std::string slowTokens(std::string const& text, std::string const& delimiter) {
    auto const at = delimiter.empty() ? std::string::npos : text.find(delimiter);
    if (at == std::string::npos || at + delimiter.size() >= text.size()) {
        return "[" + text + "]"; // nothing follows a delimiter, so it is none
    }
    return "[" + text.substr(0, at) + "]" +
           slowTokens(text.substr(at + delimiter.size()), delimiter);
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
    for (int round = 0; round < 20000; ++round) {
        std::string const text = drawText<std::string>("a--", 9);
        std::string const delimiter = drawText<std::string>("a--", 2);
        ASSERT_EQ(slowTokens(text, delimiter), tokens(text, delimiter.c_str()))
            << text << " by " << delimiter;
    }
}

} // namespace
} // namespace Halvora::test
