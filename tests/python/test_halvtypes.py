"""The module's seams: conversion, exceptions, ownership. What the library does is tested in C++."""
import copy
import ctypes
import gc
import pickle
import random
import runpy
import sys
import uuid
from pathlib import Path

import pytest

import halvtypes as h

NUMBERS = {
    h.DT_BOOL: ("?", [True, False]),
    h.DT_BYTE: ("B", [0, 255]),
    h.DT_INT16: ("h", [-(2**15), 2**15 - 1]),
    h.DT_INT32: ("i", [-(2**31), 2**31 - 1]),
    h.DT_INT64: ("q", [-(2**63), 2**63 - 1]),
    h.DT_UINT16: ("H", [0, 2**16 - 1]),
    h.DT_UINT32: ("I", [0, 2**32 - 1]),
    h.DT_UINT64: ("Q", [0, 2**64 - 1]),
    h.DT_FLOAT: ("f", [0.5, -1.25]),
    h.DT_DOUBLE: ("d", [0.1, -1e300]),
    h.DT_TICK: ("Q", [0, 2**64 - 1]),
}
UUID = uuid.UUID("12345678-9abc-def0-0807-060504030201")
ID = h.Binary16(str(UUID))
ALL = {
    **{data_type: values for data_type, (_, values) in NUMBERS.items()},
    h.DT_ID: [ID, h.Binary16()],
    h.DT_BINARY16: [ID, h.Binary16.MAX],
    h.DT_STRING: ["", "a\0ä€\U0001f600\ud800"],
    h.DT_STRINGRES: [h.ResString(ID, "ä\U0001f600\udc00"), h.ResString("x")],
}
NAMES = {h.DT_BINARY16: "Bin16", h.DT_STRINGRES: "ResString"}


def test_identifier():
    assert str(ID) == str(UUID) == ID.toGrouped()
    assert h.Binary16(repr(ID)) == h.Binary16(bytes(ID)) == h.Binary16(UUID.bytes_le) == ID
    assert h.Binary16.fromUuid(UUID) == h.Binary16.fromUuidBytes(UUID.bytes) == ID
    assert ID.toUuid() == UUID and ID.toUuidBytes() == UUID.bytes and bytes(ID) == UUID.bytes_le
    assert {ID: 1}[pickle.loads(pickle.dumps(ID))] == 1
    assert h.Binary16.EMPTY < ID < h.Binary16.MAX and not h.Binary16.EMPTY
    assert list(ID) == list(bytes(ID)) and ID[-1] == 1 and ID != 5
    assert h.Binary16.of(h.DT_INT16, -2).get(h.DT_UINT16) == 65534
    for wrong in ("", "12", b"", bytes(15), bytes(17), str(ID) + " "):
        pytest.raises(ValueError, h.Binary16, wrong)
    pytest.raises(TypeError, h.Binary16.of, h.DT_INT16, 2**15)


@pytest.mark.parametrize("data_type", ALL)
def test_array_of_each_type(data_type):
    values, name = ALL[data_type], NAMES.get(data_type) or h.Convert.toAString(data_type)
    array = h.HLVArray(data_type)
    for value in values:
        getattr(array, "add" + name)(value)
    assert array.tolist() == list(array) == getattr(array, "get" + name)() == values
    assert array == h.HLVArray(data_type, values) == pickle.loads(pickle.dumps(array))
    assert array == copy.copy(array) and array[-1] == values[-1] and values[0] in array
    getattr(array, "set" + name)(0, values[1])
    getattr(array, "setRange" + name)(1, [values[0]])
    for part in (slice(None), slice(1, 9), slice(None, None, -1), slice(-1, None, -2), slice(2, 2)):
        assert array[part] == h.HLVArray(data_type, values[::-1][part]), part
    array.extend(array)
    assert len(array) == 4 and array[2:].tolist() == array[:2].tolist()
    pytest.raises(TypeError, array.append, object())


@pytest.mark.parametrize("data_type", NUMBERS)
def test_numbers_are_a_buffer(data_type):
    code, values = NUMBERS[data_type]
    array = h.HLVArray(data_type, values)
    view = memoryview(array)
    assert view.format == code and view.tolist() == values and view.readonly
    odd = memoryview(b"odd" + view.tobytes())[3:].cast(code)
    assert h.HLVArray(data_type, view) == h.HLVArray(data_type, odd) == array
    assert h.HLVArray(data_type, odd[:0]) == h.HLVArray(data_type, [])


