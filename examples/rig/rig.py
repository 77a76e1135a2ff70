#!/usr/bin/env python3
"""Compares the corrections in a device's dump with the certificate of its sensors.

Exit status: 0; 1 when one is off and stays so; 2 when a file is damaged or cannot be used.
"""
import argparse
import csv
import json
import sys
from pathlib import Path

import halvtypes as h

CERTIFICATE = Path(__file__).with_name("certificate.csv")
TOLERANCE = 0.02  # kelvin

# dump   := "HCAL" layout:byte count:u16le station:packed record[count] faults
# record := sensor:slot[16 units] remark:raw-slot[24 units] kelvin:f32le[5]
# faults := a line of JSON each, up to the end
REMARK, KELVIN, RECORD = 50, 100, 120  # bytes: where they begin in a record, and its size
REMARK_UNITS = 24


class Record:
    """What a dump says of a sensor. Its bytes are the dump's own, not a copy."""

    def __init__(self, dump, offset):
        self.offset = offset
        self.bytes = memoryview(dump)[offset:offset + RECORD]
        if len(self.bytes) < RECORD:
            raise ValueError("cut off")
        # Each from its own part, so that no length leads out of that.
        self.sensor = h.ResString.fromPacked(self.bytes[:REMARK])
        self.name = repr(str(self.sensor))  # without what steers a terminal
        self.remark = h.VarChar.fromRaw(self.bytes[REMARK:KELVIN])
        self.kelvin = h.HLVArray(h.DT_FLOAT, self.bytes[KELVIN:].cast("f"))

    def deviations(self, certified):
        return [f"{self.name} at {degrees} °C: {found:+.2f} K, certified {wanted:+.2f} K"
                for (degrees, wanted), found in zip(certified.items(), self.kelvin)
                if not abs(found - wanted) <= TOLERANCE]  # what is no number is off, too

    def correct(self, certified):
        h.VarChar("rig 4: as certified").writeSlot(self.bytes, REMARK, REMARK_UNITS)
        self.bytes[KELVIN:] = bytes(memoryview(h.HLVArray(h.DT_FLOAT, certified.values())))


def faults_of(dump, offset):
    """What the device's log tells, a line a fault."""
    chains = [json.loads(line.decode())["chain"] for line in bytes(dump[offset:]).splitlines()]
    return ["fault " + ", caused by ".join(
        f"{error['code']!r} {[param and param['value'] for param in error['params']]}"
        for error in chain) for chain in chains]


def at(dump, offset, read):
    """Calls read(dump, offset), and says where something is damaged."""
    try:
        return read(dump, offset)
    except (ValueError, LookupError, TypeError, RecursionError) as e:
        raise ValueError(f"damaged or cut off at offset {offset}") from e


def parts_of(dump):
    """Station, records and faults; ValueError when one is damaged."""
    if dump[:5] != b"HCAL\1":
        raise ValueError("no dump of corrections")
    station = at(dump, 7, h.ResString.fromPacked)
    first = 7 + station.size()
    behind = first + RECORD * int.from_bytes(dump[5:7], "little")
    records = [at(dump, offset, Record) for offset in range(first, behind, RECORD)]
    return station, records, at(dump, behind, faults_of)


def certificate():
    """The correction of each sensor, by the degrees at which it was compared."""
    with open(CERTIFICATE, encoding="utf-8", newline="") as file:
        return {h.Binary16(row.pop("sensor")): {d: float(kelvin) for d, kelvin in row.items()}
                for row in csv.DictReader(file)}


def check(file, certified, is_corrected):
    """Prints what is off, and puts it right if asked; whether all is well then."""
    station, records, faults = parts_of(bytearray(file.read(1 << 20)))  # no dump is longer
    print(f"{str(station)!r}: {len(records)} sensors", *faults, sep="\n")
    left = 0
    for record in records:
        wanted = certified.pop(record.sensor.id(), None)
        deviations = record.deviations(wanted) if wanted else [f"{record.name} is not certified"]
        sys.stdout.writelines(f"{deviation}\n" for deviation in deviations)
        if deviations and wanted and is_corrected:
            record.correct(wanted)
            file.seek(record.offset)
            file.write(record.bytes)
            print(f"{record.name} corrected")
        else:
            left += len(deviations)
    sys.stdout.writelines(f"{sensor} is missing\n" for sensor in certified)
    return left + len(certified) == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("dump", help="the file that the device wrote")
    parser.add_argument("--correct", action="store_true", help="write what is certified into it")
    arguments = parser.parse_args()
    sys.stdout.reconfigure(errors="backslashreplace")  # for terminals without a degree sign
    try:
        name = CERTIFICATE
        certified = certificate()
        name = arguments.dump
        with open(name, "r+b" if arguments.correct else "rb") as file:
            sys.exit(0 if check(file, certified, arguments.correct) else 1)
    except (OSError, ValueError) as e:
        print(f"{parser.prog}: {name}: {getattr(e, 'strerror', e)}", file=sys.stderr)
    sys.exit(2)


if __name__ == "__main__":
    main()
