// Reads the IEEE's registry of network-card makers, reports what it could not take as errors and
// warnings, and looks up assignments:
//
//     registry <file> [assignment ...]
//
// Exit status: 0; 1 when an assignment is unknown or malformed; 2 when the file cannot be read.

#include <chrono>
#include <cstddef>
#include <iostream>
#include <sstream>

#include "../support/Utf8.h"
#include "Registry.h"

using namespace Halvora;

namespace {

// The library's wide text, which holds every character, as UTF-8.
template <typename T>
std::string textOf(T const& value) {
    std::wostringstream text;
    text << value;
    return toUtf8(text.str());
}

void printLines(Registry::LineCounts const& lines) {
    std::cout << "lines read:  " << lines.read << " = " << lines.taken << " taken + "
              << lines.refused << " refused + " << lines.blank << " blank\n";
}

void printColumn(char const* name, HLVArray const& column) {
    std::cout << "  " << name << HalvTypes::dataTypeToString(column.getDataType()) << ", "
              << column.getCount() << " elements, " << column.getByteSize() << " bytes\n";
}

void printJoin(HLVArray const& a, HLVArray const& b) {
    eDataType common = DT_VOID;
    bool const isCommon =
        HalvTypes::getSmallestCommonDataType(a.getDataType(), b.getDataType(), common);
    std::cout << "  " << HalvTypes::dataTypeToString(a.getDataType()) << " joined with "
              << HalvTypes::dataTypeToString(b.getDataType()) << ": "
              << (isCommon ? HalvTypes::dataTypeToString(common) : "no common type") << '\n';
}

void printColumns(Registry const& registry) {
    std::cout << "columns (texts keep no byte size):\n";
    printColumn("identifiers   ", registry.ids);
    printColumn("makers        ", registry.makers);
    printColumn("addresses     ", registry.addresses);
    printColumn("line numbers  ", registry.lineNumbers);
    printJoin(registry.makers, registry.addresses);
    printJoin(registry.ids, registry.lineNumbers);
}

void printFirst(HLVError::List const& reports, bool areErrors, int most) {
    for (auto at = reports.begin(); !at.end() && most > 0; ++at) {
        if (HLVError::isError(*at) == areErrors) {
            std::cout << "\n" << textOf(*at) << "\n";
            --most;
        }
    }
}

void printRow(Registry const& registry, int row) {
    unsigned short count = 0;
    std::wstring const* makers = nullptr;
    ResString const* addresses = nullptr;
    registry.makers.getString(count, makers);
    registry.addresses.getResString(count, addresses);
    Binary16 const& id = addresses[row].id();
    std::cout << '\n' << toUtf8(makers[row]) << "\n  ";
    id.write(std::cout) << "\n  " << Convert::toAString(id) << "\n  "
                        << toUtf8(addresses[row].wstr()) << '\n';
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: registry <file> [assignment ...]\n";
        return 2;
    }
    Registry registry;
    HLVError::List reports;
    auto const start = std::chrono::steady_clock::now();
    if (!registry.load(argv[1], reports)) {
        std::cerr << textOf(*reports.getFirstError()) << '\n';
        return 2;
    }
    auto const time = std::chrono::steady_clock::now() - start;

    std::cout << "records:     " << registry.ids.getCount() << '\n'
              << "errors:      " << reports.getErrorCount() << '\n'
              << "warnings:    " << reports.getWarningCount() << '\n';
    printLines(registry.lines());
    std::cout << "time taken:  "
              << std::chrono::duration_cast<std::chrono::milliseconds>(time).count() << " ms\n";
    printColumns(registry);
    printFirst(reports, true, 3);
    printFirst(reports, false, 2);

    int status = 0;
    for (int i = 2; i < argc; ++i) {
        HLVError::Holder holder;
        int const row = registry.find(argv[i], holder);
        if (row >= 0) {
            printRow(registry, row);
        } else {
            std::cout << '\n' << textOf(holder) << '\n';
            status = 1;
        }
    }
    return std::cout.flush() ? status : 2;
}
