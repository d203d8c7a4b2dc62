#!/usr/bin/env python3
"""Writes the functions of the public headers as C++, for the tests that call each: `functions.py OUTPUT [--virtual]`

    FUNCTION(Trevik_read_speed, TrevikA_velocity_read, "card", "axis", "speed")

Its counterpart is the one that the header names in its place of the comment before, if it takes the same arguments;
otherwise the function itself. With --virtual also what moves the virtual cards, other than their clock."""
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
sys.dont_write_bytecode = True
from public_api import DECLARATION, FAMILIES, HEADERS, VIRTUAL, functions  # noqa: E402

CLOCK = ("TrevikHost_clock_manual", "TrevikHost_advance")


def counterparts(headers) -> dict[str, str]:
    found = {}
    for header in headers:
        named = []
        for match in re.finditer(r"/\*.*?\*/|" + DECLARATION.pattern, (HEADERS / header).read_text(), re.S):
            if match[0].startswith("/*"):
                named = re.findall(r"TrevikA_\w+", match[0])
            elif named:
                found[match[3]] = named.pop(0)
    return found


def main(output: str, virtual: bool) -> None:
    known = {function.name: function for function in functions(FAMILIES + VIRTUAL * virtual)}
    named = counterparts(FAMILIES)
    lines = []
    for function in known.values():
        other = known.get(named.get(function.name), function)
        same = other if other.parameters == function.parameters else function
        names = ", ".join(f'"{parameter.name}"' for parameter in function.parameters)
        if function.name not in CLOCK:
            lines.append(f"FUNCTION({function.name}, {same.name}, {names})\n")
    Path(output).write_text("".join(lines))


main(sys.argv[1], "--virtual" in sys.argv[2:])
