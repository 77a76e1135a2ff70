# The order of this list is the order in which the library's statics are set up when it is loaded,
# and its reverse the order in which they go: version record, arrays and errors first, then the
# values that others build on. It is written by hand. Never sort it; a test holds it.
set(HALVTYPES_SOURCES
    Halvora/version/KrVersion.cpp
    Halvora/array/HLVArray.cpp
    Halvora/array/HLVArrayTyped.cpp
    Halvora/array/HLVArrayCreate.cpp
    Halvora/error/HLVError.cpp
    Halvora/error/Param.cpp
    Halvora/error/Holder.cpp
    Halvora/error/List.cpp
    Halvora/error/Exceptions.cpp
    Halvora/version/LibraryVersion.cpp
    Halvora/types/HalvTypes.cpp
    Halvora/types/Binary16.cpp
    Halvora/types/ParseBinary16.cpp
    Halvora/types/Round.cpp
    Halvora/text/HLVString.cpp
    Halvora/text/Convert.cpp
    Halvora/text/ConvertLong.cpp
    Halvora/text/ITranslator.cpp
    Halvora/text/ResString.cpp
    Halvora/text/ResString2.cpp
    Halvora/text/VarChar.cpp
    Halvora/text/Utf8.cpp
    Halvora/Abi.cpp
)

# The public headers. What lies in a detail/ folder is not among them and is not installed.
set(HALVTYPES_HEADERS
    Halvora/Halvora.h
    Halvora/Abi.h
    Halvora/Export.h
    Halvora/Format.h
    Halvora/types/ResultCodes.h
    Halvora/types/HalvTypes.h
    Halvora/types/Binary16.h
    Halvora/types/Binary16Inline.h
    Halvora/types/ElementTypes.h
    Halvora/types/ParseBinary16.h
    Halvora/types/Round.h
    Halvora/text/Braces.h
    Halvora/text/HLVString.h
    Halvora/text/Convert.h
    Halvora/text/ConvertInline.h
    Halvora/text/ITranslator.h
    Halvora/text/ITranslatable.h
    Halvora/text/ResString.h
    Halvora/text/ResString2.h
    Halvora/text/VarChar.h
    Halvora/text/Utf8.h
    Halvora/text/CsvParts.h
    Halvora/text/CsvReader.h
    Halvora/text/CsvReaderInline.h
    Halvora/array/HLVArray.h
    Halvora/array/ArrayView.h
    Halvora/error/HLVError.h
    Halvora/error/Param.h
    Halvora/error/Holder.h
    Halvora/error/List.h
    Halvora/error/ListInline.h
    Halvora/error/HLVErrorException.h
    Halvora/error/Exception.h
    Halvora/error/Characters.h
    Halvora/error/Describe.h
    Halvora/error/Catalogue.h
    Halvora/error/Json.h
    Halvora/version/KrVersion.h
)

if(WIN32) # the statics of what is linked last come up first
    list(REVERSE HALVTYPES_SOURCES)
endif()

# Shared, unless a build says BUILD_SHARED_LIBS=OFF.
set(HALVTYPES_SHARED ON)
if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
    set(HALVTYPES_SHARED OFF)
endif()
if(HALVTYPES_SHARED)
    add_library(HalvTypes SHARED ${HALVTYPES_SOURCES})
else()
    include(${CMAKE_CURRENT_LIST_DIR}/Static.cmake)
endif()
if(HALVTYPES_SHARED AND "${CMAKE_SHARED_LINKER_FLAGS}" MATCHES "-static(-libstdc\\+\\+)?( |$)")
    target_sources(HalvTypes PRIVATE Halvora/OwnStandardLibrary.cpp)
endif()
add_library(Halvora::HalvTypes ALIAS HalvTypes)

target_sources(
    HalvTypes
    PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${HALVTYPES_HEADERS}
)

target_compile_features(HalvTypes PUBLIC cxx_std_17)
target_compile_definitions(HalvTypes PRIVATE HALVTYPES_BUILD)
set_target_properties(
    HalvTypes
    PROPERTIES
        VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map
)

