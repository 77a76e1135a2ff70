"""What the bytes of HalvTypes' objects mean: shared by what shows them in GDB and in LLDB.

It reads memory and wants no debug information: the layouts are those of the library's major
version, for every little-endian machine that aligns by size. Memory may hold anything, so nothing
here fails or goes on without end: what cannot be had, because a pointer is wild or a length
impossible, reads <unreadable>.
"""

import re
import struct
from functools import lru_cache
from itertools import islice

UNREADABLE = "<unreadable>"
NONE = "<NONE>"
END = "<END>"

# In code units: what is read of a text that the debugger does not limit.
MOST_UNITS = 1 << 20

# By number, without the leading DT_: the data types.
TYPES = (
    "VOID BOOL BYTE INT16 INT32 INT64 UINT16 UINT32 UINT64 FLOAT DOUBLE"
    " STRING TICK ID BINARY16 STRINGRES"
).split()

# The C++ types and struct's letters of the numbers.
NUMBERS = {
    "BOOL": ("bool", "?"),
    "BYTE": ("unsigned char", "B"),
    "INT16": ("short", "h"),
    "INT32": ("int", "i"),
    "INT64": ("long long", "q"),
    "UINT16": ("unsigned short", "H"),
    "UINT32": ("unsigned int", "I"),
    "UINT64": ("unsigned long long", "Q"),
    "TICK": ("unsigned long long", "Q"),
    "FLOAT": ("float", "f"),
    "DOUBLE": ("double", "d"),
}

# Of a std::basic_string: the pointers that it is as large as, and the bytes beside them. A library
# tells by a symbol which it was built for.
STRINGS = {
    "libstdcxx_with_cxx11_strings": (2, 16),
    "libcxx": (3, 0),
    "libstdcxx_with_old_strings": (1, 0),
}
SYMBOL = "Halvora::abi::wants_a_library_built_for_%s_and_%d_byte_wchar_t"


class Unreadable(Exception):
    pass


def readable(show, *arguments):
    """What `show` makes of the arguments, or the mark. Any exception counts."""
    try:
        return show(*arguments)
    except Exception:
        return UNREADABLE


class Machine:
    """The debugged program. Each debugger derives its own, which knows what raises here."""

    pointer = 8  # bytes
    limit = None  # of units of a text, or none

    def read_page(self, address, size):
        """`size` bytes, all in one page; if there are none, anything else or an exception."""
        raise NotImplementedError

    def has_symbol(self, name):
        raise NotImplementedError

    def is_printable(self, character):
        return character.isprintable()

    def find_library(self):
        """Learns how texts lie in memory."""
        self.strings, self.wide = next(iter(STRINGS)), 4
        for strings in STRINGS:
            for wide in 4, 2:
                if self.has_symbol(SYMBOL % (strings, wide)):
                    self.strings, self.wide = strings, wide
                    return

    def read(self, address, size):
        """`size` bytes, or those before the first page that cannot be read."""
        data = b""
        while address > 0 and len(data) < size:
            at = address + len(data)
            step = min(4096 - at % 4096, size - len(data))
            page = readable(self.read_page, at, step)
            if not isinstance(page, bytes) or len(page) != step:
                break
            data += page
        return data

    def word(self, address, number=0):
        data = self.read(address + number * self.pointer, self.pointer)
        if len(data) < self.pointer:
            raise Unreadable
        return int.from_bytes(data, "little")


