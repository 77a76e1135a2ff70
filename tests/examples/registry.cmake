# The registry example on the sample that lies beside it and, where Debian's package has it, on the
# real registry.

# Runs the program in the sources' folder and checks its exit status. Leaves `output` and `errors`.
macro(run status)
    execute_process(
        COMMAND ${PROGRAM} ${ARGN}
        WORKING_DIRECTORY ${SOURCE_DIR}
        OUTPUT_VARIABLE output
        ERROR_VARIABLE errors
        RESULT_VARIABLE result
    )
    if(NOT result EQUAL ${status})
        message(
            FATAL_ERROR "${ARGN}: ended with ${result} instead of ${status}\n${output}${errors}"
        )
    endif()
endmacro()

macro(expect_equal actual expected)
    if(NOT "${actual}" STREQUAL "${expected}")
        message(FATAL_ERROR "expected\n${expected}\nbut the program wrote\n${actual}")
    endif()
endmacro()

set(sample examples/registry/sample.csv)
run(0 ${sample} A0:B1:C5 00:00:00 a0b1c4 A0B1C7 A0B1C8 A0B1D2 A0B1D3)
string(REGEX REPLACE "[0-9]+ ms" "N ms" output "${output}")
file(READ ${SOURCE_DIR}/examples/registry/sample.expected expected)
expect_equal("${output}" "${expected}")

foreach(asked IN ITEMS "FFFFFF:-109" "A0B1C:-108" "A0B1CZ:-108")
    string(REGEX MATCH "(.*):(.*)" asked ${asked})
    set(assignment ${CMAKE_MATCH_1})
    set(answer "\nError ${CMAKE_MATCH_2}\n  P1: ${assignment}\n")
    run(1 ${sample} ${assignment} A0B1C5)
    string(FIND "${output}" "${answer}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "${assignment} is not answered by${answer}but by\n${output}")
    endif()
endforeach()

run(2 examples/registry/missing.csv)
expect_equal("${errors}" "Error -103\n  P1: examples/registry/missing.csv\n")
expect_equal("${output}" "")

# One record more than an array holds, and one with more lines than a record may have: its first 16
# lines are refused, then each of the others.
string(REPEAT "MA-L,A0B1C5,x,y\n" 65536 records)
string(REPEAT "x\n" 19 rest)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/many.csv "heading\n${records}\"\n${rest}")
run(0 ${CMAKE_CURRENT_BINARY_DIR}/many.csv)
set(counts "records: +65535\nerrors: +6\nwarnings: +65534\n")
if(NOT output MATCHES "${counts}lines read: +65557 = 65536 taken \\+ 21 refused")
    message(FATAL_ERROR "the limits do not hold:\n${output}")
endif()

set(real /usr/share/ieee-data/oui.csv)
if(NOT EXISTS ${real})
    return()
endif()
run(0 ${real} 00:D0:EF 00D0EF)
set(sum "lines read: +([0-9]+) = ([0-9]+) taken \\+ ([0-9]+) refused \\+ ([0-9]+) blank")
if(NOT output MATCHES "${sum}")
    message(FATAL_ERROR "no count of lines in\n${output}")
endif()
math(EXPR sum "${CMAKE_MATCH_2} + ${CMAKE_MATCH_3} + ${CMAKE_MATCH_4}")
execute_process(COMMAND grep -c "" ${real} OUTPUT_VARIABLE lines OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT sum EQUAL CMAKE_MATCH_1 OR NOT sum EQUAL lines)
    message(FATAL_ERROR "the file has ${lines} lines, the program says\n${output}")
endif()
if(NOT output MATCHES "\nIGT\n  0x0000000000000000000000180000D0EF\n")
    message(FATAL_ERROR "00:D0:EF was not found:\n${output}")
endif()
