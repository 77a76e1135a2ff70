#include "Registry.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <vector>

#include "../support/Utf8.h"

using namespace Halvora;
using Param = HLVError::Param;

namespace {

constexpr std::size_t maxRecords = 65535; // what an array holds
constexpr unsigned int maxLinesOfRecord = 16;
constexpr std::size_t fieldCount = 4;

// An assignment names the upper 24 bits of a card's address. The second part of the identifier
// holds that width, so no identifier is empty, not even the one of 00:00:00.
bool parseAssignment(std::string text, Binary16& id) {
    text.erase(std::remove(text.begin(), text.end(), ':'), text.end());
    auto const isDigit = [](unsigned char c) { return std::isxdigit(c) != 0; };
    if (text.size() != 6 || !std::all_of(text.begin(), text.end(), isDigit)) {
        return false;
    }
    unsigned int number = 0;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        number = number << 8 | Convert::toByte(text[i], text[i + 1]);
    }
    id = Binary16(number, 24, 0, 0);
    return true;
}

// A quote inside a quoted field is written twice.
void undoubleQuotes(std::wstring& field) {
    for (std::size_t at = 0; (at = field.find(L"\"\"", at)) != std::wstring::npos; ++at) {
        field.erase(at, 1);
    }
}

// Lines, joined to records: a record goes on while a quote is open.
class RecordReader {
public:
    RecordReader(std::istream& stream, Registry::LineCounts& lines)
        : m_stream(stream), m_lines(lines) {}

    // The next record's text, in one line or several. False at the end.
    bool next(std::wstring& text) {
        text.clear();
        m_linesOfRecord = 0;
        std::string line;
        bool isOpen = false;
        while (m_linesOfRecord < maxLinesOfRecord && nextLine(line)) {
            ++m_linesOfRecord;
            if (!isOpen && line.empty()) {
                m_lines.blank += 1;
                m_linesOfRecord = 0;
                continue;
            }
            text += (text.empty() ? L"" : L"\n") + fromUtf8(line);
            isOpen ^= std::count(line.begin(), line.end(), '"') % 2 != 0;
            if (!isOpen) {
                break;
            }
        }
        m_isOpen = isOpen;
        return m_linesOfRecord != 0;
    }

    bool isOpen() const { return m_isOpen; } // the record's last quote was never closed
    unsigned int linesOfRecord() const { return m_linesOfRecord; }
    unsigned int firstLine() const { return m_lines.read - m_linesOfRecord + 1; }

private:
    bool nextLine(std::string& line) {
        if (!std::getline(m_stream, line)) {
            return false;
        }
        m_lines.read += 1;
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        return true;
    }

    std::istream& m_stream;
    Registry::LineCounts& m_lines;
    unsigned int m_linesOfRecord = 0;
    bool m_isOpen = false;
};

// The lowest layer: one record's text. Null if it could be taken.
HLVError* parseRecord(std::wstring const& text, std::vector<std::wstring>& fields, Record& record) {
    Convert::splitQuoted(text, L',', fields);
    if (text.back() == L',') {
        fields.emplace_back(); // no field follows a separator at the end, but a record has one
    }
    if (fields.size() != fieldCount) {
        return new HLVError(wrongFieldCount, new Param(static_cast<unsigned int>(fields.size())),
                            new Param(static_cast<unsigned int>(fieldCount)));
    }
    if (!parseAssignment(Convert::toAString(fields[1]), record.id)) {
        return new HLVError(malformedAssignment, new Param(fields[1]));
    }
    for (std::wstring& field : fields) {
        undoubleQuotes(field);
        Convert::trim(field, Convert::ms_wstrTrim);
    }
    record.maker = fields[2];
    record.address = fields[3];
    return nullptr;
}

// The layer of the records: reads the next one and wraps what is wrong with it in its line.
HLVError* readRecord(RecordReader const& reader, std::wstring const& text, std::size_t taken,
                     std::vector<std::wstring>& fields, Record& record) {
    record.line = reader.firstLine();
    HLVError::Holder holder;
    if (reader.isOpen()) {
        holder.setError(new HLVError(endlessRecord, new Param(maxLinesOfRecord)));
    } else if (taken == maxRecords) {
        holder.setError(
            new HLVError(tooManyRecords, new Param(static_cast<unsigned int>(maxRecords))));
    } else {
        holder.setError(parseRecord(text, fields, record));
    }
    if (holder.getError() != nullptr) {
        holder.prependError(badRecord, new Param(record.line));
    }
    return holder.extractError();
}

} // namespace

bool Registry::load(std::string const& fileName, HLVError::List& reports) {
    std::ifstream file(fileName, std::ios::binary);
    if (!file || file.peek() == std::ifstream::traits_type::eof()) {
        reports.add(new HLVError(unreadableFile, new Param(fromUtf8(fileName))));
        return false;
    }
    RecordReader reader(file, m_lines);
    std::wstring text;
    if (reader.next(text)) {
        m_lines.taken += reader.linesOfRecord(); // the heading
    }
    std::vector<Record> records;
    std::vector<std::wstring> fields;
    while (reader.next(text)) {
        Record record;
        HLVError::Holder holder(readRecord(reader, text, records.size(), fields, record));
        if (holder.getError() != nullptr) {
            m_lines.refused += reader.linesOfRecord();
            holder.prependError(badFile, new Param(fromUtf8(fileName)));
            reports.add(holder);
            continue;
        }
        m_lines.taken += reader.linesOfRecord();
        if (!m_rows.emplace(record.id, static_cast<int>(records.size())).second) {
            reports.add(new HLVError(assignmentRepeated, new Param(record.id),
                                     new Param(record.maker), new Param(record.line)));
        }
        if (record.address.size() > ResString::maxLength) {
            reports.add(new HLVError(addressCut, new Param(record.id),
                                     new Param(static_cast<unsigned>(record.address.size())),
                                     new Param(record.line)));
        }
        records.push_back(std::move(record));
    }
    if (file.bad()) { // the rest of it is missing
        reports.clear();
        reports.add(new HLVError(unreadableFile, new Param(fromUtf8(fileName))));
        return false;
    }
    fillColumns(records);
    return true;
}

// The counts are known, so the columns are made once and their elements set: appending texts one by
// one would move all the texts before them each time.
void Registry::fillColumns(std::vector<Record> const& records) {
    auto const count = static_cast<unsigned short>(records.size());
    ids.init(count, DT_ID);
    addresses.init(count, DT_STRINGRES);
    makers.init(count, DT_STRING);
    lineNumbers.init(count, DT_UINT32);
    for (unsigned short i = 0; i < count; ++i) {
        Record const& record = records[i];
        ids.setID(i, record.id);
        addresses.setResString(i, ResString(record.id, record.address));
        makers.setString(i, record.maker);
        lineNumbers.setUInt32(i, record.line);
    }
}

int Registry::find(std::string const& assignment, HLVError::Holder& holder) const {
    Binary16 id;
    if (!parseAssignment(assignment, id)) {
        holder.setError(new HLVError(malformedAssignment, new Param(fromUtf8(assignment))));
        return -1;
    }
    auto const found = m_rows.find(id);
    if (found == m_rows.end()) {
        holder.setError(new HLVError(noSuchAssignment, new Param(fromUtf8(assignment))));
        return -1;
    }
    return found->second;
}
