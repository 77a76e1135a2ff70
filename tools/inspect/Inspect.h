#pragma once

#include <iosfwd>

#include "Input.h"
#include "Options.h"

// Prints the records that were asked for, and what is wrong with them. Whether all could be read:
// an empty input has none, nothing behind an offset is an error.
bool inspect(Options const& options, Input& input, std::ostream& out, std::ostream& errors);

// The error, as --json wants it or not.
void report(Options const& options, Halvora::HLVError const& error, std::ostream& errors);

// The same, wrapped in the file where it is.
void reportFile(Options const& options, Halvora::HLVError const& error, std::ostream& errors);
