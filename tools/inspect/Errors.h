#pragma once

#include <Halvora/error/Catalogue.h>

// What halv-inspect reports on standard error, each under a code of its own. What is wrong with an
// input is wrapped in the file where it is.
enum Report : int {
    secondFile = -25,
    noSlot = -24,
    badNumber = -23,
    badKind = -22,
    missingValue = -21,
    unknownOption = -20,
    noMemory = -9,
    badDump = -8,
    gap = -7,
    unwritable = -6,
    impossible = -5,
    truncated = -4,
    unreadable = -3,
    missing = -2,
    badInput = -1,
};

inline constexpr Halvora::CatalogueRow reports[] = {
    {badInput,         L"badInput",                                           L"The input does not hold what was asked for.",      {L"file"}                       },
    {missing,          L"missing",                                            L"The file cannot be opened.",                       {L"reason"}                     },
    {unreadable,       L"unreadable",                                         L"The file cannot be read.",                         {L"offset", L"reason"}          },
    {truncated,        L"truncated",                                          L"The input ends too early.",                        {L"offset", L"bytes", L"wanted"}},
    {impossible,       L"impossible",                                         L"No text is that long.",                            {L"offset", L"units", L"most"}  },
    {unwritable,       L"unwritable",                                         L"Standard output cannot be written.",               {L"reason"}                     },
    {gap,              L"gap",                                                L"The dump leaves out bytes.",                       {L"offset", L"bytes", L"wanted"}},
    {badDump,
     L"badDump",                                                              L"This is no dump as xxd or od -A x -t x1 make it.",
     {L"line", L"reason"}                                                                                                                                          },
    {noMemory,         L"noMemory",                                           L"There is not enough memory."                     },
    {unknownOption,
     L"unknownOption",     L"There is no such option, or it takes no value.",
     {L"option"}                                },
    {missingValue, L"missingValue",                          L"The option needs a value.",                                         {L"option"}                                                                                                                 },
    {badKind,      L"badKind", L"--kind is to be packed, slot, raw, raw-slot or id.",                                           {L"kind"}},
    {badNumber,
     L"badNumber",                L"This is no number, or one out of range.",
     {L"option", L"value", L"range"}                                                                                                                 },
    {noSlot,       L"noSlot",                      L"Only slots have a --capacity.",                                           {L"kind"}            },
    {secondFile,   L"secondFile",                             L"Only one file is read.",                                           {L"file"}                    },
};
