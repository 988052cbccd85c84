"""The desktop's portal, as far as it starts programs with the session and gives them keys."""

import json
import pathlib
import signal

from processes import wait_until


class SessionPortal:
    """`agrees` says what the person answers."""

    def __init__(self, desktop, agrees=True):
        self._answer = desktop.directory / "portal-answer"
        self._calls = desktop.directory / "portal-calls"
        self.agree(agrees)
        self._process = desktop.start(
            "/usr/bin/python3", "-B", pathlib.Path(__file__).with_name("session_portal.py"), self._answer,
            self._calls)
        self.await_call("ready")

    def agree(self, agrees):
        self._answer.write_text("yes" if agrees else "no", encoding="utf-8")

    def calls(self, method):
        """What each call of the method was given."""
        if not self._calls.exists():
            return []
        lines = self._calls.read_text(encoding="utf-8").splitlines()
        return [words for name, *words in map(json.loads, lines) if name == method]

    def await_call(self, method, times=1):
        wait_until(f"the portal is called: {method}", lambda: len(self.calls(method)) == times)
        return self.calls(method)[-1]

    def press_for_the_board(self):
        self._process.send_signal(signal.SIGUSR1)

    def press_for_a_todo(self):
        self._process.send_signal(signal.SIGUSR2)
