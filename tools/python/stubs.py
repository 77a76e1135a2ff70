#!/usr/bin/env python3
"""Prints the type stubs of the module that is imported: every name, signature and docstring.

PYTHONPATH=build/tools/python python3 tools/python/stubs.py >tools/python/halvtypes/__init__.pyi
"""
import enum
import re
import sys
import textwrap

import halvtypes

HEAD = '''\
# Written by tools/python/stubs.py from the module; edit the docstrings in C++ instead.
from collections.abc import Iterable, Iterator
from typing import Any, ClassVar, NoReturn, overload
from uuid import UUID

from _typeshed import ReadableBuffer, WriteableBuffer

_Param = bool | int | float | str | Binary16 | ResString
'''
# What the signatures of C++ leave open: a parameter's type by its function and name, a result's by
# its function.
NUMBER = dict.fromkeys(("Float", "Double"), "float")
VALUE = {**NUMBER, "Bool": "bool", "String": "str", "ID": "Binary16", "Bin16": "Binary16",
         "ResString": "ResString"}
PARAMETERS = {
    "buffer": "ReadableBuffer", "writeSlot.buffer": "WriteableBuffer", "args": "_Param",
    "values": "Iterable[Any] | ReadableBuffer | HLVArray", "value": "Any", "other": "Any",
    "memo": "Any", "number": "bool | int | float", "uuid": "UUID", "exception": "BaseException",
    "__eq__.other": "object", "__ne__.other": "object",
}
RESULTS = {
    "get": "bool | int | float", "toUuid": "UUID", "tolist": "list[Any]", "params": "tuple[Any, ...]",
    "HLVArray.__iter__": "Iterator[Any]", "__iter__": "Iterator[HLVError]", "throw": "NoReturn",
    "HLVError.List.__getitem__": "list[HLVError]", "getErrorDescription": "str | None",
    "getErrorName": "str | None", "getErrorParamDesc": "str | None", "__getstate__": "Any",
    "readCsv": "tuple[list[list[bytes]], list[tuple[int, int, str]]]",
}
ATTRIBUTES = {"HLVErrorException": {"error": "HLVError", "trace": "str"}}
HIDDEN = {"__doc__", "__module__", "__weakref__", "__entries", "__dict__", "__new__"}
undocumented = []


def first_of(table, *keys):
    return next((table[key] for key in keys if key in table), None)


def accessor(owner, name):
    """The type's name in addInt32() and its like of an array, and what comes before it."""
    match = re.fullmatch(r"(add|setRange|set|get)([A-Z]\w*)", name)
    taken = ("DataType", "Count", "ByteSize")
    return match.groups() if owner == "HLVArray" and match and match[2] not in taken else (None, None)


def in_python(type_name):
    type_name = re.sub(r"\b(List|Tuple|Dict)\b", lambda m: m[0].lower(), type_name)
    type_name = type_name.replace("halvtypes.", "")
    return re.sub(r"Optional\[(.*)\]", r"\1 | None", type_name)


def parameter(owner, name, text):
    match = re.fullmatch(r"(\*{0,2}\w+)(?:: ([^=]*?))?( = .*)?", text)
    called, type_name, default = match.groups()
    if called == "self":
        return called
    kind, value = accessor(owner, name)
    bare = called.lstrip("*").replace("arg0", {"__deepcopy__": "memo", "__setstate__": "state"}.get(name, "other"))
    if kind and bare in ("value", "values"):
        element = VALUE.get(value, "int")
        found = element if bare == "value" else f"Iterable[{element}] | ReadableBuffer"
    elif type_name in (None, "object", "handle", "buffer") or name in ("__eq__", "__ne__"):
        found = first_of(PARAMETERS, f"{name}.{bare}", f"{owner}.{bare}", bare, type_name)
        found = found or sys.exit(f"{owner}.{name}: what is {text}?")
    else:
        found = in_python(type_name)
    return called.replace("arg0", bare) + ": " + found + (default or "")


