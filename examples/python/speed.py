#!/usr/bin/env python3
"""What each way to reach many values costs, beside plain Python. Prints a table in Markdown.

PYTHONPATH=build/tools/python python3 examples/python/speed.py
"""
import array
import time
import uuid

import halvtypes as h

COUNT = 50_000
NUMBERS = list(range(COUNT))
BUFFER = array.array("i", NUMBERS)
ARRAY = h.HLVArray(h.DT_INT32, BUFFER)
DUMP = bytes(range(16)) * COUNT
RECORDS = b"".join(bytes(h.VarChar(f"pump {i}")) for i in range(1000))


def each_added():
    made = h.HLVArray(h.DT_INT32)
    for number in NUMBERS:
        made.addInt32(number)


def each_appended():
    made = array.array("i")
    for number in NUMBERS:
        made.append(number)


def forms(read):
    offset = 0
    while offset < len(RECORDS):
        offset = read(offset)


def varchar(offset):
    text = h.VarChar.fromRaw(RECORDS, offset)
    str(text)
    return offset + text.size()


def by_hand(offset):
    end = offset + 2 + 2 * int.from_bytes(RECORDS[offset : offset + 2], "little")
    RECORDS[offset + 2 : end].decode("utf-16-le", "surrogatepass")
    return end


WAYS = (
    ("Fill an array of numbers", "`addInt32` for each", each_added, COUNT),
    ("", "`HLVArray(DT_INT32, list)`", lambda: h.HLVArray(h.DT_INT32, NUMBERS), COUNT),
    ("", "`HLVArray(DT_INT32, buffer)`", lambda: h.HLVArray(h.DT_INT32, BUFFER), COUNT),
    ("", "plain: `array.array.append` for each", each_appended, COUNT),
    ("", "plain: `array.array(\"i\", list)`", lambda: array.array("i", NUMBERS), COUNT),
    ("Add the numbers up", "`array[i]` for each", lambda: sum(ARRAY[i] for i in range(COUNT)), COUNT),
    ("", "`sum(array)`", lambda: sum(ARRAY), COUNT),
    ("", "`sum(array.tolist())`", lambda: sum(ARRAY.tolist()), COUNT),
    ("", "`sum(memoryview(array))`", lambda: sum(memoryview(ARRAY)), COUNT),
    ("", "plain: `sum(list)`", lambda: sum(NUMBERS), COUNT),
    ("Identifiers of a dump", "`Binary16(dump[i:i+16])` for each",
     lambda: [h.Binary16(DUMP[i : i + 16]) for i in range(0, len(DUMP), 16)], COUNT),
    ("", "`HLVArray(DT_ID, dump).tolist()`", lambda: h.HLVArray(h.DT_ID, DUMP).tolist(), COUNT),
    ("", "`HLVArray(DT_ID, dump)`", lambda: h.HLVArray(h.DT_ID, DUMP), COUNT),
    ("", "plain: `uuid.UUID(bytes_le=...)` for each",
     lambda: [uuid.UUID(bytes_le=DUMP[i : i + 16]) for i in range(0, len(DUMP), 16)], COUNT),
    ("Texts of a dump", "`str(VarChar.fromRaw(dump, at))`", lambda: forms(varchar), 1000),
    ("", "plain: cut and decoded", lambda: forms(by_hand), 1000),
)


def nanoseconds(way, count):
    """The best of several runs, for one element."""
    best = min(timed(way) for _ in range(9))
    return best / count


def timed(way):
    start = time.process_time_ns()
    way()
    return time.process_time_ns() - start


def shown(value):
    return f"{value:.0f}" if value >= 10 else f"{value:.2g}"


def main():
    ways = list(WAYS)
    try:
        import numpy

        ways.insert(9, ("", "`numpy.asarray(array).sum()`", lambda: numpy.asarray(ARRAY).sum(), COUNT))
    except ImportError:
        pass
    print("| To | by | ns each |\n|---|---|--:|")
    for task, way, run, count in ways:
        print(f"| {task} | {way} | {shown(nanoseconds(run, count))} |")


if __name__ == "__main__":
    main()
