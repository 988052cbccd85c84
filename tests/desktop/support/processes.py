"""Starting programs and being sure that they end, whatever happens to the one who started them."""

import contextlib
import ctypes
import os
import pathlib
import signal
import subprocess
import time

_PR_SET_PDEATHSIG = 1
_PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None, use_errno=True)


def wait_until(what, condition, seconds=30.0, pause=0.05):
    """The first true value of `condition()`, which is asked again after `pause` seconds; an
    AssertionError naming `what` after `seconds`."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {seconds:g} s: {what}")
        time.sleep(pause)


def thread_names(pid):
    """The names of the threads of the process; one that ends meanwhile has none."""
    names = set()
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):
            names.add((task / "comm").read_text().strip())
    return names


def adopt_orphans():
    """Makes this process the parent of what its programs leave behind, so that it can end it."""
    _libc.prctl(_PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def exit_on_signals():
    """Turns a request to end into an exit, so that context managers clean up."""

    def leave(number, _frame):
        raise SystemExit(128 + number)

    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, leave)


def _die_with_parent():
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)


def start(argv, env, log, pass_fds=(), cwd=None):
    """Starts `argv` in a session of its own; its output goes to the file `log`."""
    with open(log, "ab") as output:
        return subprocess.Popen(
            argv,
            env=env,
            stdin=subprocess.DEVNULL,
            stdout=output,
            stderr=output,
            pass_fds=pass_fds,
            cwd=cwd,
            start_new_session=True,
            preexec_fn=_die_with_parent,
        )


def has_other_child(pid, program):
    """Whether the process has started another program than that one, named by its file."""
    try:
        children = pathlib.Path(f"/proc/{pid}/task/{pid}/children").read_text(encoding="utf-8")
        return any(pathlib.Path(f"/proc/{child}/comm").read_text(encoding="utf-8").strip() != program
                   for child in children.split())
    except OSError:
        return False


def find(program, *words):
    """The process among those that this one and its programs have started that runs the file
    `program` with all of `words` on its command line; None without one."""
    for pid in _descendants():
        try:
            command = pathlib.Path(f"/proc/{pid}/cmdline").read_text(encoding="utf-8", errors="replace")
        except OSError:
            continue
        name, *arguments = command.rstrip("\0").split("\0")
        if name.rpartition("/")[2] == program and all(
                any(word in argument for argument in arguments) for word in words):
            return pid
    return None


@contextlib.contextmanager
def stopped(*pids):
    """Stops these processes, as a debugger would; they continue at the end."""
    for pid in pids:
        os.kill(pid, signal.SIGSTOP)
    try:
        yield
    finally:
        for pid in pids:
            os.kill(pid, signal.SIGCONT)


def _descendants():
    parents = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat", encoding="utf-8", errors="replace") as stat:
                    fields = stat.read().rpartition(")")[2].split()
            except OSError:
                continue
            if fields[0] != "Z":
                parents[int(entry)] = int(fields[1])
    found, level = [], {os.getpid()}
    while level:
        level = {pid for pid, parent in parents.items() if parent in level}
        found.extend(level)
    return found


def _reap():
    try:
        while os.waitpid(-1, os.WNOHANG)[0] != 0:
            pass
    except ChildProcessError:
        pass


def end_all():
    """Ends every program that this process or one of its programs has started."""
    for number, seconds in ((signal.SIGTERM, 3.0), (signal.SIGKILL, 5.0)):
        deadline = time.monotonic() + seconds
        for pid in _descendants():
            try:
                os.kill(pid, number)
                # A stopped program does not hear of it before it continues.
                os.kill(pid, signal.SIGCONT)
            except ProcessLookupError:
                pass
        while _descendants() and time.monotonic() < deadline:
            _reap()
            time.sleep(0.02)
    _reap()
