# What distributions compile delivered programs and libraries with, so that a fault in memory ends a
# process instead of serving an attacker. Not together with sanitizers, which watch the same places.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

set(sanitizes OFF)
if("${CMAKE_CXX_FLAGS}" MATCHES "-fsanitize|--coverage")
    set(sanitizes ON)
endif()
option(HALVTYPES_HARDENING "Harden the library and the tools" ${PROJECT_IS_TOP_LEVEL})

set(hardening_flags -fstack-protector-strong)
set(hardening_of_machine -fstack-clash-protection -fcf-protection -mbranch-protection=standard)
if(WIN32) # where every big frame is probed anyway, and GCC breaks off at the first of them
    set(hardening_of_machine)
endif()
foreach(flag IN LISTS hardening_of_machine)
    string(MAKE_C_IDENTIFIER "HALVTYPES_HAS${flag}" known)
    # A flag that the compiler only ignores for this machine would warn in every file.
    set(CMAKE_REQUIRED_FLAGS -Werror)
    check_cxx_compiler_flag(${flag} ${known})
    unset(CMAKE_REQUIRED_FLAGS)
    if(${known})
        list(APPEND hardening_flags ${flag})
    endif()
endforeach()
# Checked copies need an optimising compiler.
list(
    APPEND hardening_flags
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>
    $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>
)

set(hardening_link -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
set(hardening_libraries)
if(WIN32)
    set(hardening_link -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat)
    set(hardening_libraries -l:libssp.a) # what the checks call, in no DLL of its own
endif()

function(halvtypes_harden target)
    target_link_options(${target} PRIVATE ${hardening_link})
    if(HALVTYPES_HARDENING AND NOT sanitizes)
        target_compile_options(${target} PRIVATE ${hardening_flags})
        target_link_libraries(${target} PRIVATE ${hardening_libraries})
    endif()
endfunction()
