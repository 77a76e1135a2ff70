# The list of what a package holds, as SPDX 2.3: each file with its checksum, and whose it is.
#
# While installing it lists what was installed. For a folder that becomes a package, run it by itself
# when nothing in there changes any more:
#
#   cmake -DROOT=<folder> -DNAME=<package> -DVERSION=<its version> -P cmake/Spdx.cmake
#
# writes <folder>/usr/share/doc/<package>/<package>.spdx. The time it names is SOURCE_DATE_EPOCH's, if
# that is set.
cmake_policy(VERSION 3.23)

file(READ ${CMAKE_CURRENT_LIST_DIR}/../LICENSE license)
string(STRIP "${license}" license)
string(REGEX MATCH "Copyright [^\n]*" copyright "${license}")

# Of each file below `root`: the paths relative to it in `files`.
function(write_spdx output root name version files)
    set(sums "")
    set(entries "")
    list(SORT files)
    foreach(file IN LISTS files)
        if(IS_SYMLINK ${root}/${file} OR NOT EXISTS ${root}/${file})
            continue()
        endif()
        file(SHA1 ${root}/${file} sum)
        list(APPEND sums ${sum})
        list(LENGTH sums number)
        string(APPEND entries "
FileName: ./${file}
SPDXID: SPDXRef-File-${number}
FileChecksum: SHA1: ${sum}
LicenseConcluded: LicenseRef-Halvora
LicenseInfoInFile: NOASSERTION
FileCopyrightText: <text>${copyright}</text>
")
    endforeach()
    list(SORT sums)
    string(JOIN "" joined ${sums})
    string(SHA1 code "${joined}")
    string(TIMESTAMP now "%Y-%m-%dT%H:%M:%SZ" UTC)
    file(WRITE ${output} "SPDXVersion: SPDX-2.3
DataLicense: CC0-1.0
SPDXID: SPDXRef-DOCUMENT
DocumentName: ${name}-${version}
DocumentNamespace: https://halvora.example/spdx/${name}-${version}-${code}
Creator: Organization: Halvora
Creator: Tool: CMake-${CMAKE_VERSION}
Created: ${now}

PackageName: ${name}
SPDXID: SPDXRef-Package
PackageVersion: ${version}
PackageSupplier: Organization: Halvora
PackageDownloadLocation: NOASSERTION
FilesAnalyzed: true
PackageVerificationCode: ${code}
PackageLicenseConcluded: LicenseRef-Halvora
PackageLicenseInfoFromFiles: NOASSERTION
PackageLicenseDeclared: LicenseRef-Halvora
PackageCopyrightText: <text>${copyright}</text>
Relationship: SPDXRef-DOCUMENT DESCRIBES SPDXRef-Package
${entries}
LicenseID: LicenseRef-Halvora
LicenseName: All rights reserved
ExtractedText: <text>${license}</text>
")
endfunction()

if(DEFINED ROOT)
    get_filename_component(ROOT ${ROOT} ABSOLUTE)
    file(GLOB_RECURSE files RELATIVE ${ROOT} ${ROOT}/*)
    list(FILTER files EXCLUDE REGEX "^DEBIAN/|\\.spdx$")
    write_spdx(${ROOT}/usr/share/doc/${NAME}/${NAME}.spdx ${ROOT} ${NAME} ${VERSION} "${files}")
elseif(DEFINED CMAKE_INSTALL_MANIFEST_FILES)
    set(files ${CMAKE_INSTALL_MANIFEST_FILES})
    list(TRANSFORM files REPLACE "^${CMAKE_INSTALL_PREFIX}/" "")
    set(list ${CMAKE_INSTALL_PREFIX}/${spdx_folder}/HalvTypes.spdx)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES ${list})
    write_spdx($ENV{DESTDIR}${list} $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX} HalvTypes
        ${spdx_version} "${files}")
endif()
