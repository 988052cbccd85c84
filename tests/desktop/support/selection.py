"""What the arrow keys have chosen on the board."""

from processes import wait_until


class Selection:
    """Presses keys, and waits for what they choose."""

    def __init__(self, desktop, kelpa):
        self._desktop = desktop
        self._board = kelpa.board

    def press(self, *keys):
        self._desktop.key(*keys)

    def is_column(self, title):
        wait_until(f"the column {title!r} is chosen, and no card",
                   lambda: self._board.selected_column() == title and self._board.selected_card() is None)

    def is_card(self, title):
        wait_until(f"the card {title!r} is chosen", lambda: self._board.selected_card() == title)

    def is_nothing(self):
        wait_until("nothing is chosen", lambda: self._board.selected_column() is None
                   and self._board.selected_card() is None)
