#!/usr/bin/env python3
"""Writes trevika.py: ctypes prototypes of every public function.

usage: python_bindings.py FILE
"""
import sys
from pathlib import Path

from public_api import FAMILIES, VIRTUAL, Function, constants, functions

TYPES = {
    "uint8_t": "c_uint8",
    "uint16_t": "c_uint16",
    "uint32_t": "c_uint32",
    "int32_t": "c_int32",
    "int": "c_int",
    "double": "c_double",
    "void": "None",
    "uint8_t *": "POINTER(c_uint8)",
    "uint16_t *": "POINTER(c_uint16)",
    "uint32_t *": "POINTER(c_uint32)",
    "int32_t *": "POINTER(c_int32)",
    "double *": "POINTER(c_double)",
    "const uint8_t *": "c_char_p",  # bytes
    "const char *": "c_char_p",
    "void *": "c_void_p",
    "const TrevikHostDriver *": "c_void_p",
    "TrevikA_callback": "TrevikA_callback",
    "void (*)(void *context, const char *text)": "TrevikHost_sink",
}

HEAD = '''\
"""Every function of the TrevikA library, for Python. Generated from the public headers in trevik/, which say what
each function does, its units, ranges and results: do not edit.

    import ctypes, trevika
    api = trevika.load()
    result = api.TrevikA_initial()
    position = ctypes.c_uint32()
    api.TrevikA_current_position_read(0, 0, ctypes.byref(position))

Flags for the four axes (const uint8_t *) are bytes: bytes([1, 1, 0, 0]). A callback is made by
trevika.TrevikA_callback(function); keep a reference to it for as long as it is linked. On Windows Python must be
32-bit, as TrevikA.dll is. The libraries with virtual cards alone have TrevikHost_ and TrevikVirtual_ functions.
"""
import ctypes
import os
import sys
from ctypes import POINTER, c_char_p, c_double, c_int, c_int32, c_uint8, c_uint16, c_uint32, c_void_p

_WINDOWS = sys.platform == "win32"
_cdecl = ctypes.CFUNCTYPE
_stdcall = ctypes.WINFUNCTYPE if _WINDOWS else ctypes.CFUNCTYPE

TrevikA_callback = _stdcall(None, c_uint32)
TrevikHost_sink = _cdecl(None, c_void_p, c_char_p)
'''

TAIL = '''

class Library:
    """The functions that the loaded library has, as attributes."""

    def __init__(self, dll):
        for name, prototype in _PROTOTYPES.items():
            export = _DECORATED.get(name, name) if _WINDOWS else name
            try:
                setattr(self, name, prototype((export, dll)))
            except AttributeError:
                pass  # a library without virtual cards


def load(path=None):
    """Loads the library: from `path`; else TrevikA.dll beside this file, or libTrevikA.so where the system finds it."""
    if path is None:
        path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "TrevikA.dll") if _WINDOWS else "libTrevikA.so"
    return Library(ctypes.CDLL(path))


def result_name(result):
    """"TREVIK_ERR_PARAM" for 302."""
    return _RESULT_NAMES.get(result, f"system error {result}")
'''


def _prototype(function: Function) -> str:
    convention = "_stdcall" if function.stdcall else "_cdecl"
    types = [TYPES[function.result]] + [TYPES[p.type] for p in function.parameters]
    return f'    "{function.name}": {convention}({", ".join(types)}),\n'


def python() -> str:
    headers = FAMILIES + VIRTUAL
    everything = functions(headers)
    parts = [HEAD, "\n"]
    parts += [f"{name} = {value}\n" for name, value in constants(headers).items()]
    parts.append("\n_RESULT_NAMES = {\n")
    parts += [f'    {name}: "{name}",\n' for name in constants()]
    parts.append("}\n\n# The Windows DLLs have these under a decorated name.\n_DECORATED = {\n")
    parts += [f'    "{f.name}": "{f.windows_export}",\n' for f in everything if f.windows_export != f.name]
    parts.append("}\n\n# Result first, then the arguments.\n_PROTOTYPES = {\n")
    for header in headers:
        parts.append(f"    # {header}\n")
        parts += [_prototype(f) for f in everything if f.header == header]
    parts += ["}\n", TAIL]
    return "".join(parts)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    Path(sys.argv[1]).write_text(python())
