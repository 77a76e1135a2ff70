# examples/records on good and damaged input, and, where there is Python, on what its module for
# such files writes:
#   cmake -D PROGRAM=<program, a list> -D SOURCE_DIR=<folder of the project> -P records.cmake

# Without brackets and semicolons, which lists are made of.
function(expect input status output errors)
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/records.csv "${input}")
    execute_process(
        COMMAND ${PROGRAM} ${ARGN}
        INPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/records.csv
        OUTPUT_VARIABLE actual_output
        ERROR_VARIABLE actual_errors
        RESULT_VARIABLE actual_status
    )
    string(REGEX REPLACE "[][]" "|" actual_output "${actual_output}")
    foreach(what IN ITEMS status output errors)
        if(NOT "${actual_${what}}" STREQUAL "${${what}}")
            message(FATAL_ERROR "${input}\ngave the ${what}\n${actual_${what}}\nnot\n${${what}}")
        endif()
    endforeach()
endfunction()

expect("" 0 "" "")
expect("a,\"b \"\"c\"\",\"\r\n\r\n,\n" 0 "|\"a\",\"b \\\"c\\\",\"|\n|\"\",\"\"|\n" "")
expect("a\tb\\\t\"1\n2\"\n" 0 "|\"a\",\"b\\\\\",\"1\\u000a2\"|\n" "" "\t")
string(ASCII 195 182 195 40 61 bytes)
expect("${bytes}" 0 "|\"ö�(=\"|\n" "")
expect(
    "a,b\"c\n\"d\ne\n"
    1
    "|\"e\"|\n"
    "line 1, byte 4: a quote where none may stand, lines skipped: 1
line 2, byte 1: a quote that nothing closes, lines skipped: 1\n"
)
expect("" 2 "" "usage: records [separator] < file.csv\n" "ab")

find_program(PYTHON NAMES python3)
if(PYTHON)
    execute_process(
        COMMAND ${PYTHON} ${SOURCE_DIR}/tests/examples/records.py ${PROGRAM}
        COMMAND_ERROR_IS_FATAL ANY
    )
endif()
