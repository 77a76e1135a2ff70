# Proves that code which must not compile does not. The file holds cases, each in
# `#if defined(HALV_CASE_n)`. It has to compile without any of them, or a case would only show that
# the file is broken; then each case has to fail.
#   cmake -D COMPILER=<compiler and its flags, a list> -D SOURCE=<file> -P CompileFail.cmake
set(ENV{LC_ALL} C) # the compiler's words are read

function(compiles result_variable output_variable)
    execute_process(
        COMMAND ${COMPILER} ${ARGN} -fsyntax-only ${SOURCE}
        RESULT_VARIABLE result
        OUTPUT_VARIABLE output
        ERROR_VARIABLE output
    )
    set(${result_variable} ${result} PARENT_SCOPE)
    set(${output_variable} "${output}" PARENT_SCOPE)
endfunction()

file(READ ${SOURCE} text)
string(REGEX MATCHALL "defined\\(HALV_CASE_[0-9]+\\)" cases "${text}")
string(REGEX REPLACE "defined\\((HALV_CASE_[0-9]+)\\)" "\\1" cases "${cases}")
list(REMOVE_DUPLICATES cases)
list(LENGTH cases count)
if(count EQUAL 0)
    message(FATAL_ERROR "${SOURCE} holds no case")
endif()

compiles(result output)
if(NOT result EQUAL 0)
    message("${output}")
    message(FATAL_ERROR "${SOURCE} has to compile without a case")
endif()

set(accepted)
foreach(case IN LISTS cases)
    compiles(result output -D${case})
    if(result EQUAL 0)
        list(APPEND accepted ${case})
    elseif(NOT output MATCHES "error:")
        message("${output}")
        message(FATAL_ERROR "the compiler did not judge ${case}")
    endif()
endforeach()
if(accepted)
    message(FATAL_ERROR "${SOURCE}: these cases compile and must not: ${accepted}")
endif()
message(STATUS "${count} cases do not compile, as they should")