def result(owner, name, type_name):
    kind, value = accessor(owner, name)
    if kind == "get":
        return f"list[{VALUE.get(value, 'int')}]"
    found = in_python(type_name)
    if owner == "Translator" and found == "str":
        return "str | None"
    if found in ("object", "list", "tuple", "None", "Iterator") or name == "readCsv":
        return first_of(RESULTS, f"{owner}.{name}", name) or found.replace("object", "Any")
    return found


def split(parameters):
    """At the commas outside of brackets and quotes."""
    return [p.strip() for p in re.findall(r"(?:\[[^\]]*\]|'[^']*'|[^,\['])+", parameters)]


def docstring(text, indent):
    text = '"""' + text.replace("\\", "\\\\").partition("\n\nMembers:")[0] + '"""'
    return "\n\n".join(textwrap.fill(paragraph, 100, initial_indent=indent, subsequent_indent=indent)
                       for paragraph in text.split("\n\n"))


def function(owner, name, member, is_static, indent):
    signature = re.compile(r"^(?:\d+\. )?" + name + r"\((.*)\) -> (.*)$", re.M)
    parts = signature.split(member.__doc__ or "")[1:]
    if not parts:
        sys.exit(f"{owner}.{name} has no signature")
    for i in range(0, len(parts), 3):
        given = ", ".join(parameter(owner, name, p) for p in split(parts[i]))
        text = parts[i + 2].strip()
        if len(parts) > 3:
            yield f"{indent}@overload"
        if is_static:
            yield f"{indent}@staticmethod"
        head = f"{indent}def {name}({given}) -> {result(owner, name, parts[i + 1])}:"
        if not text:
            if not name.startswith("__") or name == "__init__" and not owner.startswith("e"):
                undocumented.append(f"{owner}.{name}")
            yield head + " ..."
        else:
            yield head
            yield docstring(text, indent + "    ")


def class_of(name, kind, indent, scope=""):
    bases = ", ".join(b.__name__ for b in kind.__bases__ if b.__name__ not in ("object", "pybind11_object"))
    yield f"{indent}class {name}({bases}):" if bases else f"{indent}class {name}:"
    inner = indent + "    "
    text = (kind.__doc__ or "").strip()
    if not text:
        undocumented.append(name)
    yield docstring(text, inner)
    path = scope + name
    for called, value in ATTRIBUTES.get(name, {}).items():
        yield f"{inner}{called}: {value}"
    for called, member in vars(kind).items():
        if called in HIDDEN:
            continue
        if type(member).__name__ == "wrapper_descriptor":
            yield f"{inner}def {called}(self, *args: object, **kwargs: object) -> NoReturn: ..."
            continue
        if isinstance(member, property):
            yield f"{inner}@property"
            yield f"{inner}def {called}(self) -> {'str' if called == 'name' else 'int'}: ..."
        elif isinstance(member, type):
            yield from class_of(called, member, inner, path + ".")
        elif called == "__members__":
            yield f"{inner}{called}: ClassVar[dict[str, {name}]]"
        elif member is None:
            yield f"{inner}{called}: ClassVar[None]  # type: ignore[assignment]"
        elif callable(getattr(kind, called)) and not isinstance(member, kind):
            alias = called != "__str__" or not (member.__doc__ or "").startswith("name(")
            if not alias:
                yield f"{inner}def __str__(self) -> str: ..."
                continue
            yield from function(path, called, getattr(kind, called), isinstance(member, staticmethod),
                                inner)
        else:
            yield f"{inner}{called}: ClassVar[{in_python(type(member).__name__)}]"
    if name == "HLVArray":
        yield f"{inner}def __buffer__(self, flags: int, /) -> memoryview: ..."


def module():
    yield HEAD
    for name, member in sorted(vars(halvtypes).items()):
        if name.startswith("__") and name != "__version__":
            continue
        if isinstance(member, type):
            yield from class_of(name, member, "")
            yield ""
        elif callable(member) and type(member).__name__ == "builtin_function_or_method":
            yield from function("", name, member, False, "")
            yield ""
        else:
            yield f"{name}: {type(member).__name__}"


if __name__ == "__main__":
    print("\n".join(module()).rstrip())
    if undocumented:
        sys.exit("without a docstring: " + ", ".join(undocumented))
