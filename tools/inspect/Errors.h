#pragma once

#include <Halvora/error/Catalogue.h>

// What halv-inspect reports on standard error, each under a code of its own: what is wrong, wrapped
// in the file where it is.
enum Report : int {
    unwritable = -6,
    impossible = -5,
    truncated = -4,
    unreadable = -3,
    missing = -2,
    badInput = -1,
};

inline constexpr Halvora::CatalogueRow reports[] = {
    {badInput,   L"badInput",   L"The input does not hold what was asked for.", {L"file"}                       },
    {missing,    L"missing",    L"The file cannot be opened.",                  {L"reason"}                     },
    {unreadable, L"unreadable", L"The file cannot be read.",                    {L"offset", L"reason"}          },
    {truncated,  L"truncated",  L"The input ends too early.",                   {L"offset", L"bytes", L"wanted"}},
    {impossible, L"impossible", L"No text is that long.",                       {L"offset", L"units", L"most"}  },
    {unwritable, L"unwritable", L"Standard output cannot be written.",          {L"reason"}                     },
};
