"""A day of a session in a minute: what persons, programs, Kelpa and the session itself do in its hours, in some
thousand steps that follow each other at once."""

import collections
import random

import holdings
from caller import Caller, Refused
from harness import on_desktop
from plain_windows import PlainWindows
from processes import wait_until

_HOURS, _STEPS = 24, 150
_MOST_WINDOWS = 24
_SEED = 1
# What the extension may answer while windows come and go.
_USUAL = {"Busy", "NoSuchWindow", "NoPicture"}

# Counts what the extension hears of.
_COUNT = """(extension => {
    globalThis.kelpaHeard = 0;
    const changed = extension._changed;
    extension._changed = function (kind) {
        ++globalThis.kelpaHeard;
        changed.call(this, kind);
    };
    return true;
})(Main.extensionManager.lookup('windows@kelpa.org').stateObj)"""

# What it remembers of windows, of their pictures, and of who called.
_REMEMBERED = """(({_list, _pictures, _access, _listeners, _watch}) => ({
    rows: _list._rows.size, pictures: _pictures._states.size, listeners: _listeners.size,
    admitted: _access._admitted.size, proofs: _access._proofs.size, refused: _access._refused.size,
    watched: _watch ? _watch._windows.size : 0,
}))(Main.extensionManager.lookup('windows@kelpa.org').stateObj)"""

_NOTHING = {"rows": 0, "pictures": 0, "listeners": 0, "admitted": 0, "proofs": 0, "refused": 0, "watched": 0}


class _Day:
    def __init__(self, desktop):
        self.done = collections.Counter()
        self._desktop = desktop
        self._random = random.Random(_SEED)
        self._plain = PlainWindows()
        self._windows = []
        self._asked_to_close = []
        self._titles = 0
        self._connection = None
        self.caller = None
        self._steps = {self._open: 14, self._rename: 40, self._paint: 14, self._close: 12, self._hide: 12,
                       self._come_forward: 12, self._send_elsewhere: 5, self._take_picture: 14, self._list: 20,
                       self._open_dialog: 4, self._ask_to_close: 3}

    def pass_hour(self):
        for _ in range(_STEPS):
            step, = self._random.choices(list(self._steps), self._steps.values())
            step()
            self.done[step.__name__] += 1
            self._close_as_asked()
        self._plain.settle()

    # Windows

    def _title(self):
        self._titles += 1
        return f"Täglich {self._titles} \U0001f600".encode()

    def _any(self):
        return self._random.choice(self._windows) if self._windows else self._open()

    def _open(self, parent=None):
        if len(self._windows) >= _MOST_WINDOWS:
            self._close()
        # It is asked to close before it is known here, if ever so seldom.
        asked = []
        window = self._plain.open(self._title(), closed=lambda: asked.append(True), parent=parent)
        self._windows.append(window)
        self._asked_to_close.append((window, asked))
        return window

    def _open_dialog(self):
        self._open(self._any())

    def _rename(self):
        self._plain.rename(self._any(), self._title())

    def _paint(self):
        self._plain.paint(self._any(), self._random.randrange(1 << 24))

    def _close(self):
        window = self._any()
        self._windows.remove(window)
        self._plain.close(window)

    def _close_as_asked(self):
        for window, asked in self._asked_to_close:
            if asked and window in self._windows:
                self._windows.remove(window)
                self._plain.close(window)
        self._asked_to_close = [each for each in self._asked_to_close if each[0] in self._windows]

    def close_all(self):
        for window in self._windows:
            self._plain.close(window)
        self._windows.clear()
        self._plain.settle()
        wait_until("no window is left", lambda: self._desktop.windows() == [])

    def crash(self):
        """A program ends without closing its windows."""
        self._plain.end()
        self._windows.clear()
        self._plain = PlainWindows()

    def _send_elsewhere(self):
        """Workspaces come and go by that."""
        to = self._random.randrange(3)
        self._desktop.evaluate(
            "(windows => windows.length && windows[Math.floor(Math.random() * windows.length)]"
            f".change_workspace_by_index({to}, true))(global.get_window_actors().map(actor => actor.meta_window))")

    # Kelpa

    def start_kelpa(self):
        self._connection = self._desktop.own_connection()
        self.caller = Caller(self._connection)

    def end_kelpa(self):
        """It leaves the bus without a word."""
        self._connection.close_sync(None)
        self.caller = self._connection = None

    def _call(self, call, *arguments):
        try:
            self.done[call.__name__] += 1
            return call(*arguments)
        except Refused as refused:
            assert refused.reason in _USUAL, refused
            return None

    def _list(self):
        return self._call(self.caller.list)

    def _act(self, method, types, *rest):
        rows = self._list()
        if rows:
            self._call(self.caller.call, method, types, self._random.choice(rows)["id"], *rest)

    def _hide(self):
        self._act(self._random.choice(["Minimize", "Minimize", "Restore"]), "(t)")

    def _come_forward(self):
        self._act("Activate", "(tu)", 0)

    def _ask_to_close(self):
        self._act("Close", "(t)")

    def _take_picture(self):
        rows = self._list()
        if rows:
            self._call(self.caller.picture, self._random.choice(rows)["id"], 128, 72, 0)


def _rest_and_go_on(desktop, day, switch):
    switch(False)
    assert holdings.held(desktop) == [], holdings.held(desktop)
    switch(True)
    day.caller.attach()


def _end_hour(desktop, day, hour):
    """What happens now and then. The extension is on, and Kelpa is attached, before and after it."""
    event = hour % 6
    if event == 0:
        day.caller.detach()
        day.caller.attach()
    elif event == 1:
        day.end_kelpa()
        day.start_kelpa()
    elif event == 2:
        _rest_and_go_on(desktop, day, desktop.set_extension)
    elif event == 3:
        _rest_and_go_on(desktop, day, lambda is_on: desktop.set_lock(not is_on))
    elif event == 4:
        day.crash()
    else:
        day.close_all()
        desktop.keyboard.key("Super_L")
        wait_until("the overview is open", desktop.is_overview_open)
        desktop.hide_overview()


@on_desktop(is_hurried=True)
def a_day_leaves_no_error_and_holds_nothing(desktop, _program):
    desktop.set_extension(False)
    holdings.record(desktop)
    desktop.set_extension(True)
    assert desktop.evaluate(_COUNT)
    at_rest = holdings.held(desktop)
    assert at_rest
    day = _Day(desktop)
    day.start_kelpa()
    listening = holdings.held(desktop)
    assert len(listening) > len(at_rest), listening
    for hour in range(_HOURS):
        day.pass_hour()
        _end_hour(desktop, day, hour)
        # Forgotten until now, they would be of a whole day.
        assert set(day.caller.names()) <= {"Changed", "DoubleTap"}
    heard = desktop.evaluate("globalThis.kelpaHeard")
    print(f"{sum(day.done.values())} steps, of which the extension heard {heard} changes:", dict(day.done))
    assert heard > 5000, heard
    assert min(day.done.values()) > 20, day.done
    day.close_all()
    assert wait_until("no window is listed", lambda: day.caller.list() == [])
    wait_until("only what listens is held", lambda: holdings.held(desktop) == listening)
    day.end_kelpa()
    wait_until("nobody listens", lambda: holdings.held(desktop) == at_rest)
    assert desktop.evaluate(_REMEMBERED) == _NOTHING, desktop.evaluate(_REMEMBERED)
    assert desktop.shell.poll() is None, "the Shell has ended"
    desktop.set_extension(False)
    assert holdings.held(desktop) == [], holdings.held(desktop)
