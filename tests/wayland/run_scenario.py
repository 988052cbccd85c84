"""run_scenario.py BINARY DIRECTORY MODULE FUNCTION [SUITE]: one scenario on a compositor of its
own, which has no screen: sway, or what the scenario names, of this system or of the root of another
SUITE of Debian. Skipped where sway or what the scenario shows is not installed, and where there is no
such root."""

import importlib
import os
import pathlib
import pwd
import shutil
import sys

_HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(_HERE / "support"), str(_HERE.parent / "desktop" / "support")]

import other_root  # noqa: E402

_SKIPPED = 77
# The environment variable with the path of the other root.
_ROOT = "KELPA_TEST_ROOT"
_NEEDED = ("sway", "swaymsg", "foot", "grim")


def main():
    missing = [program for program in _NEEDED if shutil.which(program) is None]
    if missing:
        print("not installed:", *missing)
        return _SKIPPED
    binary, directory, module, function, *suite = sys.argv[1:]
    directory = pathlib.Path(directory)
    root = None
    if suite:
        # Where root's own folder is out of reach, it was put there.
        root = os.environ.get(_ROOT) or other_root.find(*suite)
        if not root:
            print("scripts/test-roots has made no root of", *suite)
            return _SKIPPED
    if os.getuid() == 0:
        return _run_as_somebody_else(directory, root)
    return _run(binary, directory / "desktop", module, function, root and pathlib.Path(root))


def _run_as_somebody_else(directory, root):
    """sway refuses to run as root, and all its clients are of its own user. They may read what root
    may: the sources may lie in a folder of root's alone."""
    user = pwd.getpwnam("nobody")
    shutil.rmtree(directory, ignore_errors=True)
    directory.mkdir(parents=True)
    os.chown(directory, user.pw_uid, user.pw_gid)
    command = ["setpriv", f"--reuid={user.pw_uid}", f"--regid={user.pw_gid}", "--clear-groups",
               "--no-new-privs", "--inh-caps=+dac_read_search", "--ambient-caps=+dac_read_search",
               sys.executable, "-B", *sys.argv]
    if root:
        # The mount belongs to these processes, so it disappears with them.
        os.environ[_ROOT] = "/mnt"
        command = ["unshare", "--mount", "sh", "-c", 'mount --bind "$0" /mnt && exec "$@"', str(root),
                   *command]
    os.execvp(command[0], command)


def _run(binary, directory, module, function, root):
    import processes
    import scenario_run
    from sway import SwayDesktop

    processes.exit_on_signals()
    scenario = getattr(importlib.import_module(module), function)
    options = dict(getattr(scenario, "desktop", {}))
    kind = options.pop("kind", SwayDesktop)
    with kind(directory, root, **options) as desktop:
        return scenario_run.run(desktop, binary, scenario)


if __name__ == "__main__":
    sys.exit(main())
