"""Programs of ours that run beside the board and print what they observe."""

import pathlib

from processes import wait_until

_SUPPORT = pathlib.Path(__file__).parent


class Helper:
    """A program of ours beside the board, and the lines that it has printed."""

    def __init__(self, desktop, script, ready):
        self._log = desktop.directory / f"{script}.log"
        desktop.start("/usr/bin/python3", "-B", _SUPPORT / script, log=self._log)
        wait_until(f"{script} is ready", lambda: ready in self.lines())

    def lines(self):
        return self._log.read_text(encoding="utf-8").splitlines() if self._log.exists() else []

    def wait_for(self, line):
        wait_until(f"{line!r} is received", lambda: line in self.lines())
