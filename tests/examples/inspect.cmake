# halv-inspect on small files: every kind, every option, what is damaged, cut at every byte, and
# wrong usage.

# Writes bytes given as hexadecimal digits in pairs.
function(write_bytes file hex)
    string(REGEX REPLACE " *([0-9A-F][0-9A-F]) *" "\\\\x\\1" escapes "${hex}")
    execute_process(COMMAND printf "${escapes}" OUTPUT_FILE ${file})
endfunction()

# Runs the program in the folder of the files and checks its exit status and standard output, and
# standard error by a pattern.
function(expect status output error_pattern)
    execute_process(
        COMMAND ${PROGRAM} ${ARGN}
        WORKING_DIRECTORY ${WORK_DIR}
        INPUT_FILE ${WORK_DIR}/input
        OUTPUT_VARIABLE actual
        ERROR_VARIABLE errors
        RESULT_VARIABLE result
    )
    if(NOT "${result}" STREQUAL "${status}"
       OR NOT "${actual}" STREQUAL "${output}"
       OR NOT "${errors}" MATCHES "${error_pattern}")
        message(
            SEND_ERROR
            "${ARGN}\nhas to end with ${status}, write\n${output}and say ${error_pattern}\n"
            "but ended with ${result}, wrote\n${actual}and said ${errors}"
        )
    endif()
endfunction()

set(pump_id "78 56 34 12 BC 9A F0 DE 08 07 06 05 04 03 02 01 ")
set(pump_hex 0x0102030405060708DEF09ABC12345678)
set(pump_grouped 12345678-9abc-def0-0807-060504030201)
set(no_id "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 ")
set(no_hex 0x00000000000000000000000000000000)
set(no_grouped 00000000-0000-0000-0000-000000000000)
set(pump_json "\"id\":\"${pump_hex}\",\"grouped\":\"${pump_grouped}\"")
set(no_json "\"id\":\"${no_hex}\",\"grouped\":\"${no_grouped}\"")

file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/folder)
write_bytes(${WORK_DIR}/input "")

# Two records of each kind, the first with the text "a", the second without one.
write_bytes(${WORK_DIR}/packed "${pump_id} 01 00 61 00 ${no_id} 00 00")
write_bytes(${WORK_DIR}/slot "${pump_id} 01 00 61 00 00 00 ${no_id} 00 00 00 00 00 01")
write_bytes(${WORK_DIR}/raw "01 00 61 00 00 00")
write_bytes(${WORK_DIR}/raw-slot "01 00 61 00 30 30 00 00 30 30 00 30")
write_bytes(${WORK_DIR}/id "${pump_id} ${no_id}")

set(kept "\"fillIntact\":true}\n")
set(lost "\"fillIntact\":false}\n")
set(a "\"length\":1,\"text\":\"a\"")
set(none "\"length\":0,\"text\":\"\"")
set(packed_0 "{\"offset\":0,\"kind\":\"packed\",\"size\":20,${pump_json},${a}}\n")
set(packed_20 "{\"offset\":20,\"kind\":\"packed\",\"size\":18,${no_json},${none}}\n")
set(slot_0 "{\"offset\":0,\"kind\":\"slot\",\"size\":22,${pump_json},${a},${kept}")
set(slot_22 "{\"offset\":22,\"kind\":\"slot\",\"size\":22,${no_json},${none},${lost}")
set(raw_0 "{\"offset\":0,\"kind\":\"raw\",\"size\":4,${a}}\n")
set(raw_4 "{\"offset\":4,\"kind\":\"raw\",\"size\":2,${none}}\n")
set(raw-slot_0 "{\"offset\":0,\"kind\":\"raw-slot\",\"size\":6,${a},${kept}")
set(raw-slot_6 "{\"offset\":6,\"kind\":\"raw-slot\",\"size\":6,${none},${lost}")
set(id_0 "{\"offset\":0,\"kind\":\"id\",\"size\":16,${pump_json}}\n")
set(id_16 "{\"offset\":16,\"kind\":\"id\",\"size\":16,${no_json}}\n")

# What is said of damaged input, up to the offset: for a reader, and as JSON.
set(file "^badInput \\(-1\\): [^\n]+\n  file: [^\n]+\n")
set(cut "${file}truncated \\(-4\\): [^\n]+\n  offset:")
set(long "${file}impossible \\(-5\\): [^\n]+\n  offset: [0-9]+\n  units:")
set(number "{\"type\":\"UInt64\",\"value\":")
set(file_json "^{\"chain\":\\[{\"code\":-1,\"params\":\\[{\"type\":\"String\",\"value\":\"[^\"]+\"}\\]},")
set(cut_json "${file_json}{\"code\":-4,\"params\":\\[${number}")
set(long_json "${file_json}{\"code\":-5,\"params\":\\[${number}")

