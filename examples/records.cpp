// Writes each record of the comma-separated values on standard input to standard output, as a JSON
// array of strings in a line of its own, and each fault to standard error:
//
//     records [separator] < file.csv
//
// JSON is UTF-8: what is ill-formed in the input becomes U+FFFD. Exit status: 0; 1 if there were
// faults; 2 for wrong usage and where the output cannot be written.

#include <Halvora/text/CsvReader.h>
#include <Halvora/text/Utf8.h>

#include <iostream>

using namespace Halvora;

namespace {

std::string wellFormed(std::string const& text) {
    if (Utf8::isValid(text)) {
        return text;
    }
    std::wstring wide;
    std::string bytes;
    Utf8::toWString(wide, text);
    Utf8::fromWString(bytes, wide);
    return bytes;
}

void writeString(std::ostream& stream, std::string const& text) {
    constexpr char digits[] = "0123456789abcdef";
    stream << '"';
    for (char const c : wellFormed(text)) {
        if (c == '"' || c == '\\') {
            stream << '\\' << c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            stream << "\\u00" << digits[c >> 4] << digits[c & 15];
        } else {
            stream << c;
        }
    }
    stream << '"';
}

void writeRecord(std::ostream& stream, std::vector<std::string> const& fields) {
    char before = '[';
    for (std::string const& field : fields) {
        stream << before;
        writeString(stream, field);
        before = ',';
    }
    stream << "]\n";
}

} // namespace

int main(int argc, char** argv) {
    std::string const separator = argc > 1 ? argv[1] : ",";
    if (argc > 2 || separator.size() != 1) {
        std::cerr << "usage: records [separator] < file.csv\n";
        return 2;
    }
    std::ios::sync_with_stdio(false);
    CsvReader reader(std::cin, separator[0]);
    reader.onFault([](CsvReader::Fault const& fault) {
        std::cerr << "line " << fault.line << ", byte " << fault.column << ": " << fault.what()
                  << ", lines skipped: " << fault.lineCount << '\n';
    });
    for (std::vector<std::string> fields; std::cout && reader.next(fields);) {
        writeRecord(std::cout, fields);
    }
    return !std::cout.flush() ? 2 : reader.counts().faults == 0 ? 0 : 1;
}
