"""The functions of the public headers, for every generator and check that must not drift from them."""
import re
from dataclasses import dataclass
from pathlib import Path

HEADERS = Path(__file__).resolve().parent.parent / "include" / "trevik"
FAMILIES = ("TrevikA.h", "TrevikAC.h", "Trevik.h")  # what TrevikA.dll exports
VIRTUAL = ("TrevikHost.h", "TrevikVirtual.h")  # what the virtual library exports besides

# Exported from the Windows DLL under the name that existing programs link to: the mangled name of a C++ function.
MANGLED = {name: f"?{name}@@YGKE@Z" for name in ("TrevikA_dll_Simu_mode", "TrevikA_stop_emg")}


@dataclass(frozen=True)
class Parameter:
    type: str  # as the header writes it, for example "const uint8_t *" or "TrevikA_callback"
    name: str


@dataclass(frozen=True)
class Function:
    header: str
    name: str
    result: str
    stdcall: bool  # in the 32-bit DLL
    parameters: tuple[Parameter, ...]

    @property
    def stack_bytes(self) -> int:
        """What the arguments take on the stack of a 32-bit program."""
        return sum(8 if parameter.type == "double" else 4 for parameter in self.parameters)

    @property
    def symbol(self) -> str:
        """The linker's name in a 32-bit Windows object, without the leading underscore."""
        return f"{self.name}@{self.stack_bytes}" if self.stdcall else self.name

    @property
    def windows_export(self) -> str:
        return MANGLED.get(self.name, self.name)


DECLARATION = re.compile(r"TREVIK_API\s+(\w+)\s+(TREVIK_CALL\s+)?(\w+)\(((?:[^()]|\([^()]*\))*)\);")
FUNCTION_POINTER = re.compile(r"(.*\(\*)(\w+)(\).*)")


def _parameter(text: str) -> Parameter:
    text = " ".join(text.split())
    pointer = FUNCTION_POINTER.fullmatch(text)
    if pointer:
        return Parameter(pointer[1] + pointer[3], pointer[2])
    type_, name = re.fullmatch(r"(.*?)(\w+)", text).groups()
    return Parameter(type_.strip(), name)


def _split(parameters: str) -> list[str]:
    """At the commas that stand in no parentheses."""
    if parameters.strip() == "void":
        return []
    return re.split(r",(?![^(]*\))", parameters)


def functions(headers=FAMILIES) -> list[Function]:
    found = []
    for header in headers:
        text = re.sub(r"/\*.*?\*/", "", (HEADERS / header).read_text(), flags=re.S)
        text = re.sub(r"^#.*$", "", text, flags=re.M)
        declarations = DECLARATION.findall(text)
        if len(declarations) != text.count("TREVIK_API"):
            raise SystemExit(f"{header}: a declaration with TREVIK_API that this parser does not understand")
        for result, stdcall, name, parameters in declarations:
            found.append(Function(header, name, result, bool(stdcall), tuple(map(_parameter, _split(parameters)))))
    return found


CONSTANT = re.compile(r"^(?:#define )?\s*(TREVIK_\w+) (?:= )?(\d+)u?,?(?=\s|$)", re.M)


def constants(headers=FAMILIES) -> dict[str, int]:
    """Result codes and the enumerators of the virtual machine."""
    return {name: int(value) for header in headers for name, value in CONSTANT.findall((HEADERS / header).read_text())}
