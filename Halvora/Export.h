#pragma once

/// Marks what the shared library exports; everything else in it is hidden. A program or shared
/// library that holds the static one (HALVTYPES_STATIC) exports nothing of it.
#if defined(HALVTYPES_STATIC)
#    define HALVTYPES_API
#elif defined(_WIN32) && defined(HALVTYPES_BUILD)
#    define HALVTYPES_API __declspec(dllexport)
#elif defined(_WIN32)
#    define HALVTYPES_API __declspec(dllimport)
#elif defined(__GNUC__)
#    define HALVTYPES_API __attribute__((visibility("default")))
#else
#    define HALVTYPES_API
#endif

/// Marks an inline function that older programs call in the library, which keeps a copy for them.
/// There are no such programs on Windows.
#if defined(_WIN32)
#    define HALVTYPES_API_INLINE
#else
#    define HALVTYPES_API_INLINE HALVTYPES_API
#endif

/// Marks a function whose unsigned numbers wrap on purpose, for clang's integer sanitizer.
#if defined(__clang__)
#    define HALVTYPES_WRAPS __attribute__((no_sanitize("unsigned-integer-overflow")))
#else
#    define HALVTYPES_WRAPS
#endif

// Every header includes this one, so every program asks for the library that fits it.
#include <Halvora/Abi.h>
