"""What is on the disk after the program was ended in the middle of things."""

import os
import random
import threading

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until

_CHANGES = 100
_WINDOWS = ("Alpha", "Beta", "Gamma")
_MOST_GOALS = 4


class _Model:
    """What the board should be: goals in their order, and the goal of each window."""

    def __init__(self, goals=(), places=None):
        self.goals = list(goals)
        self.places = dict(places or {title: boards.UNSORTED for title in _WINDOWS})

    def counts(self):
        places = list(self.places.values())
        return {goal: places.count(goal) for goal in self.goals}

    def is_stored(self, stored):
        return stored.goal_titles == self.goals and stored.window_counts == self.counts()

    def is_shown(self, board):
        columns = board.columns()
        shown = {card.title: column.title for column in columns.values() for card in column.cards}
        return board.goal_titles(columns) == self.goals and shown == self.places

    def with_goal(self, title):
        return _Model([*self.goals, title], self.places)

    def without_goal(self, title):
        places = {window: boards.UNSORTED if place == title else place
                  for window, place in self.places.items()}
        return _Model([goal for goal in self.goals if goal != title], places)

    def with_window(self, window, place):
        return _Model(self.goals, {**self.places, window: place})

    def __repr__(self):
        return f"{self.goals} with {self.places}"


def _choose(random_source, model, kelpa, desktop, serial):
    """Prepares one change by hand up to its last step; returns that step and the board after it."""
    kinds = ["create"] if len(model.goals) < _MOST_GOALS else []
    if model.goals:
        kinds += ["assign", "assign", "delete"]
    kind = random_source.choice(kinds)
    if kind == "create":
        title = f"Goal {serial}"
        kelpa.type_new_goal(title)
        return (lambda: desktop.key("Return")), model.with_goal(title)
    if kind == "delete":
        title = random_source.choice(model.goals)
        return kelpa.open_goal_menu(title, boards.DELETE_GOAL), model.without_goal(title)
    window = random_source.choice(_WINDOWS)
    place = model.places[window]
    target = random_source.choice([p for p in (*model.goals, boards.UNSORTED) if p != place])
    return kelpa.open_move_menu(window, place, target), model.with_window(window, target)


def killed_at_any_moment_of_a_hundred_changes_the_board_is_the_one_before_or_after(desktop, binary):
    seed = int(os.environ.get("KELPA_TEST_SEED") or random.SystemRandom().randrange(2**32))
    print(f"KELPA_TEST_SEED={seed}", flush=True)
    random_source = random.Random(seed)
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.open_xterms(*_WINDOWS)
    kelpa = Kelpa(desktop, binary, path)
    kelpa.start()
    model, done, kills, lost = _Model(), 0, 0, 0
    while done < _CHANGES:
        wait_until(f"the board shows {model}", lambda: model.is_shown(kelpa.board))
        for _ in range(random_source.randrange(6)):
            trigger, model = _choose(random_source, model, kelpa, desktop, done)
            trigger()
            wait_until(f"the board shows {model}", lambda: model.is_shown(kelpa.board))
            done += 1
        trigger, after = _choose(random_source, model, kelpa, desktop, done)
        # The time of the kill is the experiment: from before the change to well after it was
        # written.
        killer = threading.Timer(random_source.uniform(0.0, 0.06), kelpa.kill)
        killer.start()
        try:
            trigger()
        finally:
            killer.join()
        done += 1
        kills += 1
        stored = settings.StoredBoard(settings.read(path))
        if after.is_stored(stored):
            model = after
        elif model.is_stored(stored):
            lost += 1
        else:
            raise AssertionError(f"stored: {stored}\nbefore: {model}\nafter: {after}")
        kelpa.start()
        wait_until(f"the board shows {model} again", lambda: model.is_shown(kelpa.board))
    kelpa.quit()
    print(f"{done} changes, {kills} kills, {kills - lost} with the last change kept", flush=True)
