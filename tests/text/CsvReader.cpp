#include <Halvora/text/CsvReader.h>

#include <tests/support/CsvReference.h>
#include <tests/support/Memory.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

constexpr std::size_t unlimited = std::string::npos;

using Counts = CsvReader::Counts;
template <std::uint64_t Counts::*...>
constexpr bool areWide = true; // or a stream of many weeks is counted wrong
static_assert(areWide<&Counts::lines, &Counts::records, &Counts::recordLines, &Counts::faults,
                      &Counts::faultLines, &Counts::blankLines>);

void checkEvents(std::string const& text, char separator, std::size_t limit,
                 std::string const& expected) {
    static constexpr std::size_t lengths[] = {unlimited, 0, 1, 2, 3, 20000};
    for (std::size_t const length : lengths) {
        ASSERT_EQ(expected, eventsOf(text, separator, limit, length))
            << testing::PrintToString(text) << " as a view (-1) or in pieces of "
            << static_cast<long>(length);
    }
}

TEST(CsvReader, rules) {
    // Kinds of faults: 0 a stray quote, 1 an open one, 2 a record too long.
    std::tuple<std::size_t, char const*, char const*> const rows[] = {
        {unlimited, "a,\n,b\n",                        "1+1: a|\n2+1: |b\n"                            },
        {unlimited, "a\nb\r\nc\rd\n\re",               "1+1: a\n2+1: b\n3+1: c\n4+1: d\n6+1: e\n"      },
        {unlimited, "\n\r\n\r \n",                     "4+1:  \n"                                      },
        {unlimited, "\"a,b\",\"c\"\"d\"\"\",\"\"\"\"", "1+1: a,b|c\"d\"|\"\n"                          },
        {unlimited, "\"a\nb\r\nc\rd\",\"\"\ne,\"\"",   "1+4: a\nb\r\nc\rd|\n5+1: e|\n"                 },
        {unlimited, "\xEF\xBB\xBF\"a\"\n\xEF\xBB\xBF", "1+1: a\n2+1: \xEF\xBB\xBF\n"                   },
        {unlimited, "\xEF\xBBx\n",                     "1+1: \xEF\xBBx\n"                              },
        {unlimited, "a,b\"c,\"d\ne\"\nf",              "1+1: 0 at 1:4\n2+1: 0 at 2:2\n3+1: f\n"        },
        {unlimited, "\xEF\xBB\xBF\"a\"b\n, \"c\"",     "1+1: 0 at 1:3\n2+1: 0 at 2:3\n"                },
        {unlimited, "a,\"b\nc,\"d\"\n\"e",             "1+1: 1 at 1:3\n2+1: c|d\n3+1: 1 at 3:1\n"      },
        {unlimited, "\"a\nb\",c\"\nd",                 "1+2: 0 at 2:5\n3+1: d\n"                       },
        {4,         "1234\n12345\n\"23\"\n",           "1+1: 1234\n2+1: 2 at 2:5\n3+1: 23\n"           },
        {4,         "1\n\"234\"\n\"\n2",               "1+1: 1\n2+1: 1 at 2:1\n3+1: 1 at 3:1\n4+1: 2\n"},
    };
    for (auto const& [limit, text, events] : rows) {
        checkEvents(text, ',', limit, events);
    }
    std::string kinds;
    for (int kind = 0; kind < 4; ++kind) {
        kinds += CsvReader::Fault{CsvReader::FaultKind(kind), 0, 0, 0, 0}.what() + std::string("/");
    }
    EXPECT_EQ("a quote where none may stand/a quote that nothing closes/"
              "a record beyond the longest allowed/the stream failed/",
              kinds);
    std::vector<std::string> fields;
    EXPECT_FALSE(CsvReader(nullptr).next(fields) || CsvReader(std::string_view()).next(fields));
    CsvReader reader(std::string_view("1\n12345\n6,7"));
    EXPECT_TRUE(reader.next(fields) && reader.maxRecordLength() == 16 * 1024 * 1024);
    reader.setMaxRecordLength(4);
    EXPECT_EQ(4u, reader.maxRecordLength());
    EXPECT_TRUE(reader.next(fields) && fields[0] == "6" && fields[1] == "7"); // the limit holds
}

