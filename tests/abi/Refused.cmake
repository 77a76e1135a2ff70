# Runs a program that needs a later version of the library than it finds.
#   cmake -D COMMAND=<program, a list> -D LIBRARY_DIR=<folder of the older library> -P Refused.cmake
set(ENV{LD_LIBRARY_PATH} ${LIBRARY_DIR})
execute_process(COMMAND ${COMMAND} RESULT_VARIABLE result ERROR_VARIABLE errors OUTPUT_QUIET)
if(result EQUAL 0 OR NOT errors MATCHES "HALVTYPES_3\\.1")
    message(FATAL_ERROR "not refused for want of HALVTYPES_3.1: ${result}\n${errors}")
endif()
