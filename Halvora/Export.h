#pragma once

/// Marks what the shared library exports; everything else in it is hidden. A program or shared library
/// that holds the static one (HALVTYPES_STATIC) exports nothing of it.
#if defined(__GNUC__) && !defined(HALVTYPES_STATIC)
#    define HALVTYPES_API __attribute__((visibility("default")))
#else
#    define HALVTYPES_API
#endif

// Every header includes this one, so every program asks for the library that fits it.
#include <Halvora/Abi.h>
