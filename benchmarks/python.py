"""The Python module's ways to many values, measured and printed as Bench.h and its library do it.

PYTHONPATH=build/bench/tools/python python.py [repetitions]
"""
import array
import csv
import ctypes
import io
import json
import random
import statistics
import sys
import time
import uuid

import halvtypes as h
import numpy

SIZES = 4096, 65535
try:
    COUNTERS = [ctypes.c_size_t.in_dll(ctypes.CDLL(None), f"halvtypes_{name}")
                for name in ("allocations", "allocated_bytes")]
except ValueError:
    COUNTERS = []


def numbers(result):
    return result if isinstance(result, list) else memoryview(result).cast("B").cast("i").tolist()


def sixteens(ids):
    return [each.bytes_le if isinstance(each, uuid.UUID) else bytes(each) for each in ids]


def fields(records):
    return [[field.encode() if isinstance(field, str) else field for field in record] for record in records]


def chain():
    error = None
    for code in -3, -2, -1:
        error = h.HLVError(code, code, "pump", 2.5, preceding=error)
    return [(each.getCode(), *each.params()) for each in error]


def chain_of_exceptions():
    error = None
    for code in -3, -2, -1:
        outer = RuntimeError(code, code, "pump", 2.5)
        outer.__cause__, error = error, outer
    found = []
    while error is not None:
        found.append(error.args)
        error = error.__cause__
    return found


def operations(size):
    """The operation, what makes its results alike, and who does it how: each has to give what ours does."""
    values = [(i * 7919) ** 2 % 2**31 for i in range(size)]
    ours = h.HLVArray(h.DT_INT32, values)
    plain = array.array("i", values)
    data = bytes(plain)
    of_numpy = numpy.array(values, numpy.int32)
    yield "array of a buffer", numbers, {
        "ours": lambda: h.HLVArray(h.DT_INT32, plain), "limit": lambda: bytes(plain),
        "array.array": lambda: array.array("i", plain), "numpy": lambda: numpy.array(plain)}
    yield "array of a list", numbers, {
        "ours": lambda: h.HLVArray(h.DT_INT32, values), "limit": lambda: values[:],
        "array.array": lambda: array.array("i", values), "numpy": lambda: numpy.array(values, numpy.int32)}
    yield "list of an array", numbers, {
        "ours": ours.tolist, "limit": lambda: values[:],
        "array.array": plain.tolist, "numpy": of_numpy.tolist}
    yield "bytes of an array", numbers, {
        "ours": lambda: bytes(ours), "limit": lambda: bytes(plain),
        "array.array": plain.tobytes, "numpy": of_numpy.tobytes}
    yield "numpy's view of an array", numbers, {
        "ours": lambda: numpy.asarray(ours), "limit": lambda: numpy.frombuffer(data, numpy.int32),
        "array.array": lambda: numpy.asarray(plain)}
    yield "slice of an array", numbers, {
        "ours": lambda: ours[8:-8], "limit": lambda: data[32:-32],
        "array.array": lambda: plain[8:-8], "numpy": lambda: of_numpy[8:-8].copy()}
    yield "every second of an array", numbers, {
        "ours": lambda: ours[::2],
        "array.array": lambda: plain[::2], "numpy": lambda: of_numpy[::2].copy()}

    texts = [f"Zulaufpumpe {value}" for value in values]
    yield "texts to an array and back", list, {
        "ours": lambda: h.HLVArray(h.DT_STRING, texts).tolist(), "limit": lambda: texts[:],
        "numpy": lambda: numpy.array(texts).tolist()}

    dump = random.Random(1).randbytes(16 * size)
    yield "identifiers of a dump", sixteens, {
        "ours": lambda: h.HLVArray(h.DT_ID, dump).tolist(),
        "limit": lambda: [dump[i:i + 16] for i in range(0, len(dump), 16)],
        "uuid.UUID": lambda: [uuid.UUID(bytes_le=dump[i:i + 16]) for i in range(0, len(dump), 16)]}

    records = [[b"MA-L", b"%06X" % i, b"Maker %d" % i, b"Street %d, Town" % i] for i in range(size)]
    quoted = b"".join(b'%s,%s,%s,"%s"\r\n' % tuple(record) for record in records)
    bare = b"\n".join(b"\t".join(record) for record in records)
    yield "records of CSV", fields, {
        "ours": lambda: h.readCsv(quoted)[0],
        "bytes.split": lambda: [line.split(b"\t") for line in bare.split(b"\n")],
        "csv.reader": lambda: list(csv.reader(io.StringIO(quoted.decode(), newline="")))}


def nanoseconds(run, count):
    start = time.process_time_ns()
    for _ in range(count):
        run()
    return (time.process_time_ns() - start) / count


def allocated():
    """Blocks and bytes so far, as far as Python asks the C library; none without count.so."""
    return [counter.value for counter in COUNTERS] or [0, 0]


def checked(size, name, alike, ways):
    expected = alike(ways["ours"]())
    for who, run in ways.items():
        if alike(run()) != expected:
            sys.exit(f"{name} by {who}: not the same result")
        before = allocated()
        run()
        blocks, amount = (after - earlier for after, earlier in zip(allocated(), before))
        full = f"Python: {name}/{size}/{who}"
        yield {"name": full, "run_name": full, "allocations": blocks, "bytes": amount, "times": [],
               "run": run, "count": 1 + int(1e7 / max(nanoseconds(run, 1), 1))}


found = [each for size in SIZES for operation in operations(size) for each in checked(size, *operation)]
found += checked(3, "codes and parameters of a chain", list, {"ours": chain, "exceptions": chain_of_exceptions})
for _ in range(int((sys.argv + ["9"])[1])):
    for each in random.sample(found, len(found)):
        each["times"].append(nanoseconds(each["run"], each["count"]))
for each in found:
    each["cpu_time"] = statistics.median(each.pop("times"))
    del each["run"]
print(json.dumps({"benchmarks": found}, indent=1))
