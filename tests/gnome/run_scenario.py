"""run_scenario.py BINARY DIRECTORY MODULE FUNCTION [ROOT]: one scenario on a GNOME Shell of its own, which
has no screen: that of this system, or that of the ROOT which scripts/test-roots makes. Skipped where the Shell
or what the scenario shows is not installed, and where there is no such root."""

import importlib
import importlib.util
import os
import pathlib
import pwd
import shutil
import sys

_HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(_HERE / "support"), str(_HERE.parent / "wayland" / "support"),
                str(_HERE.parent / "desktop" / "support")]

import other_root  # noqa: E402

_SKIPPED = 77
# The environment variable that is there when the other root is visible.
_IS_VISIBLE = "KELPA_TEST_ROOT_IS_VISIBLE"
_NEEDED = ("foot", "gdbus", "dbus-daemon")


def main():
    binary, directory, module, function, *name = sys.argv[1:]
    needed = _NEEDED if name else ("gnome-shell", *_NEEDED)
    missing = [program for program in needed if shutil.which(program) is None]
    if importlib.util.find_spec("dbusmock") is None:
        missing.append("python3-dbusmock")
    if missing:
        print("not installed:", *missing)
        return _SKIPPED
    directory = pathlib.Path(directory)
    if name and _IS_VISIBLE not in os.environ:
        root = other_root.find(*name)
        if not root:
            print("scripts/test-roots has made no root of", *name)
            return _SKIPPED
        _run_with(root, binary, directory)
    if os.getuid() == 0:
        return _run_as_somebody_else(directory, ["+dac_read_search", *(["+sys_chroot"] if name else [])])
    if binary == "self":
        binary = _run_as_own_program(directory)
    return _run(binary, directory / "desktop", module, function, bool(name))


def _run_with(root, binary, directory):
    """The Shell reads the files of the programs that call its extension."""
    shutil.rmtree(directory, ignore_errors=True)
    directory.mkdir(parents=True)
    folders = [directory, *([] if binary == "self" else [pathlib.Path(binary).parent])]
    command = other_root.visible(root, folders, [sys.executable, "-B", *sys.argv])
    os.execvpe(command[0], command, os.environ | {_IS_VISIBLE: "1"})


def _run_as_somebody_else(directory, capabilities):
    """A session is a person's, not root's, and all its programs are of one user. They may read what root
    may: the sources may lie in a folder of root's alone."""
    user = pwd.getpwnam("nobody")
    if _IS_VISIBLE not in os.environ:
        shutil.rmtree(directory, ignore_errors=True)
        directory.mkdir(parents=True)
    os.chown(directory, user.pw_uid, user.pw_gid)
    os.execvp("setpriv", ["setpriv", f"--reuid={user.pw_uid}", f"--regid={user.pw_gid}",
                          "--clear-groups", "--no-new-privs", f"--inh-caps={','.join(capabilities)}",
                          f"--ambient-caps={','.join(capabilities)}", sys.executable, "-B", *sys.argv])


def _run_as_own_program(directory):
    """Lets a file of this scenario's own run it, which the extension knows from every other Python."""
    program = directory / "program"
    if os.readlink("/proc/self/exe") != str(program):
        directory.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(os.path.realpath(sys.executable), program)
        program.chmod(0o755)
        os.execve(program, [str(program), "-B", *sys.argv], os.environ | {"PYTHONHOME": sys.prefix})
    del os.environ["PYTHONHOME"]
    return program


def _run(binary, directory, module, function, is_other):
    import processes
    import scenario_run
    from gnome import GnomeDesktop

    processes.exit_on_signals()
    scenario = getattr(importlib.import_module(module), function)
    with GnomeDesktop(directory, binary, is_other, **getattr(scenario, "desktop", {})) as desktop:
        return scenario_run.run(desktop, binary, scenario, [desktop.check_shell], ["*-gnome-shell.log"])


if __name__ == "__main__":
    sys.exit(main())
