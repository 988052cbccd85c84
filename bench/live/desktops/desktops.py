"""desktops.py PROGRAM [--rounds N] [--short] [--desktop NAME...]: what the same program costs on each desktop that
is installed, each in a session of its own without a screen. The desktops take turns, so that whatever else the
machine does meets all of them. Prints the medians of the rounds, each with its ratio to X11, and the load of
the machine. Everybody draws in memory, without OpenGL."""

import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile

_HERE = pathlib.Path(__file__).resolve().parent
_TESTS = _HERE.parents[2] / "tests"
# The folder of the tests, the module, the function and the root with another system. Each starts its desktop, and
# skips where that is not installed, or scripts/test-roots has not made the root.
_DESKTOPS = {"X11": ("desktop", "on_desktop", "measure_on_x11"), "sway": ("wayland", "on_desktop", "measure"),
             "GNOME Shell": ("gnome", "on_desktop", "measure"), "KWin": ("kwin", "on_desktop", "measure"),
             "labwc 0.8": ("wayland", "on_labwc", "measure", "trixie"),
             "labwc 0.20": ("wayland", "on_labwc", "measure", "testing")}
_VERSIONS = {"X11": ("openbox", "--version"), "sway": ("sway", "--version"),
             "GNOME Shell": ("gnome-shell", "--version"), "KWin": ("kwin_wayland", "--version")}
_SKIPPED = 77
_FIGURES = "figures: "
_PLAN = {"counts": [10, 50, 200], "usual": 50, "starts": 3, "passes": 7, "openings": 7, "idle_seconds": 20,
         "preview_seconds": 10}
_SHORT_PLAN = {"counts": [2, 5], "usual": 5, "starts": 1, "passes": 2, "openings": 2, "idle_seconds": 2,
               "preview_seconds": 4}


def _round(name, program, plan):
    """The figures of one session; None where the desktop is not installed."""
    with tempfile.TemporaryDirectory(prefix="kelpa-desktops-") as directory:
        # Others than this user may run the session.
        os.chmod(directory, 0o755)
        environment = os.environ | {"KELPA_BENCH_PLAN": json.dumps(plan), "PYTHONPATH": str(_HERE),
                                    "PYTHONDONTWRITEBYTECODE": "1"}
        folder, *what = _DESKTOPS[name]
        done = subprocess.run(
            ["/usr/bin/python3", "-B", str(_TESTS / folder / "run_scenario.py"), str(program),
             f"{directory}/session", *what],
            env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True, check=False)
    if done.returncode == _SKIPPED:
        print(f"{name}: {done.stdout.strip()}", file=sys.stderr)
        return None
    for line in done.stdout.splitlines():
        if line.startswith(_FIGURES):
            return json.loads(line.removeprefix(_FIGURES))
    raise SystemExit(f"{name}: measuring failed with {done.returncode}:\n{done.stdout}")


def _version(name):
    if name not in _VERSIONS:
        return f"that of the root {_DESKTOPS[name][-1]}"
    try:
        output = subprocess.run(_VERSIONS[name], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL, text=True, check=False).stdout
    except OSError:
        # KWin's file has a capability, without which a container refuses to start it.
        output = ""
    return output.splitlines()[0] if output else "it does not say its version"


def _cell(rounds, figure, reference):
    values = [each[figure] for each in rounds if each[figure] is not None]
    if not values:
        return "none"
    value = statistics.median(values)
    if reference is None:
        return f"{value:.2f}"
    others = [each[figure] for each in reference if each[figure] is not None]
    return f"{value:.2f} ({value / statistics.median(others):.2f})" if others else f"{value:.2f}"


def _print_table(rounds):
    names = [name for name in _DESKTOPS if rounds[name]]
    print("| median (ratio to X11) | " + " | ".join(names) + " |")
    print("|---|" + "---:|" * len(names))
    reference = rounds["X11"] or None
    for figure in rounds[names[0]][0]:
        cells = [_cell(rounds[name], figure, None if name == "X11" else reference) for name in names]
        print(f"| {figure} | " + " | ".join(cells) + " |")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--short", action="store_true", help="few windows, for a moment")
    parser.add_argument("--desktop", action="append", choices=list(_DESKTOPS), help="instead of all of them")
    arguments = parser.parse_args()
    plan = _SHORT_PLAN if arguments.short else _PLAN
    wanted = arguments.desktop or list(_DESKTOPS)
    rounds = {name: [] for name in _DESKTOPS}
    before = os.getloadavg()[0]
    for _ in range(arguments.rounds):
        # One that is not installed is not asked for again.
        wanted = [name for name in wanted if (found := _round(name, arguments.program, plan)) is not None
                  and not rounds[name].append(found)]
    if not wanted:
        raise SystemExit("none of the desktops is installed")
    for name in wanted:
        print(f"{name}: {_version(name)}")
    print(f"{arguments.rounds} rounds; load of the machine {before:.1f} before, {os.getloadavg()[0]:.1f} after\n")
    _print_table(rounds)


if __name__ == "__main__":
    sys.exit(main())
