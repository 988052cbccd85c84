"""document_tables.py: tells of each row of a table in the documents that has other cells than its head, and ends with 1
if there is one: such a row says something of another column, or loses its last cells where it is shown."""

import pathlib
import re
import sys

_ROOT = pathlib.Path(__file__).resolve().parent.parent
_DOCUMENTS = [_ROOT / "README.md", _ROOT / "CONTRIBUTING.md", *sorted((_ROOT / "docs").glob("**/*.md"))]


def _cells(row):
    # A bar inside a cell is written with a backslash before it.
    return len(re.split(r"(?<!\\)\|", row.strip().removeprefix("|").removesuffix("|")))


def faults(text):
    """The lines, with their numbers from 1, whose cells are not as many as those of their table's head."""
    head = None
    for number, line in enumerate(text.splitlines(), 1):
        if not line.startswith("|"):
            head = None
        elif head is None:
            head = _cells(line)
        elif _cells(line) != head:
            yield number, f"{_cells(line)} cells under a head of {head}"


def main():
    found = [f"{path.relative_to(_ROOT)}:{number}: {fault}" for path in _DOCUMENTS
             for number, fault in faults(path.read_text(encoding="utf-8"))]
    print(*found, sep="\n", end="\n" if found else "")
    sys.exit(bool(found))


if __name__ == "__main__":
    main()
