"""The board as the accessibility bus shows it. How the views name their parts stands here alone.

A column is a list named by its goal's title, UNSORTED or ALL_TODOS. In it are list items: window
cards, which describe what a click on them does and are named "<owner>: <title>", and todos, which are
named by their title alone, whatever it looks like."""

import re

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

WINDOW = "Kelpa"
BOARD = "Board"
UNSORTED = "Unsorted"
ALL_TODOS = "All todos"
SEARCH = "Search windows or apps"
AUTO_SORT = "Auto-sort goals by priority and todo count"
NEW_GOAL = "New goal"
CREATE = "Create"
CANCEL = "Cancel"
ADD_TODO = "Add todo"
HIDE_EMPTY, SHOW_ALL = "Hide Empty", "Show All"
ADD_WINDOWS = "Add windows to this goal"
GOAL_ACTIONS = "More goal actions"
OPEN_CHROME = "Open Chrome in this goal"
OPEN_TERMINAL = "Open a Terminal in this goal"
SHOW_ALL_WINDOWS = "Show all windows in this goal"
RENAME_GOAL = "Rename goal"
DELETE_GOAL = "Delete goal"
CLOSE_PROCESS = "Close this app process"
PREVIEW = "Window preview"
# In the languages that scenarios look for cards in; the second is that of a board without settings.
_CARD_HELP = ("Click to switch to the window; drag to another goal", "单击切换到窗口；拖动到其他目标")
MINIMISED = "Window is minimized; preview will return when restored"
CANNOT_BE_CAPTURED = "This window cannot be captured yet"
MOVE_TO_GOAL = "Move to goal"
EDIT_TODO = "Edit todo"
DELETE_TODO = "Delete todo"
HANDLE = "Copy and drag todo"
GO_TO_TODO = "Go to todo in goal"
COPIED = "Todo copied to clipboard"
SAVING = "Changes are still being saved; the disk is slow"
DISK_FULL = "The disk is full"
FILE_IS_FOLDER = "A folder is in the place of the board’s file"
FILE_READ_ONLY = "The board’s file cannot be written to"
CHANGES_UNSAVED = "Your changes are not saved"
CHANGES_STILL_SAVING = "Your changes are still being saved"
DISK_SLOW = "The disk is slow or does not reply"
TRY_AGAIN = "Try again"
SHOW_FOLDER = "Show the folder"
CLOSE_ANYWAY = "Close anyway"
TODO, IN_PROGRESS, COMPLETED = "Todo", "In progress", "Completed"
_STATUS = "Todo status: "
NEEDS_SCREEN_CAPTURE = "Screen Recording permission is needed for live previews"
NEEDS_ACCESSIBILITY = "Accessibility permission is needed to focus and open windows"
NEEDS_WINDOW_MANAGER = "No window manager is running"
NEEDS_COMPOSITE = "The X server lacks the Composite extension"
OPEN_SETTINGS = "Open System Settings"
KEYS_HINT = "Arrows Select & Expand · Space Enter / Open · Esc Back"
TAP_HINT = "Press Super twice to bring Kelpa forward instantly"
KEY_HINT = "To bring Kelpa forward, bind a key to “kelpa --show” in the desktop’s settings"
ONLY_X11_WINDOWS = "Only windows of X11 programs are listed"
NO_WINDOWS_LISTED = "Windows cannot be listed on this desktop"
NO_WINDOWS_HERE = "No windows can be shown here"
# The list beside the board with an entry for each goal.
RAIL = "Goals"
# Between an application and a window's title, in any language.
_SEPARATOR = re.compile(" ?: |：")
_ITEM_ROLES = (Atspi.Role.LIST_ITEM,)
_COLUMN_ROLES = (Atspi.Role.LIST,)
BUTTON_ROLES = (Atspi.Role.PUSH_BUTTON, Atspi.Role.PUSH_BUTTON_MENU, Atspi.Role.TOGGLE_BUTTON)
MENU_ITEM_ROLES = (Atspi.Role.MENU_ITEM, Atspi.Role.CHECK_MENU_ITEM, Atspi.Role.RADIO_MENU_ITEM)
_CHOICE_ROLES = (Atspi.Role.CHECK_BOX,)
_FIELD_ROLES = (Atspi.Role.ENTRY, Atspi.Role.TEXT, Atspi.Role.PARAGRAPH)
_BOARD_ROLES = (Atspi.Role.PANEL, Atspi.Role.SCROLL_PANE)


