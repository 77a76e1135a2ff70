#pragma once

#include <iosfwd>

#include <Halvora/error/HLVError.h>

#include "Record.h"

// Everything is UTF-8. Control characters, and marks that change the direction of text, are written
// as \u escapes: nothing that was read steers a terminal.

// A few lines for a reader. Texts are quoted as in JSON, with lone surrogates as \u escapes too.
void printText(std::ostream& stream, Kind const& kind, Record const& record);
void printText(std::ostream& stream, Halvora::HLVError const& error);

// A JSON object in one line. "offset" and "size" count bytes, "length" counts code units. Readers
// of JSON disagree on lone surrogates: U+FFFD stands for each, and all code units follow as
// "units".
void printJson(std::ostream& stream, Kind const& kind, Record const& record);
void printJson(std::ostream& stream, Halvora::HLVError const& error);
