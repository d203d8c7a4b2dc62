#!/usr/bin/env python3
"""Writes TrevikA.cs: P/Invoke declarations of every public function.

usage: csharp_bindings.py FILE
"""
import sys
from pathlib import Path

from public_api import FAMILIES, VIRTUAL, Function, Parameter, constants, functions

TYPES = {
    "uint8_t": "byte",
    "uint16_t": "ushort",
    "uint32_t": "uint",
    "int32_t": "int",
    "int": "int",
    "double": "double",
    "void": "void",
    "uint8_t *": "out byte",
    "uint16_t *": "out ushort",
    "uint32_t *": "out uint",
    "int32_t *": "out int",
    "double *": "out double",
    "const uint8_t *": "byte[]",
    "const char *": "[MarshalAs(UnmanagedType.LPStr)] string",
    "void *": "IntPtr",
    "const TrevikHostDriver *": "IntPtr",
    "TrevikA_callback": "TrevikA_callback",
    "void (*)(void *context, const char *text)": "TrevikHost_sink",
}
KEYWORDS = {"event", "in", "out", "ref", "params", "lock", "object", "string", "base", "checked", "fixed"}

HEAD = """\
// Every function of the TrevikA library, for C#. Generated from the public headers in trevik/, which say what each
// function does, its units, ranges and results: do not edit.
//
//     using static Trevik.Api;
//     uint result = TrevikA_initial();
//
// On Windows the program must be 32-bit (x86), as TrevikA.dll is. TrevikHost_ and TrevikVirtual_ functions are only
// in the libraries with virtual cards. Keep a reference to a callback's delegate for as long as it is linked.
using System;
using System.IO;
using System.Runtime.InteropServices;

namespace Trevik
{
[UnmanagedFunctionPointer(CallingConvention.StdCall)]
public delegate void TrevikA_callback(uint card);

[UnmanagedFunctionPointer(CallingConvention.Cdecl)]
public delegate void TrevikHost_sink(IntPtr context, [MarshalAs(UnmanagedType.LPStr)] string text);

public static class Api
{
    const string Library = "TrevikA"; // TrevikA.dll, libTrevikA.so
    static readonly bool windows = Path.DirectorySeparatorChar == '\\\\';
"""


def _name(parameter: Parameter) -> str:
    return f"@{parameter.name}" if parameter.name in KEYWORDS else parameter.name


def _signature(function: Function, name: str) -> str:
    parameters = ", ".join(f"{TYPES[p.type]} {_name(p)}" for p in function.parameters)
    return f"{TYPES[function.result]} {name}({parameters})"


def _import(function: Function, entry_point: str, signature: str, access: str, indent: str) -> str:
    convention = "StdCall" if function.stdcall else "Cdecl"
    return (
        f'{indent}[DllImport(Library, EntryPoint = "{entry_point}", ExactSpelling = true, '
        f"CallingConvention = CallingConvention.{convention})]\n"
        f"{indent}{access} static extern {signature};\n"
    )


def _declaration(function: Function) -> str:
    """The library says which of the two names it has only by the system that it is for. A declaration is looked up
    when it is first called, so that the other one does no harm; it stands in a class of its own, so that all of Api
    can be looked up at once."""
    if function.windows_export == function.name:
        return _import(function, function.name, _signature(function, function.name), "public", "    ")
    arguments = ", ".join(("out " if "out " in TYPES[p.type] else "") + _name(p) for p in function.parameters)
    return (
        f"    public static {_signature(function, function.name)}\n"
        f"    {{\n"
        f"        return windows ? Decorated.{function.name}({arguments}) : Plain.{function.name}({arguments});\n"
        f"    }}\n"
    )


def _nested(name: str, renamed: list[Function], entry_point) -> str:
    imports = "".join(
        _import(f, entry_point(f), _signature(f, f.name), "internal", "        ") for f in renamed
    )
    return f"    static class {name}\n    {{\n{imports}    }}\n"


def csharp() -> str:
    headers = FAMILIES + VIRTUAL
    everything = functions(headers)
    parts = [HEAD]
    for name, value in constants(headers).items():
        parts.append(f"    public const uint {name} = {value};\n")
    parts.append("\n    // \"TREVIK_ERR_PARAM\" for 302.\n    public static string ResultName(uint result)\n    {\n")
    parts.append("        switch (result) {\n")
    for name in constants():
        parts.append(f'        case {name}: return "{name}";\n')
    parts.append('        default: return "system error " + result;\n        }\n    }\n')
    for header in headers:
        parts.append(f"\n    // ---- {header}\n")
        parts += [_declaration(f) for f in everything if f.header == header]
    renamed = [f for f in everything if f.windows_export != f.name]
    parts.append("\n    // These have a decorated name in the Windows DLLs and their own elsewhere.\n")
    parts.append(_nested("Plain", renamed, lambda f: f.name))
    parts.append(_nested("Decorated", renamed, lambda f: f.windows_export))
    parts.append("}\n}\n")
    return "".join(parts)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    Path(sys.argv[1]).write_text(csharp())
