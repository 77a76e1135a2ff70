"""GDB pretty printers for the types of HalvTypes.

GDB loads them with the library; where it does not, `source` this file. What they show comes from
halvtypes_layouts.py, which lies in the folder above.
"""

import importlib.util
import os
import sys

import gdb
import gdb.printing


def load_layouts():
    folder = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    spec = importlib.util.spec_from_file_location(
        "halvtypes_layouts", os.path.join(folder, "halvtypes_layouts.py")
    )
    module = importlib.util.module_from_spec(spec)
    # A debugger run by root must leave no byte code where a package manager does not know it.
    before, sys.dont_write_bytecode = sys.dont_write_bytecode, True
    try:
        spec.loader.exec_module(module)
    finally:
        sys.dont_write_bytecode = before
    return module


layouts = load_layouts()


class Machine(layouts.Machine):
    def __init__(self):
        self.pointer = gdb.lookup_type("void").pointer().sizeof
        self.limit = gdb.parameter("print elements")
        self.find_library()

    def read_page(self, address, size):
        return gdb.selected_inferior().read_memory(address, size).tobytes()

    def has_symbol(self, name):
        try:
            return bool(gdb.parse_and_eval("&'%s'" % name))
        except gdb.error:
            return False

    def is_printable(self, character):
        try:
            character.encode(gdb.host_charset())
            character.encode(gdb.target_charset())
        except (UnicodeError, LookupError):
            return False
        return character.isprintable()


def number_of(value):
    """The bytes of a value that lies in no memory, as a number: what a function returned, or what
    the compiler keeps in registers."""
    kind = value.type.strip_typedefs()
    if kind.code == gdb.TYPE_CODE_ARRAY:
        width = 8 * kind.target().sizeof
        return sum(number_of(value[i]) << i * width for i in range(kind.range()[1] + 1))
    if kind.code not in (gdb.TYPE_CODE_STRUCT, gdb.TYPE_CODE_UNION):
        return int(value) % (1 << 8 * kind.sizeof)
    result = 0
    for field in kind.fields():
        is_interface = field.is_base_class and not kind.name.startswith("std::")
        if hasattr(field, "bitpos") and not is_interface:
            result |= number_of(value[field]) << field.bitpos
    return result


def native(part):
    """What GDB shows in its own way, where it knows the type."""
    try:
        if isinstance(part, layouts.Number):
            name, data = part.shown_as()
            return gdb.Value(data, gdb.lookup_type(name))
        if isinstance(part, layouts.Inner):
            kind = gdb.lookup_type("Halvora::" + part.name)
            return gdb.Value(part.address).cast(kind.pointer()).dereference()
    except gdb.error:
        pass
    return str(part)


def view_of(value):
    kind = value.type.strip_typedefs()
    if value.address is not None:
        return layouts.View(Machine(), kind.name, int(value.address))
    number = layouts.readable(number_of, value)
    data = b"" if isinstance(number, str) else number.to_bytes(kind.sizeof, "little")
    return layouts.View(Machine(), kind.name, None, data)


class Leaf:
    def __init__(self, view):
        self.view = view

    def to_string(self):
        return self.view.head()


class Tree(Leaf):
    def children(self):
        """One by one: GDB asks for no more than `print elements`."""
        for name, part in self.view.parts():
            yield name, native(part)


class Array(Tree):
    def display_hint(self):
        return "array"


REFERENCES = (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF)


def make(value):
    if value.type.strip_typedefs().code in REFERENCES:
        value = value.referenced_value()
    view = view_of(value)
    if not view.is_known:
        return None
    return Array(view) if view.is_array else Leaf(view) if view.is_leaf else Tree(view)


def collection(title, patterns):
    result = gdb.printing.RegexpCollectionPrettyPrinter(title)
    for name, pattern in patterns.items():
        result.add_printer(name, pattern, make)
    return result


TEXT = collection("HalvTypes-text", {"HLVString": layouts.TEXT_PATTERN})
CLASSES = collection("HalvTypes", layouts.PATTERNS)


class Show(gdb.Command):
    """Show an object of HalvTypes without debug information: halvtypes CLASS ADDRESS
    The class is named as in C++, the address any expression: halvtypes HLVArray $r0"""

    def __init__(self):
        super().__init__("halvtypes", gdb.COMMAND_DATA)

    def invoke(self, argument, _from_tty):
        name, _, expression = argument.strip().partition(" ")
        try:
            address = int(gdb.parse_and_eval(expression))
        except gdb.error as error:
            raise gdb.GdbError("halvtypes CLASS ADDRESS: %s" % error)
        view = layouts.View(Machine(), name, address)
        if not view.is_known:
            raise gdb.GdbError("no such class; there are " + ", ".join(layouts.CLASSES))
        print(view.line())


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
Show()
if __name__ == "__main__":
    register(None)
