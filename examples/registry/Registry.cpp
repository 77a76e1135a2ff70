#include "Registry.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <istream>
#include <iterator>
#include <string_view>

#include "../support/Text.h"

using namespace Halvora;

namespace {

constexpr unsigned int maxRecords = 65535;                   // what an array holds
constexpr std::size_t maxRecordLength = 4096;                // bytes
constexpr std::size_t maxLineLength = std::size_t(16) << 20; // bytes; a file of more has no end
constexpr std::uint64_t maxForeign = 1000; // refusals; who has no record before them has none

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

// Gives a file's bytes block by block. Before each it asks whether to go on.
class Blocks : public std::streambuf {
public:
    Blocks(std::string const& fileName, std::function<bool(std::string_view)> goesOn)
        : m_goesOn(std::move(goesOn)) {
        m_file.open(fileName, std::ios::in | std::ios::binary);
    }

    bool isOpen() const { return m_file.is_open(); }

private:
    int_type underflow() override {
        auto const size = m_file.sgetn(m_block.data(), std::streamsize(m_block.size()));
        std::string_view const block(m_block.data(), static_cast<std::size_t>(size));
        setg(m_block.data(), m_block.data(), m_block.data() + size);
        return size != 0 && m_goesOn(block) ? traits_type::to_int_type(m_block[0])
                                            : traits_type::eof();
    }

    std::filebuf m_file;
    std::array<char, 0x10000> m_block;
    std::function<bool(std::string_view)> m_goesOn;
};

// Takes the records of a file one after another.
class Loader {
public:
    Loader(std::string const& fileName, Reports& reports, Registry::Watcher watcher)
        : m_blocks(fileName, [this](std::string_view block) { return goesOnWith(block); }),
          m_file(&m_blocks),
          m_fileName(fromUtf8(fileName)),
          m_reports(reports),
          m_watcher(std::move(watcher)),
          m_reader(m_file) {
        rows.reserve(maxRecords); // whatever does not grow is not moved
        records.rows.reserve(maxRecords);
        m_reader.setMaxRecordLength(maxRecordLength);
        m_reader.onFault([this](CsvReader::Fault const& fault) {
            takeFault(fault);
            watch();
        });
    }

    // Null when the records were read to the end; else why not.
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
        if (!m_blocks.isOpen() || m_hasFailed) {
            return HLVError::create(unreadableFile, m_fileName);
        }
        if (records.rows.empty()) {
            return HLVError::create(foreignFile, m_fileName);
        }
        return m_isEndless ? HLVError::create(endlessLine, m_fileName, lines.read) : nullptr;
    }

    Registry::LineCounts lines;

    Records records;
    std::unordered_map<Binary16, int> rows;

private:
    struct Foreign {};

    void watch() {
        if (records.rows.empty() && m_reports.errors() >= maxForeign) {
            throw Foreign();
        }
    }

    bool goesOnWith(std::string_view block) {
        auto const last = block.find_last_of("\r\n");
        m_bytes += block.size();
        m_lineLength =
            last == std::string_view::npos ? m_lineLength + block.size() : block.size() - last - 1;
        m_watcher(m_reader.counts().lines, static_cast<std::streamoff>(m_bytes));
        // Blank lines without end are no registry either.
        m_isEndless = (records.rows.empty() ? m_bytes : m_lineLength) > maxLineLength;
        return !m_isEndless;
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
        if (records.rows.size() == maxRecords) {
            return refuse(tooManyRecords, maxRecords);
        }
        keep(id);
    }

    void keep(Binary16 const& id) {
        lines.taken += m_reader.lineCount();
        Convert::trim(m_fields[2], Convert::ms_strTrim);
        Convert::trim(m_fields[3], Convert::ms_strTrim);
        auto const replaced = Utf8::toWString(m_maker, m_fields[2]).replaced +
                              Utf8::toHLVString(m_address, m_fields[3]).replaced;
        if (replaced != 0) {
            warn(bytesReplaced, id, static_cast<unsigned int>(replaced));
        }
        if (!ResString::fits(m_address)) {
            warn(addressCut, id, static_cast<unsigned int>(m_address.size()));
            m_address.resize(ResString::maxLength);
        }
        if (!rows.emplace(id, static_cast<int>(records.rows.size())).second) {
            warn(assignmentRepeated, id, m_maker);
        }
        records.rows.push_back(
            {id, static_cast<unsigned int>(m_reader.line()), m_maker.size(), m_address.size()});
        records.makers += m_maker;
        records.addresses += m_address;
    }

    Blocks m_blocks;
    std::istream m_file;
    std::wstring m_fileName;
    Reports& m_reports;
    Registry::Watcher m_watcher;
    CsvReader m_reader;
    std::vector<std::string> m_fields;
    std::wstring m_maker;
    HLVString m_address;
    std::uint64_t m_bytes = 0;
    std::uint64_t m_lineLength = 0;
    bool m_isEndless = false;
    bool m_hasFailed = false;
};

} // namespace

std::unique_ptr<HLVError> Registry::load(std::string const& fileName, Reports& reports,
                                         Watcher const& watcher) {
    std::error_code ignored;
    if (std::filesystem::is_directory(fileName, ignored)) { // which some read as an empty file
        return HLVError::create(unreadableFile, fromUtf8(fileName));
    }
    Loader loader(fileName, reports, watcher);
    auto error = loader.run();
    if (error == nullptr) {
        m_lines = loader.lines;
        m_rows = std::move(loader.rows);
        fillColumns(loader.records);
    }
    return error;
}

// The counts are known, so the columns are made once and their elements set: appending texts one by
// one would move all the texts before them each time.
void Registry::fillColumns(Records const& records) {
    auto const count = static_cast<unsigned short>(records.rows.size());
    ids.init(count, DT_ID);
    addresses.init(count, DT_STRINGRES);
    makers.init(count, DT_STRING);
    lineNumbers.init(count, DT_UINT32);
    std::wstring maker;
    HLVString address;
    std::size_t makerAt = 0, addressAt = 0;
    for (unsigned short i = 0; i < count; ++i) {
        Records::Row const& row = records.rows[i];
        maker.assign(records.makers, makerAt, row.makerLength);
        address.assign(records.addresses, addressAt, row.addressLength);
        makerAt += row.makerLength;
        addressAt += row.addressLength;
        ids.setID(i, row.id);
        addresses.setResString(i, ResString(row.id, address));
        makers.setString(i, maker);
        lineNumbers.setUInt32(i, row.line);
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
