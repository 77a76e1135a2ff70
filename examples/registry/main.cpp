// Reads the IEEE's registry of network-card makers, reports what it could not take as errors and
// warnings, and looks up assignments:
//
//     registry <file> [assignment ...]
//
// It takes each of the registry's files: MA-L (oui.csv), MA-M (mam.csv), MA-S (oui36.csv) and IAB
// (iab.csv). Exit status: 0; 1 when an assignment is unknown or malformed, or the file holds no
// record of the registry; 2 when the file cannot be read to its end, or for lack of memory.

#include <chrono>
#include <cstddef>
#include <iostream>

#include "../support/Text.h"
#include "Progress.h"
#include "Registry.h"

using namespace Halvora;

namespace {

CatalogueTranslator const translator(catalogue<reportTable>, "en");

void printLines(Registry::LineCounts const& lines) {
    std::cout << "lines read:  " << lines.read << " = " << lines.headings << " heading + "
              << lines.taken << " taken + " << lines.refused << " refused + " << lines.blank
              << " blank\n";
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

// The first ones, and how many there are behind them.
void printReports(Reports const& reports, bool areErrors, std::uint64_t most) {
    std::uint64_t more = areErrors ? reports.errors() : reports.warnings();
    for (auto at = reports.first.begin(); !at.end() && most > 0; ++at) {
        if (HLVError::isError(*at) == areErrors) {
            describe(std::cout << '\n', **at, translator);
            --more;
            --most;
        }
    }
    if (more > 0) {
        std::cout << "\nand " << more << " more " << (areErrors ? "errors" : "warnings") << '\n';
    }
}

// A file's text may steer a terminal: its control characters become blanks, line ends stay.
std::string shown(std::string text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto const byte = static_cast<unsigned char>(text[i]);
        auto const next = static_cast<unsigned char>(text.c_str()[i + 1]);
        if (byte == 0xC2 && next < 0xA0) { // U+0080 to U+009F
            text.replace(i, 2, " ");
        } else if ((byte < 0x20 && byte != '\n') || byte == 0x7F) {
            text[i] = ' ';
        }
    }
    return text;
}

void printRow(Registry const& registry, int row) {
    unsigned short count = 0;
    std::wstring const* makers = nullptr;
    ResString const* addresses = nullptr;
    registry.makers.getString(count, makers);
    registry.addresses.getResString(count, addresses);
    ResString const& address = addresses[row];
    std::cout << '\n' << shown(toUtf8(makers[row])) << "\n  ";
    address.id().write(std::cout) << "\n  " << Convert::toAString(address.id()) << "\n  "
                                  << shown(toUtf8(HLVString(address.hlv_str(), address.length())))
                                  << '\n';
}

std::unique_ptr<HLVError> load(std::string const& fileName, Registry& registry, Reports& reports) {
    Progress progress(fileName);
    return registry.load(fileName, reports, [&progress](std::uint64_t lines, std::streamoff bytes) {
        progress.show(lines, bytes);
    });
}

void printReport(Registry const& registry, Reports const& reports,
                 std::chrono::steady_clock::duration time) {
    std::cout << "records:     " << registry.ids.getCount() << '\n'
              << "errors:      " << reports.errors() << '\n'
              << "warnings:    " << reports.warnings() << '\n';
    printLines(registry.lines());
    std::cout << "time taken:  "
              << std::chrono::duration_cast<std::chrono::milliseconds>(time).count() << " ms\n";
    printColumns(registry);
    printReports(reports, true, Reports::kept);
    printReports(reports, false, 3);
}

// Whether it was found.
bool lookUp(Registry const& registry, std::string const& assignment) {
    std::unique_ptr<HLVError> error;
    int const row = registry.find(assignment, error);
    if (row >= 0) {
        printRow(registry, row);
    } else {
        describe(std::cout << '\n', *error, translator);
    }
    return row >= 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: registry <file> [assignment ...]\n";
        return 2;
    }
    Registry registry;
    Reports reports;
    auto const start = std::chrono::steady_clock::now();
    if (auto const error = load(argv[1], registry, reports)) {
        describe(std::cerr, *error, translator);
        return error->getCode() == foreignFile ? 1 : 2;
    }
    printReport(registry, reports, std::chrono::steady_clock::now() - start);
    int status = 0;
    for (int i = 2; i < argc; ++i) {
        status = lookUp(registry, argv[i]) ? status : 1;
    }
    return status;
}
