"""The desktop's notifications, as they are shown."""

import pathlib
import signal

from processes import wait_until

_SERVICE = pathlib.Path(__file__).with_name("notification_service.py")


class Notifications:
    def __init__(self, desktop):
        self._log = desktop.directory / "notifications.log"
        self._service = desktop.start("/usr/bin/python3", "-B", _SERVICE, log=self._log)
        wait_until("notifications are shown", lambda: "ready" in self.lines())

    def lines(self):
        return self._log.read_text(encoding="utf-8").splitlines() if self._log.exists() else []

    def press(self):
        self._service.send_signal(signal.SIGUSR1)
