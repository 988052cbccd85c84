"""A program's disk that hangs or is full, for as long as a scenario wants."""

import pathlib


class Disk:
    """Of the program that is started with `env`."""

    def __init__(self, desktop, binary):
        library = pathlib.Path(binary).parents[1] / "tests" / "desktop" / "libkelpa_faulty_disk.so"
        self._hang = desktop.directory / "hang"
        self._full = desktop.directory / "full"
        # A debug build compiles its QML while it runs, and the toolkit syncs what it caches of that.
        self.env = {"LD_PRELOAD": str(library), "KELPA_TEST_HANG": str(self._hang),
                    "KELPA_TEST_FULL": str(self._full), "QML_DISABLE_DISK_CACHE": "1"}

    def hang(self):
        self._hang.touch()

    def recover(self):
        self._hang.unlink()

    def fill(self):
        self._full.touch()

    def make_room(self):
        self._full.unlink()