target_compile_options(
    HalvTypes
    PRIVATE
        # Rounding is exact to the bit: no fused multiply-add.
        -ffp-contract=off
        # The library calls its own functions, whatever else the process holds: within a source ...
        -fno-semantic-interposition
        # A symbol that is unique in the process would keep the library from being unloaded.
        $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
        -ffunction-sections
        -fdata-sections
        # The standard's operator delete with a size does nothing but call the one without.
        -fno-sized-deallocation
        # The same bytes wherever the tree and the build folder lie. The last map that fits wins,
        # so the build folder, which often lies in the tree, comes last. A debug build keeps its
        # paths, for debuggers and coverage.
        $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>
        $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>
)
# Flash counts on 32-bit ARM: no copies of small functions in others, none of the standard library's
# that take their arguments in another way, and the sources that no one waits for in the size they can
# have.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm" AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_options(
        HalvTypes
        PRIVATE
            "$<$<CXX_COMPILER_ID:GNU>:-fno-inline-functions;-fno-align-functions;-fno-ipa-sra>"
    )
    set_property(
        SOURCE
            Halvora/array/HLVArrayCreate.cpp
            Halvora/error/Exceptions.cpp
            Halvora/error/HLVError.cpp
            Halvora/error/Holder.cpp
            Halvora/error/List.cpp
            Halvora/text/HLVString.cpp
            Halvora/text/ITranslator.cpp
            Halvora/text/ResString2.cpp
            Halvora/types/HalvTypes.cpp
            Halvora/version/KrVersion.cpp
            Halvora/version/LibraryVersion.cpp
        APPEND
        PROPERTY COMPILE_OPTIONS -Os
    )
endif()
# The oldest x86 processors keep more bits than a type has.
check_cxx_compiler_flag("-msse2 -mfpmath=sse" HALVTYPES_HAS_SSE2)
if(HALVTYPES_HAS_SSE2)
    set_source_files_properties(
        Halvora/types/Round.cpp
        PROPERTIES COMPILE_OPTIONS "-msse2;-mfpmath=sse"
    )
endif()
# Loops of a few instructions for each byte take longer where they lie badly, and so do the appends.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    set_property(
        SOURCE Halvora/text/Utf8.cpp
        APPEND
        PROPERTY
            COMPILE_OPTIONS "$<$<CXX_COMPILER_ID:GNU>:-falign-functions=64;-falign-loops=32;-falign-jumps=32>"
    )
    set_property(
        SOURCE Halvora/array/HLVArrayTyped.cpp
        APPEND
        PROPERTY COMPILE_OPTIONS "$<$<CXX_COMPILER_ID:GNU>:-falign-functions=64>"
    )
    # Chains of errors are calls of the allocator and of streams above all. It is no gain elsewhere.
    set_property(
        SOURCE Halvora/error/HLVError.cpp Halvora/error/Param.cpp
        APPEND
        PROPERTY COMPILE_OPTIONS -fno-plt
    )
endif()
if(WIN32)
    set_target_properties(HalvTypes PROPERTIES PREFIX "") # HalvTypes.dll, libHalvTypes.dll.a
    # Inline functions are each module's own. The same bytes whenever it is linked.
    target_compile_options(HalvTypes PRIVATE -fno-keep-inline-dllexport)
    target_link_options(HalvTypes PRIVATE -Wl,--gc-sections -Wl,--no-insert-timestamp)
else()
    target_link_options(
        HalvTypes
        PRIVATE
            -Wl,--as-needed
            -Wl,--gc-sections
            # ... and across sources, without the linkage table: a fifth of the relocations less.
            -Wl,-Bsymbolic-functions
            -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map
    )
endif()
halvtypes_harden(HalvTypes)
halvtypes_warnings(HalvTypes)

# GCC's protection against stacks that clash is, on 32-bit ARM, a store into every frame. The next call
# makes one anyway, which is enough as long as no frame is as large as a page, 4,096 bytes, or of a
# length that is found out by running. That the compiler holds here instead.
set(limits_frames OFF)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(limits_frames ON)
endif()
option(HALVTYPES_LIMIT_FRAMES "Refuse large stack frames instead of probing each" ${limits_frames})
if(HALVTYPES_LIMIT_FRAMES AND HALVTYPES_HARDENING AND NOT sanitizes)
    target_compile_options(
        HalvTypes
        PRIVATE -fno-stack-clash-protection -Werror=stack-usage=2048
    )
endif()

# The assembler puts a text for GDB into the library.
set_source_files_properties(
    Halvora/Abi.cpp
    PROPERTIES
        COMPILE_OPTIONS -Wa,-I${PROJECT_SOURCE_DIR}/tools/gdb
        OBJECT_DEPENDS ${PROJECT_SOURCE_DIR}/tools/gdb/auto-load.py
)
