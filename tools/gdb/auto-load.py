# GDB runs this when it loads the library: as the file that bears the library's name, or as text in
# the library's debug information. The printers lie in the share/ that belongs to that file or to
# GDB itself, never elsewhere: GDB asked whether to trust these only.
import importlib.util
import os
import sys

import gdb


def _homes(file):
    folder = os.path.dirname(os.path.realpath(file))
    yield folder  # of a build
    while folder != os.path.dirname(folder):
        folder, name = os.path.split(folder)
        if name.startswith("lib") or name == "share":
            yield os.path.join(folder, "share")


def _find():
    for file in globals().get("__file__"), gdb.current_objfile().filename, gdb.PYTHONDIR:
        for home in _homes(file) if file else ():
            printers = os.path.join(home, "halvtypes3", "gdb", "halvtypes.py")
            if os.path.exists(printers):
                return printers
    return None


def _load():
    name, printers = "halvtypes3_gdb", _find()
    if name not in sys.modules and printers:
        # A debugger run by root must leave no byte code where a package manager does not know it.
        before, sys.dont_write_bytecode = sys.dont_write_bytecode, True
        try:
            spec = importlib.util.spec_from_file_location(name, printers)
            module = importlib.util.module_from_spec(spec)
            spec.loader.exec_module(module)
            sys.modules[name] = module
        finally:
            sys.dont_write_bytecode = before
    if name in sys.modules:
        sys.modules[name].register(gdb.current_objfile())


_load()
del _homes, _find, _load
