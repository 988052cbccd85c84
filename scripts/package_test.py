"""package_test.py PACKAGE DIRECTORY: the package on a Debian of its own that has nothing else. It
brings what it needs, starts and shows its board there, and leaves nothing behind when it is
removed."""

import pathlib
import shutil
import subprocess
import sys
import time

root = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(root / "tests" / "desktop"))
sys.dont_write_bytecode = True

import processes  # noqa: E402
from clean_root import USER, USER_ENV, CleanRoot  # noqa: E402
from harness import Desktop  # noqa: E402
from processes import wait_until  # noqa: E402


def _field(package, name):
    return subprocess.run(["dpkg-deb", "--field", package, name], check=True, text=True,
                          stdout=subprocess.PIPE).stdout.strip()


def _colours(picture):
    return int(subprocess.run(["identify", "-format", "%k", picture], check=True, text=True,
                              stdout=subprocess.PIPE).stdout)


def _shows_its_board(clean, directory):
    """Starts Kelpa in `clean` on a display outside of it, where another program has a window."""
    with Desktop(directory / "desktop") as desktop:
        desktop.start_xterm("Beside the board")
        desktop.wait_for_window("Beside the board")
        log = directory / "kelpa.log"
        log.unlink(missing_ok=True)
        env = {**USER_ENV, "DISPLAY": desktop.env["DISPLAY"]}
        kelpa = processes.start(
            clean.command("dbus-run-session", "--", "kelpa", user=USER, env=env), desktop.env, log)

        def shown():
            if kelpa.poll() is not None:
                raise AssertionError(f"Kelpa ended with {kelpa.poll()}:\n{log.read_text()}")
            return next((window for window in desktop.windows() if window.title == "Kelpa"), None)

        window = wait_until("Kelpa's window is listed", shown, 60)
        x_window = desktop.x.create_resource_object("window", window.number)
        names = x_window.get_wm_class()
        if names != ("kelpa", "kelpa"):
            raise AssertionError(f"its WM_CLASS is {names}")
        if not desktop.property(x_window, "_NET_WM_ICON"):
            raise AssertionError("its window has no icon")
        # An empty window has one colour, a drawn board hundreds.
        picture = directory / "board.png"
        wait_until("the board is drawn", lambda: _colours(desktop.screenshot(picture)) > 100, 30)
        desktop.close(window)
        wait_until("Kelpa has ended", lambda: kelpa.poll() is not None, 30)
        if kelpa.poll() != 0:
            raise AssertionError(f"Kelpa ended with {kelpa.poll()}:\n{log.read_text()}")
        said = [line for line in log.read_text().splitlines() if "module" in line or "plugin" in line]
        if said:
            raise AssertionError("it lacks something:\n" + "\n".join(said))
        return picture


def main():
    package, directory = map(pathlib.Path, sys.argv[1:])
    processes.exit_on_signals()
    started = time.monotonic()

    def done(what):
        print(f"package test: {what} ({time.monotonic() - started:.0f} s)", flush=True)

    with CleanRoot(directory) as clean:
        done("a Debian of its own")
        clean.run("apt-get", "-q", "update")
        clean.run("apt-get", "-q", "-y", "-o", "APT::Keep-Downloaded-Packages=true",
                  "-o", "DPkg::Options::=--force-unsafe-io", "satisfy", "--no-install-recommends",
                  _field(package, "Depends"))
        shutil.copy(package, clean.path / "tmp/kelpa.deb")
        done("what the package depends on")
        with clean.unchanged_by("The package"):
            clean.run("dpkg", "--install", "/tmp/kelpa.deb")
            clean.run("dpkg", "--verify", "kelpa")
            version = clean.run("kelpa", "--version", user=USER,
                                env={**USER_ENV, "QT_QPA_PLATFORM": "offscreen"}).strip()
            if version != f"kelpa {_field(package, 'Version')}":
                raise AssertionError(f"it says that it is {version!r}")
            picture = _shows_its_board(clean, directory)
            done(f"installed and started, {picture}")
            clean.run("dpkg", "--purge", "kelpa")
        done("removed without a trace")
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except AssertionError as error:
        print(f"The package test failed: {error}", file=sys.stderr)
        sys.exit(1)
