#pragma once

#include <Halvora/Halvora.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ios>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "Reports.h"

// Records as they are read, until their number is known. Their texts stand one behind the other:
// thousands of blocks that come and go would cost more than what is done with them.
struct Records {
    struct Row {
        Halvora::Binary16 id;
        unsigned int line;
        std::size_t makerLength, addressLength;
    };
    std::vector<Row> rows;
    std::wstring makers;
    Halvora::HLVString addresses;
};

// The makers of network cards: for each assignment the identifier, the maker's name, and the
// address as a text under that identifier.
class Registry {
public:
    struct LineCounts {
        std::uint64_t read = 0; // the sum of the others
        std::uint64_t headings = 0;
        std::uint64_t taken = 0;
        std::uint64_t refused = 0;
        std::uint64_t blank = 0;
    };

    // Called now and then with the lines and bytes read so far.
    using Watcher = std::function<void(std::uint64_t lines, std::streamoff bytes)>;

    // Reads headings and records of four fields, of any of the registries. What cannot be taken is
    // counted in `reports`. Null when records were taken; else why not: `unreadableFile`,
    // `foreignFile`, `endlessLine`.
    std::unique_ptr<Halvora::HLVError> load(std::string const& fileName, Reports& reports,
                                            Watcher const& watcher);

    // The row of an assignment, written like 00:D0:EF or 00D0EF; -1 with the reason in `error`.
    int find(std::string const& assignment, std::unique_ptr<Halvora::HLVError>& error) const;

    LineCounts const& lines() const { return m_lines; }

    // the columns, one element a record

    Halvora::HLVArray ids{Halvora::DT_ID};
    Halvora::HLVArray addresses{Halvora::DT_STRINGRES};
    Halvora::HLVArray makers{Halvora::DT_STRING};
    Halvora::HLVArray lineNumbers{Halvora::DT_UINT32};

private:
    void fillColumns(Records const& records);

    LineCounts m_lines;
    std::unordered_map<Halvora::Binary16, int> m_rows;
};
