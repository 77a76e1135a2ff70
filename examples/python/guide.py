"""What docs/python.md shows, run."""
import halvtypes as h

pumpId = h.Binary16("12345678-9abc-def0-0807-060504030201")
readings = h.HLVArray(h.DT_INT32, [21, 22])
readings.addInt32(25)
print(pumpId, readings.tolist(), sum(memoryview(readings)))

dump = bytearray(64)
h.ResString(pumpId, "Zulaufpumpe").writeSlot(dump, 8, 19)
text = h.ResString.fromPacked(dump, 8)
print(text.id() == pumpId, text)

error = h.HLVError(-5, pumpId, 7, preceding=h.HLVError(-17, "no answer"))
print([each.getCode() for each in error])

import uuid

sent = uuid.uuid4()
id = h.Binary16.fromUuid(sent)
assert str(id) == str(sent) and id.toUuid() == sent
assert bytes(id) == sent.bytes_le and id.toUuidBytes() == sent.bytes

try:
    readings.addByte(1)
except h.ResultError as e:
    assert isinstance(e, TypeError) and e.code == h.ERR_WRONG_TYPE

view = memoryview(readings)
try:
    readings.addInt32(26)
except BufferError:
    view.release()  # nobody reads the elements any more
readings.addInt32(26)


class German(h.Translator):
    def getTranslation(self, id, text):
        return {"pump": "Pumpe"}.get(text)  # None keeps the text

    def getErrorName(self, code):
        return "pumpFailed" if code == -5 else None


assert h.ResString2(pumpId, "pump").ToString(German()) == "Pumpe"

try:
    error.throw("polling the pump")
except h.HLVErrorException as e:
    assert e.error.getBaseError().getCode() == -17 and e.trace == "polling the pump"

try:
    {}["pump"]
except KeyError as e:
    error = h.HLVError.fromException(e)
assert error.getCode() == -1 and error.params()[0] == "KeyError: 'pump'"

errors = h.HLVError.List()
errors.add(error)
errors.add(h.HLVError(3))
assert errors[-1].getCode() == 3 and len(errors[:1]) == 1
