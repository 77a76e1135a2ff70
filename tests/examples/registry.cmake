# The registry example: on the files beside it, on files of other kinds, beyond its limits, and,
# where Debian's package has it, on the real registry.

# Says what broke. The text stands in front of the error, because CMake rewraps that.
function(fail what)
    message(NOTICE "${ARGN}")
    message(SEND_ERROR "${what}")
endfunction()

# Runs the program in the sources' folder and checks its exit status. Leaves `output`, without the
# time that was taken, and `errors`.
macro(run status)
    execute_process(
        COMMAND ${PROGRAM} ${ARGN}
        WORKING_DIRECTORY ${SOURCE_DIR}
        OUTPUT_VARIABLE output
        ERROR_VARIABLE errors
        RESULT_VARIABLE result
    )
    string(REGEX REPLACE "[0-9]+ ms" "N ms" output "${output}")
    if(NOT result EQUAL ${status})
        fail("registry ${ARGN}: ended with ${result} instead of ${status}" "${output}${errors}")
    endif()
endmacro()

function(expect what actual pattern)
    if(NOT "${actual}" MATCHES "${pattern}")
        fail("registry ${what}: wrong output" "expected\n${pattern}\nbut it wrote\n${actual}")
    endif()
endfunction()

function(expect_file name)
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${name} "${output}")
    execute_process(
        COMMAND diff -u ${SOURCE_DIR}/examples/registry/${name} ${CMAKE_CURRENT_BINARY_DIR}/${name}
        OUTPUT_VARIABLE difference
        RESULT_VARIABLE result
    )
    if(result)
        fail("registry: does not print ${name}" "${difference}")
    endif()
endfunction()

set(sample examples/registry/sample.csv)
run(0 ${sample} A0:B1:C5 000000 a0-b1-c4 A0B1C7 A0B1C8 A0B1D2 A0B1D45 a0:b1:d4:56:7 0050C2001)
expect_file(sample.expected)
run(0 examples/registry/damaged.csv)
expect_file(damaged.expected)

# <assignment>:<error>
foreach(row IN ITEMS FFFFFF:-109 A0B1C20:-109 A0B1C:-108 A0B1C210:-108 A0B1CZ:-108)
    string(REPLACE ":" ";" row ${row})
    list(POP_FRONT row assignment)
    run(1 ${sample} ${assignment} A0B1C5)
    set(answer "\n[a-zA-Z]+ \\(${row}\\): [^\n]+\n  assignment: ${assignment}\n\nJSC \"METEOR-K\"\n")
    expect("${assignment}" "${output}" "${answer}")
endforeach()

# Nothing that could be taken: one sentence, and nothing else.
set(foreign "^foreignFile \\(-112\\): [^\n]+\n  file: [^\n]+\n$")
set(endless "^endlessLine \\(-113\\): [^\n]+\n  file: [^\n]+\n  line: 3\n$")
string(REPEAT "x" 17000000 line)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/endless.csv "MA-L,A0B1C5,x,y\nMA-L,A0B1C6,x,y\n${line}")
set(unreadable "^unreadableFile \\(-103\\): [^\n]+\n  file: [^\n]+\n$")
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/empty.csv "")
file(READ ${SOURCE_DIR}/${sample} heading LIMIT 59)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/heading.csv "${heading}")
foreach(row IN ITEMS
    1:foreign:README.md
    1:foreign:CMakeLists.txt
    1:foreign:/dev/null
    1:foreign:/dev/zero
    2:endless:${CMAKE_CURRENT_BINARY_DIR}/endless.csv
    1:foreign:${CMAKE_COMMAND}
    1:foreign:${CMAKE_CURRENT_BINARY_DIR}/heading.csv
    2:unreadable:/
    2:unreadable:examples/registry/missing.csv
)
    string(REPLACE ":" ";" row ${row})
    list(GET row 0 status)
    list(GET row 1 sentence)
    list(GET row 2 file)
    run(${status} ${file} A0B1C5)
    expect("${file}" "${errors}${output}" "${${sentence}}")
endforeach()

# One record more than an array holds, and more errors and warnings than are kept.
string(REPEAT "MA-L,A0B1C5,x,y\n" 65536 records)
string(REPEAT "x\n" 25 rest)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/many.csv "${records}${rest}")
run(0 ${CMAKE_CURRENT_BINARY_DIR}/many.csv)
set(lines "lines read: +65561 = 0 heading [+] 65535 taken [+] 26 refused [+] 0 blank\n")
expect("limits" "${output}" "^records: +65535\nerrors: +26\nwarnings: +65534\n${lines}")
expect("limits" "${output}" "\n  line: 65536\ntooManyRecords .*and 6 more errors\n")

# The real files, against another way to count.
foreach(row IN ITEMS "oui;00:D0:EF;IGT" "mam;20:85:93:B;IOG Products LLC"
                     "oui36;70B3D5719;2M Technology" "iab;0050C27D5;DEUTA-WERKE GmbH")
    list(GET row 0 file)
    set(file /usr/share/ieee-data/${file}.csv)
    if(NOT EXISTS ${file})
        message("SKIPPED: needs Debian's package ieee-data")
        return()
    endif()
    execute_process(
        COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C awk -f ${CMAKE_CURRENT_LIST_DIR}/registry.awk ${file}
        OUTPUT_VARIABLE counted
    )
    list(GET row 1 assignment)
    list(GET row 2 maker)
    run(0 ${file} ${assignment})
    string(REGEX REPLACE " +" " " output "${output}")
    string(REPLACE "+" "[+]" counted "${counted}")
    expect("${file}" "${output}" "^${counted}")
    expect("${file}" "${output}" "\n${maker}\n 0x[0-9A-F]+\n")
endforeach()
