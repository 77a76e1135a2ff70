#include <Halvora/text/CsvReader.h>

#include <sstream>

#include <tests/support/CsvReference.h>
#include <tests/support/Memory.h>
#include <tests/support/Pieces.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

using Kind = CsvReader::FaultKind;
constexpr std::size_t unlimited = std::string::npos;

// As a text, and as streams that give a few bytes at a time.
void checkEvents(std::string const& text, char separator, std::size_t limit,
                 std::string const& expected) {
    auto const check = [&](CsvReader&& reader, std::string const& what) {
        reader.setMaxRecordLength(limit);
        ASSERT_EQ(expected, eventsOf(reader)) << what << ": " << testing::PrintToString(text);
        auto const& counts = reader.counts();
        EXPECT_EQ(counts.lines, counts.recordLines + counts.faultLines + counts.blankLines) << text;
    };
    check(CsvReader(std::string_view(text), separator), "text");
    for (std::size_t const length : {0u, 1u, 2u, 3u, 20000u}) {
        PieceStream stream(text, length);
        check(CsvReader(stream, separator), "pieces of " + std::to_string(length));
        EXPECT_TRUE(stream.eof() && !stream.fail());
    }
}

TEST(CsvReader, rules) {
    struct {
        char const* text;
        char const* events; // kinds: 0 a stray quote, 1 an open one, 2 a record too long
        std::size_t limit = unlimited;
    } const rows[] = {
        {"",                                             ""                                        },
        {"a,b",                                          "1+1: a|b\n"                              },
        {"a,\n,b\n",                                     "1+1: a|\n2+1: |b\n"                      },
        {"a\nb\r\nc\rd\n\re",                            "1+1: a\n2+1: b\n3+1: c\n4+1: d\n6+1: e\n"},
        {"\n\r\n\r \n",                                  "4+1:  \n"                                },
        {"\"\"\n",                                       "1+1: \n"                                 },
        {"\"a,b\",\"c\"\"d\"\"\",\"\"\"\"",              "1+1: a,b|c\"d\"|\"\n"                    },
        {"\"a\nb\r\nc\rd\"\ne",                          "1+4: a\nb\r\nc\rd\n5+1: e\n"             },
        {"\"\r\n\r\na\",\"\n\"\n\nb",                    "1+4: \r\n\r\na|\n\n6+1: b\n"             },
        {"\xEF\xBB\xBF\"a\"\n\xEF\xBB\xBF",              "1+1: a\n2+1: \xEF\xBB\xBF\n"             },
        {"\xEF\xBB\n",                                   "1+1: \xEF\xBB\n"                         },
        {"a,b\"c,\"d\ne\"\nf",                           "1+1: 0 at 1:4\n2+1: 0 at 2:2\n3+1: f\n"  },
        {"\xEF\xBB\xBF\"a\"b\n",                         "1+1: 0 at 1:3\n"                         },
        {"a, \"b\"\nc",                                  "1+1: 0 at 1:4\n2+1: c\n"                 },
        {"a,\"b\nc,d\n\"\"\n",                           "1+1: 1 at 1:3\n2+1: c|d\n3+1: \n"        },
        {"a,\"b\nc,\"d\"\ne\"\n",                        "1+1: 1 at 1:3\n2+1: c|d\n3+1: 0 at 3:2\n"},
        {"\"a\nb\",c\"\nd",                              "1+2: 0 at 2:5\n3+1: d\n"                 },
        {"\"a\n\",\"b",                                  "1+2: 1 at 2:3\n"                         },
        {"a\"\r\n\"\r\nb",                               "1+1: 0 at 1:2\n2+1: 1 at 2:1\n3+1: b\n"  },
        {"1234\n12345\n\"23\"\n", "1+1: 1234\n2+1: 2 at 2:5\n3+1: 23\n", 4},
        {"1\n\"234\"\n\"\n2", "1+1: 1\n2+1: 1 at 2:1\n3+1: 1 at 3:1\n4+1: 2\n", 4},
    };
    for (auto const& [text, events, limit] : rows) {
        checkEvents(text, ',', limit, events);
        EXPECT_EQ(events, SlowCsv(text, ',', limit).events()) << "the reference differs: " << text;
    }
}

