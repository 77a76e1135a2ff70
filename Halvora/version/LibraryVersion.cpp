#include <Halvora/types/HalvTypes.h>
#include <Halvora/version/KrVersion.h>

#include <cstdio>
#include <cstdlib>

#include <Halvora/types/detail/Loaded.h>

namespace Halvora {

void detail::endLoading() noexcept {
#if defined(_WIN32)
#    define HALVTYPES_FILE "HalvTypes.dll"
#else
#    define HALVTYPES_FILE "libHalvTypes.so.3"
#endif
    std::fputs(HALVTYPES_FILE ": There is not enough memory to load the library.\n", stderr);
    std::_Exit(127);
}

// The date and time are those of the release, not of the build, which repeats bit for bit. Texts
// that are longer than what a string holds itself take memory.
KrVersion const HalvTypes::ms_Version = detail::loaded([] {
    static constexpr std::string KrVersion::*fields[] = {
        &KrVersion::m_strReleaseType,     &KrVersion::m_strBuildDate,
        &KrVersion::m_strBuildTime,       &KrVersion::m_strConfiguration,
        &KrVersion::m_strPlatform,        &KrVersion::m_strCompiler,
        &KrVersion::m_strProductName,     &KrVersion::m_strCompanyName,
        &KrVersion::m_strFileDescription, &KrVersion::m_strInternalName,
        &KrVersion::m_strLegalCopyright,  &KrVersion::m_strOriginalFilename,
    };
    char const* text = "release-dev\0May 27 2015\0"
                       "08:46:27\0Release\0linux\0gcc 4.4.2\0"
                       "Halvora\0Halvora\0HalvTypes Dynamic Link Library\0HalvTypes\0"
                       "Copyright Halvora. All rights reserved.\0HalvTypes.dll";
    KrVersion version(3, 0, 0, 39686);
    version.m_nProductMajor = 1;
    for (auto const field : fields) {
        version.*field = text;
        text += (version.*field).size() + 1;
    }
    return version;
});

} // namespace Halvora
