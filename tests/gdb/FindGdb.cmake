# Leaves in `gdb` the command GDB with what every use of it here takes, or nothing and a note that
# the test is skipped.
find_program(gdb ${GDB})
if(gdb)
    execute_process(COMMAND ${gdb} -nx -batch -ex "python print(6 * 7)" OUTPUT_VARIABLE output)
endif()
if(gdb AND output STREQUAL "42\n")
    set(gdb
        ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8 ${gdb} -nx -batch
        -iex "set debuginfod enabled off"
        -iex "set width 0"
    )
else()
    message("SKIPPED: needs ${GDB} with Python; Debian's package has it")
    set(gdb)
endif()
