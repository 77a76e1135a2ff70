"""GDB pretty printers for the types of HalvTypes.

GDB loads them with the library; where it does not, `source` this file. A printer never fails: what
cannot be had, because a pointer is wild or a length impossible, reads <unreadable>. Sizes and
offsets come from the debug information, so that programs for other machines are shown alike. Often
the library's alone describes the classes with virtual functions: without it, GDB says <incomplete
type>.
"""

import gdb
import gdb.printing
import gdb.types

UNREADABLE = "<unreadable>"

# In code units: what is read of a text under `set print elements unlimited`.
MOST_UNITS = 1 << 20

# The C++ types of all values but texts, by the names of the data types without the leading DT_.
SCALARS = {
    "BOOL": "bool",
    "BYTE": "unsigned char",
    "INT16": "short",
    "INT32": "int",
    "INT64": "long long",
    "UINT16": "unsigned short",
    "UINT32": "unsigned int",
    "UINT64": "unsigned long long",
    "FLOAT": "float",
    "DOUBLE": "double",
    "TICK": "unsigned long long",
    "ID": "Halvora::Binary16",
    "BINARY16": "Halvora::Binary16",
}
TEXTS = ("STRING", "STRINGRES")
BYTES = ("ID", "BINARY16")


def readable(show, *arguments):
    """What `show` makes of the arguments, or the mark. Memory and debug information may hold
    anything, so any exception counts."""
    try:
        return show(*arguments)
    except Exception:
        return UNREADABLE


def fetch(pointer):
    """What the pointer points to, read at once: gdb.MemoryError if that fails or it is null."""
    if int(pointer) == 0:
        raise gdb.MemoryError("null")
    value = pointer.dereference()
    value.fetch_lazy()
    return value


def has(value, field):
    return gdb.types.has_field(value.type.strip_typedefs(), field)


def length_of(array):
    first, last = array.type.strip_typedefs().range()
    return last - first + 1


# text


def read(address, size):
    """`size` bytes, or those before the first page that cannot be read."""
    data = b""
    while len(data) < size:
        at = address + len(data)
        step = min(4096 - at % 4096, size - len(data))
        try:
            data += gdb.selected_inferior().read_memory(at, step).tobytes()
        except (gdb.error, OverflowError):
            break
    return data


def units_from(source, count):
    """`count` code units of an array or from a pointer on, or those that can be read."""
    kind = source.type.strip_typedefs()
    if kind.code == gdb.TYPE_CODE_ARRAY:
        return [int(source[i]) for i in range(count)]
    width = kind.target().sizeof
    data = read(int(source), count * width)
    ends = range(width, len(data) + 1, width)
    return [int.from_bytes(data[end - width : end], "little") for end in ends]


def is_printable(character):
    try:
        character.encode(gdb.host_charset())
        character.encode(gdb.target_charset())
    except (UnicodeError, LookupError):
        return False
    return character.isprintable()


def escaped(unit):
    if unit in (ord('"'), ord("\\")):
        return "\\" + chr(unit)
    if 32 <= unit < 127 or 159 < unit <= 0x10FFFF and is_printable(chr(unit)):
        return chr(unit)
    if unit < 0x100:
        return {9: "\\t", 10: "\\n", 13: "\\r"}.get(unit, "\\%03o" % unit)
    return ("\\u%04x" if unit < 0x10000 else "\\U%08x") % unit


def quoted(source, length, capacity):
    """The text, cut at GDB's limit. A length beyond the capacity marks a damaged one."""
    if source.type.strip_typedefs().code == gdb.TYPE_CODE_PTR and int(source) == 0:
        return UNREADABLE
    whole = min(length, capacity)
    limit = gdb.parameter("print elements")
    wanted = min(whole, MOST_UNITS if limit is None else limit)
    units = units_from(source, wanted)
    text = '"%s"' % "".join(map(escaped, units))
    if length > capacity or len(units) < wanted:
        return text + UNREADABLE if units else UNREADABLE
    return text + "..." if wanted < whole else text


def string(value):
    """A std::basic_string, of libstdc++ or of libc++ (14 and 19)."""
    if has(value, "_M_dataplus"):
        start, length = value["_M_dataplus"]["_M_p"], int(value["_M_string_length"])
        local = value["_M_local_buf"]
        # What a function returned lies nowhere: GDB would copy the array into the program.
        if value.address is None:
            is_local = length < length_of(local)
        else:
            is_local = int(local.address) == int(start)
        if is_local:
            return quoted(local, length, length_of(local) - 1)
        return quoted(start, length, int(value["_M_allocated_capacity"]))
    forms = value["__r_"]["__value_"]
    near, far = forms["__s"], forms["__l"]
    size, room = int(near["__size_"]), int(far["__cap_"])
    try:
        is_far, room = int(near["__is_long_"]), 2 * room
    except gdb.error:  # libc++ 14 keeps the flag in the lowest bits of the two
        is_far, size, room = size & 1, size >> 1, room & ~1
    if is_far:
        return quoted(far["__data_"], int(far["__size_"]), room - 1)
    return quoted(near["__data_"], size, length_of(near["__data_"]) - 1)