TEST(CsvReader, anyTextIsReadAlikeFromEverySource) {
    for (int i = 0; i < 5000 && !HasFatalFailure(); ++i) {
        std::string text = draw(20) == 0 ? "\xEF\xBB\xBF" : "";
        for (auto length = draw(40); length > 0; --length) {
            text += "aaaa;;;\"\"\"\n\r\xEF\0 "[draw(16)];
        }
        char const separator = ";;;;\"\n\0"[draw(7)];
        std::size_t const limit = draw(3) == 0 ? draw(20) : unlimited;
        checkEvents(text, separator, limit, eventsOf(text, separator, limit));
    }
}

TEST(CsvReader, memoryDoesNotGrowWithTheStreamAndFieldsAreReused) {
    for (std::string const head : {"\"b\nc,", "\"", "a\""}) {
        PieceStream stream(head + std::string(3000000, 'x') + "\ny\n", 8192);
        CsvReader reader(stream);
        reader.setMaxRecordLength(100000);
        takeLargestAllocation();
        std::string const events = eventsOf(reader);
        EXPECT_EQ(": y\n", events.substr(events.size() - 4)) << head;
        EXPECT_GT(300000u, takeLargestAllocation()) << head;
    }
    std::vector<std::string> fields(2, std::string(99, 'b'));
    long const before = allocations();
    EXPECT_TRUE(CsvReader("aaaaaaaaaaaaaaaaaaaa,\"aaaaaaaaaaaaaaaaaaaaaaaa\"\"\"\n").next(fields));
    EXPECT_EQ(before, allocations());
}

TEST(CsvReader, recordsAreWholeWhereTheBufferMovesOn) {
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += std::to_string(i) + ',' + std::to_string(i) + '\n';
    }
    PieceStream stream(text, 20000);
    CsvReader reader(stream);
    std::vector<std::string> fields;
    for (int i = 0; i < 20000; ++i) {
        ASSERT_TRUE(reader.next(fields) && fields == std::vector(2, std::to_string(i))) << i;
    }
    EXPECT_FALSE(reader.next(fields));
}

struct Reading {
    Reading(std::string const& text, std::size_t breaksAt)
        : stream(text, 7, breaksAt), reader(stream) {
        reader.onFault([this](CsvReader::Fault const& fault) { events += eventOf(fault); });
    }
    void readAll() {
        while (reader.next(fields)) {
            failAllocation(0); // what follows is the test's own
            events += eventOf(reader.line(), reader.lineCount(), fields);
        }
    }
    PieceStream stream;
    CsvReader reader;
    std::vector<std::string> fields;
    std::string events = std::string(400, ' ').erase(); // with room for all
};

TEST(CsvReader, nothingIsLostWhenAnAllocationFails) {
    std::string const text = "a,\"" + std::string(40, 'b') + "\",c\nd\"" + std::string(70, 'e') +
                             "\n\"f\n\"\"" + std::string(50, 'g') + '"';
    auto const check = [&text](auto& reading) {
        reading->readAll();
        EXPECT_EQ(eventsOf(text, ',', unlimited), reading->events);
    };
    EXPECT_LE(3, failEachAllocation([&] { return std::make_unique<Reading>(text, unlimited); },
                                    [](auto& reading) { reading->readAll(); }, check));
}

TEST(CsvReader, aStreamThatBreaksIsAFaultAndGivesNoCutRecord) {
    std::pair<std::size_t, char const*> const rows[] = {
        {0, "1+0: 3 at 1:1\n"          },
        {3, "1+1: 3 at 1:4\n"          },
        {4, "1+1: a|b\n2+0: 3 at 2:1\n"},
        {9, "1+1: a|b\n2+2: 3 at 3:3\n"},
    };
    for (auto const& [at, events] : rows) {
        Reading reading("a,b\n\"c\nd\",e\nf", at);
        reading.readAll();
        reading.stream.clear(); // nothing is read behind the break
        reading.readAll();
        EXPECT_EQ(events, reading.events) << "broken at byte " << at;
    }
}

TEST(CsvReader, exceptionsPassAndTheNextCallGoesOn) {
    Reading reading("a\n\"b\nc", unlimited); // a stream that throws at its end
    reading.stream.exceptions(std::ios::eofbit);
    EXPECT_THROW(reading.readAll(), std::ios::failure);
    EXPECT_EQ("1+1: a\n", reading.events);
    reading.reader.onFault([](CsvReader::Fault const& fault) { throw fault.line; });
    EXPECT_THROW(reading.readAll(), std::uint64_t);
    reading.readAll();
    EXPECT_EQ("1+1: a\n3+1: c\n", reading.events);
}

} // namespace
} // namespace Halvora::test
