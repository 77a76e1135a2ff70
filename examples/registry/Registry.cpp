#include "Registry.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

#include "../support/Text.h"

using namespace Halvora;

namespace {

constexpr unsigned int maxRecords = 65535;    // what an array holds
constexpr std::size_t maxRecordLength = 4096; // bytes
constexpr std::uint64_t maxForeign = 1000;    // refusals; who has no record before them has none

constexpr std::string_view heading[] = {"Registry", "Assignment", "Organization Name",
                                        "Organization Address"};

// How many upper bits of a card's address an assignment names, by registry.
struct Kind {
    std::string_view name;
    unsigned int bits;
};
constexpr Kind kinds[] = {
    {"MA-L", 24},
    {"MA-M", 28},
    {"MA-S", 36},
    {"IAB",  36}
};

// The number of bits that the digits name; 0 when they are no assignment. The second part of the
// identifier holds it, so no identifier is empty, not even the one of 00:00:00; the third part
// holds what the first has no room for.
unsigned int parseAssignment(std::string_view text, Binary16& id) {
    std::uint64_t number = 0;
    unsigned int bits = 0;
    for (char const c : text) {
        if (c == ':' || c == '-') {
            continue;
        }
        if (std::string_view("0123456789ABCDEFabcdef").find(c) == std::string_view::npos) {
            return 0;
        }
        number = number << 4 | Convert::toByte('0', c);
        bits += 4;
    }
    auto const hasBits = [bits](Kind const& kind) { return kind.bits == bits; };
    if (std::none_of(std::begin(kinds), std::end(kinds), hasBits)) {
        return 0;
    }
    id = Binary16(static_cast<unsigned int>(number), static_cast<unsigned short>(bits),
                  static_cast<unsigned short>(number >> 32), 0);
    return bits;
}

// Takes the records of a file one after another.
class Loader {
public:
    Loader(std::ifstream& file, std::wstring fileName, Reports& reports, Registry::Watcher watcher)
        : m_file(file),
          m_fileName(std::move(fileName)),
          m_reports(reports),
          m_watcher(std::move(watcher)),
          m_reader(file) {
        m_reader.setMaxRecordLength(maxRecordLength);
        m_reader.onFault([this](CsvReader::Fault const& fault) {
            takeFault(fault);
            watch();
        });
    }

    // Null when there were records; else why none can be had.
    std::unique_ptr<HLVError> run() {
        try {
            while (m_reader.next(m_fields)) {
                takeFields();
                watch();
            }
        } catch (Foreign const&) {
        }
        lines.read = m_reader.counts().lines;
        lines.blank = m_reader.counts().blankLines;
        if (!m_file.is_open() || m_hasFailed) {
            return HLVError::create(unreadableFile, m_fileName);
        }
        return records.empty() ? HLVError::create(foreignFile, m_fileName) : nullptr;
    }

    Registry::LineCounts lines;

    std::vector<Record> records;
    std::unordered_map<Binary16, int> rows;

private:
    struct Foreign {};

    void watch() {
        if (records.empty() && m_reports.errors() >= maxForeign) {
            throw Foreign();
        }
        if (++m_steps % 1024 == 0) {
            auto const position = m_file.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in);
            m_watcher(m_reader.counts().lines, position);
        }
    }

    template <typename... Values>
    void refuseLines(std::uint64_t line, std::uint64_t lineCount, int code,
                     Values const&... values) {
        lines.refused += lineCount;
        if (m_reports.countError()) {
            HLVError::Holder holder(HLVError::create(code, values...));
            holder.prepend(badRecord, m_fileName, line);
            m_reports.first.add(holder);
        }
    }

    template <typename... Values>
    void refuse(int code, Values const&... values) {
        refuseLines(m_reader.line(), m_reader.lineCount(), code, values...);
    }

    template <typename Value>
    void warn(int code, Binary16 const& id, Value const& value) {
        if (m_reports.countWarning()) {
            m_reports.first.add(HLVError::create(code, m_reader.line(), id, value));
        }
    }

    void takeFault(CsvReader::Fault const& fault) {
        if (fault.kind == CsvReader::FaultKind::streamFailed) {
            m_hasFailed = true;
            return;
        }
        refuseLines(fault.firstLine, fault.lineCount, malformedText, fault.what(), fault.line,
                    fault.column);
    }

