# Runs a check of what compiles, which takes seconds, unless it passed before with the same headers,
# source, compiler and flags.
#   cmake -D CHECK=<script> -D STAMP=<file to write> <what the script takes> -P IfChanged.cmake
set(library ${CMAKE_CURRENT_LIST_DIR}/../Halvora)
file(GLOB_RECURSE files ${library}/*.h ${library}/Abi.cpp)
set(state "${COMPILER}\n")
foreach(file IN LISTS files ITEMS ${SOURCE} ${CHECK})
    file(SHA256 ${file} sum)
    string(APPEND state "${sum} ${file}\n")
endforeach()
set(before)
if(EXISTS ${STAMP})
    file(READ ${STAMP} before)
endif()
if(before STREQUAL state)
    message(STATUS "passed before, and nothing has changed")
    return()
endif()
include(${CHECK}) # a failure ends here
file(WRITE ${STAMP} "${state}")
