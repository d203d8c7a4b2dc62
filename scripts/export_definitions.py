#!/usr/bin/env python3
"""Prints the module definition of the Windows DLL, made from the public headers.

  export_definitions.py link       what the linker exports: exactly the three families, under the names that existing
                                   programs know
  export_definitions.py virtual    the same, and what the virtual DLL exports besides
  export_definitions.py import     for dlltool -k: what the import libraries give to programs
  export_definitions.py import-virtual   the same of the virtual DLL
"""
import sys

from public_api import FAMILIES, MANGLED, VIRTUAL, functions


def quoted(name: str) -> str:
    return f'"{name}"' if name.startswith("?") else name


def exports(kind: str) -> list[str]:
    headers = FAMILIES + (VIRTUAL if kind.endswith("virtual") else ())
    if kind.startswith("import"):
        # Programs compiled with these headers ask for the plain name, older C++ programs for the mangled one.
        renamed = [f"{function.symbol} == {quoted(function.windows_export)}" if function.name in MANGLED
                   else function.symbol for function in functions(headers)]
        return renamed + [quoted(name) for name in MANGLED.values()]
    return [f"{quoted(function.windows_export)} = {function.symbol}" if function.windows_export != function.symbol
            else function.symbol for function in functions(headers)]


def main() -> None:
    if len(sys.argv) != 2 or sys.argv[1] not in ("link", "virtual", "import", "import-virtual"):
        sys.exit(__doc__)
    print("LIBRARY TrevikA.dll\nEXPORTS")
    print("\n".join("    " + line for line in sorted(exports(sys.argv[1]))))


main()
