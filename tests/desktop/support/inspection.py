"""What assistive programs must be told of every part of the board."""

import board as boards
from board import Atspi

_FIELDS = (Atspi.Role.ENTRY, Atspi.Role.TEXT)
_CONTROLS = (*boards.BUTTON_ROLES, *boards.MENU_ITEM_ROLES, *_FIELDS, Atspi.Role.CHECK_BOX,
             Atspi.Role.LIST_ITEM)
# What holds controls, or is read and no more. Labels can be gone to, as everywhere in the toolkit.
_OTHERS = (Atspi.Role.LIST, Atspi.Role.LABEL, Atspi.Role.POPUP_MENU, Atspi.Role.DIALOG)
_NEEDED_ACTIONS = {"press", "click", "activate", "toggle"}
_STATES = {Atspi.StateType.CHECKED: "checked", Atspi.StateType.SELECTED: "selected",
           Atspi.StateType.EDITABLE: "editable", Atspi.StateType.READ_ONLY: "read-only"}


class Part:
    """A part that shows, as it was when it was looked at."""

    def __init__(self, node, depth):
        self.node = node
        self.depth = depth
        self.name = node.name
        self.role = node.role
        self.actions = node.actions()
        self.is_focusable = node.has_state(Atspi.StateType.FOCUSABLE)
        self.is_focused = node.has_state(Atspi.StateType.FOCUSED)
        self.states = {name for state, name in _STATES.items() if node.has_state(state)}

    @property
    def is_control(self):
        return self.role in _CONTROLS

    def __repr__(self):
        return f"{self.role.value_nick} {self.name!r}"


def parts(kelpa):
    """Every part of the program that shows, each after the one that holds it."""
    return [Part(node, depth) for node, depth in kelpa.board.walk()
            if node.has_state(Atspi.StateType.SHOWING)]


def faults(found):
    """What is wrong with them, as text."""
    wrong = []
    for part in found:
        if not (part.is_focusable or part.is_focused or part.actions) or part.role == Atspi.Role.FRAME:
            continue
        if not part.name.strip():
            wrong.append(f"{part} has no name")
        # The action of the board's ground opens its menu.
        if not part.is_control and part.role not in _OTHERS and part.name != boards.BOARD:
            wrong.append(f"{part} can be gone to or acted on")
        if part.is_control and not _NEEDED_ACTIONS & set(part.actions):
            wrong.append(f"{part} can do nothing but {part.actions}")
        if (part.role in _FIELDS) != ("editable" in part.states):
            wrong.append(f"{part} is {part.states}")
    return wrong + [f"{names} stand in {holder}" for holder, names in _ambiguous(found)]


def _ambiguous(found):
    """Parts that hold several controls of one name and kind. Windows and todos may share theirs."""
    holders, named = [], {}
    for part in found:
        del holders[part.depth:]
        if part.is_control and part.role != Atspi.Role.LIST_ITEM and part.role != Atspi.Role.CHECK_BOX:
            inside = named.setdefault(id(holders[-1]), (holders[-1], []))[1]
            inside.append((part.role.value_nick, part.name))
        holders += [part] * (part.depth + 1 - len(holders))
    return [(holder, names) for holder, names in named.values() if len(set(names)) < len(names)]
