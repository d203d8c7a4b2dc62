"""Writes the names of all exported functions as a list of string literals, for the sweep that has to call each."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
import public_api  # noqa: E402

Path(sys.argv[1]).write_text("".join(f'"{function.name}",\n' for function in public_api.functions()))
