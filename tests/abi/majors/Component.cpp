// Linked with the version that the build says, into a program or into a plugin of a program that
// knows of no version or of another one.
#include "Component.h"

#include <Halvora/Halvora.h>

#include <sstream>

using namespace Halvora;

namespace {

bool work() {
    std::ostringstream written;
    try {
        HLVError::Holder holder(new HLVError(-5, new HLVError::Param(L"text")));
        holder.prependError(-17);
        throw HLVErrorException(holder.extractError(), "here");
    } catch (HLVErrorException const& e) {
        written << *e.error()->getBaseError();
    }
    HLVString units;
    Convert::toHLVString(units, std::wstring(L"units of a text"));
    HLVArray array(DT_STRING);
    array.addString(Convert::toWString(units));
    return written.str() == "Error -5\n  P1: text" &&
           array == HLVArray(std::wstring(L"units of a text"));
}

} // namespace

extern "C" __attribute__((visibility("default"))) Component const component;
Component const component = {&HalvTypes::ms_Version, &Binary16::EMPTY, work};