def test_no_change_beneath_a_view():
    array = h.HLVArray(h.DT_INT32, range(1000))
    view = memoryview(array)[1:]
    for change in (lambda: array.addInt32(1), lambda: array.clear(h.DT_BYTE),
                   lambda: array.init(1, h.DT_BYTE), lambda: array.removeRange(0, 1),
                   lambda: array.extend(array), lambda: array.setInt32(0, 1),
                   lambda: array.__setitem__(0, 1), lambda: array.__init__(h.DT_BYTE)):
        try:
            change()
        except BufferError:
            pass
        assert view.tolist() == list(range(1, 1000)) and array.getDataType() == h.DT_INT32
    view.release()
    with pytest.raises(BufferError):  # the first part of the expression holds one
        memoryview(array), array.addInt32(1)
    array.addInt32(1)
    assert len(array) == 1001
    rows = memoryview(h.HLVArray(h.DT_ID, [ID, ID]))
    assert rows.shape == (2, 16) and rows[1, 15] == 1 and rows.tobytes() == bytes(ID) * 2
    assert memoryview(h.HLVArray(h.DT_INT32)).tolist() == []
    pytest.raises(BufferError, memoryview, h.HLVArray(h.DT_STRING))


def test_array_that_its_own_values_change():
    array = h.HLVArray(h.DT_INT32, [1, 2])

    class Index:
        def __index__(self):
            array.clear(h.DT_STRING)
            return 7

    pytest.raises(IndexError, array.__setitem__, 1, Index())
    assert array == h.HLVArray(h.DT_STRING)
    array = h.HLVArray(h.DT_INT32, [1, 2])
    assert array[Index():] == array[:Index()] == h.HLVArray(h.DT_STRING)


def test_result_codes():
    array = h.HLVArray(h.DT_INT32, [1])
    for change, code, kind in (
        (lambda: array.addByte(1), h.ERR_WRONG_TYPE, TypeError),
        (lambda: array.extend(b"1234"), h.ERR_WRONG_TYPE, TypeError),
        (lambda: array.setInt32(1, 1), h.ERR_OUT_OF_RANGE, IndexError),
        (lambda: array.setRangeInt32(99999, [1]), h.ERR_OUT_OF_RANGE, IndexError),
        (lambda: array[1], h.ERR_OUT_OF_RANGE, IndexError),
        (lambda: array.extend([0] * 65535), h.ERR_OUT_OF_RANGE, IndexError),
        (lambda: h.HLVArray(h.DT_BYTE, bytes(65536)), h.ERR_OUT_OF_RANGE, IndexError),
        (lambda: array.removeRange(0, 2), h.ERR_OUT_OF_RANGE, IndexError),
    ):
        caught = pytest.raises(kind, change)
        assert isinstance(caught.value, h.ResultError) and caught.value.code == code
        assert array.tolist() == [1]


@pytest.mark.parametrize("kind, read, most, head",
                         [(h.VarChar, h.VarChar.fromRaw, 512, 2),
                          (h.ResString, h.ResString.fromPacked, 128, 18)])
def test_texts_in_buffers(kind, read, most, head):
    text = kind("ä\U0001f600\ud800")
    assert str(text) == "ä\U0001f600\ud800" and len(text) == 4 and kind("x" * 999).length() == most
    assert read(bytes(text)) == text == pickle.loads(pickle.dumps(text))
    buffer = bytearray(b"\xee" * 101)
    text.writeSlot(buffer, 3, 9)
    assert buffer[3:21 + head] == text.slot(9) and buffer[:3] == b"\xee" * 3
    assert read(buffer, 3) == text and buffer[21 + head] == 0xEE
    before = bytes(buffer)
    for wrong in (lambda: text.writeSlot(buffer, 90, 9), lambda: read(buffer, 102),
                  lambda: text.writeSlot(bytes(99), 0, 9), lambda: text.slot(-1)):
        pytest.raises((IndexError, TypeError, BufferError), wrong)
    pytest.raises(ValueError, read, bytes(text)[:-1])
    assert buffer == before


def test_translators():
    class German(h.Translator):
        def getTranslation(self, id, text):
            return {"pump": "Pumpe \U0001f600"}[text] if id == ID else None

        def getErrorName(self, code):
            return "pumpFailed"

    assert h.ResString2(ID, "pump").ToString(German()) == "Pumpe \U0001f600"
    assert h.ResString2("\U0001f600").ToString(German()) == "\U0001f600"
    assert h.ResString2(h.Binary16.MAX, "\U0001f600").ToString(h.Translator()) == "\U0001f600"
    assert h.HLVError(-5, h.ResString(ID, "pump")).describe(German()).startswith("pumpFailed (-5)")
    pytest.raises(KeyError, h.ResString2(ID, "valve").ToString, German())
    German.getTranslation = lambda *_: 5
    pytest.raises(TypeError, h.ResString2(ID, "pump").ToString, German())


