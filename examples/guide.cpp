// The pieces of code that the guide in docs/ shows, run one after the other.

#include <Halvora/Halvora.h>

#include <iostream>
#include <string>
#include <utility>
#include <vector>

using namespace Halvora;

namespace {

//! [raise]
// Gives an error to the caller, or nothing.
bool readPressure(double& bar, HLVError::Holder& holder) {
    bar = 0.0;
    holder = HLVError::create(-12, "sensor", 3);
    return false;
}
//! [raise]

void errors() {
    //! [pass on]
    double bar = 0.0;
    HLVError::Holder holder;
    HLVError::List reports;
    if (!readPressure(bar, holder)) {
        holder.prepend(-20); // the new error owns the old one
        reports.add(holder); // the list owns both, the holder is empty
    }
    //! [pass on]
    std::cout << "held: " << holder << '\n';

    //! [look into]
    HLVError const* const error = reports.getFirstError(); // stays the list's
    std::cout << error->getBaseError()->messageA() << '\n';
    if (HLVError const* silent = error->getByCode(-12)) {
        HLVError::Param const* which = silent->getParam1();
        int number = 0;
        if (which != nullptr && which->getDataType() == DT_INT32) {
            which->getValue(number);
        }
        std::cout << "sensor " << number << '\n';
    }
    //! [look into]

    //! [take out]
    HLVError* const own = HLVError::copy(error); // ours: delete it, or give it to an owner
    HLVError::Holder keeper(own);                // now the keeper's
    //! [take out]
    std::cout << keeper << "\n\n";
}

void printAdoption(char const* what, HLVArray array) {
    int const result = array.addDouble(0.5);
    std::cout << what << ": " << result << ", " << HalvTypes::dataTypeToString(array.getDataType())
              << '\n';
}

void arrays() {
    HLVArray emptied(7);
    emptied.removeRange(0, 1);
    std::cout << "emptied: " << emptied.addDouble(0.5) << '\n';
    printAdoption("copy of an emptied array of integers", emptied);
    HLVArray texts(std::wstring(L"a"));
    texts.removeRange(0, 1);
    printAdoption("copy of an emptied array of texts", texts);
    printAdoption("moved from an emptied array", std::move(emptied));
    printAdoption("the array moved from", emptied);
    printAdoption("created empty", HLVArray(DT_INT32));
    printAdoption("created from no values", HLVArray(0, static_cast<int const*>(nullptr)));
    printAdoption("created with a value", HLVArray(7));
    texts.clear(DT_INT16);
    printAdoption("cleared", texts);
    texts.init(0, DT_STRING);
    printAdoption("made with init of no element", texts);
    HLVArray joined(DT_VOID);
    joined.add(HLVArray(DT_STRING));
    printAdoption("an empty array of texts added", joined);
    joined.clear(DT_VOID);
    joined.add(HLVArray(DT_INT32));
    printAdoption("an empty array of integers added", joined);

    //! [results]
    HLVArray levels(DT_VOID);
    levels.addInt32(10); // adopts DT_INT32
    int const result = levels.setInt32(1, 20);
    if (result == ERR_OUT_OF_RANGE) {
        std::cout << "there are " << levels.getCount() << " elements\n";
    }
    //! [results]

    //! [init]
    std::vector<std::wstring> const names = {L"north", L"east", L"south"};
    HLVArray column(DT_STRING);
    column.init(static_cast<unsigned short>(names.size()), DT_STRING);
    column.setRangeString(0, column.getCount(), names.data());
    //! [init]

    //! [view]
    double const samples[] = {0.25, 0.5, 0.125};
    HLVArray const pressures(3, samples);
    double sum = 0.0;
    for (double const pressure : viewOf<double>(pressures)) {
        sum += pressure;
    }
    //! [view]
    std::cout << column << "\n" << sum << "\n\n";
}

void texts() {
    //! [encodings]
    std::wstring const wide = L"a\u00E9\u20AC\U0001F600"; // a, e acute, euro sign, a smiley
    std::string const narrow = Convert::toAString(wide);  // what is above 0xFF becomes a space
    HLVString units;
    Convert::toHLVString(units, wide); // the smiley becomes 0xF600
    //! [encodings]
    std::cout << narrow.size() << ", \"" << narrow.substr(2) << "\", " << std::hex << units[3]
              << std::dec << '\n';

    //! [fits]
    std::wstring const text(200, L'x');
    if (!ResString::fits(text)) {
        std::cout << "only " << ResString(text).length() << " units are kept\n";
    }
    //! [fits]

    //! [parse]
    Binary16 id;
    ParseResult const parsed = parseBinary16("12345678-9abc-def0-0807-06050403020x", id);
    if (!parsed) {
        std::cout << "not an identifier at character " << parsed.position << '\n';
    }
    //! [parse]

    //! [reuse]
    std::vector<std::string> fields;
    std::wstring name;
    for (std::string const line : {"1,north", "2,\"south, lower\""}) {
        Convert::splitQuoted(line, ',', fields); // reuses the strings of the line before
        Convert::toWString(name, fields[1]);     // reuses the memory of `name`
        std::cout << fields.size() << " fields, " << name.size() << " characters\n";
    }
    //! [reuse]
}

} // namespace

int main() {
    errors();
    arrays();
    texts();
}
