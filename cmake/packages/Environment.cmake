# Run by cpack before it builds a package: dpkg's tools take the target's architecture from here,
# and times in the packages are those of the changelog.
set(ENV{DEB_HOST_ARCH} ${CPACK_DEBIAN_PACKAGE_ARCHITECTURE})
execute_process(
    COMMAND dpkg-parsechangelog -l ${CMAKE_CURRENT_LIST_DIR}/changelog -S Timestamp
    OUTPUT_VARIABLE timestamp
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY
)
set(ENV{SOURCE_DATE_EPOCH} ${timestamp})
