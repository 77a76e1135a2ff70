# Runs a program and compares what it writes to standard output with a file, byte for byte.
#   cmake -D COMMAND=<program and arguments, a list> -D EXPECTED=<file> -D ACTUAL=<file to write>
#         -P RunAndCompare.cmake
execute_process(
    COMMAND ${COMMAND}
    OUTPUT_FILE ${ACTUAL}
    ERROR_VARIABLE errors
    RESULT_VARIABLE result
)
if(NOT result EQUAL 0)
    message("${errors}")
    message(FATAL_ERROR "${COMMAND} ended with ${result}")
endif()

execute_process(
    COMMAND ${CMAKE_COMMAND} -E compare_files ${EXPECTED} ${ACTUAL}
    RESULT_VARIABLE differs
    OUTPUT_QUIET
    ERROR_QUIET
)
if(differs)
    execute_process(COMMAND diff -u ${EXPECTED} ${ACTUAL})
    message(FATAL_ERROR "the program does not print ${EXPECTED}")
endif()