def bytes_of(value):
    cells = value["m_bytes"]
    return bytes(int(cells[i]) for i in range(length_of(cells)))


def both_forms(data):
    groups = data[3::-1], data[5:3:-1], data[7:5:-1], data[8:10], data[10:]
    return "0x%s/%s" % (data[::-1].hex().upper(), "-".join(group.hex() for group in groups))


def binary16(value):
    return both_forms(bytes_of(value))


def identified(identifier, text):
    data = bytes_of(identifier)
    return "%s %s" % (both_forms(data), text) if any(data) else text


def res_string(value):
    text = value["m_text"]
    return identified(value["m_id"], quoted(text, int(value["m_length"]), length_of(text)))


def res_string2(value):
    return identified(value["m_id"], readable(string, value["m_text"]))


def var_char(value):
    units = value["m_units"]
    return quoted(units, int(value["m_length"]), length_of(units))


# arrays


def type_name(value):
    for field in value.type.strip_typedefs().fields():
        if field.enumval == int(value):
            return field.name.rpartition("DT_")[2]
    return "!UNKNOWN!(%d)" % int(value)


def array(value):
    return "%s[%d]" % (type_name(value["m_type"]), int(value["m_count"]))


def element_type(name):
    if name in SCALARS:
        return gdb.lookup_type(SCALARS[name])
    kind = gdb.lookup_type("Halvora::ResString")
    # GDB does not find std::wstring in every standard library; this member is one.
    return kind["m_wideCache"].type if name == "STRING" else kind


def elements(value):
    name, count, at = type_name(value["m_type"]), int(value["m_count"]), 0
    if name in SCALARS or name in TEXTS:
        kind = element_type(name)
        first = value["m_data"].cast(kind.pointer())
        stored = count if name in TEXTS else int(value["m_byteSize"]) // kind.sizeof
        while at < min(count, stored):
            element = readable(fetch, first + at)
            if element is UNREADABLE:
                break
            yield "[%d]" % at, as_element(name, element)
            at += 1
    if at < count:
        yield "[%d]" % at, UNREADABLE


def as_element(name, value):
    if name == "STRING":
        return readable(string, value)
    # A byte is a number here, no character.
    return value.cast(gdb.lookup_type("unsigned short")) if name == "BYTE" else value


# errors


def param(value):
    name = type_name(value["m_type"])
    if name == "VOID":
        return name
    if name == "STRING":
        shown = string(value["m_dataString"])
    elif name == "STRINGRES":
        shown = identified(value["m_data"], readable(string, value["m_dataString"]))
    elif name in BYTES or name not in SCALARS:
        shown = binary16(value["m_data"])
    else:
        kind = element_type(name)
        number = gdb.Value(bytes_of(value["m_data"])[: kind.sizeof], kind)
        shown = as_element(name, number).format_string()
    return "%s %s" % (name, shown)


def param_at(pointer):
    return param(fetch(pointer))


def details(error):
    if int(error["m_tag"]) != 0:
        yield "tag", "%#x" % int(error["m_tag"])
    params = error["m_params"]
    for i in range(length_of(params)):
        if int(params[i]) != 0:
            yield "P%d" % (i + 1), readable(param_at, params[i])


def error_head(error):
    return "Error %d" % int(error["m_code"])


def error_line(error):
    shown = ", ".join("%s = %s" % detail for detail in details(error))
    return error_head(error) + (" {%s}" % shown if shown else "")


def linked(pointer, link, end=0, number=0):
    """The objects from the pointer on, each with a name; a text where they are damaged."""
    names = {}
    while int(pointer) != end:
        name = "[%d]" % (len(names) + number)
        if int(pointer) in names:
            yield name, "<loop to %s>" % names[int(pointer)]
            return
        names[int(pointer)] = name
        try:
            node = fetch(pointer)
        except gdb.error:
            yield name, UNREADABLE
            return
        yield name, node
        pointer = node[link]


