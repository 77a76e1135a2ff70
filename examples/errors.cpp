// One failure on its way up through three layers: once in a holder, once in an exception.

#include <Halvora/error/HLVError.h>
#include <Halvora/error/HLVErrorException.h>

#include <iostream>

using namespace Halvora;
using Param = HLVError::Param;

namespace {

enum Code : int { stationDown = -30, pumpFailed = -20, sensorSilent = -10 };

Binary16 const sensorId(0x00C0FFEE, 0x0001, 0x0002, 0x0000000000000042);

// by holder: each layer adds its own error to the chain

bool readSensor(HLVError::Holder& holder) {
    holder.setError(new HLVError(sensorSilent, new Param(sensorId), new Param("no answer")));
    return false;
}

bool startPump(int pump, HLVError::Holder& holder) {
    if (!readSensor(holder)) {
        holder.prependError(pumpFailed, new Param(pump));
        return false;
    }
    return true;
}

bool startStation(HLVError::Holder& holder) {
    if (!startPump(3, holder)) {
        holder.prependError(stationDown);
        return false;
    }
    return true;
}

// by exception: the error stays as it is, each layer adds to the trace

void readSensorOrThrow() {
    HLVError::Holder holder;
    if (!readSensor(holder)) {
        throw HLVErrorException(holder.extractError(), "readSensor");
    }
}

void startPumpOrThrow() {
    try {
        readSensorOrThrow();
    } catch (HLVErrorException& e) {
        e.addTrace("startPump");
        throw;
    }
}

void startStationOrThrow() {
    try {
        startPumpOrThrow();
    } catch (HLVErrorException& e) {
        e.addTrace("startStation");
        throw;
    }
}

} // namespace

int main() {
    HLVError::Holder holder;
    HLVError::List reports;
    if (!startStation(holder)) {
        std::cout << "cause: " << holder.getError()->getBaseError()->messageA() << '\n';
        reports.add(holder);
    }
    for (auto at = reports.begin(); !at.end(); ++at) {
        std::cout << *at << "\n\n";
    }

    try {
        startStationOrThrow();
    } catch (HLVErrorException& e) {
        std::cout << e.what() << ", by " << e.trace() << '\n' << e.error() << '\n';
    }
}