TEST(CsvReader, anyTextIsReadAsTheRulesSay) {
    for (int i = 0; i < 5000; ++i) {
        std::string text = draw(20) == 0 ? "\xEF\xBB\xBF" : "";
        for (auto length = draw(40); length > 0; --length) {
            text += "aaaa;;;\"\"\"\n\r\xEF "[draw(15)];
        }
        char const separator = ";;;;\"\n"[draw(6)];
        std::size_t const limit = draw(3) == 0 ? draw(20) : unlimited;
        checkEvents(text, separator, limit, SlowCsv(text, separator, limit).events());
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(CsvReader, whatIsWrittenIsRead) {
    std::string text, expected;
    std::uint64_t line = 1;
    for (int i = 0; i < 3000; ++i) {
        std::vector<std::string> fields(1 + draw(5));
        std::uint64_t lines = 1;
        for (std::string& field : fields) {
            for (auto length = draw(draw(20) == 0 ? 3000 : 20); length > 0; --length) {
                field += "\"\n,bcdefghijklm"[draw(14)];
            }
            lines += static_cast<std::uint64_t>(std::count(field.begin(), field.end(), '\n'));
            std::string written = field;
            for (std::size_t at = 0; (at = written.find('"', at)) != written.npos; at += 2) {
                written.insert(at, 1, '"');
            }
            text += '"' + written + (&field == &fields.back() ? "\"\r\n" : "\",");
        }
        expected += eventOf(line, lines, fields);
        line += lines;
    }
    checkEvents(text, ',', unlimited, expected);
}

TEST(CsvReader, nullIsEmptyAndAZeroIsAByte) {
    std::vector<std::string> fields;
    EXPECT_FALSE(CsvReader(nullptr).next(fields) || CsvReader(std::string_view()).next(fields));
    EXPECT_TRUE(CsvReader(std::string_view("a\0b;", 4), '\0').next(fields));
    EXPECT_EQ((std::vector<std::string>{"a", "b;"}), fields);
}

// Gives `head`, many times 'x', and a line of its own.
struct LongBuffer : std::streambuf {
    explicit LongBuffer(std::string const& head) : m_piece(head) { give(); }

protected:
    int_type underflow() override {
        if (m_pieces == 0) {
            return traits_type::eof();
        }
        m_piece.assign(--m_pieces == 0 ? "\ny\n" : std::string(10000, 'x'));
        return give();
    }

private:
    int_type give() {
        setg(m_piece.data(), m_piece.data(), m_piece.data() + m_piece.size());
        return traits_type::to_int_type(m_piece[0]);
    }
    std::string m_piece;
    int m_pieces = 3000;
};

TEST(CsvReader, memoryDoesNotGrowWithTheStream) {
    struct {
        char const* head;
        char const* events;
    } const rows[] = {
        {"a\n\"b\nc,", "1+1: a\n2+1: 1 at 2:1\n3+1: 2 at 3:100001\n4+1: y\n"},
        {"\"",         "1+1: 1 at 1:1\n2+1: y\n"                            },
        {"a\"",        "1+1: 0 at 1:2\n2+1: y\n"                            },
    };
    for (auto const& [head, events] : rows) {
        LongBuffer buffer(head);
        std::istream stream(&buffer);
        CsvReader reader(stream);
        reader.setMaxRecordLength(100000);
        takeLargestAllocation();
        EXPECT_EQ(events, eventsOf(reader)) << head;
        EXPECT_GT(300000u, takeLargestAllocation()) << head;
    }
}

TEST(CsvReader, aStreamIsReadNoFurtherThanItMust) {
    PieceStream stream(std::string("a,b\r\nc\r\n\rd"), std::size_t(1));
    CsvReader reader(stream);
    std::vector<std::string> fields;
    EXPECT_TRUE(reader.next(fields));
    EXPECT_EQ('\n', stream.peek());
}

TEST(CsvReader, fieldsAreReused) {
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += std::string(100, 'a') + ",\"" + std::string(50, 'b') + "\"\"\"\n";
    }
    std::istringstream stream(text);
    CsvReader reader(stream);
    std::vector<std::string> fields;
    reader.next(fields);
    long const before = allocations();
    while (reader.counts().records < 100 && reader.next(fields)) {
    }
    EXPECT_EQ(before, allocations());
    EXPECT_EQ(100u, reader.counts().records);
}

struct Reading {
    explicit Reading(std::string const& text, std::size_t breaksAt = unlimited)
        : stream(text, std::size_t(7), breaksAt), reader(stream) {
        reader.onFault([this](CsvReader::Fault const& fault) { events += eventOf(fault); });
    }
    void readAll() {
        for (std::vector<std::string> fields; reader.next(fields);) {
            auto const event = eventOf(reader.line(), reader.lineCount(), fields);
            events += event;
        }
    }
    PieceStream stream;
    CsvReader reader;
    std::string events = std::string(400, ' ').erase(); // with room for all
};

TEST(CsvReader, nothingIsLostWhenAnAllocationFails) {
    std::string const text = "a,\"" + std::string(40, 'b') + "\",c\nd\"" + std::string(70, 'e') +
                             "\n\"f\n\"\"" + std::string(50, 'g') + '"';
    std::string const expected = SlowCsv(text, ',', unlimited).events();
    int const failures =
        failEachAllocation([&text] { return std::make_unique<Reading>(text); },
                           [](auto& reading) {
                               std::vector<std::string> fields;
                               while (reading->reader.next(fields)) {
                                   failAllocation(0); // what the test itself needs
                                   reading->events += eventOf(reading->reader.line(),
                                                              reading->reader.lineCount(), fields);
                                   return;
                               }
                           },
                           [&expected](auto& reading) {
                               reading->readAll();
                               EXPECT_EQ(expected, reading->events);
                           });
    EXPECT_LE(3, failures);
}

TEST(CsvReader, aStreamThatBreaksIsAFaultAndGivesNoCutRecord) {
    std::string const text = "a,b\n\"c\nd\",e\nf";
    char const* const ends[] = {
        "1+0: 3 at 1:1\n",           "1+1: 3 at 1:2\n",           "1+1: 3 at 1:3\n",
        "1+1: 3 at 1:4\n",           "1+1: a|b\n2+0: 3 at 2:1\n", "1+1: a|b\n2+1: 3 at 2:2\n",
        "1+1: a|b\n2+1: 3 at 2:3\n", "1+1: a|b\n2+2: 3 at 3:1\n", "1+1: a|b\n2+2: 3 at 3:2\n",
        "1+1: a|b\n2+2: 3 at 3:3\n",
    };
    for (std::size_t i = 0; i < std::size(ends); ++i) {
        Reading reading(text, i);
        reading.readAll();
        EXPECT_EQ(ends[i], reading.events) << "broken at byte " << i;
        reading.stream.clear();
        reading.readAll();
        EXPECT_EQ(ends[i], reading.events) << "read on behind the break at byte " << i;
    }
    std::istringstream unread("a");
    unread.setstate(std::ios::failbit);
    CsvReader reader(unread);
    EXPECT_EQ("1+0: 3 at 1:1\n", eventsOf(reader));
}

TEST(CsvReader, exceptionsPassAndTheNextCallGoesOn) {
    Reading atEnd("a\n\"b\nc"); // a stream that throws at its end
    atEnd.stream.exceptions(std::ios::eofbit);
    EXPECT_THROW(atEnd.readAll(), std::ios::failure);
    EXPECT_EQ("1+1: a\n", atEnd.events);
    atEnd.readAll();
    EXPECT_EQ("1+1: a\n2+1: 1 at 2:1\n3+1: c\n", atEnd.events);

    Reading thrown("a\"\nb\n"); // a handler that throws
    thrown.reader.onFault([](CsvReader::Fault const& fault) { throw fault.line; });
    EXPECT_THROW(thrown.readAll(), std::uint64_t);
    thrown.readAll();
    EXPECT_EQ("2+1: b\n", thrown.events);
    EXPECT_EQ(1u, thrown.reader.counts().faults);
}

} // namespace
} // namespace Halvora::test
