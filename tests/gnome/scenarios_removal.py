"""The package is removed, and installed again, as the Shell and the person's settings see it."""

import pathlib
import shutil

from caller import Caller
from gnome import UUID
from processes import wait_until


def _move_to_system(desktop):
    """The extension from the person's folder to where the package has it, for the Shells that start afterwards."""
    share = desktop.directory / "share"
    shutil.rmtree(share, ignore_errors=True)
    folder = share / "gnome-shell" / "extensions" / UUID
    folder.parent.mkdir(parents=True)
    shutil.move(desktop.extension_folder(), folder)
    desktop.env["XDG_DATA_DIRS"] = f"{share}:/usr/share"
    return folder


def _log_in_anew(desktop):
    desktop.check_shell()
    desktop.kill_shell()
    desktop.start_shell()


def _state(desktop):
    """The Shell's number for how the extension stands; nothing where it knows none."""
    return desktop.evaluate(f"(known => known ? known.state : null)(Main.extensionManager.lookup('{UUID}'))")


def _is_named(desktop):
    """Whether the person's settings still name it."""
    return UUID in desktop.run("gsettings", "get", "org.gnome.shell", "enabled-extensions")


def removed_with_the_package_it_leaves_no_error(desktop, _program):
    folder = _move_to_system(desktop)
    _log_in_anew(desktop)
    wait_until("the package's extension is on", lambda: desktop.has_name("org.kelpa.Windows"))
    assert desktop.evaluate(f"Main.extensionManager.lookup('{UUID}').path") == str(folder)
    caller = Caller(desktop.bus)
    desktop.start_foot("Before")
    caller.row("Before")

    kept = shutil.copytree(folder, pathlib.Path(desktop.directory) / "kept")
    shutil.rmtree(folder)
    # The session goes on with what the Shell has read, also when the screen is locked.
    desktop.start_foot("Afterwards")
    caller.row("Afterwards")
    desktop.set_lock(True)
    desktop.set_lock(False)
    caller.attach()
    caller.row("Afterwards")
    _log_in_anew(desktop)
    assert _state(desktop) is None
    assert not desktop.has_name("org.kelpa.Windows")
    # A setting of the person's own, which no package takes away. It does no harm.
    assert _is_named(desktop)
    desktop.start_foot("Without it")

    shutil.copytree(kept, folder)
    _log_in_anew(desktop)
    wait_until("the extension is on again", lambda: desktop.has_name("org.kelpa.Windows"))
    desktop.start_foot("Installed again")
    caller.attach()
    caller.row("Installed again")
