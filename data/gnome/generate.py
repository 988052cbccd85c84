#!/usr/bin/env python3
"""generate.py FORM PROGRAM VERSION [DIRECTORY]: the extension for Shells of one form, in a folder; without one
where the Shell looks for the person's own extensions.

The sources are of the form of GNOME 45 and later, ES modules. The older form has the same statements but
for imports, exports and how the Shell finds the extension's class, so it is made of them line by line; a line
that would need more than that is refused. PROGRAM is the file that may call it."""

import json
import os
import pathlib
import re
import sys

_HERE = pathlib.Path(__file__).resolve().parent
_SOURCES = ("access", "extension", "pictures", "rules", "taps", "windows")
_UUID = "windows@kelpa.org"
SHELLS = {"old": ["43", "44"], "modules": ["45", "46", "47", "48", "49", "50"]}

_OLD_FORMS = (
    (r"import (\w+) from 'gi://(\w+)';", r"const \1 = imports.gi.\2;"),
    (r"import (\w+) from '(\w+)';", r"const \1 = imports.\2;"),
    (r"import \* as (\w+) from 'resource:///org/gnome/shell/ui/(\w+)\.js';", r"const \1 = imports.ui.\2;"),
    (r"import \{Extension\} from 'resource:///org/gnome/shell/extensions/extension\.js';",
     r"const Own = imports.misc.extensionUtils.getCurrentExtension();"),
    (r"import \* as (\w+) from '\./(\w+)\.js';", r"const \1 = Own.imports.\2;"),
    (r"import (\{.*\}) from '\./(\w+)\.js';", r"const \1 = Own.imports.\2;"),
    (r"export default class (\w+) extends Extension \{",
     r"function init(own) {\n    const extension = new \1();\n    extension.metadata = own.metadata;\n"
     r"    return extension;\n}\n\nclass \1 {"),
    (r"export class (\w+) extends (\w+) \{", r"var \1 = class \1 extends \2 {"),
    (r"export class (\w+) \{", r"var \1 = class \1 {"),
    (r"export function (.*)", r"function \1"),
    (r"export const (.*)", r"var \1"),
)


def old_form(text):
    """The statements of a module as a script of the older form."""
    lines = []
    for line in text.splitlines():
        if line.startswith(("import ", "export ")):
            for pattern, replacement in _OLD_FORMS:
                changed, count = re.subn(f"^{pattern}$", replacement, line)
                if count:
                    line = changed
                    break
            else:
                raise SystemExit(f"has no older form: {line}")
        lines.append(line)
    text = "\n".join(lines) + "\n"
    if "Own.imports" in text and "const Own = " not in text:
        own = "const Own = imports.misc.extensionUtils.getCurrentExtension();"
        text = text.replace("\nconst ", f"\n{own}\nconst ", 1)
    return text


def interface_module():
    """The description of the bus's interface, without what is written for people."""
    description = (_HERE / "org.kelpa.Windows1.xml").read_text(encoding="utf-8")
    description = re.sub(r"<!--.*?-->|<!DOCTYPE.*?>", "", description, flags=re.DOTALL)
    description = re.sub(r">\s+<", "><", description).strip()
    return f"export const INTERFACE = {json.dumps(description)};\n"


def _own_folder():
    data = os.environ.get("XDG_DATA_HOME") or pathlib.Path.home() / ".local" / "share"
    return pathlib.Path(data) / "gnome-shell" / "extensions" / _UUID


def main():
    form, program, version, *folder = sys.argv[1:]
    convert = old_form if form == "old" else str
    directory = pathlib.Path(folder[0]) if folder else _own_folder()
    directory.mkdir(parents=True, exist_ok=True)
    modules = {name: (_HERE / "extension" / f"{name}.js").read_text(encoding="utf-8") for name in _SOURCES}
    modules["interface"] = interface_module()
    for name, text in modules.items():
        (directory / f"{name}.js").write_text(convert(text), encoding="utf-8")
    metadata = {
        "uuid": _UUID,
        "name": "Kelpa's windows",
        "description": f"Tells Kelpa {version} of the open windows, and answers nobody else.",
        "shell-version": SHELLS[form],
        "program": program,
    }
    (directory / "metadata.json").write_text(json.dumps(metadata, indent=2) + "\n", encoding="utf-8")
    if not folder:
        print(f"{directory}\nGNOME Shell finds it at the next login; then: gnome-extensions enable {_UUID}")


if __name__ == "__main__":
    main()
