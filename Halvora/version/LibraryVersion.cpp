#include <Halvora/types/HalvTypes.h>
#include <Halvora/version/KrVersion.h>

namespace Halvora {

// The date and time are those of the release, not of the build, which repeats bit for bit.
KrVersion const HalvTypes::ms_Version(3, 0, 0, 39686, "release-dev", "May 27 2015", "08:46:27",
                                      "Release", false, "linux", "gcc 4.4.2", 1, 0, "Halvora",
                                      "Halvora", "HalvTypes Dynamic Link Library", "HalvTypes",
                                      "Copyright Halvora. All rights reserved.", "HalvTypes.dll");

} // namespace Halvora
