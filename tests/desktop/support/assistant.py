"""Using the board as an assistive program does: every part is found and acted on through the
accessibility bus."""

import board as boards
from processes import wait_until


class Assistant:
    def __init__(self, desktop, kelpa):
        self._desktop = desktop
        self._kelpa = kelpa
        self.board = kelpa.board

    def press(self, find, what):
        """Carries out the action of the part that `find` returns, as soon as it is there."""
        wait_until(what, lambda: self._is_pressed(find))

    def press_button(self, name, column=None):
        """A button of the window, or of the column with the title."""
        if column is None:
            self.press(lambda: self.board.button(name), f"the button {name!r} is pressed")
        else:
            self.press(lambda: self._in_column(column, name), f"{name!r} in {column!r} is pressed")

    def choose(self, entry):
        self.press(lambda: self.board.menu_item(entry), f"{entry!r} is chosen")

    def assign(self, goal, *choices):
        """Puts windows into a goal by its sheet, in which they have these names."""
        self.press_button(boards.ADD_WINDOWS, goal)
        for choice in choices:
            self.press(lambda choice=choice: self.board.choice(choice), f"{choice!r} is chosen")
        self.press_button(f"Add {len(choices)} windows")

    def write(self, text, confirm):
        """Types into the field that has the keyboard now, and carries out `confirm`."""
        wait_until("a field has the keyboard", self.board.focused_field)
        self._desktop.type(text)
        wait_until(f"{text!r} stands in the field", lambda: self._written() == text)
        confirm()

    def confirm_field(self):
        self.press(self.board.focused_field, "the field is confirmed")

    def _written(self):
        try:
            field = self.board.focused_field()
            return field and field.text()
        except boards.Gone:
            return None

    def _in_column(self, title, name):
        column = self.board.column(title)
        found = column and column.node.find(boards.BUTTON_ROLES, lambda found: found == name)
        return found[0] if found else None

    def _is_pressed(self, find):
        self._kelpa.check_alive()
        try:
            part = find()
            return part is not None and part.press()
        except boards.Gone:
            return False
