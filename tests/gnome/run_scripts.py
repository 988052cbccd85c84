"""run_scripts.py PART DIRECTORY: makes the extension there and runs a part of the checks: "rules" reads every
file of the older form and runs the tables of the rules on both, "modules" runs the newer form with stubs in
place of the Shell. Skipped where what it needs of GNOME is not installed."""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

_HERE = pathlib.Path(__file__).resolve().parent
_GENERATOR = _HERE.parents[1] / "data" / "gnome" / "generate.py"
_SKIPPED = 77

_SHELL_IMPORT = r"'(resource:///org/gnome/shell/[^']*|gi://(Clutter|Meta|Shell))'"

_READ = """
const {GLib} = imports.gi;
for (const path of ARGV)
    new Function(new TextDecoder().decode(GLib.file_get_contents(path)[1]));
"""


def main():
    if shutil.which("gjs") is None:
        print("not installed: gjs")
        return _SKIPPED
    part, directory = sys.argv[1], pathlib.Path(sys.argv[2])
    shutil.rmtree(directory, ignore_errors=True)
    return _run_modules(directory) if part == "modules" else _check_rules(directory)


def _make(form, folder):
    subprocess.run([sys.executable, "-B", _GENERATOR, form, "/usr/bin/kelpa", "0", folder], check=True)


def _check_rules(directory):
    status = 0
    for form in ("old", "modules"):
        folder = directory / form
        _make(form, folder)
        status |= _check_metadata(folder, form)
        status |= subprocess.run(["gjs", "-m", _HERE / "rules_test.js", form, folder], check=False).returncode
    scripts = sorted(map(str, (directory / "old").glob("*.js")))
    status |= subprocess.run(["gjs", "-c", _READ, *scripts], check=False).returncode
    return 1 if status else 0


def _run_modules(directory):
    """Runs the newer form on a bus of its own, whose settings are those of this run alone."""
    if shutil.which("dbus-run-session") is None or not _has_schemas():
        print("not installed: dbus-run-session, or GNOME Shell's settings")
        return _SKIPPED
    folder = directory / "stubbed"
    _make("modules", folder)
    shutil.copy(_HERE / "shell_stubs.js", folder)
    for script in folder.glob("*.js"):
        text = script.read_text(encoding="utf-8")
        script.write_text(re.sub(_SHELL_IMPORT, "'./shell_stubs.js'", text), encoding="utf-8")
    return subprocess.run(["dbus-run-session", "--", "gjs", "-m", _HERE / "modules_test.js", folder],
                          env=os.environ | {"GSETTINGS_BACKEND": "memory"}, check=False,
                          timeout=120).returncode


def _has_schemas():
    schemas = pathlib.Path("/usr/share/glib-2.0/schemas")
    return all((schemas / f"org.gnome.{name}.gschema.xml").exists()
               for name in ("mutter", "desktop.wm.preferences"))


def _check_metadata(folder, form):
    metadata = json.loads((folder / "metadata.json").read_text(encoding="utf-8"))
    is_right = (metadata["uuid"] == "windows@kelpa.org" and metadata["program"] == "/usr/bin/kelpa"
                and ("43" in metadata["shell-version"]) == (form == "old")
                and ("45" in metadata["shell-version"]) == (form == "modules"))
    if not is_right:
        print(f"{form}: {metadata}")
    return 0 if is_right else 1


if __name__ == "__main__":
    sys.exit(main())
