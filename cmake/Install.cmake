# The components: `runtime` is what a program needs to run and a debugger to show it, `development`
# what building one takes, `tools` the programs.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/HalvTypes)

install(
    TARGETS HalvTypes
    EXPORT HalvTypesTargets
    RUNTIME # on Windows
        DESTINATION ${CMAKE_INSTALL_BINDIR}
        COMPONENT runtime
    LIBRARY
        DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT runtime
        NAMELINK_COMPONENT development
    ARCHIVE
        DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT development
    FILE_SET HEADERS
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT development
)

install(
    EXPORT HalvTypesTargets
    NAMESPACE Halvora::
    DESTINATION ${package_dir}
    COMPONENT development
)
configure_package_config_file(
    cmake/HalvTypesConfig.cmake.in ${PROJECT_BINARY_DIR}/HalvTypesConfig.cmake
    INSTALL_DESTINATION ${package_dir}
    NO_SET_AND_CHECK_MACRO
    NO_CHECK_REQUIRED_COMPONENTS_MACRO
)
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/HalvTypesConfigVersion.cmake
    COMPATIBILITY SameMajorVersion
)
install(
    FILES
        ${PROJECT_BINARY_DIR}/HalvTypesConfig.cmake
        ${PROJECT_BINARY_DIR}/HalvTypesConfigVersion.cmake
    DESTINATION ${package_dir}
    COMPONENT development
)

# What the library is built for, as its own headers see it: they compare it with a program's.
separate_arguments(flags NATIVE_COMMAND "${CMAKE_CXX_FLAGS}")
file(
    WRITE ${PROJECT_BINARY_DIR}/AbiOfBuild.cpp
    "#include <Halvora/Abi.h>\nbuilt for: HALVTYPES_STRINGS_NUMBER __SIZEOF_WCHAR_T__\n"
)
execute_process(
    COMMAND
        ${CMAKE_CXX_COMPILER} ${flags} -std=c++17 -E -P -DHALVTYPES_BUILD -I${PROJECT_SOURCE_DIR}
        ${PROJECT_BINARY_DIR}/AbiOfBuild.cpp
    OUTPUT_VARIABLE preprocessed
    COMMAND_ERROR_IS_FATAL ANY
)
if(NOT preprocessed MATCHES "built for: ([0-9]+) ([0-9]+)")
    message(FATAL_ERROR "the compiler does not tell what it builds for:\n${preprocessed}")
endif()
set(built_for_strings ${CMAKE_MATCH_1})
set(built_for_wchar_bytes ${CMAKE_MATCH_2})
configure_file(
    cmake/AbiOfBuild.h.in ${PROJECT_BINARY_DIR}/installed_headers/Halvora/AbiOfBuild.h @ONLY
)
install(
    FILES ${PROJECT_BINARY_DIR}/installed_headers/Halvora/AbiOfBuild.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Halvora
    COMPONENT development
)

# The prefix in the pkg-config file is relative to the file, so the tree may move as a whole.
file(
    RELATIVE_PATH pc_prefix
    ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
    ${CMAKE_INSTALL_PREFIX}
)
file(RELATIVE_PATH pc_libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH pc_includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(pc_definitions)
if(NOT HALVTYPES_SHARED)
    set(pc_definitions " -DHALVTYPES_STATIC")
endif()
configure_file(cmake/halvtypes.pc.in ${PROJECT_BINARY_DIR}/halvtypes.pc @ONLY)
install(
    FILES ${PROJECT_BINARY_DIR}/halvtypes.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development
)

# Each major version has printers of its own: a face for each debugger, and what both show.
set(debuggers_home halvtypes${PROJECT_VERSION_MAJOR})
set(debuggers_component development)
if(HALVTYPES_SHARED)
    set(debuggers_component runtime)
endif()
foreach(file IN ITEMS halvtypes_layouts.py gdb/halvtypes.py lldb/halvtypes_lldb.py)
    cmake_path(GET file PARENT_PATH folder)
    install(
        FILES tools/${file}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/${debuggers_home}/${folder}
        COMPONENT ${debuggers_component}
    )
endforeach()
if(HALVTYPES_SHARED)
    # GDB runs <its data folder>/auto-load/<full path of a library>-gdb.py when it loads the library.
    # The prefix in that path is the one given when installing: for a library that was moved, or
    # lies in a copy of a device's files, the same text lies in its debug information. The build
    # folder's library has such a file beside it.
    set(gdb_loader $<TARGET_FILE_NAME:HalvTypes>-gdb.py)
    set(gdb_library_dir ${CMAKE_INSTALL_LIBDIR})
    if(WIN32)
        set(gdb_library_dir ${CMAKE_INSTALL_BINDIR})
    endif()
    if(NOT IS_ABSOLUTE ${gdb_library_dir})
        set(gdb_library_dir "\${CMAKE_INSTALL_PREFIX}/${gdb_library_dir}")
    endif()
    install(
        FILES tools/gdb/auto-load.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${gdb_library_dir}
        RENAME ${gdb_loader}
        COMPONENT runtime
    )
    file(
        GENERATE
        OUTPUT $<TARGET_FILE_DIR:HalvTypes>/${gdb_loader}
        INPUT tools/gdb/auto-load.py
    )
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/${debuggers_home})
    foreach(name IN ITEMS gdb lldb halvtypes_layouts.py)
        file(
            CREATE_LINK
            ${PROJECT_SOURCE_DIR}/tools/${name}
            ${PROJECT_BINARY_DIR}/${debuggers_home}/${name}
            SYMBOLIC
        )
    endforeach()
endif()