class Gone(Exception):
    """The part, or the whole program, went away while it was being looked at."""


def connect():
    """To be called once the desktop's environment stands."""
    Atspi.init()
    # A program that is being killed or is starting must not hold the test up.
    Atspi.set_timeout(5000, 10000)


class Node:
    """One accessible part, with its descendants fetched when they are asked for."""

    def __init__(self, accessible):
        self._accessible = accessible

    def _ask(self, question):
        try:
            return question(self._accessible)
        except GLib.Error as error:
            raise Gone(str(error)) from error

    @property
    def name(self):
        return self._ask(Atspi.Accessible.get_name) or ""

    @property
    def description(self):
        return self._ask(Atspi.Accessible.get_description) or ""

    @property
    def role(self):
        return self._ask(Atspi.Accessible.get_role)

    def has_state(self, state):
        return self._ask(lambda part: part.get_state_set().contains(state))

    @property
    def is_checked(self):
        return self.has_state(Atspi.StateType.CHECKED)

    def children(self):
        count = self._ask(Atspi.Accessible.get_child_count)
        found = (self._ask(lambda part, at=at: part.get_child_at_index(at)) for at in range(count))
        return [Node(child) for child in found if child is not None]

    def container(self, roles, accepts):
        """The nearest part around this one with one of `roles` whose name `accepts` takes, or None."""
        part = self
        while part is not None:
            above = part._ask(Atspi.Accessible.get_parent)
            part = Node(above) if above is not None else None
            if part is not None and part.role in roles and accepts(part.name):
                return part
        return None

    def board_around(self):
        """The part that holds the columns, where this part is in it."""
        return self.container(_BOARD_ROLES, lambda name: name == BOARD)

    def column_around(self):
        return self.container(_COLUMN_ROLES, bool)

    def walk(self, depth=0):
        """Itself and everything below it, with the depth of each."""
        yield self, depth
        try:
            children = self.children()
        except Gone:
            return
        for child in children:
            yield from child.walk(depth + 1)

    def find(self, roles, accepts):
        """Everything below with one of `roles` whose name `accepts` takes."""
        return list(self.each(roles, accepts))

    def each(self, roles, accepts):
        """The same one after the other, for whoever stops at the first that fits."""
        return self._each(lambda node: node.role in roles and accepts(node.name))

    def each_named(self, accepts):
        """Everything below whose name `accepts` takes, one after the other."""
        return self._each(lambda node: accepts(node.name))

    def _each(self, accepts):
        for node, _ in self.walk():
            try:
                is_found = accepts(node)
            except Gone:
                continue
            if is_found:
                yield node

    def outermost(self, roles, accepts):
        """The parts below with one of `roles` whose name `accepts` takes, one after the other, without
        looking for others within them: every part that is looked at costs several round trips."""
        try:
            children = self.children()
        except Gone:
            return
        for child in children:
            try:
                is_found = child.role in roles and accepts(child.name)
            except Gone:
                continue
            if is_found:
                yield child
            else:
                yield from child.outermost(roles, accepts)

    def frame(self):
        """x, y, width and height on the screen."""
        rect = self._ask(lambda part: part.get_extents(Atspi.CoordType.SCREEN))
        return rect.x, rect.y, rect.width, rect.height

    def centre(self):
        x, y, width, height = self.frame()
        return x + width // 2, y + height // 2

    def press(self):
        """Carries out the part's press action."""
        def act(part):
            actions = [part.get_action_name(at).lower() for at in range(part.get_n_actions())]
            for wanted in ("press", "click", "activate", "toggle"):
                if wanted in actions:
                    return part.do_action(actions.index(wanted))
            raise AssertionError(f"{part.get_name()!r} cannot be pressed, only {actions}")

        return self._ask(act)

    def actions(self):
        """The names of what can be done with it, in small letters."""
        return self._ask(lambda part: [part.get_action_name(at).lower()
                                       for at in range(part.get_n_actions())])

    def text(self):
        """What is written in a field."""
        return self._ask(lambda part: Atspi.Text.get_text(part, 0, -1))

    def selections(self):
        """How many parts of what is written in a field are selected."""
        return self._ask(Atspi.Text.get_n_selections)

    def outline(self):
        """The tree below as text, for a report."""
        lines = []
        for node, depth in self.walk():
            try:
                role = node._ask(Atspi.Accessible.get_role_name)
                lines.append(f"{'  ' * depth}{role}: {node.name[:120]!r} {node.frame()}")
            except Gone:
                lines.append(f"{'  ' * depth}(gone)")
        return "\n".join(lines)


