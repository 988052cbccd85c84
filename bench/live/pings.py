"""How soon the main thread of a program on X11 answers."""

import os
import pathlib
import time


def main_thread(pid):
    """How many seconds the main thread has run, and how many it has waited for a processor."""
    ran, waited, _ = pathlib.Path(f"/proc/{pid}/task/{pid}/schedstat").read_text(encoding="utf-8").split()
    return int(ran) / 1e9, int(waited) / 1e9


class Pings:
    """Asks a window's program over and over whether it is alive, as window managers do: the main thread
    answers. A program that is busy answers late. Of each answer, in seconds: `times` how long it took, `work`
    how long the main thread ran meanwhile, and `gaps` how long it took but for what that thread, this one and
    the processes `between`, which pass the question and the answer on, waited for a processor that other
    programs had; at least as long as the main thread ran."""

    def __init__(self, display, window, pid, between=()):
        from Xlib import X

        self._display = display
        self._pids = pid, os.getpid(), *between
        self._window = display.create_resource_object("window", window)
        self._protocols = display.intern_atom("WM_PROTOCOLS")
        self._ping = display.intern_atom("_NET_WM_PING")
        display.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask | X.StructureNotifyMask)
        self._serial = 0
        self._before = []
        self.restart()

    def restart(self):
        self._sent = None
        self.times = []
        self.work = []
        self.gaps = []

    def _used(self):
        return [main_thread(pid) for pid in self._pids]

    def step(self, now):
        from Xlib.protocol import event

        if self._sent is None:
            self._serial += 1
            self._sent, self._before = now, self._used()
            self._window.send_event(event.ClientMessage(
                window=self._window, client_type=self._protocols,
                data=(32, [self._ping, self._serial, self._window.id, 0, 0])), event_mask=0)
        self._display.flush()

    def read(self):
        from Xlib import X

        while self._display.pending_events():
            each = self._display.next_event()
            if (each.type == X.ClientMessage and self._sent is not None
                    and each.client_type == self._protocols and each.data[1][1] == self._serial):
                taken = time.monotonic() - self._sent
                used = [(now[0] - before[0], now[1] - before[1])
                        for now, before in zip(self._used(), self._before)]
                work = used[0][0]
                self.times.append(taken)
                self.work.append(work)
                self.gaps.append(max(work, taken - sum(waited for _, waited in used)))
                self._sent = None

    def settle(self, limit):
        """Waits up to `limit` seconds for the answer that is due; one that does not come is as old as it is by
        then."""
        end = time.monotonic() + limit
        while self._sent is not None and time.monotonic() < end:
            self.read()
            time.sleep(0.0005)
        if self._sent is not None:
            age = time.monotonic() - self._sent
            self.times.append(age)
            self.work.append(self._used()[0][0] - self._before[0][0])
            self.gaps.append(age)
            self._sent = None