@lru_cache(None)
def measured(layout, pointer, strings):
    """Where each member begins and ends, and the size of all: `member:bytes` or
    `member:bytes*count`, where p is a pointer and s a std::basic_string."""
    pointers, beside = STRINGS[strings]
    sizes = {"p": pointer, "s": pointers * pointer + beside}
    places, end, largest = {}, 0, 1
    for member in layout.split():
        name, _, form = member.partition(":")
        unit, _, count = form.partition("*")
        size = sizes.get(unit) or int(unit)
        align = min(size, pointer) if unit in sizes else size
        start, largest = -(-end // align) * align, max(largest, align)
        end = start + size * int(count or 1)
        places[name] = start, end
    return places, -(-end // largest) * largest


class Object:
    """The members of an object, by the names in its layout."""

    def __init__(self, machine, layout, address, data=None):
        self.machine, self.address = machine, address
        self.places, self.size = measured(layout, machine.pointer, machine.strings)
        self.data = machine.read(address, self.size) if data is None else data

    def bytes(self, member):
        start, end = self.places[member]
        if len(self.data) < end:
            raise Unreadable
        return self.data[start:end]

    def __getitem__(self, member):
        return int.from_bytes(self.bytes(member), "little")

    def words(self, member):
        data, width = self.bytes(member), self.machine.pointer
        return [int.from_bytes(data[i : i + width], "little") for i in range(0, len(data), width)]

    def string(self, member, width):
        address = self.address and self.address + self.places[member][0]
        return string(self.machine, self.bytes(member), address, width)


# text


def escaped(machine, unit):
    if unit in (ord('"'), ord("\\")):
        return "\\" + chr(unit)
    if 32 <= unit < 127 or 159 < unit <= 0x10FFFF and machine.is_printable(chr(unit)):
        return chr(unit)
    if unit < 0x100:
        return {9: "\\t", 10: "\\n", 13: "\\r"}.get(unit, "\\%03o" % unit)
    return ("\\u%04x" if unit < 0x10000 else "\\U%08x") % unit


class Text:
    """Units at an address, or in `data`, cut at the debugger's limit. A length beyond the capacity
    marks a damaged one."""

    def __init__(self, machine, width, length, capacity, address=0, data=None):
        whole = min(length, capacity)
        wanted = min(whole, MOST_UNITS if machine.limit is None else machine.limit)
        if data is None:
            data = machine.read(address, wanted * width)
        ends = range(width, min(len(data), wanted * width) + 1, width)
        units = [int.from_bytes(data[end - width : end], "little") for end in ends]
        is_damaged = length > capacity or len(units) < wanted or address == 0 and not data
        self.body = "".join(escaped(machine, unit) for unit in units)
        self.mark = UNREADABLE if is_damaged else "..." if wanted < whole else ""

    def __str__(self):
        is_lost = self.mark == UNREADABLE and not self.body
        return self.mark if is_lost else '"%s"%s' % (self.body, self.mark)


def string(machine, data, address, width):
    """A std::basic_string. Where it lies is not known of what a function returned."""
    word, words = machine.pointer, range(0, len(data), machine.pointer)
    first, *others = [int.from_bytes(data[i : i + word], "little") for i in words]
    if machine.strings == "libcxx":
        if data[0] & 1:
            return Text(machine, width, others[0], (first & ~1) - 1, others[1])
        near = data[width:]
        return Text(machine, width, data[0] >> 1, len(near) // width - 1, data=near)
    if machine.strings == "libstdcxx_with_old_strings":
        return Text(machine, width, machine.word(first, -3), machine.word(first, -2), first)
    near, room = data[2 * word :], 16 // width - 1
    if first == address + 2 * word if address else others[0] <= room:
        return Text(machine, width, others[0], room, first, near)
    return Text(machine, width, others[0], others[1], first)


def units(value):
    data = value.bytes("units")
    return Text(value.machine, 2, value["length"], len(data) // 2, data=data)


def both_forms(data):
    groups = data[3::-1], data[5:3:-1], data[7:5:-1], data[8:10], data[10:]
    return "0x%s/%s" % (data[::-1].hex().upper(), "-".join(group.hex() for group in groups))


def identified(data, text):
    return "%s %s" % (both_forms(data), text) if any(data) else str(text)


def binary16(value):
    return both_forms(value.bytes("id"))


def res_string(value):
    return identified(value.bytes("id"), units(value))


def res_string2(value):
    return identified(value.bytes("id"), readable(value.string, "text", 2))


# arrays


class Number:
    """A part that the debugger shows in its own way, by the name of its C++ type."""

    def __init__(self, key, data):
        self.type, self.letter = NUMBERS[key]
        self.data = data[: struct.calcsize(self.letter)]

    def shown_as(self):
        """Its type and bytes. A byte is a number here, no character."""
        is_byte = self.letter == "B"
        return ("unsigned short", self.data + b"\0") if is_byte else (self.type, self.data)

    def __str__(self):
        (number,) = struct.unpack("<" + self.letter, self.data)
        form = {"?": "%s", "f": "%.9g", "d": "%.17g"}.get(self.letter, "%d")
        return (form % number).lower()


class Inner:
    """A part that is an object of the library itself."""

    def __init__(self, machine, name, address):
        self.machine, self.name, self.address = machine, name, address

    def __str__(self):
        return View(self.machine, self.name, self.address).line()


def type_name(number):
    return TYPES[number] if number < len(TYPES) else "!UNKNOWN!(%d)" % number


def array(value):
    return "%s[%d]" % (type_name(value["type"]), value["count"])


def array_elements(value):
    name, count, stored = type_name(value["type"]), value["count"], value["size"]
    size, show = element(value.machine, name)
    held = count if name in ("STRING", "STRINGRES") else min(count, stored // size)
    return elements(value.machine, size, show, value["data"], count, held)


def elements(machine, size, show, address, count, held):
    """What `show` makes of each, of which fewer may be held than counted."""
    at, ahead = 0, b""
    while show and at < held:
        if len(ahead) < size:  # 64 at once: a device may be slow
            ahead = machine.read(address + at * size, min(64, held - at) * size)
        if len(ahead) < size:
            break
        yield "[%d]" % at, readable(show, ahead[:size], address + at * size)
        at, ahead = at + 1, ahead[size:]
    if at < count:
        yield "[%d]" % at, UNREADABLE


def element(machine, name):
    """The size of an element, and what shows its bytes, which lie at an address."""
    if name in NUMBERS:
        return struct.calcsize(NUMBERS[name][1]), lambda data, _: Number(name, data)
    if name in ("ID", "BINARY16"):
        return 16, lambda data, _: both_forms(data)
    if name == "STRING":
        size = Object(machine, "text:s", 0, b"").size
        return size, lambda data, at: string(machine, data, at, machine.wide)
    if name == "STRINGRES":
        layout = CLASSES["ResString"][0]
        size = Object(machine, layout, 0, b"").size
        return size, lambda data, at: res_string(Object(machine, layout, at, data))
    return 1, None


def words(type_text):
    """Two names of a type of numbers have the same: compilers put them in any order."""
    return sorted(word for word in type_text.split() if word not in ("int", "signed"))


def element_key(machine, type_text):
    """The data type whose elements are of a C++ type, or none."""
    if "basic_string<wchar_t" in type_text:
        return "STRING"
    if type_text in ("Halvora::Binary16", "Halvora::ResString"):
        return "STRINGRES" if type_text.endswith("ResString") else "BINARY16"
    if machine.pointer == 8 and type_text.split().count("long") == 1:
        type_text += " long"
    return next((key for key in NUMBERS if words(NUMBERS[key][0]) == words(type_text)), None)


# errors


def param(value):
    name, data = type_name(value["type"]), value.bytes("data")
    if name == "VOID":
        return name
    if name == "STRING":
        shown = value.string("text", value.machine.wide)
    elif name == "STRINGRES":
        shown = identified(data, readable(value.string, "text", value.machine.wide))
    else:
        shown = Number(name, data) if name in NUMBERS else both_forms(data)
    return "%s %s" % (name, shown)


def open_at(value, name, address):
    return Object(value.machine, CLASSES[name][0], address)


def details(error):
    if error["tag"] != 0:
        yield "tag", "%#x" % error["tag"]
    for i, at in enumerate(error.words("params")):
        if at != 0:
            yield "P%d" % (i + 1), readable(lambda: param(open_at(error, "HLVError::Param", at)))


def error_head(error):
    return "Error %d" % int.from_bytes(error.bytes("code"), "little", signed=True)


def error_line(error):
    shown = ", ".join("%s = %s" % detail for detail in details(error))
    return error_head(error) + (" {%s}" % shown if shown else "")


def linked(address, follow, end=0, number=0):
    """The addresses from the first on, each with a name; a text where they are damaged."""
    names = {}
    while address != end:
        name = "[%d]" % (len(names) + number)
        if address in names:
            yield name, "<loop to %s>" % names[address]
            return
        names[address] = name
        following = readable(follow, address)
        if following is UNREADABLE:
            yield name, UNREADABLE
            return
        yield name, address
        address = following


def chain(error):
    """What belongs to the error, then a line for each error that it wraps, without recursion."""
    yield from details(error)

    def wrapped_at(address):
        return open_at(error, "HLVError", address)

    following = linked(error["preceding"], lambda at: wrapped_at(at)["preceding"], number=1)
    for name, at in following:
        yield name, at if isinstance(at, str) else readable(lambda: error_line(wrapped_at(at)))


def held_head(owner):
    held = owner["error"]
    return error_head(open_at(owner, "HLVError", held)) if held else NONE


def held_chain(owner):
    held = owner["error"]
    return chain(open_at(owner, "HLVError", held)) if held else ()


def list_head(value):
    return "errors: %d, warnings: %d" % (value["errors"], value["warnings"])


def entry_at(machine, node):
    """The error of a node, whose address lies behind the links; null fails."""
    address = machine.word(node, 2)
    machine.word(address)
    return address


def list_entries(value):
    entries, machine = value["entries"], value.machine
    if entries == 0:
        return  # moved from
    link = 1 if machine.strings == "libcxx" else 0
    first = machine.word(entries, link)
    for name, node in linked(first, lambda node: machine.word(node, link), entries):
        address = node if isinstance(node, str) else readable(entry_at, machine, node)
        yield name, address if isinstance(address, str) else Inner(machine, "HLVError", address)


def position(value):
    """The error at a list's iterator; null at the end."""
    node = value.machine.word(value["position"])
    if node == value["list"]:
        return None
    return open_at(value, "HLVError", entry_at(value.machine, node))


def position_head(value):
    error = position(value)
    return error_head(error) if error else END


def position_chain(value):
    error = position(value)
    return chain(error) if error else ()


def trace(value):
    text = readable(value.string, "trace", 1)
    if str(text) != '""':
        yield "trace", text


def exception_parts(value):
    yield from trace(value)
    yield from held_chain(value)


def plain_exception(value):
    return "%s: %s" % (error_head(value), readable(value.string, "message", 1))


# version


def version(value):
    release = readable(value.string, "releaseType", 1)
    text = ".".join(str(value[part]) for part in ("major", "minor", "build", "revision"))
    plain = release if release is UNREADABLE else release.body + release.mark
    return text if plain in ("", "release") else "%s (%s)" % (text, plain)


def version_fields(value):
    product = value["productMajor"], value["productMinor"]
    if any(product):
        yield "Product", "%d.%d" % product
    for member in value.places:
        if member[0].isupper():
            text = readable(value.string, member, 1)
            if str(text) != '""':
                yield member, text


def nothing(_value):
    return ()


POSITION = "vptr:p list:p position:p", position_head, position_chain

# Their members, what is shown of each in a line, and its parts.
CLASSES = {
    "Binary16": ("id:1*16", binary16, nothing),
    "ResString": ("id:1*16 length:2 units:2*128 cache:s", res_string, nothing),
    "ResString2": ("vptr:p id:1*16 text:s", res_string2, nothing),
    "VarChar": ("length:2 units:2*512", units, nothing),
    "HLVArray": ("vptr:p type:4 count:2 mayHoldMore:1 size:4 data:p", array, array_elements),
    "HLVError": ("code:4 tag:p preceding:p params:p*3", error_head, chain),
    "HLVError::Param": ("type:4 data:1*16 text:s", param, nothing),
    "HLVError::Holder": ("vptr:p error:p", held_head, held_chain),
    "HLVError::List": ("vptr:p entries:p errors:4 warnings:4", list_head, list_entries),
    "HLVError::List::iterator": POSITION,
    "HLVError::List::const_iterator": POSITION,
    "HLVErrorException": ("vptr:p trace:s what:s error:p", held_head, exception_parts),
    "Exception": ("vptr:p code:4 message:s trace:s", plain_exception, trace),
    "KrVersion": (
        "major:4 productMajor:4 minor:4 productMinor:4 build:4 revision:4 releaseType:s BuildDate:s"
        " BuildTime:s Configuration:s buildFlag:1 Platform:s Compiler:s ProductName:s CompanyName:s"
        " FileDescription:s InternalName:s LegalCopyright:s OriginalFilename:s",
        version,
        version_fields,
    ),
    "HLVString": ("text:s", lambda value: value.string("text", 2), nothing),
}
PATTERNS = {name: "^Halvora::%s$" % name for name in CLASSES if name != "HLVString"}
PATTERNS["ArrayView"] = "^Halvora::ArrayView<.*>$"
TEXT_PATTERN = r"^std::(__[A-Za-z0-9_]+::)*basic_string<(unsigned short|short unsigned int),.*>$"


def key_of(name):
    """The name of a class without its namespace."""
    return "HLVString" if re.match(TEXT_PATTERN, name) else re.sub("^Halvora::", "", name)


def view_row(machine, name):
    """The row of an ArrayView, or none for elements that no array has."""
    inner = re.match("ArrayView<(.*)>", name).group(1).strip()
    key = element_key(machine, inner)
    shown = "std::wstring" if key == "STRING" else inner
    if key is None:
        return None
    return (
        "data:p size:p",
        lambda value: "ArrayView<%s>[%d]" % (shown, value["size"]),
        lambda value: elements(
            machine, *element(machine, key), value["data"], value["size"], value["size"]
        ),
    )


class View:
    """What is shown of an object: a head, and parts with names. Nothing here raises."""

    def __init__(self, machine, name, address, data=None):
        """`name` is the type's, with or without its namespace."""
        name = key_of(name)
        row = view_row(machine, name) if name.startswith("ArrayView<") else CLASSES.get(name)
        self.is_array = name.startswith(("HLVArray", "ArrayView<"))
        self.is_known = row is not None
        if self.is_known:
            layout, self._head, self._parts = row
            self.is_leaf = self._parts is nothing
            self._object = Object(machine, layout, address or 0, data)

    def head(self):
        return str(readable(self._head, self._object))

    def parts(self):
        """Pairs of a name and a text, a Number or an Inner, one by one."""
        try:
            for name, part in self._parts(self._object):
                yield name, part if isinstance(part, (Number, Inner)) else str(part)
        except Exception:
            if self.head() != UNREADABLE:
                yield "...", UNREADABLE

    def line(self, most=200):
        """All in one line, of at most as many parts."""
        form = "{1}" if self.is_array else "{} = {}"
        shown = [form.format(*part) for part in islice(self.parts(), most + 1)]
        text = ", ".join(shown[:most]) + ("..." if len(shown) > most else "")
        return self.head() + (" = {%s}" % text if shown else "")
