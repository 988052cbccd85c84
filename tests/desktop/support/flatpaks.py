"""A program that takes itself to be in a Flatpak."""

import os
import shlex

_VIEW = "/mnt"
# The root of this system with the file that every Flatpak has there. The mounts belong to the program, so
# they disappear with it.
_MAKE_VIEW = f"""set -e
mount -t tmpfs -o mode=755 tmpfs {_VIEW}
for each in /*; do
    if [ -L "$each" ]; then
        cp -P "$each" {_VIEW}
    elif [ -d "$each" ] && [ "$each" != {_VIEW} ]; then
        mkdir "{_VIEW}$each"
        mount --rbind "$each" "{_VIEW}$each"
    fi
done
printf '[Application]\nname=org.kelpa.Kelpa\n' > {_VIEW}/.flatpak-info
exec chroot {_VIEW} "$@"
"""


def within(desktop, binary):
    """The path of a program that runs `binary` so."""
    user = [] if os.getuid() == 0 else ["--user", "--map-current-user", "--keep-caps"]
    command = shlex.join(["unshare", "--mount", *user, "sh", "-c", _MAKE_VIEW, "sh", str(binary)])
    program = desktop.directory / "kelpa-in-a-flatpak"
    program.write_text(f'#!/bin/sh\nexec {command} "$@"\n', encoding="utf-8")
    program.chmod(0o755)
    return program