# Cut behind every byte: what is whole is printed, and where the rest begins is said.
foreach(row IN ITEMS packed:20:38 slot:22:44 raw:4:6 raw-slot:6:12 id:16:32)
    string(REPLACE ":" ";" row ${row})
    list(GET row 0 kind)
    list(GET row 1 second)
    list(GET row 2 size)
    set(options --json --kind ${kind})
    if(kind MATCHES slot)
        list(APPEND options --capacity 2)
    endif()
    file(READ ${WORK_DIR}/${kind} hex HEX)
    string(TOUPPER ${hex} hex)
    foreach(length RANGE ${size})
        math(EXPR digits "2 * ${length}")
        string(SUBSTRING ${hex} 0 ${digits} start)
        write_bytes(${WORK_DIR}/cut "${start}")
        if(length EQUAL 0)
            expect(0 "" "^$" ${options} cut)
        elseif(length LESS second)
            expect(1 "" "${cut_json}0},${number}${length}},${number}[0-9]+}\\]}\\]}\n$" ${options} cut)
        elseif(length EQUAL second)
            expect(0 "${${kind}_0}" "^$" ${options} cut)
        elseif(length LESS size)
            expect(1 "${${kind}_0}" "${cut_json}${second}}," ${options} cut)
        else()
            expect(0 "${${kind}_0}${${kind}_${second}}" "^$" ${options} cut)
        endif()
    endforeach()
endforeach()

# For a reader.
set(ids "  id    ${pump_hex}\n        ${pump_grouped}\n")
expect(0 "offset 0 (0x0): packed, 20 bytes\n${ids}  text  \"a\"\n  units 1\n" "^$"
    --kind packed --count 1 packed)
expect(0 "offset 0 (0x0): slot, 20 bytes\n${ids}  text  \"a\"\n  units 1\n  fill  intact\n" "^$"
    --kind slot --capacity=1 --count=1 slot)
expect(0 "offset 6 (0x6): raw-slot, 6 bytes\n  text  \"\"\n  units 0\n  fill  not intact\n" "^$"
    --kind raw-slot --capacity 0x2 --offset 0X6 raw-slot)
expect(0 "offset 0 (0x0): id, 16 bytes\n${ids}" "^$" --kind id --stride 32 id)

# Characters: a quote, a backslash, a line end, two pairs of surrogates, surrogates the wrong way
# round and at the end, control characters, one of two bytes and one of three.
write_bytes(${WORK_DIR}/characters
    "0F 00 7F 00 22 00 5C 00 0A 00 3D D8 00 DE 00 D8 00 DC 00 DC 00 D8 9B 00 E9 00 AC 20 00 D8 FF DB")
