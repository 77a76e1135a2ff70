#include <Halvora/error/Exception.h>
#include <Halvora/error/HLVError.h>
#include <Halvora/error/HLVErrorException.h>

using namespace Halvora;

// A layer in a library of its own: throws, or passes on what the layer below it throws.
extern "C" __attribute__((visibility("default"))) void layer(void (*below)()) try {
    if (below == nullptr) {
        throw HLVErrorException(new HLVError(-42, new HLVError::Param(7)), "made");
    }
    below();
} catch (Exception& e) {
    e.addTrace("library");
    throw;
}
