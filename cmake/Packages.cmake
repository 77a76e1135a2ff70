# Debian packages by cpack, for a build that is configured as script/package does it: the prefix is
# /usr, and libraries lie in the architecture's own folder.
find_program(GZIP gzip REQUIRED)

if(CMAKE_LIBRARY_ARCHITECTURE)
    set(triplet ${CMAKE_LIBRARY_ARCHITECTURE})
else()
    get_filename_component(triplet ${CMAKE_INSTALL_LIBDIR} NAME)
endif()
execute_process(
    COMMAND dpkg-architecture -qDEB_HOST_ARCH --host-type ${triplet}
    OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_ARCHITECTURE
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY
)

set(packages_dir ${PROJECT_SOURCE_DIR}/cmake/packages)
file(STRINGS ${packages_dir}/changelog latest LIMIT_COUNT 1)
if(NOT latest MATCHES "^halvtypes \\(${PROJECT_VERSION}\\) ")
    message(FATAL_ERROR "the first entry of cmake/packages/changelog is not ${PROJECT_VERSION}'s")
endif()

# Files that belong to a package, not to the library: cmake --install leaves them out.
function(install_compressed source name destination component)
    set(compressed ${PROJECT_BINARY_DIR}/package_files/${component}/${name}.gz)
    cmake_path(GET compressed PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
    execute_process(
        COMMAND ${GZIP} -9nc ${source}
        OUTPUT_FILE ${compressed}
        COMMAND_ERROR_IS_FATAL ANY
    )
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
    install(
        FILES ${compressed}
        DESTINATION ${destination}
        COMPONENT ${component}
        EXCLUDE_FROM_ALL
    )
endfunction()

macro(package group name section)
    string(TOUPPER ${group} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
    set(CPACK_COMPONENT_${upper}_GROUP ${group})
    set(CPACK_COMPONENT_${upper}_EXTRAS_GROUP ${group})
    list(APPEND CPACK_COMPONENTS_ALL ${group} ${group}_extras)

    set(doc_dir share/doc/${name})
    install_compressed(${packages_dir}/changelog changelog ${doc_dir} ${group}_extras)
    install(
        FILES ${packages_dir}/copyright
        DESTINATION ${doc_dir}
        COMPONENT ${group}_extras
        EXCLUDE_FROM_ALL
    )
endmacro()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME halvtypes)
set(CPACK_PACKAGE_VENDOR Halvora)
set(CPACK_PACKAGE_CONTACT "Halvora <halvtypes@halvora.example>")
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_COMPONENTS_ALL)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE halvtypes)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)

set(about "HalvTypes holds the C++17 classes through which the components of the
Halvora family hand each other scalars, 16-byte identifiers, text, typed
arrays and errors, with the same bytes and texts on every target.")

package(runtime libhalvtypes${PROJECT_VERSION_MAJOR} libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${about}
.
This package holds the shared library.")
# A program needs at least the version it was built with, which may have brought new names.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${packages_dir}/triggers)

package(development libhalvtypes-dev libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${about}
.
This package holds the headers, what CMake, pkg-config and GDB need to
work with the library, and halv-inspect, which prints what the library
laid into files and memory dumps.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})"
)
if(HALVTYPES_BUILD_TOOLS)
    install_compressed(
        ${PROJECT_SOURCE_DIR}/tools/inspect/halv-inspect.1 halv-inspect.1
        share/man/man1 development_extras
    )
endif()

# The tools that cpack runs on the target's files.
set(CPACK_OBJCOPY_EXECUTABLE ${CMAKE_OBJCOPY})
set(CPACK_READELF_EXECUTABLE ${CMAKE_READELF})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
if(CMAKE_CROSSCOMPILING)
    list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_FIND_ROOT_PATH}/lib)
endif()
set(CPACK_PROJECT_CONFIG_FILE ${packages_dir}/Environment.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${packages_dir}/Finish.cmake)

include(CPack)
foreach(group IN ITEMS runtime development)
    cpack_add_component_group(${group})
endforeach()
