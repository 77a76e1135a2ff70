# The library as a DLL with its import library, by MinGW.
set_target_properties(HalvTypes PROPERTIES PREFIX "") # HalvTypes.dll, libHalvTypes.dll.a
target_compile_options(
    HalvTypes
    PRIVATE
        # Inline functions are each module's own.
        -fno-keep-inline-dllexport
)
target_link_options(
    HalvTypes
    PRIVATE
        -Wl,--gc-sections
        # The same bytes whenever it is linked.
        -Wl,--no-insert-timestamp
)
