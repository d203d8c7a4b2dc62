#!/usr/bin/env python3
"""Prints, as C, what tests/windows/by_name.c has to know of every function of the public headers."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
sys.dont_write_bytecode = True
from public_api import Parameter, functions  # noqa: E402

for function in functions():
    # Every function with a card refuses one that cannot be, but for the one that looks at nothing.
    refuses = function.name != "TrevikA_TC_read" and function.parameters[:1] == (Parameter("uint8_t", "card"),)
    print(f'{{"{function.windows_export}", {function.stack_bytes}, {int(refuses)}}},')
