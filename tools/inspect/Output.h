#pragma once

#include <iosfwd>

#include "Record.h"

// Texts are quoted as in JSON and written as UTF-8: surrogates in pairs become the character that
// they stand for, lone ones and control characters \u escapes.

// A few lines for a reader.
void writeText(std::ostream& stream, Kind const& kind, Record const& record);

// A JSON object in one line. "offset" and "size" count bytes, "length" counts code units.
void writeJson(std::ostream& stream, Kind const& kind, Record const& record);
