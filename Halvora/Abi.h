#pragma once

/// @file
/// Refuses a program that cannot work with the library. Both have to agree on the standard library,
/// the layout of its strings, the size of `wchar_t` and the packing of structures; otherwise they
/// read each other's objects wrongly. What an installed library was built for stands in
/// `Halvora/AbiOfBuild.h` and is compared when a program is compiled. The linker compares the rest:
/// `undefined reference to Halvora::abi::wants_a_library_built_for_...` names what the program
/// wants and the library is not.

#include <Halvora/Export.h>

#include <cstddef>

#if defined(__has_include)
#    if __has_include(<Halvora/AbiOfBuild.h>)
#        include <Halvora/AbiOfBuild.h>
#    endif
#endif

/// @cond
#if defined(_LIBCPP_ABI_VERSION)
#    define HALVTYPES_STRINGS libcxx
#    define HALVTYPES_STRINGS_NUMBER 3
#elif defined(_GLIBCXX_USE_CXX11_ABI) && _GLIBCXX_USE_CXX11_ABI
#    define HALVTYPES_STRINGS libstdcxx_with_cxx11_strings
#    define HALVTYPES_STRINGS_NUMBER 2
#elif defined(_GLIBCXX_USE_CXX11_ABI)
#    define HALVTYPES_STRINGS libstdcxx_with_old_strings
#    define HALVTYPES_STRINGS_NUMBER 1
#else
#    define HALVTYPES_STRINGS another_standard_library
#    define HALVTYPES_STRINGS_NUMBER 0
#endif

#define HALVTYPES_ABI_NAME_OF(strings, bytes) \
    wants_a_library_built_for_##strings##_and_##bytes##_byte_wchar_t
#define HALVTYPES_ABI_NAME(strings, bytes) HALVTYPES_ABI_NAME_OF(strings, bytes)
#define HALVTYPES_ABI HALVTYPES_ABI_NAME(HALVTYPES_STRINGS, __SIZEOF_WCHAR_T__)
/// @endcond

/// What the library was built for. Nothing here is for a program to use.
namespace Halvora::abi {

/// Whose size tells whether structures are packed.
struct Probe {
    char first; ///< one byte
    int second; ///< behind three bytes of fill, unless structures are packed
};
static_assert(sizeof(Probe) == 2 * sizeof(int),
              "HalvTypes: structures are packed here (-fpack-struct or #pragma pack), those of the "
              "library are not; include its headers without packing");

#if defined(HALVTYPES_BUILT_FOR_STRINGS)
static_assert(
    HALVTYPES_STRINGS_NUMBER == HALVTYPES_BUILT_FOR_STRINGS,
    "HalvTypes: the installed library was built for another standard library, or for the "
    "other layout of its strings; Halvora/AbiOfBuild.h tells which. Compile with the same "
    "-stdlib and _GLIBCXX_USE_CXX11_ABI");
static_assert(sizeof(wchar_t) == HALVTYPES_BUILT_FOR_WCHAR_BYTES,
              "HalvTypes: wchar_t has another size than in the installed library; compile without "
              "-fshort-wchar, or build the library with it");
#endif

/// Defined by a library that was built for the same as this program.
extern HALVTYPES_API char const HALVTYPES_ABI;

#if defined(__GNUC__) && !defined(HALVTYPES_BUILD)
#    if defined(_WIN32)
#        define HALVTYPES_KEPT gnu::used
#    elif __has_cpp_attribute(gnu::retain)
#        define HALVTYPES_KEPT gnu::used, gnu::retain, gnu::visibility("hidden")
#    else
#        define HALVTYPES_KEPT gnu::used, gnu::visibility("hidden")
#    endif
/// Makes the linker look for it, once a program.
[[HALVTYPES_KEPT]] inline char const* const wanted = &HALVTYPES_ABI;
#endif

} // namespace Halvora::abi
