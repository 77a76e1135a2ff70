# The static library holds one object, linked from those of all sources: a linker takes the whole or
# nothing, so the statics come up in the order of the list, and, by their priority, before those of
# the program, as those of the shared library do.
if(WIN32)
    message(FATAL_ERROR "MinGW's linker cannot make that object: on Windows the library is a DLL")
endif()
add_library(HalvTypes STATIC ${HALVTYPES_SOURCES})
target_compile_definitions(HalvTypes PUBLIC HALVTYPES_STATIC)
set_target_properties(HalvTypes PROPERTIES POSITION_INDEPENDENT_CODE ON) # for shared libraries too

set(whole HalvTypes${CMAKE_CXX_OUTPUT_EXTENSION})
add_custom_command(
    TARGET HalvTypes
    POST_BUILD
    COMMAND ${CMAKE_CXX_COMPILER} -r -nostdlib -o ${whole} $<TARGET_OBJECTS:HalvTypes>
    COMMAND ${CMAKE_OBJCOPY} --rename-section .init_array=.init_array.00101 ${whole}
    COMMAND ${CMAKE_COMMAND} -E rm -f $<TARGET_FILE:HalvTypes>
    COMMAND ${CMAKE_AR} qcs $<TARGET_FILE:HalvTypes> ${whole}
    COMMAND_EXPAND_LISTS
    VERBATIM
)
