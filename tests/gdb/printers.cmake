# Runs the program in GDB, prints its objects, and compares that with what is expected. In an emulator
# the library lies in a copy of a device's files, stripped; there the same is done once more with the
# core that the program leaves.
#   cmake -D GDB=<its name> -D PROGRAM=<program> -D LIBRARY_DIR=<folder of the library>
#         -D WORK=<folder to work in>
#         [-D PRINTERS=<file>]                  sourced, instead of what the library brings along
#         [-D EMULATOR=<command, a list> -D SYSROOT=<folder> -D OBJCOPY=<its path>
#          -D BUILD=<build folder>]
#         -P printers.cmake
set(here ${CMAKE_CURRENT_LIST_DIR})
include(${here}/FindGdb.cmake)
if(NOT gdb)
    return()
endif()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(trusted ${LIBRARY_DIR})
if(EMULATOR)
    set(trusted ${WORK}/root)
    install_runtime(${trusted} /usr)
    split_debug(${library})
    file(CREATE_LINK ${SYSROOT}/lib ${trusted}/lib SYMBOLIC)
    list(APPEND gdb -iex "set sysroot ${trusted}")
endif()
if(PRINTERS)
    list(APPEND gdb -iex "source ${PRINTERS}")
else()
    list(APPEND gdb -iex "add-auto-load-safe-path ${trusted}")
endif()
set(print
    -ex "set logging file printed"
    -ex "set logging redirect on"
    -ex "set logging enabled on"
    -x ${here}/printers.gdb
    -ex "set logging enabled off"
)

# Leaves what the last command wrote in `output`.
macro(run)
    execute_process(
        ${ARGN}
        WORKING_DIRECTORY ${WORK}
        OUTPUT_VARIABLE output
        ERROR_VARIABLE output
        TIMEOUT 300
    )
    if(output MATCHES "ptrace: Operation not permitted")
        message("SKIPPED: no program may be debugged here")
        return()
    endif()
    if(output MATCHES "Python Exception|Traceback|Error in sourced")
        message("${output}")
        message(FATAL_ERROR "GDB met an error")
    endif()
endmacro()

macro(expect_printed)
    execute_process(
        COMMAND diff -u ${here}/printers.expected ${WORK}/printed
        OUTPUT_VARIABLE difference
        ERROR_VARIABLE difference
        RESULT_VARIABLE differs
    )
    if(differs)
        message("${output}\n${difference}")
        message(FATAL_ERROR "GDB printed something else")
    endif()
    file(REMOVE ${WORK}/printed)
endmacro()

if(NOT EMULATOR)
    run(COMMAND ${gdb} -ex "break ready" -ex run ${print} ${PROGRAM})
    expect_printed()
    return()
endif()

run(
    COMMAND
        sh -c "ulimit -c unlimited && exec \"$@\"" sh ${EMULATOR} -L ${trusted} -g ./socket ${PROGRAM}
    COMMAND
        ${gdb} -x ${here}/remote.gdb -ex "break ready" -ex continue ${print}
        -ex "handle SIGABRT nostop noprint pass" -ex continue ${PROGRAM}
)
expect_printed()

file(GLOB core ${WORK}/qemu_*.core)
if(EMULATOR MATCHES "riscv64" AND NOT core)
    message("SKIPPED: qemu-riscv64 writes no cores; the running program was printed as expected")
    return()
elseif(NOT core)
    message(FATAL_ERROR "the emulated program left no core\n${output}")
endif()
run(COMMAND ${gdb} ${print} ${PROGRAM} ${core})
expect_printed()
file(REMOVE_RECURSE ${WORK}) # cores are large
