# The countries example against what the `gettext` command says of the same catalogues.
find_program(gettext gettext)
if(NOT gettext OR NOT EXISTS /usr/share/iso-codes/json/iso_3166-1.json)
    message("SKIPPED: needs Debian's packages gettext-base and iso-codes")
    return()
endif()

set(codes 004 040 208 246 250 276 380 392 410 528 724 752 840)

# Leaves the names that the program prints for the codes in a language.
macro(list_names language out)
    execute_process(
        COMMAND ${PROGRAM} ${language} ${codes}
        OUTPUT_VARIABLE ${out}
        RESULT_VARIABLE result
        OUTPUT_STRIP_TRAILING_WHITESPACE
    )
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${language}: ended with ${result}")
    endif()
    string(REPLACE "\n" ";" ${out} "${${out}}")
endmacro()

list_names(xx defaults)
list(POP_FRONT defaults notice)
if(NOT notice STREQUAL "no catalogue for \"xx\": default texts")
    message(FATAL_ERROR "an unknown language is answered by: ${notice}")
endif()

foreach(language IN ITEMS de fr ja)
    list_names(${language} names)
    foreach(name default IN ZIP_LISTS names defaults)
        string(SUBSTRING "${default}" 0 4 code)
        string(SUBSTRING "${default}" 4 -1 default)
        execute_process(
            COMMAND
                ${CMAKE_COMMAND} -E env LANGUAGE=${language} LC_ALL=C.UTF-8 ${gettext} -d iso_3166-1
                ${default}
            OUTPUT_VARIABLE translated
        )
        if(NOT name STREQUAL "${code}${translated}" OR default STREQUAL "")
            message(FATAL_ERROR "${language}: \"${name}\" instead of \"${code}${translated}\"")
        endif()
    endforeach()
    list(GET names 5 germany)
    if(germany STREQUAL "276 Germany")
        message(FATAL_ERROR "${language}: nothing is translated")
    endif()
endforeach()

execute_process(COMMAND ${PROGRAM} de 999 ERROR_VARIABLE errors RESULT_VARIABLE result)
if(NOT result EQUAL 1 OR NOT errors MATCHES "^Error -2\n  P1: 999\n  [^\n]+\n$")
    message(FATAL_ERROR "an unknown code ends with ${result}: ${errors}")
endif()
