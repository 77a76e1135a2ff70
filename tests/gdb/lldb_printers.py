"""Prints in LLDB what printers.gdb prints in GDB, but for GDB's own formats and character sets."""

import os
import re

import lldb


def shown(value, most):
    head = value.GetSummary() or value.GetValue() or ""
    number, kind = value.GetNumChildren(), value.GetType().GetCanonicalType()
    if number == 0:
        return head
    form = "{1}" if kind.IsArrayType() or "Array" in kind.GetName() else "{0} = {1}"
    children = [value.GetChildAtIndex(i) for i in range(min(number, most))]
    parts = ", ".join(form.format(child.GetName(), shown(child, most)) for child in children)
    return "%s{%s%s}" % (head and head + " = ", parts, "..." if number > most else "")


def answer(debugger, command):
    result = lldb.SBCommandReturnObject()
    debugger.GetCommandInterpreter().HandleCommand(command, result)
    return result.GetOutput()


def __lldb_init_module(debugger, _internal):
    target, most = debugger.GetSelectedTarget(), 200
    target.BreakpointCreateByName("ready")
    target.LaunchSimple(None, None, os.getcwd())
    with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "printers.gdb")) as file:
        script = re.sub(r"(?s)echo \\n# (hexadecimal|in ASCII).*?\n\n", "", file.read())
    with open("printed", "w") as printed:
        for line in script.splitlines():
            command, _, rest = line.partition(" ")
            if command == "echo":
                print(rest.replace("\\n", "\n"), end="", file=printed)
            elif command == "set":
                most = 100000 if rest.endswith("unlimited") else int(rest.split()[-1])
                answer(debugger, "settings set target.max-string-summary-length %d" % most)
            elif command == "halvtypes":
                print(answer(debugger, line), end="", file=printed)
            elif command == "look":
                value = target.FindFirstGlobalVariable(rest)
                value = value if value.IsValid() else target.EvaluateExpression(rest)
                print(rest, "=", shown(value, most), file=printed)
                print(answer(debugger, "expression -- " + rest))  # LLDB's way must not fail either
