"""Writes all exported functions, for the tests that have to call each: {name, has an axis number}, ..."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
import public_api  # noqa: E402



def line(function):
    has_axis = any(parameter.name == "axis" for parameter in function.parameters)
    return f'{{"{function.name}", {str(has_axis).lower()}}},\n'


Path(sys.argv[1]).write_text("".join(map(line, public_api.functions())))
