# Warnings for this project's own targets. They are private: a consumer's flags stay its own.
function(halvtypes_warnings target)
    if(HALVTYPES_WARNINGS)
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    endif()
    if(HALVTYPES_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
