// One short sample of each class, as its page in the reference shows it.

#include <Halvora/Halvora.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <unordered_set>
#include <vector>

using namespace Halvora;

namespace {

void types() {
    //! [Binary16]
    Binary16 const pump(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    std::unordered_set<Binary16> known = {pump};
    if (known.count(pump) != 0) {
        std::cout << Convert::toAString(pump) << '\n'; // 12345678-9abc-def0-0807-060504030201
    }
    //! [Binary16]

    //! [HalvTypes]
    eDataType common = DT_VOID;
    if (HalvTypes::getSmallestCommonDataType(DT_INT16, DT_UINT16, common)) {
        std::cout << HalvTypes::dataTypeToString(common) << '\n'; // INT32
    }
    //! [HalvTypes]

    //! [Element]
    unsigned int widest = 0; // the bytes of the widest element that is no text
    ElementTypes::forEach([&](auto row) { widest = std::max(widest, row.width()); });
    std::cout << widest << '\n'; // 16
    //! [Element]

    //! [Round]
    std::cout << Round::convert(-2.5) << ' '        // -3: halves away from zero
              << Round::round(-2.5) << ' '          // -2: halves upward
              << Round::convert(12.345, 2) << '\n'; // 1235: hundredths
    //! [Round]

    //! [ParseResult]
    Binary16 id;
    if (ParseResult const parsed = parseBinary16("12345678-9abc", id); !parsed) {
        std::cout << "not an identifier from character " << parsed.position << " on\n";
    }
    //! [ParseResult]

    //! [KrVersion]
    KrVersion const firmware(2, 1, 0, 417);
    std::cout << firmware << ", with HalvTypes " << HalvTypes::ms_Version << '\n';
    //! [KrVersion]
}

//! [ITranslator]
// A component's texts in one language. What it does not know keeps its default text.
class German : public ResString::DummyTranslator {
public:
    void getTranslation(std::wostream& stream, ResString const& text) const override {
        getTranslation(stream, text.id(), text.wstr().c_str());
    }
    void getTranslation(std::wostream& stream, Binary16 const& id,
                        wchar_t const* defaultText) const override {
        auto const found = m_texts.find(id);
        stream << (found != m_texts.end() ? found->second.c_str() : defaultText);
    }

private:
    std::map<Binary16, std::wstring> m_texts = {
        {Binary16(7), L"Pumpe"}
    };
};
//! [ITranslator]

//! [ITranslatable]
// Anything that writes itself through a translator can be reported that way.
std::wstring inLanguageOf(ITranslator const& translator, ITranslatable const& object) {
    std::wostringstream stream;
    object.ToString(stream, translator);
    return stream.str();
}
//! [ITranslatable]

void texts() {
    //! [Convert]
    std::vector<std::wstring> fields;
    Convert::split(Convert::toWString("pump,17,running"), L',', fields);
    std::cout << fields.size() << ' ' << Convert::toAString(fields[2]) << '\n'; // 3 running
    //! [Convert]

    //! [Utf8]
    std::wstring wide;
    Utf8Result const result = Utf8::toWString(wide, "caf\xC3\xA9 \xFF");
    if (result.replaced != 0) { // what was ill-formed is U+FFFD now
        std::cout << "no UTF-8 from byte " << result.position << " on\n";
    }
    //! [Utf8]

    //! [CsvReader]
    CsvReader reader("pump,\"3, north\"\nval\"ve,4\n");
    reader.onFault([](CsvReader::Fault const& fault) {
        std::cout << "line " << fault.line << ", column " << fault.column << ": " << fault.what()
                  << '\n';
    });
    for (std::vector<std::string> record; reader.next(record);) {
        std::cout << record.size() << " fields, the last: " << record.back() << '\n';
    }
    std::cout << reader.counts().records << " record, " << reader.counts().faults << " fault\n";
    //! [CsvReader]

    //! [ResString]
    ResString const label(Binary16(7), std::wstring(L"pump"));
    unsigned char packed[18 + 2 * ResString::maxLength];
    std::memcpy(packed, &label, label.size()); // an object begins with its packed form

    ResString read;
    if (ResString::sizeWithin(packed, label.size()) != 0) { // a whole form stands there
        read.set(packed);
    }
    std::cout << read.size() << ' ' << (read == label) << '\n'; // 26 1
    //! [ResString]

    //! [ResString2]
    ResString2 const text(Binary16(7), L"pump");
    std::wostringstream shown;
    text.ToString(shown, German());
    std::cout << Convert::toAString(shown.str()) << '\n'; // Pumpe
    //! [ResString2]
    std::cout << (inLanguageOf(German(), text) == L"Pumpe") << '\n';

    //! [DummyTranslator]
    ResString::DummyTranslator const plain;
    std::unique_ptr<wchar_t[]> const name(plain.getErrorName(-12));
    std::cout << Convert::toAString(name.get()) << '\n'; // -12
    //! [DummyTranslator]

    //! [VarChar]
    unsigned char slot[2 + 2 * 8];
    VarChar::set(L"tap", 3, 8, slot); // length, three units, filling
    VarChar tap;
    VarChar::set(slot, tap);
    std::cout << tap.length() << ' ' << VarChar::size(slot) << '\n'; // 3 8
    //! [VarChar]
}

//! [Catalogue]
constexpr CatalogueRow pumpErrors[] = {
    {-20, L"pumpFailed",   L"A pump does not start.",    {L"pump"}             },
    {-10, L"sensorSilent", L"A sensor does not answer.", {L"sensor", L"reason"}},
};

void report(HLVError const& error) {
    CatalogueTranslator const translator(catalogue<pumpErrors>, "en");
    describe(std::cout, error, translator); // pumpFailed (-20): A pump does not start. ...
    writeJson(std::cout, error);            // {"chain":[{"code":-20, ...
}
//! [Catalogue]

void errors() {
    HLVError::Holder holder(HLVError::create(-10, "north", "no answer"));
    holder.prepend(-20, 3);
    report(*holder.getError());

    //! [List]
    HLVError::List reports;
    reports.add(HLVError::create(-12, "sensor"));
    reports.add(HLVError::create(3)); // a warning
    for (HLVError::List::const_iterator at = reports.begin(); !at.end(); ++at) {
        std::cout << (*at)->getCode() << '\n'; // -12, then 3
    }
    //! [List]

    //! [HLVErrorException]
    try {
        throw HLVErrorException(HLVError::create(-12), "readSensor");
    } catch (HLVErrorException& e) {
        e.addTrace("startPump");                                  // then throw on, or
        HLVError::Holder const keeper(HLVError::copy(e.error())); // outlives the exception
        std::cout << keeper << ", by " << e.trace() << '\n';
    }
    //! [HLVErrorException]

    //! [Exception]
    try {
        throw Exception(-5, "no answer", "readSensor");
    } catch (Exception& e) {
        e.addTrace("startPump");
        std::cout << e.code() << ' ' << e.what() << ", by " << e.trace() << '\n';
    }
    //! [Exception]
}

} // namespace

int main() {
    types();
    texts();
    errors();
}
