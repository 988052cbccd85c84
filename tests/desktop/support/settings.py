"""The file that Kelpa keeps its board in, read and written from outside."""

import datetime
import json
import pathlib
import shutil
import sqlite3
import tempfile
import uuid

# The format of the file. Text, whole numbers (for Booleans) and blobs (JSON) distinguish the kinds.
_CREATE = "CREATE TABLE IF NOT EXISTS settings(key TEXT PRIMARY KEY NOT NULL, value)"
_WRITE = "INSERT OR REPLACE INTO settings (key, value) VALUES (?, ?)"
_READ = "SELECT key, value FROM settings"


# How the file calls what the board shows.
_STATUSES = {"todo": "Todo", "ing": "In progress", "completed": "Completed"}


class StoredBoard:
    """Goals by title, how many windows are assigned to each, and the todos of each."""

    def __init__(self, values):
        goals = json.loads(values.get("kelpa.goals") or b"[]")
        assignments = json.loads(values.get("kelpa.windowAssignments") or b"{}")
        self.goal_titles = [goal["title"] for goal in goals]
        self.goal_ids = {goal["title"]: goal["id"] for goal in goals}
        self.window_counts = {goal["title"]: 0 for goal in goals}
        titles = {goal["id"]: goal["title"] for goal in goals}
        for goal_id in assignments.values():
            if goal_id in titles:
                self.window_counts[titles[goal_id]] += 1
        self._todos = {goal["title"]: goal["todos"] for goal in goals}
        self._unassigned_todos = json.loads(values.get("kelpa.unassignedTodos") or b"[]")

    def todos(self, goal=None):
        """Titles and statuses of the goal's todos, or of those without a goal, in their order."""
        return [(todo["title"], _STATUSES[todo["status"]]) for todo in self._ordered(goal)]

    def todo_id(self, title, goal=None):
        return next(todo["id"] for todo in self._ordered(goal) if todo["title"] == title)

    def _ordered(self, goal):
        todos = self._unassigned_todos if goal is None else self._todos[goal]
        return sorted(todos, key=lambda todo: todo["order"])

    def __repr__(self):
        return f"{self.goal_titles} with {self.window_counts}"


def read(path):
    """The keys and values of a file that no program has open, from a copy of it: what a reader
    recovers must not help the program that opens it next."""
    path = pathlib.Path(path)
    with tempfile.TemporaryDirectory() as folder:
        for companion in (path, path.with_name(path.name + "-wal")):
            if companion.exists():
                shutil.copy(companion, folder)
        connection = sqlite3.connect(pathlib.Path(folder) / path.name)
        try:
            if connection.execute("PRAGMA integrity_check").fetchone() != ("ok",):
                raise AssertionError(f"{path} is damaged")
            return dict(connection.execute(_READ))
        finally:
            connection.close()


def read_live(path):
    """The keys and values of a file that a program has open."""
    connection = sqlite3.connect(f"file:{path}?mode=ro", uri=True, timeout=30)
    try:
        return dict(connection.execute(_READ))
    finally:
        connection.close()


def write(path, language="en", goals=(), is_auto_sorting=True, is_unsorted_unfolded=False,
          is_closing_quitting=False):
    """A new file with a language, or none, and `goals`, pairs of a title and its open todos' titles."""
    path = pathlib.Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    accents = ("blue", "green", "orange", "purple", "pink")
    order = 0
    records = []
    for index, (title, todos) in enumerate(goals):
        items = []
        for todo in todos:
            items.append({"id": _identifier(), "title": todo, "status": "todo", "order": order})
            order += 1
        records.append({"id": _identifier(), "title": title, "accent": accents[index % len(accents)],
                        "priority": "p2", "todos": items})
    connection = sqlite3.connect(path)
    try:
        with connection:
            connection.execute(_CREATE)
            if language is not None:
                connection.execute(_WRITE, ("kelpa.language", language))
            connection.execute(_WRITE, ("kelpa.autoSortingGoals", int(is_auto_sorting)))
            if is_unsorted_unfolded:
                connection.execute(_WRITE, ("kelpa.unsortedUnfolded", 1))
            if is_closing_quitting:
                connection.execute(_WRITE, ("kelpa.closingQuits", 1))
            if records:
                blob = json.dumps(records, ensure_ascii=False).encode()
                connection.execute(_WRITE, ("kelpa.goals", sqlite3.Binary(blob)))
    finally:
        connection.close()


def remember(path, *windows, are_certain=False):
    """Adds windows of XTerm that goals had before: pairs of a title and the goal's. Unless they
    `are_certain` again, windows outside of their goals have had the titles too. The day on which they
    were seen is one that never passes."""
    goals = StoredBoard(read(path)).goal_ids
    seen_on = (datetime.date(2048, 3, 14) - datetime.date(2001, 1, 1)).days * 86400 + 43200
    memory = {"version": 1, "newestWindow": len(windows), "windows": [
        {"window": number, "seenAt": seen_on, "application": "debian-xterm", "applicationName": "XTerm",
         "title": title, "isTitleShared": not are_certain} for number, (title, _) in enumerate(windows, 1)]}
    assignments = {str(number): goals[goal] for number, (_, goal) in enumerate(windows, 1)}
    connection = sqlite3.connect(path)
    try:
        with connection:
            for key, value in (("kelpa.windowMemory", memory), ("kelpa.windowAssignments", assignments)):
                connection.execute(_WRITE, (key, sqlite3.Binary(json.dumps(value).encode())))
    finally:
        connection.close()


def _identifier():
    return str(uuid.uuid4()).upper()
