# Run by cpack when the packages are built, for what it cannot do itself. It knows no field
# Multi-Arch, adds scripts that call ldconfig although the trigger does that, takes the names of the
# cross compiler's packages for the target's, and gives the packages with debug information neither
# relative paths in their list of sums nor documentation.
function(finish content name)
    set(control_dir ${content}/DEBIAN)
    file(REMOVE ${control_dir}/postinst ${control_dir}/postrm)
    file(READ ${control_dir}/control control)
    if(name MATCHES "^libhalvtypes[0-9]+$")
        string(REPLACE "\nSection:" "\nMulti-Arch: same\nSection:" control "${control}")
    endif()
    set(architecture ${CPACK_DEBIAN_PACKAGE_ARCHITECTURE})
    string(REGEX REPLACE ":${architecture}|-${architecture}-cross" "" control "${control}")
    file(WRITE ${control_dir}/control "${control}")
    if(name MATCHES "-dbgsym$")
        file(READ ${control_dir}/md5sums sums)
        string(REGEX REPLACE "  [^\n]*/usr/" "  usr/" sums "${sums}")
        file(WRITE ${control_dir}/md5sums "${sums}")
        file(
            CHMOD_RECURSE ${content}/usr
            FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
            DIRECTORY_PERMISSIONS
                OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                WORLD_EXECUTE
        )
        string(REGEX REPLACE "-dbgsym$" "" documented ${name})
        file(MAKE_DIRECTORY ${content}/usr/share/doc)
        file(CREATE_LINK ${documented} ${content}/usr/share/doc/${name} SYMBOLIC)
    endif()
endfunction()

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    get_filename_component(name ${package} NAME)
    string(REGEX REPLACE "_.*" "" name ${name})
    set(content ${CPACK_TEMPORARY_DIRECTORY}-content)
    file(REMOVE_RECURSE ${content})
    execute_process(
        COMMAND dpkg-deb --raw-extract ${package} ${content}
        COMMAND_ERROR_IS_FATAL ANY
    )
    finish(${content} ${name})
    execute_process(
        COMMAND dpkg-deb --root-owner-group --build ${content} ${package}
        OUTPUT_QUIET
        COMMAND_ERROR_IS_FATAL ANY
    )
endforeach()
