#!/usr/bin/env python3
"""Writes every function of the public headers as a row of C++ of the table in cards.cpp: name, parameter names, entry."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
sys.dont_write_bytecode = True
from public_api import FAMILIES, VIRTUAL, functions  # noqa: E402

# Time is a step of the program itself, and always the manual clock's.
TIME = ("TrevikHost_clock_manual", "TrevikHost_advance")

rows = []
for function in functions(FAMILIES + VIRTUAL):
    if function.name not in TIME:
        names = ", ".join(f'"{parameter.name}"' for parameter in function.parameters)
        rows.append(f'{{"{function.name}", {{{names}}}, Invoke<{function.name}>}},\n')
Path(sys.argv[1]).write_text("".join(rows))
