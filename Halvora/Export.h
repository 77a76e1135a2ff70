#pragma once

/// Marks what the shared library exports; everything else in it is hidden. A program or shared
/// library that holds the static one (HALVTYPES_STATIC) exports nothing of it.
#if defined(__GNUC__) && !defined(HALVTYPES_STATIC)
#    define HALVTYPES_API __attribute__((visibility("default")))
#else
#    define HALVTYPES_API
#endif

/// Marks a function whose unsigned numbers wrap on purpose, for clang's integer sanitizer.
#if defined(__clang__)
#    define HALVTYPES_WRAPS __attribute__((no_sanitize("unsigned-integer-overflow")))
#else
#    define HALVTYPES_WRAPS
#endif

// Every header includes this one, so every program asks for the library that fits it.
#include <Halvora/Abi.h>
