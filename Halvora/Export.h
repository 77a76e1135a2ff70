#pragma once

/// Marks what the shared library exports; everything else in it is hidden.
#if defined(__GNUC__)
#    define HALVTYPES_API __attribute__((visibility("default")))
#else
#    define HALVTYPES_API
#endif

// Every header includes this one, so every program asks for the library that fits it.
#include <Halvora/Abi.h>
