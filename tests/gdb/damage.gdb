# Damages the program's objects as a bug would, whose trace is to be read in the debugger.
python
def word(address, number, value=None):
    """Reads or writes the word with the number behind the address."""
    width = gdb.lookup_type("void").pointer().sizeof
    place, memory = int(address) + number * width, gdb.selected_inferior()
    if value is not None:
        memory.write_memory(place, value.to_bytes(width, "little"))
    return int.from_bytes(memory.read_memory(place, width).tobytes(), "little")

def fill(name):
    thing = gdb.parse_and_eval(name)
    gdb.selected_inferior().write_memory(int(thing.address), b"\xff" * thing.type.sizeof)

def address(name):
    return gdb.parse_and_eval(name).address

# Of both standard libraries: the second word of a long text is its length, the first two words of a
# list and of its nodes are the links, which lie before the entry.
word(address("longText"), 1, 0x7fffffff)
fill("wildText")
fill("wildRes2.m_text")
fill("wildParamText.m_dataString")
fill("wildVersion.m_strBuildDate")

size = gdb.parse_and_eval("sizeof params[0].m_dataString")
start = int(gdb.parse_and_eval("wildTexts.m_data")) + int(size)
gdb.selected_inferior().write_memory(start, b"\xff" * int(size))

def first_node(name):
    return word(gdb.parse_and_eval(name + ".m_entries"), 0)

for link in 0, 1:
    word(first_node("loopedList"), link, first_node("loopedList"))
    word(first_node("cutList"), link, 8)
word(first_node("wildEntry"), 2, 8)
end

set var overlongRes.m_length = 129
set var overlongVarChar.m_length = 65535
set var wildType.m_type = 99
set var wildCount.m_count = 65535
set var wildData.m_data = 8
set var wildParam.m_type = 99

set $second = looped.m_error.m_precedingError
set var $second.m_precedingError.m_precedingError = $second
set var cut.m_error.m_params[0] = 8
set var cut.m_error.m_precedingError.m_precedingError = 8
set var wildHolder.m_error = 8
set var wildList.m_entries = 8
