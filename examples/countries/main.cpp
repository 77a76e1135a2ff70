// Country names in the user's language, translated by the system's own message catalogues:
//
//     countries <language> [numeric code ...]
//
// The names come from Debian's package iso-codes. Without codes all countries are printed. Exit
// status: 0; 1 when a code is unknown; 2 when the list of countries cannot be read.

#include <Halvora/Halvora.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>

#include "../support/Text.h"
#include "GettextTranslator.h"

using namespace Halvora;

namespace {

constexpr char listFile[] = "/usr/share/iso-codes/json/iso_3166-1.json";

using Countries = std::map<std::string, ResString2>; // by numeric code, "004"

// The four parts: the code, the number of the standard, nothing.
Binary16 identifierOf(std::string const& code) {
    return Binary16(static_cast<unsigned int>(std::atoi(code.c_str())), 3166, 0, 0);
}

// The list has one `"key": "value"` a line, the name of a country before its numeric code.
Countries readCountries(std::istream& list) {
    Countries countries;
    std::string line;
    std::string name;
    std::vector<std::string> parts;
    while (std::getline(list, line)) {
        if (Convert::split(line, '"', parts).size() < 4) {
            continue;
        }
        if (parts[1] == "name") {
            name = parts[3];
        } else if (parts[1] == "numeric") {
            countries.emplace(parts[3], ResString2(identifierOf(parts[3]), fromUtf8(name)));
        }
    }
    return countries;
}

std::string shown(ITranslatable const& text) {
    std::wostringstream stream;
    text.ToString(stream, *ResString::getMainTranslator());
    return toUtf8(stream.str());
}

void print(Countries::value_type const& country) {
    std::cout << country.first << ' ' << shown(country.second) << '\n';
}

// An error in the library's own form and its description in the user's language.
void printError(HLVError const& error) {
    std::unique_ptr<ResString> const description(
        ResString::getMainTranslator()->getErrorDescription(error.getCode()));
    std::cerr << error << "\n  " << toUtf8(description->wstr()) << '\n';
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: countries <language> [numeric code ...]\n";
        return 2;
    }
    static GettextTranslator const translator(argv[1], "iso_3166-1"); // outlives all uses
    ResString::setMainTranslator(&translator);

    std::ifstream list(listFile);
    if (!list) {
        printError(HLVError(-errno, new HLVError::Param(listFile)));
        return 2;
    }
    if (!translator.hasCatalogue()) {
        std::cout << "no catalogue for \"" << translator.getLanguage() << "\": default texts\n";
    }
    Countries const countries = readCountries(list);
    if (list.bad()) {
        printError(HLVError(-EIO, new HLVError::Param(listFile)));
        return 2;
    }
    if (argc == 2) {
        for (auto const& country : countries) {
            print(country);
        }
    }
    int status = 0;
    for (int i = 2; i < argc; ++i) {
        auto const found = countries.find(argv[i]);
        if (found != countries.end()) {
            print(*found);
        } else {
            printError(HLVError(-ENOENT, new HLVError::Param(argv[i])));
            status = 1;
        }
    }
    return std::cout.flush() ? status : 2;
}
