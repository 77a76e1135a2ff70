# Installs the library, opens it in GDB, and asks for the printers that came along.
#   cmake -D GDB=<its name> -D BUILD=<build folder> -D LIBRARY=<file name>
#         -D WORK=<folder to work in> -P installed.cmake
include(${CMAKE_CURRENT_LIST_DIR}/FindGdb.cmake)
if(NOT gdb)
    return()
endif()

file(REMOVE_RECURSE ${WORK})
foreach(component IN ITEMS runtime development)
    execute_process(
        COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK} --component ${component}
        OUTPUT_QUIET
        COMMAND_ERROR_IS_FATAL ANY
    )
endforeach()
file(GLOB_RECURSE library ${WORK}/lib*/${LIBRARY})
execute_process(
    COMMAND
        ${gdb} -iex "add-auto-load-scripts-directory ${WORK}/share/gdb/auto-load" -iex
        "add-auto-load-safe-path ${WORK}/share/gdb/auto-load" -ex "info pretty-printer" ${library}
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output
)
if(NOT output MATCHES "/${LIBRARY} pretty-printers:\n.*  HalvTypes\n    Binary16\n")
    message(FATAL_ERROR "the printers are not loaded with ${library}:\n${output}")
endif()
file(GLOB_RECURSE left ${WORK}/*.pyc)
if(left)
    message(FATAL_ERROR "GDB leaves files behind: ${left}")
endif()
