#pragma once

#include <Halvora/Halvora.h>

#include <string>
#include <unordered_map>
#include <vector>

// What this program reports. Errors are negative, warnings positive.
enum Report : int {
    tooManyRecords = -110,      // P1: the limit
    noSuchAssignment = -109,    // P1: the text asked for
    malformedAssignment = -108, // P1: the text
    wrongFieldCount = -107,     // P1: fields found, P2: fields wanted
    endlessRecord = -106,       // P1: lines that a record may span
    badRecord = -105,           // P1: line number; wraps one of the above
    badFile = -104,             // P1: file name; wraps badRecord
    unreadableFile = -103,      // P1: file name
    addressCut = 101,           // P1: identifier, P2: characters, P3: line number
    assignmentRepeated = 102,   // P1: identifier, P2: maker, P3: line number
};

struct Record {
    Halvora::Binary16 id;
    std::wstring maker;
    std::wstring address;
    unsigned int line = 0;
};

// The makers of network cards: for each assignment the identifier, the maker's name, and the
// address as a text under that identifier.
class Registry {
public:
    struct LineCounts {
        unsigned int read = 0;
        unsigned int taken = 0;
        unsigned int refused = 0;
        unsigned int blank = 0;
    };

    // Reads a file of the registry, four fields a record, the first record being the heading. What
    // cannot be taken is added to `reports`. False, with the reason in `reports`, if the file
    // cannot be read.
    bool load(std::string const& fileName, Halvora::HLVError::List& reports);

    // The row of an assignment, written like 00:D0:EF or 00D0EF; -1 with the reason in `holder`.
    int find(std::string const& assignment, Halvora::HLVError::Holder& holder) const;

    LineCounts const& lines() const { return m_lines; }

    // the columns, one element a record

    Halvora::HLVArray ids{Halvora::DT_ID};
    Halvora::HLVArray addresses{Halvora::DT_STRINGRES};
    Halvora::HLVArray makers{Halvora::DT_STRING};
    Halvora::HLVArray lineNumbers{Halvora::DT_UINT32};

private:
    void fillColumns(std::vector<Record> const& records);

    LineCounts m_lines;
    std::unordered_map<Halvora::Binary16, int> m_rows;
};