    void takeFields() {
        if (std::equal(m_fields.begin(), m_fields.end(), std::begin(heading), std::end(heading))) {
            lines.headings += m_reader.lineCount();
            return;
        }
        if (m_fields.size() != std::size(heading)) {
            return refuse(wrongFieldCount, static_cast<unsigned int>(m_fields.size()));
        }
        auto const isNamed = [this](Kind const& kind) { return kind.name == m_fields[0]; };
        auto const* const kind = std::find_if(std::begin(kinds), std::end(kinds), isNamed);
        if (kind == std::end(kinds)) {
            return refuse(unknownRegistry, fromUtf8(m_fields[0]));
        }
        Binary16 id;
        if (parseAssignment(m_fields[1], id) != kind->bits) {
            return refuse(malformedAssignment, fromUtf8(m_fields[1]));
        }
        if (records.size() == maxRecords) {
            return refuse(tooManyRecords, maxRecords);
        }
        keep(id);
    }

    void keep(Binary16 const& id) {
        lines.taken += m_reader.lineCount();
        Record record;
        record.id = id;
        record.line = static_cast<unsigned int>(m_reader.line());
        Convert::trim(m_fields[2], Convert::ms_strTrim);
        Convert::trim(m_fields[3], Convert::ms_strTrim);
        auto const replaced = Utf8::toWString(record.maker, m_fields[2]).replaced +
                              Utf8::toHLVString(record.address, m_fields[3]).replaced;
        if (replaced != 0) {
            warn(bytesReplaced, id, static_cast<unsigned int>(replaced));
        }
        if (!ResString::fits(record.address)) {
            warn(addressCut, id, static_cast<unsigned int>(record.address.size()));
            record.address.resize(ResString::maxLength);
        }
        if (!rows.emplace(id, static_cast<int>(records.size())).second) {
            warn(assignmentRepeated, id, record.maker);
        }
        records.push_back(std::move(record));
    }

    std::ifstream& m_file;
    std::wstring m_fileName;
    Reports& m_reports;
    Registry::Watcher m_watcher;
    CsvReader m_reader;
    std::vector<std::string> m_fields;
    unsigned int m_steps = 0;
    bool m_hasFailed = false;
};

} // namespace

std::unique_ptr<HLVError> Registry::load(std::string const& fileName, Reports& reports,
                                         Watcher const& watcher) {
    std::ifstream file(fileName, std::ios::binary);
    std::error_code ignored;
    if (std::filesystem::is_directory(fileName, ignored)) { // which some read as an empty file
        return HLVError::create(unreadableFile, fromUtf8(fileName));
    }
    Loader loader(file, fromUtf8(fileName), reports, watcher);
    auto error = loader.run();
    if (error == nullptr) {
        m_lines = loader.lines;
        m_rows = std::move(loader.rows);
        fillColumns(std::move(loader.records));
    }
    return error;
}

// The counts are known, so the columns are made once and their elements set: appending texts one by
// one would move all the texts before them each time.
void Registry::fillColumns(std::vector<Record>&& records) {
    auto const count = static_cast<unsigned short>(records.size());
    ids.init(count, DT_ID);
    addresses.init(count, DT_STRINGRES);
    makers.init(count, DT_STRING);
    lineNumbers.init(count, DT_UINT32);
    for (unsigned short i = 0; i < count; ++i) {
        Record const record = std::move(records[i]); // freed when its copy is made
        ids.setID(i, record.id);
        addresses.setResString(i, ResString(record.id, record.address));
        makers.setString(i, record.maker);
        lineNumbers.setUInt32(i, record.line);
    }
}

int Registry::find(std::string const& assignment, std::unique_ptr<HLVError>& error) const {
    Binary16 id;
    if (parseAssignment(assignment, id) == 0) {
        error = HLVError::create(malformedAssignment, fromUtf8(assignment));
        return -1;
    }
    auto const found = m_rows.find(id);
    if (found == m_rows.end()) {
        error = HLVError::create(noSuchAssignment, fromUtf8(assignment));
        return -1;
    }
    return found->second;
}
