# Leaves in `gdb` the command GDB with what every use of it here takes, or nothing and a note that
# the test is skipped.
find_program(gdb ${GDB})
if(gdb)
    execute_process(COMMAND ${gdb} -nx -batch -ex "python print(6 * 7)" OUTPUT_VARIABLE output)
endif()
if(gdb AND output STREQUAL "42\n")
    set(gdb
        ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8 ${gdb} -nx -batch
        -iex "set debuginfod enabled off"
        -iex "set width 0"
    )
else()
    message("SKIPPED: needs ${GDB} with Python; Debian's package has it")
    set(gdb)
endif()

# Installs what the library needs to run and to be shown; leaves the library's path in `library`.
macro(install_runtime root prefix)
    execute_process(
        COMMAND
            ${CMAKE_COMMAND} -E env DESTDIR=${root} ${CMAKE_COMMAND} --install ${BUILD} --prefix
            ${prefix} --component runtime
        OUTPUT_QUIET
        COMMAND_ERROR_IS_FATAL ANY
    )
    file(GLOB_RECURSE library ${root}${prefix}/lib*/libHalvTypes.so.*.*)
endmacro()

# Moves the debug information of a library into a folder beside it, as distributions do.
macro(split_debug library)
    cmake_path(GET library PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder}/.debug)
    set(debug ${folder}/.debug/libHalvTypes.debug)
    foreach(options IN ITEMS "--only-keep-debug;${library};${debug}"
                             "--strip-all;--add-gnu-debuglink=${debug};${library}")
        execute_process(COMMAND ${OBJCOPY} ${options} COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
endmacro()