def test_errors():
    base = h.HLVError(-2, "ä", ID, preceding=h.HLVError(-1, True, 2**40, 0.5)).getBaseError()
    assert base.getCode() == -1 and base.params() == (True, 2**40, 0.5)
    error = h.HLVError(3, preceding=base)
    caught = pytest.raises(h.HLVErrorException, error.throw, "here")
    assert caught.value.trace == "here" and str(caught.value.error) == str(error)
    again = h.HLVError.fromException(caught.value)
    assert [e.getCode() for e in again] == [3, -1] and again.getByCode(-1).params()[0] is True
    outer = ValueError("outer")
    outer.__cause__ = caught.value
    assert [e.getCode() for e in h.HLVError.fromException(outer)] == [-1, 3, -1]
    outer.__cause__ = KeyError("a\ud800")
    outer.__cause__.__cause__ = outer
    assert len(list(h.HLVError.fromException(outer))) == 2
    errors = h.HLVError.List()
    assert errors.add(base) and not errors.add(error) and not errors.add(h.HLVError(0))
    assert len(errors) == 2 and errors.getErrorCount() == 1
    assert errors[-1].getCode() == 3 and [e.getCode() for e in errors[::-1]] == [3, -1]
    for outside in (2, -3, 2**63 - 1):
        pytest.raises(h.OutOfRangeError, errors.__getitem__, outside)


@pytest.mark.parametrize("kind", [kind for kind in (*vars(h).values(), h.HLVError.List)
                                  if isinstance(kind, type) and not issubclass(kind, Exception)])
def test_objects_that_were_never_made(kind):
    for name, member in vars(kind).items():
        if type(member).__name__ == "instancemethod" and name != "__init__":
            others = [kind.__new__(kind)] * (name[2:4] in ("eq", "ne", "lt", "le", "gt", "ge"))
            pytest.raises(TypeError, getattr(kind.__new__(kind), name), *others)
    pytest.raises(TypeError, h.HLVError, 1, kind.__new__(kind))


def test_whatever_is_deleted_first():
    uses = {"array": repr, "view": bytes, "elements": next, "errors": list, "entries": list,
            "error": str, "base": str, "caught": lambda c: str(c.error)}
    for seed in range(100):
        array, errors = h.HLVArray(h.DT_INT64, range(100)), h.HLVError.List()
        error = h.HLVError(-1, "x", preceding=h.HLVError(-2, preceding=h.HLVError(3, ID)))
        errors.add(error)
        parts = dict(zip(uses, (array, memoryview(array), iter(array), errors, iter(errors), error,
                                error.getBaseError(), pytest.raises(Exception, error.throw).value)))
        del array, errors, error
        for name in random.Random(seed).sample(list(uses), len(uses)):
            del parts[name]
            for left, part in parts.items():
                uses[left](part)


def in_use():
    """Bytes outside of Python's pools, and blocks inside."""
    gc.collect()
    in_c = ctypes.CDLL(None)
    if hasattr(in_c, "__asan_init"):
        in_c.__sanitizer_get_current_allocated_bytes.restype = ctypes.c_size_t
        return in_c.__sanitizer_get_current_allocated_bytes(), sys.getallocatedblocks()
    in_c.mallinfo2.restype = type("", (ctypes.Structure,), {"_fields_": [("n", ctypes.c_size_t * 10)]})
    return in_c.mallinfo2().n[4] + in_c.mallinfo2().n[7], sys.getallocatedblocks()


def test_nothing_leaks():
    gc.freeze()  # makes each collection quick
    counts = []
    for turn in range(2001):
        if turn % 1000 == 0:
            counts.append(in_use())
        for data_type, values in ALL.items():
            array = h.HLVArray(data_type, values)
            pytest.raises(TypeError, array.extend, [values[0], object()])
            data_type in NUMBERS and memoryview(array), array[::-1], copy.copy(array)
        for test in (test_errors, test_translators, test_identifier):
            test()
    for before, after, most in zip(*counts[1:], (16_000, 900)):  # less than one each turn
        assert after - before < most, counts


def test_page(capsys):
    guide = Path(__file__).parents[2] / "examples/python/guide.py"
    runpy.run_path(str(guide))
    assert capsys.readouterr().out == guide.with_suffix(".expected").read_text()
    for _, _, way, _ in runpy.run_path(str(guide.with_name("speed.py")))["WAYS"]:
        way()


def test_tools():
    assert h.HalvTypes.getSmallestCommonDataType(h.DT_BYTE, h.DT_INT16) == h.DT_INT16
    assert h.HalvTypes.getSmallestCommonDataType(h.DT_BYTE, h.DT_ID) is None
    assert h.Round.convert(12.345, 2) == 1235 and h.Round.round(-2.5) == -2.0
    assert h.Convert.split("a,,b,", ",") == ["a", "", "b"]
    assert h.Convert.splitQuoted('a,"b,c",d', ",") == ["a", "b,c", "d"]
    assert h.Utf8.toWString(b"a\xff") == ("a\ufffd", 1, 1) and not h.Utf8.isValid(b"\xff")
    assert h.readCsv(b'a,"b\n"\n"c"d\n') == ([[b"a", b"b\n"]], [(3, 3, h.readCsv(b'"c"d')[1][0][2])])
    assert str(h.KrVersion(1, 2, 3, 4)) == "1.2.3.4" and h.KrVersion(1, 2) == h.KrVersion(1, 2, 0, 0)
