#include <Halvora/text/CsvReader.h>

#include <tests/support/CsvReference.h>
#include <tests/support/Pieces.h>

#include "Bytes.h"

using namespace Halvora;

// As a text and as a stream that gives a few bytes at a time, against the rules byte by byte.
void run(Bytes& bytes) {
    char const separator = bytes.ConsumeBool() ? ',' : bytes.ConsumeIntegral<char>();
    std::size_t const limit =
        bytes.ConsumeBool() ? std::string::npos : bytes.ConsumeIntegralInRange(0u, 100u);
    std::size_t const length = bytes.ConsumeIntegralInRange(0u, 100u);
    std::string const text = bytes.ConsumeRemainingBytesAsString();
    std::string const expected = test::SlowCsv(text, separator, limit).events();

    CsvReader ofText(std::string_view(text), separator);
    test::PieceStream stream(text, length);
    CsvReader ofStream(stream, separator);
    for (CsvReader* const reader : {&ofText, &ofStream}) {
        reader->setMaxRecordLength(limit);
        assert(expected == test::eventsOf(*reader));
        CsvReader::Counts const& counts = reader->counts();
        assert(counts.lines == counts.recordLines + counts.faultLines + counts.blankLines);
    }
}
