"""run_scenario.py BINARY DIRECTORY MODULE FUNCTION [ROOT]: one scenario on a KWin of its own, which has no
screen: that of this system, or that of the ROOT which scripts/test-roots makes. Skipped where KWin is not
installed, and where there is no such root."""

import importlib
import pathlib
import shutil
import sys

_HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(_HERE / "support"), str(_HERE.parent / "wayland" / "support"),
                str(_HERE.parent / "desktop" / "support"), str(_HERE)]

import other_root  # noqa: E402

_SKIPPED = 77


def main():
    binary, directory, module, function, *name = sys.argv[1:]
    root = None
    if name:
        root = other_root.find(*name)
        if not root:
            print("scripts/test-roots has made no root of", *name)
            return _SKIPPED
    elif shutil.which("kwin_wayland") is None:
        print("not installed: kwin_wayland")
        return _SKIPPED
    import activities
    import processes
    import scenario_run
    from kwin import KwinDesktop

    processes.exit_on_signals()
    scenario = getattr(importlib.import_module(module), function)
    options = getattr(scenario, "desktop", {})
    if options.get("has_activities") and not activities.is_installed():
        print("not installed: kactivitymanagerd")
        return _SKIPPED
    folders = [pathlib.Path(binary).resolve().parent]
    with KwinDesktop(pathlib.Path(directory) / "desktop", root, folders, **options) as desktop:
        return scenario_run.run(desktop, binary, scenario, has_picture=False)


if __name__ == "__main__":
    sys.exit(main())
