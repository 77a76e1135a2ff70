# The packed example on bytes that somebody else wrote, and where it cannot write.

# Runs a command line and checks its exit status, and standard error by a pattern.
function(expect status error_pattern command)
    execute_process(
        COMMAND sh -c "${command}"
        OUTPUT_VARIABLE output
        ERROR_VARIABLE errors
        RESULT_VARIABLE result
    )
    if(NOT result EQUAL status OR NOT errors MATCHES "${error_pattern}")
        message(
            SEND_ERROR
            "${command}\nhas to end with ${status} and say ${error_pattern}\n"
            "but ended with ${result} and said ${errors}, behind\n${output}"
        )
    endif()
endfunction()

list(JOIN PROGRAM " " packed)
set(file ${CMAKE_CURRENT_BINARY_DIR}/packed.bytes)
set(id "................") # any 16 bytes
set(layout "\\001")
set(empty "${id}\\0\\0") # a packed form
set(tap "${id}\\003\\0t\\0a\\0p\\0")
set(slot "${tap}\\0\\0")
set(raw "\\002\\0h\\0i\\0....")
set(whole "${layout}${empty}${tap}${slot}${slot}${raw}${raw}")

foreach(row IN ITEMS
    "0:^$:${whole}"
    "0:^$:${whole} and more"
    "1:offset 0\n$:"
    "1:offset 0\n$:\\002${empty}${tap}"                     # another layout
    "1:offset 1\n$:${layout}${id}\\0"                       # half a length
    "1:offset 1\n$:${layout}${id}\\377\\377 and no more"    # a length beyond the bytes at hand
    "1:offset 19\n$:${layout}${empty}"                      # nothing behind the first form
    "1:offset 43\n$:${layout}${empty}${tap}${tap}"          # a slot without its last two bytes
    "1:offset 43\n$:${layout}${empty}${tap}${id}\\005\\0a\\0b\\0c\\0d\\0e\\0${slot}" # beyond its slot
    "1:offset 95\n$:${layout}${empty}${tap}${slot}${slot}\\005\\0a\\0b\\0c\\0d\\0e\\0"
)
    string(REGEX MATCH "^([0-9]):([^:]*):(.*)$" row "${row}")
    set(status ${CMAKE_MATCH_1})
    set(said "${CMAKE_MATCH_2}")
    execute_process(COMMAND printf "${CMAKE_MATCH_3}" OUTPUT_FILE ${file})
    expect(${status} "${said}" "${packed} ${file}")
endforeach()

expect(2 "missing cannot be read\n$" "${packed} ${file}.missing")
expect(2 " cannot be read\n$" "${packed} /")
expect(2 "temporary file cannot be written\n" "trap '' XFSZ; ulimit -f 0; ${packed}")
expect(2 "^Standard output cannot be written.\n$" "${packed} >/dev/full")
expect(2 "^Standard output cannot be written.\n$" "${packed} >&-")
