# Runs the program and compares the SHA-256 of what it writes with the one kept beside it.
#   cmake -D COMMAND=<program, a list> -D WRITTEN=<file> -P Bytes.cmake
execute_process(COMMAND ${COMMAND} ${WRITTEN} COMMAND_ERROR_IS_FATAL ANY)
file(SHA256 ${WRITTEN} written)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/Bytes.sha256 expected)
if(NOT written STREQUAL expected)
    message(
        FATAL_ERROR
        "This build writes other bytes than all others: their SHA-256 is ${written}, not "
        "${expected}. Where the test passes it leaves them in the same place; compare them with "
        "${WRITTEN}"
    )
endif()
