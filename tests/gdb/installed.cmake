# Installs the library, opens it in GDB, and asks for the printers that came along: by the path it
# was installed to, and moved elsewhere, with its debug information in it and beside it.
#   cmake -D GDB=<its name> -D OBJCOPY=<its path> -D BUILD=<build folder> -D WORK=<folder to work in>
#         -P installed.cmake
include(${CMAKE_CURRENT_LIST_DIR}/FindGdb.cmake)
if(NOT gdb)
    return()
endif()

function(expect_printers)
    list(TRANSFORM ARGN PREPEND "-iex;" OUTPUT_VARIABLE lines)
    execute_process(
        COMMAND ${gdb} ${lines} -ex "info pretty-printer" ${library}
        OUTPUT_VARIABLE output
        ERROR_VARIABLE output
    )
    if(NOT output MATCHES "/libHalvTypes[^/]* pretty-printers:\n.*  HalvTypes\n    ArrayView\n")
        message(FATAL_ERROR "the printers are not loaded with ${library}:\n${output}")
    endif()
    file(GLOB_RECURSE left ${WORK}/*.pyc)
    if(left)
        message(FATAL_ERROR "GDB leaves files behind: ${left}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
install_runtime("" ${WORK}/first)
expect_printers(
    "add-auto-load-scripts-directory ${WORK}/first/share/gdb/auto-load"
    "add-auto-load-safe-path ${WORK}/first/share/gdb/auto-load"
)
file(RENAME ${WORK}/first ${WORK}/moved)
string(REPLACE ${WORK}/first ${WORK}/moved library ${library})
expect_printers("add-auto-load-safe-path ${WORK}/moved")
split_debug(${library})
expect_printers("add-auto-load-safe-path ${WORK}/moved")
