"""What a process has used so far, from /proc."""

import os
import pathlib


def resident(pid):
    """Resident memory that is the process's own, in MiB."""
    for line in pathlib.Path(f"/proc/{pid}/status").read_text(encoding="utf-8").splitlines():
        if line.startswith("RssAnon:"):
            return int(line.split()[1]) / 1024
    raise AssertionError("the kernel reports no resident memory")


def processor_seconds(pid):
    """Seconds of all threads, with those that have ended, to a clock tick."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def processor_times(pid):
    """Seconds of each thread that is there, by its id; finer than the clock ticks of the whole process."""
    return {int(task.name): int((task / "schedstat").read_text(encoding="utf-8").split()[0]) / 1e9
            for task in _tasks(pid)}


def wake_ups(pid):
    """How often each thread has begun to run after waiting, by the thread's id."""
    return {int(task.name): int(line.split()[1])
            for task in _tasks(pid)
            for line in (task / "status").read_text(encoding="utf-8").splitlines()
            if line.startswith("voluntary_ctxt_switches:")}


def since(before, now):
    """The sum of the differences; a thread that has begun since counts from nothing, one that has ended
    not at all."""
    return sum(value - before.get(thread, 0) for thread, value in now.items())


def _tasks(pid):
    return pathlib.Path(f"/proc/{pid}/task").iterdir()
