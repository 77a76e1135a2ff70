#pragma once

#include <iosfwd>

#include "Record.h"

// Texts are quoted as in JSON and written as UTF-8: surrogates in pairs become the character that
// they stand for, control characters \u escapes.

// A few lines for a reader. Lone surrogates are \u escapes too.
void printText(std::ostream& stream, Kind const& kind, Record const& record);

// A JSON object in one line. "offset" and "size" count bytes, "length" counts code units.
// A lone surrogate becomes U+FFFD, since most readers of JSON refuse it.
void printJson(std::ostream& stream, Kind const& kind, Record const& record);
