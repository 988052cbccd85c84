"""A program's disk that hangs, is slow, full or read-only, for as long as a scenario wants."""

import pathlib


class Disk:
    """Of the program that is started with `env`."""

    def __init__(self, desktop, binary):
        library = pathlib.Path(binary).parents[1] / "tests" / "desktop" / "libkelpa_faulty_disk.so"
        self._hang = desktop.directory / "hang"
        self._slow = desktop.directory / "slow"
        self._full = desktop.directory / "full"
        self._read_only = desktop.directory / "read-only"
        # A debug build compiles its QML while it runs, and the toolkit syncs what it caches of that.
        self.env = {"LD_PRELOAD": str(library), "KELPA_TEST_HANG": str(self._hang),
                    "KELPA_TEST_SLOW": str(self._slow), "KELPA_TEST_FULL": str(self._full),
                    "KELPA_TEST_READ_ONLY": str(self._read_only), "QML_DISABLE_DISK_CACHE": "1"}

    def hang(self):
        self._hang.touch()

    def recover(self):
        self._hang.unlink()

    def slow_down(self):
        """Each sync takes two seconds longer."""
        self._slow.touch()

    def speed_up(self):
        self._slow.unlink()

    def protect(self):
        """From writing to the files beside the board."""
        self._read_only.touch()

    def unprotect(self):
        self._read_only.unlink()

    def fill(self):
        self._full.touch()

    def make_room(self):
        self._full.unlink()