class Column:
    def __init__(self, node):
        self.node = node
        self.title = node.name
        items = [(item, item.description.startswith(_CARD_HELP)) for item in node.outermost(_ITEM_ROLES, bool)]
        self.cards = [Card(item) for item, is_card in items if is_card]
        self.todos = [Todo(item) for item, is_card in items if not is_card]

    def card(self, title):
        """The card of the window titled `title`, or None."""
        return next((card for card in self.cards if card.title == title), None)

    def button(self, name):
        """The first of this name, or None."""
        return next(self.node.each(BUTTON_ROLES, lambda found: found == name), None)

    def todo(self, title):
        return next((todo for todo in self.todos if todo.title == title), None)


class Card:
    def __init__(self, node):
        self.node = node
        self.owner, self.title = (_SEPARATOR.split(node.name, maxsplit=1) + [""])[:2]

    def __repr__(self):
        return f"{self.owner}: {self.title[:80]!r}"

    @property
    def is_selected(self):
        return self.node.has_state(Atspi.StateType.SELECTED)

    @property
    def is_minimised(self):
        return MINIMISED in self.node.description

    @property
    def messages(self):
        """What it says in place of a picture."""
        return [name for name in (CANNOT_BE_CAPTURED, MINIMISED)
                if any(self.node.each_named(lambda found, name=name: found == name))]

    @property
    def has_preview(self):
        return any(self.node.each((Atspi.Role.IMAGE,), lambda name: name == PREVIEW))


class Todo:
    def __init__(self, node):
        self.node = node
        self.title = node.name

    def __repr__(self):
        return repr(self.title)

    @property
    def status(self):
        return self.status_button.name.removeprefix(_STATUS)

    @property
    def status_button(self):
        return self._button(lambda name: name.startswith(_STATUS))

    def button(self, name):
        return self._button(lambda found: found == name)

    def _button(self, accepts):
        found = next(self.node.each(BUTTON_ROLES, accepts), None)
        if found is None:
            raise Gone(f"a button of the todo {self.title!r}")
        return found


def _is_read_as_shown(items):
    """Whether the items go from top to bottom and, within a row, from left to right."""
    places = [item.node.frame()[1::-1] for item in items]
    return places == sorted(places)


