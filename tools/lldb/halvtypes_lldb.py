"""LLDB formatters for the types of HalvTypes: command script import <this file>

What they show comes from halvtypes_layouts.py, which lies in the folder above.
"""

import importlib.util
import os
from itertools import islice

import lldb


def load_layouts():
    folder = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    spec = importlib.util.spec_from_file_location(
        "halvtypes_layouts", os.path.join(folder, "halvtypes_layouts.py")
    )
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


layouts = load_layouts()

NUMBERS = {
    "bool": lldb.eBasicTypeBool,
    "short": lldb.eBasicTypeShort,
    "int": lldb.eBasicTypeInt,
    "long long": lldb.eBasicTypeLongLong,
    "unsigned short": lldb.eBasicTypeUnsignedShort,
    "unsigned int": lldb.eBasicTypeUnsignedInt,
    "unsigned long long": lldb.eBasicTypeUnsignedLongLong,
    "float": lldb.eBasicTypeFloat,
    "double": lldb.eBasicTypeDouble,
}

# An array has at most 65,535; a damaged length must not make LLDB ask for billions.
MOST_PARTS = 1 << 17

# Parts are values, and a value has a type of the program's: a part that is a text lies in an array
# of a type that nobody else has.
TEXT = r"^unsigned __int128 ?\[1\]\[1\]\[[0-9]+\]$"


class Machine(layouts.Machine):
    def __init__(self, target):
        self.target, self.process = target, target.GetProcess()
        self.pointer = target.GetAddressByteSize()
        limit = lldb.SBDebugger.GetInternalVariableValue(
            "target.max-string-summary-length", target.GetDebugger().GetInstanceName()
        )
        self.limit = int(limit.GetStringAtIndex(0) or 1024)
        self.find_library()

    def read_page(self, address, size):
        error = lldb.SBError()
        if self.process.IsValid():
            return self.process.ReadMemory(address, size, error)
        return self.target.ReadMemory(self.target.ResolveFileAddress(address), size, error)

    def has_symbol(self, name):
        return self.target.FindSymbols(name).GetSize() > 0


def raw(data):
    return data.ReadRawData(lldb.SBError(), 0, data.GetByteSize()) if data.GetByteSize() else b""


def view_of(value):
    """Of an object, or of what a pointer or reference points to."""
    value = value.GetNonSyntheticValue()
    kind, data = value.GetType().GetCanonicalType(), None
    if kind.IsPointerType() or kind.IsReferenceType():
        kind = kind.GetPointeeType() if kind.IsPointerType() else kind.GetDereferencedType()
        address = value.GetValueAsUnsigned()
    else:
        address = value.GetLoadAddress()
        if address == lldb.LLDB_INVALID_ADDRESS:
            address = value.GetAddress().GetFileAddress()
        if address == lldb.LLDB_INVALID_ADDRESS:
            address, data = None, raw(value.GetData())
    name = kind.GetCanonicalType().GetUnqualifiedType().GetName() or ""
    return layouts.View(Machine(value.GetTarget()), name, address, data)


def made(owner, name, data, kind):
    target, held = owner.GetTarget(), lldb.SBData()
    held.SetData(lldb.SBError(), data, target.GetByteOrder(), target.GetAddressByteSize())
    return owner.CreateValueFromData(name, held, kind)


def native(owner, name, part):
    """A value for the part, which LLDB shows in its own way where it knows the type."""
    target = owner.GetTarget()
    if isinstance(part, layouts.Number):
        kind, data = part.shown_as()
        return made(owner, name, data, target.GetBasicType(NUMBERS[kind]))
    if isinstance(part, layouts.Inner):
        kind = target.FindFirstType("Halvora::" + part.name)
        if kind.GetNumberOfFields() > 0:
            return owner.CreateValueFromAddress(name, part.address, kind)
    text = str(part).encode()
    blocks = len(text) // 16 + 1
    kind = target.GetBasicType(lldb.eBasicTypeUnsignedInt128).GetArrayType(blocks)
    return made(owner, name, text.ljust(16 * blocks, b"\0"), kind.GetArrayType(1).GetArrayType(1))


def head(value, _internal):
    view = view_of(value)
    return view.head() if view.is_known else ""


def text(value, _internal):
    return raw(value.GetData()).rstrip(b"\0").decode(errors="replace")


class NoParts:
    def __init__(self, _value, _internal):
        pass

    def num_children(self):
        return 0

    def has_children(self):
        return False


class Parts:
    """Made one by one, as LLDB asks for them."""

    def __init__(self, value, _internal):
        self.value = value
        self.update()  # LLDB 14 asks for parts before it calls this

    def update(self):
        view = view_of(self.value)
        self.own = None if view.is_known else self.value.GetNonSyntheticValue()
        self.parts, self.rest = [], view.parts() if view.is_known else iter(())
        return False

    def fill(self, count):
        self.parts.extend(islice(self.rest, max(0, min(count, MOST_PARTS) - len(self.parts))))
        return len(self.parts)

    def num_children(self, most=MOST_PARTS):
        return self.own.GetNumChildren() if self.own else self.fill(most)

    def has_children(self):
        return self.num_children(1) > 0

    def get_child_index(self, name):
        self.fill(MOST_PARTS)
        return next((i for i, part in enumerate(self.parts) if part[0] == name), -1)

    def get_child_at_index(self, index):
        if self.own:
            return self.own.GetChildAtIndex(index)
        return native(self.value, *self.parts[index]) if 0 <= index < self.fill(index + 1) else None


def show(debugger, command, context, result, _internal):
    """Show an object of HalvTypes without debug information: halvtypes CLASS ADDRESS
    The class is named as in C++, the address any expression: halvtypes HLVArray $r0"""
    name, _, address = command.strip().partition(" ")
    scope = context.GetFrame() or context.GetTarget()
    value = scope.EvaluateExpression(address)
    view = layouts.View(Machine(context.GetTarget()), name, value.GetValueAsUnsigned())
    if not view.is_known or not address.strip():
        result.SetError("halvtypes CLASS ADDRESS, with one of " + ", ".join(layouts.CLASSES))
    elif value.GetError().Fail():
        result.SetError("halvtypes CLASS ADDRESS: %s" % value.GetError())
    else:
        result.AppendMessage(view.line())


def __lldb_init_module(debugger, _internal):
    category = debugger.CreateCategory("HalvTypes")

    def add(pattern, summary, parts):
        types, through_aliases = lldb.SBTypeNameSpecifier(pattern, True), lldb.eTypeOptionCascade
        category.AddTypeSummary(
            types,
            lldb.SBTypeSummary.CreateWithFunctionName("%s.%s" % (__name__, summary), through_aliases),
        )
        category.AddTypeSynthetic(
            types,
            lldb.SBTypeSynthetic.CreateWithClassName("%s.%s" % (__name__, parts), through_aliases),
        )

    for pattern in (*layouts.PATTERNS.values(), layouts.TEXT_PATTERN):
        add(pattern, "head", "Parts")
    add(TEXT, "text", "NoParts")
    category.SetEnabled(True)
    debugger.HandleCommand("command script add -f %s.show halvtypes" % __name__)
