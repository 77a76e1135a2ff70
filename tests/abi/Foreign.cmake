# Builds a program for another binary interface than the library's, which has to be refused with a
# message that says why.
#   cmake "-DCOMPILER=<compiler and flags, a list>" -DSOURCE=<file> -DLIBRARY=<library>
#         -DHEADERS=<folder of AbiOfBuild.h> -DWORK=<folder> -P Foreign.cmake
cmake_path(GET LIBRARY PARENT_PATH folder)
cmake_path(GET SOURCE PARENT_PATH sources)
file(MAKE_DIRECTORY ${WORK})

# Tries to build with the flags behind the message; leaves what the compiler says in `errors`.
function(build result)
    execute_process(
        COMMAND ${COMPILER} ${ARGN} ${SOURCE} -o ${WORK}/foreign ${LIBRARY} -Wl,-rpath,${folder}
        RESULT_VARIABLE status
        ERROR_VARIABLE errors
        OUTPUT_QUIET
    )
    set(${result} ${status} PARENT_SCOPE)
    set(errors "${errors}" PARENT_SCOPE)
endfunction()
function(expect_refused message)
    build(status ${ARGN})
    if(status EQUAL 0 OR NOT errors MATCHES "${message}")
        message(FATAL_ERROR "${ARGN}: not refused with \"${message}\":\n${errors}")
    endif()
endfunction()

build(status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "does not even build with the library's own flags:\n${errors}")
endif()

# With HEADERS as if the library were installed, without as in its tree.
expect_refused("HalvTypes: the installed library was built for another standard library"
    -D_GLIBCXX_USE_CXX11_ABI=0 -I${HEADERS})
expect_refused("wants_a_library_built_for_libstdcxx_with_old_strings" -D_GLIBCXX_USE_CXX11_ABI=0)
expect_refused("HalvTypes: wchar_t has another size" -fshort-wchar -I${HEADERS})
expect_refused("_and_2_byte_wchar_t" -fshort-wchar)
expect_refused("HalvTypes: structures are packed" -fpack-struct)

find_program(clang clang++-14)
if(clang AND EXISTS /usr/lib/llvm-14/include/c++/v1/string)
    list(TRANSFORM COMPILER REPLACE "^[^-].*" ${clang} AT 0)
    expect_refused("wants_a_library_built_for_libcxx" -stdlib=libc++)
endif()
