#pragma once

#include <Halvora/Halvora.h>

#include <cstdint>

// What this program reports. Errors are negative, warnings positive.
enum Report : int {
    endlessLine = -113,
    foreignFile = -112,
    unknownRegistry = -111,
    tooManyRecords = -110,
    noSuchAssignment = -109,
    malformedAssignment = -108,
    wrongFieldCount = -107,
    malformedText = -106,
    badRecord = -105, // wraps one of the above
    unreadableFile = -103,
    addressCut = 101,
    assignmentRepeated = 102,
    bytesReplaced = 103,
};

inline constexpr Halvora::CatalogueRow reportTable[] = {
    {foreignFile,
     L"foreignFile",                           L"Nothing at the start of this file is of the registry.",
     {L"file"}                                                                                                                              },
    {unknownRegistry,     L"unknownRegistry",  L"There is no registry of this name.",                                     {L"name"}         },
    {tooManyRecords,      L"tooManyRecords",   L"More records are not kept.",                                             {L"limit"}        },
    {noSuchAssignment,    L"noSuchAssignment", L"Nobody has this assignment.",                                            {L"assignment"}   },
    {malformedAssignment,
     L"malformedAssignment",                   L"An assignment has 6, 7 or 9 hexadecimal digits, as its registry wants.",
     {L"assignment"}                                                                                                                        },
    {wrongFieldCount,     L"wrongFieldCount",  L"A record has four fields.",                                              {L"found"}        },
    {malformedText,
     L"malformedText",                         L"Fields cannot be told apart.",
     {L"reason", L"line", L"column"}                                                                                                        },
    {badRecord,           L"badRecord",        L"A record was refused.",                                                  {L"file", L"line"}},
    {endlessLine,         L"endlessLine",      L"A line has no end within 16 MiB.",                                       {L"file", L"line"}},
    {unreadableFile,      L"unreadableFile",   L"This file cannot be read.",                                              {L"file"}         },
    {addressCut,
     L"addressCut",                            L"Of a long address the first 128 characters are kept.",
     {L"line", L"assignment", L"characters"}                                                                                                },
    {assignmentRepeated,
     L"assignmentRepeated",                    L"An assignment was there before.",
     {L"line", L"assignment", L"maker"}                                                                                                     },
    {bytesReplaced,
     L"bytesReplaced",                         L"Bytes that are not UTF-8 were replaced.",
     {L"line", L"assignment", L"places"}                                                                                                    },
};

// The first errors and warnings; of those behind them only the number is kept.
class Reports {
public:
    static constexpr std::uint64_t kept = 20; // of each kind

    // Counts an error, or a warning. Where this is true, it is to be made and added to `first`.
    bool countError() { return m_errors++ < kept; }
    bool countWarning() { return m_warnings++ < kept; }

    std::uint64_t errors() const { return m_errors; }
    std::uint64_t warnings() const { return m_warnings; }

    Halvora::HLVError::List first;

private:
    std::uint64_t m_errors = 0;
    std::uint64_t m_warnings = 0;
};
