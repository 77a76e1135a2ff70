"""Prints in LLDB what printers.gdb prints in GDB, but for GDB's own formats and character sets:
lldb --batch -o "command script import halvtypes_lldb.py" -o "command script import <this file>" program
"""

import os
import re

import lldb

MARKS = ("hexadecimal", "in ASCII")


def shown(value, most):
    head = value.GetSummary() or value.GetValue() or ""
    number, kind = value.GetNumChildren(), value.GetType().GetCanonicalType()
    if number == 0 or value.GetValue() and not kind.IsReferenceType():
        return head
    is_array = kind.IsArrayType() or "Array" in kind.GetName()
    parts = []
    for i in range(min(number, most)):
        child = value.GetChildAtIndex(i)
        parts.append(("" if is_array else child.GetName() + " = ") + shown(child, most))
    more = "..." if number > most else ""
    return "%s{%s%s}" % (head and head + " = ", ", ".join(parts), more)


def __lldb_init_module(debugger, _session):
    target = debugger.GetSelectedTarget()
    target.BreakpointCreateByName("ready")
    target.LaunchSimple(None, None, os.getcwd())
    here = os.path.dirname(os.path.abspath(__file__))
    most, is_wanted = 200, True
    with open(os.path.join(here, "printers.gdb")) as script, open("printed", "w") as printed:
        for line in script:
            title = re.match(r"echo \\n# (.*)\\n", line)
            limit = re.match(r"set print elements (\w+)", line)
            name = re.match(r"look (.*)", line)
            if title:
                is_wanted = title[1] not in MARKS
            if title and is_wanted:
                print("\n# " + title[1], file=printed)
            if limit and is_wanted:
                most = 100000 if limit[1] == "unlimited" else int(limit[1])
                debugger.HandleCommand("settings set target.max-string-summary-length %d" % most)
            if line.startswith("halvtypes "):
                result = lldb.SBCommandReturnObject()
                debugger.GetCommandInterpreter().HandleCommand(line, result)
                print(result.GetOutput(), end="", file=printed)
            if name and is_wanted:
                value = target.FindFirstGlobalVariable(name[1])
                value = value if value.IsValid() else target.EvaluateExpression(name[1])
                print(name[1], "=", shown(value, most), file=printed)
                debugger.HandleCommand("expression -- " + name[1])  # its own way must not fail either
