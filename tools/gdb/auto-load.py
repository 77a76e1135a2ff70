# GDB runs this file when it loads the library whose name it bears. The printers lie in
# halvtypes3/gdb, in the folder of this file or in one above it: in share/ after installation.
import os
import sys

import gdb


def _load():
    folder = os.path.dirname(os.path.abspath(__file__))
    while not os.path.exists(os.path.join(folder, "halvtypes3", "gdb", "halvtypes.py")):
        if folder == os.path.dirname(folder):
            return
        folder = os.path.dirname(folder)
    home = os.path.join(folder, "halvtypes3", "gdb")
    if home not in sys.path:
        sys.path.insert(0, home)
    # A debugger run by root must leave no byte code where a package manager does not know it.
    before, sys.dont_write_bytecode = sys.dont_write_bytecode, True
    try:
        import halvtypes
    finally:
        sys.dont_write_bytecode = before
    halvtypes.register(gdb.current_objfile())


_load()
del _load