set(text [=[\u007f\"\\\u000a😀𐀀\udc00\ud800\u009bé€\ud800\udbff]=])
string(REGEX REPLACE "\\\\ud[89b-f][0f][0f]" "�" json_text "${text}")
expect(0 "offset 0 (0x0): raw, 32 bytes\n  text  \"${text}\"\n  units 15\n" "^$"
    --kind raw characters)
set(units "127,34,92,10,55357,56832,55296,56320,56320,55296,155,233,8364,55296,56319")
expect(0 "{\"offset\":0,\"kind\":\"raw\",\"size\":32,\"length\":15,\"text\":\"${json_text}\",\"units\":[${units}]}\n"
    "^$" --kind raw --json characters)
execute_process(
    COMMAND sh -c "if command -v jq >/dev/null; then \"$@\" | jq -c '[(.text | length), .units[7]]'; else echo '[13,56320]'; fi"
        sh ${PROGRAM} --kind raw --json ${WORK_DIR}/characters
    OUTPUT_VARIABLE text
)
if(NOT text STREQUAL "[13,56320]\n")
    message(SEND_ERROR "jq reads ${text}")
endif()

# What turns text around, and what else a terminal obeys, in texts and in names of files.
write_bytes(${WORK_DIR}/direction "05 00 2E 20 1C 06 69 20 0E 20 28 20")
set(text [=[\u202e\u061c\u2069\u200e\u2028]=])
expect(0 "offset 0 (0x0): raw, 12 bytes\n  text  \"${text}\"\n  units 5\n" "^$" --kind raw direction)
expect(0 "{\"offset\":0,\"kind\":\"raw\",\"size\":12,\"length\":5,\"text\":\"${text}\"}\n" "^$"
    --kind raw --json direction)
if(NOT PROGRAM MATCHES "wine") # whose programs take arguments in a code page without them
    string(ASCII 27 226 128 174 194 155 steering)
    expect(1 "" "\n  file:  \\\\u202e \nmissing" --kind raw "${steering}")
    expect(1 "" "\"\\\\u001b\\\\u202e\\\\u009b\"" --kind raw --json "${steering}")
endif()

# A default slot has room for the longest text. Records that lie across many blocks of the file.
string(REPEAT "2E 00 " 510 dots)
string(REPEAT "." 510 dots_text)
set(content "")
set(output "")
foreach(i RANGE 10 40)
    string(REGEX REPLACE "(.)" "3\\1 00 " digits ${i})
    string(APPEND content "00 02 ${digits}${dots}")
    math(EXPR offset "1026 * (${i} - 10)")
    string(APPEND output "{\"offset\":${offset},\"kind\":\"raw-slot\",\"size\":1026,\"length\":512,"
        "\"text\":\"${i}${dots_text}\",\"fillIntact\":true}\n")
endforeach()
write_bytes(${WORK_DIR}/long "${content}")
expect(0 "${output}" "^$" --kind raw-slot --json long)
expect(0 "{\"offset\":9226,\"kind\":\"raw\",\"size\":2,\"length\":0,\"text\":\"\"}\n" "^$"
    --kind raw --json --offset 9226 --count 1 /dev/zero)

# Standard input, named and not.
configure_file(${WORK_DIR}/raw ${WORK_DIR}/input COPYONLY)
expect(0 "${raw_0}${raw_4}" "^$" --kind raw --json)
expect(0 "${raw_4}" "^$" --kind raw --json --offset 4 -)

# Hexadecimal dumps: where errors are and why, then where records are.
function(expect_dump seen dump)
    file(WRITE ${WORK_DIR}/dump "${dump}")
    execute_process(
        COMMAND ${PROGRAM} --kind raw --hex ${ARGN} ${WORK_DIR}/dump
        OUTPUT_VARIABLE text
        ERROR_VARIABLE text
    )
    string(REGEX MATCHALL "(offset|line|reason)[ :]+[^ \n]+( [a-z]+)?" text "${text}")
    if(NOT text STREQUAL seen)
        message(SEND_ERROR "${ARGN}, of\n${dump}has to give\n${seen}, not\n${text}")
    endif()
endfunction()
set(three "offset 0;offset 4;offset 6")
expect_dump("${three}" "00000000: 0100 6100 0000 0100 6300            ..a.....c.\n")
expect_dump("${three}" "00000000: 01006100 00000100\r\n\r\n00000008: 6300\n")
expect_dump("${three}" "000000 01 00 61 00 00 00 01 00  >..a.....<\n000008 63 00\n00000a\n")
expect_dump("${three}" "00000000  01 00 61 00 00 00  01 00 63 00  |..a.....c.|\n0000000a\n")
expect_dump("offset 281474976710652;offset 281474976710656"
    "000000 01 00 61 00\n*\n1000000000000 00 00\n1000000000002\n" --offset 0xfffffffffffc)
set(gaps "10: 0100 6100\n20: 0200\n2a: 0000 0000\n")
expect_dump("offset 16;offset: 20" "${gaps}")
expect_dump("offset 16;offset: 20;offset: 32;offset: 36;offset 44" "${gaps}" --stride 4)
foreach(dump IN ITEMS "0000000 000001" "0000000 01 00" "48656c6c6f" "8000000000000000: 00")
    expect_dump("line: 1;reason: an address" "${dump}")
endforeach()
expect_dump("offset 0;line: 2;reason: an address" "0: 0100 6100\n2: 00\n")
expect_dump("line: 2;reason: an address" "000000 01 00\n000003 00\n")
expect_dump("line: 1;reason: bytes that" "00000000: 61000001          ...a\n")
expect_dump("line: 1;reason: a line" " 01 00\n")
expect_dump("line: 1;reason: not bytes" "000000 0100 6100\n")
expect_dump("line: 3;reason: nothing tells" "0: 01\n*\n*\n")

# Far into a file that is longer than anybody would wait for.
execute_process(
    COMMAND sh -c "truncate -s 1T sparse && cat raw >>sparse && ulimit -t 5 && \"$@\"" sh
        ${PROGRAM} --kind raw --json --offset 1099511627776 sparse
    WORKING_DIRECTORY ${WORK_DIR}
    OUTPUT_VARIABLE seeks
)
file(REMOVE ${WORK_DIR}/sparse)
if(NOT seeks MATCHES "^{\"offset\":1099511627776,[^\n]*\n[^\n]*\n$")
    message(SEND_ERROR "behind 1 TiB it reads ${seeks}")
endif()

# A stride goes on behind a damaged record, and may be smaller than the records.
write_bytes(${WORK_DIR}/impossible "01 00 61 00 FF FF FF FF 00 00")
write_bytes(${WORK_DIR}/zeros "00 00 00 00 00 00 00")
expect(1 "${raw_0}" "${long_json}4},${number}65535},${number}512}"
    --kind raw --json impossible)
expect(1 "${raw_0}{\"offset\":8,\"kind\":\"raw\",\"size\":2,${none}}\n" "${long_json}4},"
    --kind raw --json --stride 4 impossible)
expect(0 "${raw_4}{\"offset\":5,\"kind\":\"raw\",\"size\":2,${none}}\n" "^$"
    --kind raw --json --offset 4 --stride 1 --count 2 zeros)

# One unit more than there can be, and than the slot has room for.
write_bytes(${WORK_DIR}/packed129 "${no_id} 81 00")
write_bytes(${WORK_DIR}/raw513 "01 02")
expect(1 "" "${long} 129\n  most: 128\n$" --kind packed packed129)
expect(1 "" "${long} 129\n  most: 128\n$" --kind slot packed129)
expect(1 "" "${long} 129\n  most: 128\n$" --kind slot --capacity 65535 packed129)
expect(1 "" "${long} 513\n  most: 512\n$" --kind raw raw513)
expect(1 "" "${long} 1\n  most: 0\n$" --kind slot --capacity 0 packed)

# Fewer records than asked for, none where they should begin, nothing to read or to write to.
expect(1 "${raw_0}${raw_4}" "${cut_json}8},${number}0},${number}2}"
    --kind raw --json --count 0x5 --stride 4 raw)
expect(1 "" "${cut} 6\n  bytes: 0\n  wanted: 2\n$" --kind raw --offset 6 raw)
expect(1 "" "${cut} 9223372036854775807\n" --kind raw --offset 0x7FFFFFFFFFFFFFFF raw)
expect(0 "" "^$" --kind raw --count 0 raw)
expect(1 "" "^badInput [^\n]+\n  file: missing\nmissing \\(-2\\): [^\n]+\n  reason: [^\n]+\n$"
    --kind raw missing)
set(folder "unreadable \\(-3\\): [^\n]+\n  offset: 0")
if(PROGRAM MATCHES "wine") # where no folder can be opened
    set(folder "missing \\(-2\\): [^\n]+")
endif()
expect(1 "" "${file}${folder}\n  reason: [^\n]+\n$" --kind raw folder)
execute_process(
    COMMAND ${PROGRAM} --kind raw ${WORK_DIR}/raw
    OUTPUT_FILE /dev/full
    ERROR_VARIABLE errors
    RESULT_VARIABLE result
)
if(NOT result EQUAL 1 OR NOT errors MATCHES "^unwritable \\(-6\\): ")
    message(SEND_ERROR "a full device ends with ${result}: ${errors}")
endif()

# Usage.
expect(0 "halv-inspect (HalvTypes) 3.0.0.39686 (release-dev)\n" "^$" --version)
execute_process(COMMAND ${PROGRAM} -h OUTPUT_VARIABLE help RESULT_VARIABLE result)
foreach(option IN ITEMS kind offset stride capacity count hex json help version)
    if(NOT result EQUAL 0 OR NOT help MATCHES " --${option} ")
        message(SEND_ERROR "-h ends with ${result} and does not tell --${option}:\n${help}")
    endif()
endforeach()
foreach(
    wrong IN ITEMS
    "22"
    "21;--kind"
    "22;--kind;text;raw"
    "24;--kind;packed;--capacity;1;packed"
    "23;--kind;slot;--capacity;65536;slot"
    "23;--kind;raw;--stride;0;raw"
    "23;--kind;raw;--offset;-1;raw"
    "23;--kind;raw;--offset=;raw"
    "23;--kind;raw;--offset;0x;raw"
    "23;--kind;raw;--offset;1k;raw"
    "23;--kind;raw;--count;0x8000000000000000;raw"
    "20;--kind;raw;--color;raw"
    "20;--kind;raw;-x;raw"
    "25;--kind;raw;raw;raw"
)
    list(POP_FRONT wrong code)
    expect(2 "" "^[a-zA-Z]+ \\(-${code}\\): [^\n]+\n.*--help" ${wrong})
    expect(2 "" "^{\"chain\":\\[{\"code\":-${code},[^\n]+\n$" --json ${wrong})
endforeach()

# What completion makes of the last word.
set(complete [=[. $0; COMP_WORDS=(x $1); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _halv_inspect; echo ${COMPREPLY[*]}]=])
set(completion ${CMAKE_CURRENT_LIST_DIR}/../../tools/inspect/halv-inspect.bash)
foreach(row IN ITEMS "--j:--json" "--kind ra:raw raw-slot" "--kind = pa:packed" "--offset 1:" "cha:characters")
    string(REGEX MATCH "^(.*):(.*)$" row "${row}")
    execute_process(
        COMMAND bash -c "${complete}" ${completion} ${CMAKE_MATCH_1}
        WORKING_DIRECTORY ${WORK_DIR}
        OUTPUT_VARIABLE words
    )
    if(NOT words STREQUAL "${CMAKE_MATCH_2}\n")
        message(SEND_ERROR "${row} becomes ${words}")
    endif()
endforeach()
