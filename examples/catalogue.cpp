// What an error tells people, in two languages, and what it tells programs.

#include <Halvora/error/Catalogue.h>
#include <Halvora/error/Json.h>

#include <iostream>

using namespace Halvora;

namespace {

enum Code : int { stationDown = -30, pumpFailed = -20, sensorSilent = -10, filterOld = 5 };

//! [tables]
// One table a component and language: the code, its name, a sentence, the names of its parameters.
constexpr CatalogueRow pumps[] = {
    {pumpFailed,   L"pumpFailed",   L"A pump does not start.",    {L"pump"}           },
    {sensorSilent, L"sensorSilent", L"A sensor does not answer.", {L"place", L"tries"}},
};
constexpr CatalogueRow pumpsInGerman[] = {
    {pumpFailed,   L"pumpFailed",   L"Eine Pumpe l\u00E4uft nicht an.", {L"Pumpe"}           },
    {sensorSilent, L"sensorSilent", L"Ein Sensor antwortet nicht.",     {L"Ort", L"Versuche"}},
};
constexpr CatalogueRow stations[] = {
    {stationDown, L"stationDown", L"A station is out of order.", {}},
};
//! [tables]

//! [translators]
// Tables are joined and checked when they are compiled. What the German one does not know is asked
// of the English one, and what that does not know of the default translator.
CatalogueTranslator const english(catalogue<pumps, stations>, "en");
CatalogueTranslator const german(catalogue<pumpsInGerman>, "de", &english);
//! [translators]

HLVError::Holder startStation() {
    HLVError::Holder error = HLVError::create(sensorSilent, "M\xFCnchen", 3);
    error.prepend(pumpFailed, 7);
    error.prepend(stationDown);
    return error;
}

} // namespace

int main() {
    //! [describe]
    HLVError::Holder const error = startStation();
    for (ITranslator const* translator : {&english, &german}) {
        std::cout << '[' << translator->getLanguage() << "]\n";
        describe(std::cout, *error.getError(), *translator);
        describe(std::cout, *HLVError::create(filterOld, 0.5), *translator);
    }
    writeJson(std::cout, *error.getError());
    //! [describe]
}