def chain(error):
    """What belongs to the error, then a line for each error that it wraps, without recursion."""
    yield from details(error)
    for name, wrapped in linked(error["m_precedingError"], "m_precedingError", number=1):
        yield name, wrapped if isinstance(wrapped, str) else readable(error_line, wrapped)


def holder_head(holder):
    held = holder["m_error"]
    return "<NONE>" if int(held) == 0 else error_head(fetch(held))


def holder_chain(holder):
    held = holder["m_error"]
    return () if int(held) == 0 else chain(fetch(held))


def list_head(value):
    return "errors: %d, warnings: %d" % (int(value["m_errorCount"]), int(value["m_warningCount"]))


def list_entry(node):
    error = gdb.lookup_type("Halvora::HLVError").pointer()
    return fetch(fetch((node.address + 1).cast(error.pointer())))  # it lies behind the links


def list_entries(value):
    if int(value["m_entries"]) == 0:
        return  # moved from
    entries = fetch(value["m_entries"])
    if has(entries, "_M_impl"):
        end, link = entries["_M_impl"]["_M_node"], "_M_next"
    else:
        end, link = entries["__end_"], "__next_"
    for name, node in linked(end[link], link, int(end.address)):
        yield name, node if isinstance(node, str) else readable(list_entry, node)


# version


def version(value):
    numbers = (int(value["m_n" + part]) for part in ("Major", "Minor", "Build", "Revision"))
    release = readable(string, value["m_strReleaseType"])[1:-1]
    text = ".".join(map(str, numbers))
    return text if release in ("", "release") else "%s (%s)" % (text, release)


def version_fields(value):
    product = int(value["m_nProductMajor"]), int(value["m_nProductMinor"])
    if any(product):
        yield "Product", "%d.%d" % product
    for field in value.type.strip_typedefs().fields():
        if field.name.startswith("m_str") and field.name != "m_strReleaseType":
            text = readable(string, value[field.name])
            if text != '""':
                yield field.name[len("m_str") :], text


# registration


class Leaf:
    def __init__(self, value, show):
        self.value, self.show = value, show

    def to_string(self):
        return readable(self.show, self.value)


class Tree(Leaf):
    def __init__(self, value, show, parts, hint=None):
        super().__init__(value, show)
        self.parts, self.hint = parts, hint

    def children(self):
        """One by one: GDB asks for no more than `print elements`."""
        try:
            yield from self.parts(self.value)
        except Exception:
            if self.to_string() != UNREADABLE:
                yield "...", UNREADABLE

    def display_hint(self):
        return self.hint


REFERENCES = (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF)


def maker(kind, *functions):
    def make(value):
        if value.type.strip_typedefs().code in REFERENCES:
            value = value.referenced_value()
        is_complete = len(value.type.strip_typedefs().fields()) > 0
        return kind(value, *functions) if is_complete else None

    return make


def collection(name, *rows):
    result = gdb.printing.RegexpCollectionPrettyPrinter(name)
    for title, pattern, *recipe in rows:
        result.add_printer(title, pattern, maker(*recipe))
    return result


TEXT_PATTERN = r"^std::(__\w+::)*basic_string<(unsigned short|short unsigned int),"
TEXT = collection("HalvTypes-text", ("HLVString", TEXT_PATTERN, Leaf, string))
CLASSES = collection(
    "HalvTypes",
    ("Binary16", "^Halvora::Binary16$", Leaf, binary16),
    ("ResString", "^Halvora::ResString$", Leaf, res_string),
    ("ResString2", "^Halvora::ResString2$", Leaf, res_string2),
    ("VarChar", "^Halvora::VarChar$", Leaf, var_char),
    ("HLVArray", "^Halvora::HLVArray$", Tree, array, elements, "array"),
    ("HLVError", "^Halvora::HLVError$", Tree, error_head, chain),
    ("HLVError::Param", "^Halvora::HLVError::Param$", Leaf, param),
    ("HLVError::Holder", "^Halvora::HLVError::Holder$", Tree, holder_head, holder_chain),
    ("HLVError::List", "^Halvora::HLVError::List$", Tree, list_head, list_entries),
    ("KrVersion", "^Halvora::KrVersion$", Tree, version, version_fields),
)


def register_text(_event=None):
    """The printers of libstdc++ take every basic_string and show 16-bit text as bytes. GDB asks
    those of the program's own file first, so this one goes there."""
    files = gdb.objfiles()
    if files:
        gdb.printing.register_pretty_printer(files[0], TEXT, replace=True)


def register(objfile):
    gdb.printing.register_pretty_printer(objfile, CLASSES, replace=True)
    register_text()


gdb.events.new_objfile.connect(register_text)
if __name__ == "__main__":
    register(None)