class Board:
    """The running program of process `pid`."""

    def __init__(self, pid):
        self._pid = pid

    def _root(self):
        desktop = Atspi.get_desktop(0)
        # The cache is kept current by events, which nobody here listens for.
        desktop.clear_cache()
        try:
            for at in range(desktop.get_child_count()):
                application = desktop.get_child_at_index(at)
                if application is not None and application.get_process_id() == self._pid:
                    application.set_cache_mask(Atspi.Cache.NONE)
                    application.clear_cache()
                    return Node(application)
        except GLib.Error as error:
            raise Gone(str(error)) from error
        raise Gone(f"process {self._pid} is not on the accessibility bus")

    def walk(self):
        """Every part of the program and how deep it lies in others."""
        return self._root().walk()

    def _column_nodes(self):
        return self._root().outermost(_COLUMN_ROLES, lambda name: name not in ("", RAIL))

    def columns(self):
        """The columns by title; an empty map while the program cannot be asked."""
        try:
            return {column.title: column for column in map(Column, self._column_nodes())}
        except Gone:
            return {}

    def goal_titles(self, columns=None):
        """Titles of the goals' columns in the order of the board."""
        try:
            titles = [node.name for node in self._column_nodes()] if columns is None else columns
        except Gone:
            return []
        return [title for title in titles if title not in (UNSORTED, ALL_TODOS)]

    def cards(self):
        """Every card's window title, with the title of the column that it is in."""
        return {card.title: column.title for column in self.columns().values() for card in column.cards}

    def cards_by_place(self, title):
        """Window titles of a column's cards, row by row; None while they are read in another order
        than they are shown."""
        try:
            column = self.column(title)
            cards = column.cards if column else []
            return [card.title for card in cards] if _is_read_as_shown(cards) else None
        except Gone:
            return []

    def card(self, column, title):
        """The card of the window `title` in the column titled `column`, or None."""
        found = self.column(column)
        return found.card(title) if found else None

    def column(self, title):
        """The column titled `title`, or None."""
        try:
            return next((Column(node) for node in self._column_nodes() if node.name == title), None)
        except Gone:
            return None

    def button(self, name):
        return self._first(BUTTON_ROLES, name)

    def menu_item(self, name):
        return self._first(MENU_ITEM_ROLES, name)

    def choice(self, name):
        """The window in the selection sheet that can be chosen, or None."""
        return self._first(_CHOICE_ROLES, name)

    def todos(self, title):
        """Titles and statuses of the todos in the column titled `title`, from top to bottom; None
        while they are read in another order than they are shown."""
        try:
            column = self.column(title)
            todos = column.todos if column else []
            if not _is_read_as_shown(todos):
                return None
            return [(todo.title, todo.status) for todo in todos]
        except Gone:
            return []

    def selected_column(self):
        """Title of the column that the arrow keys have chosen, or None."""
        try:
            return next((node.name for node in self._column_nodes()
                         if node.has_state(Atspi.StateType.SELECTED)), None)
        except Gone:
            return None

    def selected_card(self):
        """Title of the window whose card the arrow keys have chosen, or None."""
        try:
            return next((card.title for column in self.columns().values()
                         for card in column.cards if card.is_selected), None)
        except Gone:
            return None

    def has_text(self, text):
        """Whether something on the screen is named `text`."""
        try:
            return any(node.has_state(Atspi.StateType.SHOWING)
                       for node in self._root().each_named(lambda name: name == text))
        except Gone:
            return False

    def field(self, name):
        return self._first(_FIELD_ROLES, name)

    def group(self, name):
        return self._first((Atspi.Role.PANEL,), name)

    def rail_entry(self, goal):
        """The goal's entry beside the board, which is named "(<open todos>)<title>"."""
        form = re.compile(r"\(\d+\)" + re.escape(goal))
        try:
            return next(self._root().each((*_ITEM_ROLES, *BUTTON_ROLES), form.fullmatch), None)
        except Gone:
            return None

    def focused_field(self):
        try:
            fields = self._root().each(_FIELD_ROLES, lambda _: True)
            return next((f for f in fields if f.has_state(Atspi.StateType.FOCUSED)
                         and f.has_state(Atspi.StateType.EDITABLE)), None)
        except Gone:
            return None

    def written(self):
        """What stands in the field that has the keyboard, without what is being composed; None
        without such a field."""
        try:
            field = self.focused_field()
            return field.text() if field else None
        except Gone:
            return None

    def focused_names(self):
        """Names of what has the focus, which is one part as a rule."""
        try:
            return [node.name for node in self._root().each_named(bool)
                    if node.has_state(Atspi.StateType.FOCUSED)]
        except Gone:
            return []

    def _first(self, roles, name):
        try:
            found = self._root().each(roles, lambda found: found == name)
            return next((node for node in found if node.has_state(Atspi.StateType.SHOWING)), None)
        except Gone:
            return None

    def outline(self):
        try:
            return self._root().outline()
        except Gone as gone:
            return str(gone)


def outline_of_window():
    """What the accessibility bus shows of the program with the window WINDOW, as text."""
    desktop = Atspi.get_desktop(0)
    for application in Node(desktop).children():
        try:
            if any(window.name == WINDOW for window in application.children()):
                return application.outline()
        except Gone:
            continue
    return f"no window {WINDOW!r} on the accessibility bus"
