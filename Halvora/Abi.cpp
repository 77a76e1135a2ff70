#include <Halvora/Abi.h>

namespace Halvora::abi {

char const HALVTYPES_ABI = 3; // the major version, for whoever looks

} // namespace Halvora::abi
