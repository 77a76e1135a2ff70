// The device's side of a rig's day: a heating controller, which keeps for each of its sensors what
// to add to the reading. It writes that to a dump, and tells what somebody changed there:
//
//     device write FILE
//     device read FILE
//
// Exit status: 0; 1 when it is no whole dump of this device; 2 for everything else.

#include "../support/Text.h"

#include <Halvora/Halvora.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

using namespace Halvora;
using namespace Halvora::literals;

namespace {

//     dump   := "HCAL" layout:byte count:u16le station:packed record[count] faults
//     record := sensor:slot[16 units] remark:raw-slot[24 units] kelvin:f32le[5]
//     faults := a line of JSON each, up to the end
constexpr int degrees[] = {0, 25, 50, 75, 100}; // where each sensor is compared
constexpr unsigned int sensorUnits = 16, sensorSize = (sensorUnits + 9) * 2;
constexpr unsigned int remarkUnits = 24, remarkSize = 2 + 2 * remarkUnits;
constexpr std::size_t recordSize = sensorSize + remarkSize + std::size(degrees) * sizeof(float);

struct Record {
    ResString sensor;
    std::wstring remark;
    HLVArray kelvin;
};

ResString const station("7d0c1f6e-52b3-4e1c-9a41-0f3c55d2a801"_id, L"boiler room 2");
ResString const supply("0b6f2a9c-8d14-4b7e-a3c5-61e9d0f7b210"_id, L"supply line");
ResString const back("0b6f2a9c-8d14-4b7e-a3c5-61e9d0f7b211"_id, L"return line");
ResString const outside("0b6f2a9c-8d14-4b7e-a3c5-61e9d0f7b212"_id, L"outside air");
Record const records[] = {
    {supply,  L"checked by Zo\u00EB", HLVArray({0.125f, 0.1f, 0.08f, 0.05f, 0.03f}) },
    {back,    L"checked by Zo\u00EB", HLVArray({-0.02f, 0.1f, 0.19f, -0.25f, 0.31f})},
    {outside, L"",                    HLVArray({0.0f, 0.01f, 0.01f, 0.02f, 0.02f})  },
};

enum Failure { noFile = -10, badDump = -11, burnerLocked = -6, sensorSilent = -5 };
enum Change { changed = 1, remarked = 2, adjusted = 3 };
constexpr CatalogueRow sentences[] = {
    {noFile,   L"noFile",   L"A file cannot be read or written.",   {L"file", L"reason"}       },
    {badDump,  L"badDump",  L"It is cut off, damaged or not mine.", {L"file", L"offset"}       },
    {changed,  L"changed",  L"Somebody changed a record.",          {L"sensor"}                },
    {remarked, L"remarked", L"It has another remark.",              {L"was", L"is"}            },
    {adjusted, L"adjusted", L"It has another correction.",          {L"degrees", L"was", L"is"}},
};
CatalogueTranslator const english(catalogue<sentences>, "en");

std::string headOfDump() {
    std::string bytes = {'H', 'C', 'A', 'L', 1, static_cast<char>(std::size(records)), 0};
    return bytes.append(reinterpret_cast<char const*>(&station), station.size()); // packed
}

void writeDump(char const* file) {
    std::ofstream stream(file, std::ios::binary);
    stream << headOfDump();
    for (auto const& [sensor, remark, kelvin] : records) {
        char slots[sensorSize + remarkSize];
        ResString::set(&sensor, sensorUnits, slots);
        VarChar::set(remark.data(), unsigned(remark.size()), remarkUnits, &slots[sensorSize]);
        stream.write(slots, sizeof slots);
        stream.write(static_cast<char const*>(kelvin.getData()), kelvin.getByteSize());
    }
    HLVError::Holder fault = HLVError::create(sensorSilent, outside, 3);
    fault.prepend(burnerLocked, station);
    writeJson(stream, *fault.getError());
    if (!stream.flush()) {
        throw HLVErrorException(HLVError::create(noFile, fromUtf8(file), std::strerror(errno)), "");
    }
}

// Whether these bytes, which anybody may have written, are a whole record.
bool isRecordOf(ResString const& sensor, std::string_view bytes) {
    return bytes.size() == recordSize &&
           std::memcmp(bytes.data(), sensor.id().m_bytes, sizeof(Binary16)) == 0 &&
           ResString::sizeWithin(bytes.data(), sensorSize) != 0 &&
           VarChar::sizeWithin(&bytes[sensorSize], remarkSize) != 0;
}

// Adds a warning when the record says something else than ours.
void compare(Record const& own, char const* record, HLVError::List& changes) {
    VarChar remark;
    VarChar::set(&record[sensorSize], remark);
    float kelvin[std::size(degrees)]; // copied to where floats may lie
    std::memcpy(kelvin, &record[sensorSize + remarkSize], sizeof kelvin);
    HLVError::Holder found;
    for (std::size_t i = std::size(degrees); i-- > 0;) {
        if (!(viewOf<float>(own.kelvin)[i] == kelvin[i])) { // what is no number differs
            found.prepend(adjusted, degrees[i], viewOf<float>(own.kelvin)[i], kelvin[i]);
        }
    }
    if (remark != own.remark) {
        found.prepend(remarked, own.remark, remark.wstr());
    }
    if (found) {
        found.prepend(changed, own.sensor);
        changes.add(found);
    }
}

void readDump(char const* file) {
    std::string const head = headOfDump();
    std::string bytes(head.size() + std::size(records) * recordSize, '\0');
    std::ifstream stream(file, std::ios::binary);
    if (!stream || (!stream.read(&bytes[0], std::streamsize(bytes.size())) && !stream.eof())) {
        throw HLVErrorException(HLVError::create(noFile, fromUtf8(file), std::strerror(errno)), "");
    }
    bytes.resize(std::size_t(stream.gcount()));
    if (bytes.compare(0, head.size(), head) != 0) {
        throw HLVErrorException(HLVError::create(badDump, fromUtf8(file), 0), "");
    }
    HLVError::List changes;
    for (std::size_t i = 0; i < std::size(records); ++i) {
        std::size_t const at = head.size() + i * recordSize;
        if (!isRecordOf(records[i].sensor, std::string_view(bytes).substr(at, recordSize))) {
            throw HLVErrorException(HLVError::create(badDump, fromUtf8(file), int(at)), "");
        }
        compare(records[i], &bytes[at], changes);
    }
    for (HLVError const* change : changes) {
        describe(std::cout, *change, english);
    }
    std::cout << changes.getCount() << " of " << std::size(records) << " records changed\n";
}

} // namespace

int main(int argc, char** argv) {
    std::string const verb = argc == 3 ? argv[1] : "";
    if (verb != "write" && verb != "read") {
        std::cerr << "usage: device write|read FILE\n";
        return 2;
    }
    try {
        (verb == "write" ? writeDump : readDump)(argv[2]);
    } catch (HLVErrorException const& e) {
        describe(std::cerr, *e.error(), english);
        return e.error()->getCode() == noFile ? 2 : 1;
    }
}
