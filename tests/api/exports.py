#!/usr/bin/env python3
"""Compares what a built library exports with what it has to: `exports.py LIBRARY [--virtual]`.

A DLL must export exactly the names that existing programs link to (abi/TrevikA.names), each once, and need no DLL but
the system's own; a Linux library exports the functions of the public headers."""
import re
import subprocess
import sys
from collections import Counter
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(PROJECT / "scripts"))
sys.dont_write_bytecode = True
from public_api import FAMILIES, VIRTUAL, functions  # noqa: E402

SYSTEM_DLLS = {"kernel32.dll", "msvcrt.dll", "setupapi.dll", "winmm.dll"}


def run(*command: str) -> str:
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def dll(library: str) -> tuple[list[str], list[str]]:
    text = run("i686-w64-mingw32-objdump", "-p", library)
    table = text[text.index("[Ordinal/Name Pointer] Table"):]
    names = re.findall(r"^\t\[ *\d+\] (.*)$", table, re.M)
    addresses = int(re.search(r"Export Address Table\s+([0-9a-f]+)$", text, re.M)[1], 16)
    faults = [f"needs {name}" for name in re.findall(r"DLL Name: (\S+)", text) if name.lower() not in SYSTEM_DLLS]
    if addresses != len(names):
        faults.append(f"{addresses} exports, but {len(names)} names")
    if "file format pei-i386" not in text:
        faults.append("not a 32-bit DLL")
    return names, faults


def shared_object(library: str) -> tuple[list[str], list[str]]:
    lines = run("nm", "-D", "--defined-only", library).splitlines()
    return [line.split()[-1] for line in lines], []


def main(library: str, virtual: bool) -> int:
    if library.lower().endswith(".dll"):
        names, faults = dll(library)
        expected = Counter((PROJECT / "abi/TrevikA.names").read_text().split())
    else:
        names, faults = shared_object(library)
        expected = Counter(function.name for function in functions(FAMILIES))
    expected += Counter(function.name for function in functions(VIRTUAL) if virtual)
    faults += [f"does not export {name}" for name in (expected - Counter(names)).elements()]
    faults += [f"exports {name}" for name in (Counter(names) - expected).elements()]
    for fault in faults:
        print(f"{library}: {fault}")
    print(f"{library}: {len(names)} names, {len(faults)} faults")
    return 1 if faults or not names else 0


sys.exit(main(sys.argv[1], "--virtual" in sys.argv[2:]))
