// One failure on its way up through three layers: returned, handed on as older code does it,
// thrown.

#include <Halvora/error/HLVError.h>
#include <Halvora/error/HLVErrorException.h>

#include <iostream>
#include <memory>

using namespace Halvora;
using Holder = HLVError::Holder;

namespace {

enum Code : int { stationDown = -30, pumpFailed = -20, sensorSilent = -10 };

Binary16 const sensorId(0x00C0FFEE, 0x0001, 0x0002, 0x0000000000000042);

//! [returned]
// Each layer returns an error or nothing, and wraps what comes from below.

Holder readSensor() {
    return HLVError::create(sensorSilent, sensorId, "no answer");
}

Holder startPump(int pump) {
    Holder error = readSensor();
    if (error) {
        error.prepend(pumpFailed, pump);
    }
    return error;
}

Holder startStation() {
    Holder error = startPump(3);
    if (error) {
        error.prepend(stationDown);
    }
    return error;
}
//! [returned]

//! [by pointers]
// The same by pointers. Until the error owns its parameters, each needs an owner of its own: in
// `new HLVError(code, new Param(a), new Param(b))` the first is lost when the second finds no
// memory.

bool readSensorByPointers(Holder& holder) {
    auto id = std::make_unique<HLVError::Param>(sensorId);
    auto reason = std::make_unique<HLVError::Param>("no answer");
    auto* const error = new HLVError(sensorSilent, id.get(), reason.get());
    static_cast<void>(id.release());
    static_cast<void>(reason.release());
    holder.setError(error);
    return false;
}

bool startPumpByPointers(int pump, Holder& holder) {
    if (!readSensorByPointers(holder)) {
        holder.prependError(pumpFailed, new HLVError::Param(pump)); // owned in every case
        return false;
    }
    return true;
}
//! [by pointers]

//! [thrown]
// The error stays as it is, each layer adds to the trace.

void readSensorOrThrow() {
    throw HLVErrorException(HLVError::create(sensorSilent, sensorId, "no answer"), "readSensor");
}

void startPumpOrThrow() {
    try {
        readSensorOrThrow();
    } catch (HLVErrorException& e) {
        e.addTrace("startPump");
        throw;
    }
}
//! [thrown]

} // namespace

int main() {
    HLVError::List reports;
    if (Holder error = startStation()) {
        std::cout << "cause: " << error.getError()->getBaseError()->messageA() << '\n';
        reports.add(error);
    }
    Holder byPointers;
    if (!startPumpByPointers(3, byPointers)) {
        reports.add(byPointers);
    }
    for (auto at = reports.begin(); !at.end(); ++at) {
        std::cout << *at << "\n\n";
    }

    try {
        startPumpOrThrow();
    } catch (HLVErrorException& e) {
        std::cout << e.what() << ", by " << e.trace() << '\n' << e.error() << '\n';
    }
}
