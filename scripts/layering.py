"""layering.py: fails when a folder of src/ includes, or its QML imports, what it is to know nothing of."""

import pathlib
import re
import sys

_ROOT = pathlib.Path(__file__).resolve().parent.parent

# The folders whose headers each folder may include besides its own; "x/*" is x and every folder
# within it. A folder within a named one is part of it, unless it is named itself.
_FOLDERS = {
    "model": "",
    "transfer": "model",
    "text": "model",
    "navigation": "model",
    "layout": "",
    "platform": "model",
    "platform/qt": "platform",
    "platform/windowless": "platform",
    "platform/sqlite": "platform",
    "platform/numbers": "model",
    "platform/freedesktop/bus": "platform",
    "platform/freedesktop/accessibility": "model platform platform/freedesktop/bus",
    "platform/freedesktop/appearance": "platform platform/freedesktop/bus",
    "platform/freedesktop/dialogs": "platform platform/freedesktop/bus",
    # The URL handlers and the entries are read with GLib, whose pointers the bus owns too.
    "platform/freedesktop/applications": "model platform platform/freedesktop/bus",
    "platform/freedesktop/icons": "model platform platform/freedesktop/applications",
    "platform/freedesktop/portals": "platform platform/freedesktop/applications"
                                    " platform/freedesktop/bus",
    "platform/freedesktop/session": "model platform platform/freedesktop/applications"
                                    " platform/freedesktop/icons",
    "platform/freedesktop/toolkit": "platform platform/freedesktop/bus",
    "platform/x11/connection": "model platform",
    "platform/x11/discovery": "model platform platform/numbers platform/x11/connection",
    "platform/x11/capture": "model platform platform/x11/connection",
    # Its applications are those of the session, and so are those of all the others.
    "platform/x11/actions": "model platform platform/freedesktop/applications"
                            " platform/freedesktop/session platform/x11/connection"
                            " platform/x11/discovery",
    "platform/x11/keys": "platform platform/x11/connection",
    "platform/x11/settings": "platform platform/x11/connection",
    "platform/x11": "model platform platform/numbers platform/x11/connection"
                    " platform/x11/discovery platform/x11/capture platform/x11/keys",
    "platform/wayland/connection": "platform",
    "platform/wayland/capture": "platform platform/wayland/connection",
    "platform/wayland/toplevels": "platform platform/wayland/connection",
    "platform/wayland/wlr": "model platform platform/numbers platform/freedesktop/applications"
                            " platform/freedesktop/session platform/wayland/connection"
                            " platform/wayland/capture platform/wayland/toplevels",
    "platform/wayland/sway": "model platform platform/numbers platform/freedesktop/applications"
                             " platform/freedesktop/session platform/wayland/capture"
                             " platform/wayland/connection",
    # It talks to the Shell over the bus, as GLib gives it.
    "platform/gnome": "model platform platform/numbers platform/freedesktop/applications"
                      " platform/freedesktop/bus platform/freedesktop/session",
    "platform/kwin": "model platform platform/numbers platform/freedesktop/bus"
                     " platform/freedesktop/applications platform/freedesktop/session",
    "windows": "model platform",
    "windows/memory": "model windows",
    "store/board": "model transfer text navigation platform windows",
    "store/desktop": "model platform windows",
    "store": "model transfer text navigation platform windows windows/memory store/*",
    "automation": "model text navigation platform windows store/*",
    "shell": "text navigation platform store/*",
    # From the bottom of the views up: each folder may use some of those before it.
    "views/appearance": "model text layout platform windows",
    "views/models": "model",
    "views/scene": "layout views/appearance",
    "views/controls": "views/appearance views/scene",
    "views/backups": "model text store/* views/appearance views/controls views/models"
                     " views/scene",
    "views/transfer": "model text transfer platform store/* views/appearance views/backups"
                      " views/controls views/models views/scene",
    "views/entry": "model text windows store/* views/appearance views/controls views/models"
                   " views/scene",
    "views/goals": "model text navigation store/* views/appearance views/controls views/models"
                   " views/scene",
    "views/todos": "model text navigation store/* views/appearance views/controls views/goals"
                   " views/models views/scene",
    "views/windows": "model text navigation platform windows store/* views/appearance"
                     " views/controls views/goals views/models views/scene",
    "views/board": "model text navigation layout store/* views/appearance views/backups"
                   " views/controls views/goals views/models views/scene views/todos"
                   " views/transfer views/windows",
    "views": "model text platform store/* shell views/*",
    "app/desktops": "model platform/*",
    "app": "model transfer platform/* store/* automation shell views app/desktops",
    # main.cpp.
    "": "platform/freedesktop/toolkit platform/qt platform/sqlite platform/x11/connection views app"
        " app/desktops",
}

# Libraries that only some folders, and those within them, know of, by their headers.
_LIBRARIES = {
    r"(xcb|X11)/": "platform/x11",
    r"(wayland-|wlr-|ext-)": "platform/wayland",
    r"(gio|glib)[-/.]": "platform/freedesktop platform/gnome platform/kwin",
    r"(QtDBus/|QDBus)": "platform/freedesktop",
    r"sqlite3\.h": "platform/sqlite",
    r"rapidjson/": "model",
    r"libical/": "transfer",
    r"(QtSvg/|QSvg)": "platform/freedesktop views/scene",
    r"(QtQml|QQml|QJS)": "views",
    r"(QtQuick/|QQuick|QSG)": "shell views app",
}

# A folder of the views is a module of QML: src/views/goals is Kelpa.Goals.
_IMPORT = re.compile(r"^\s*import\s+Kelpa\.(\w+)", re.MULTILINE)
_INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)


def _folder_of(path):
    """The folder of those above that a path below src/ belongs to; None for an unknown one."""
    folder = path.parent
    while folder.as_posix() not in _FOLDERS and folder.name:
        folder = folder.parent
    name = "" if folder == pathlib.Path() else folder.as_posix()
    return name if name or path.parent == pathlib.Path() else None


def _within(folder, names):
    """Whether a folder is one of the names, where "x/*" names x and all within it."""
    return any(folder == name.removesuffix("/*")
               or name.endswith("/*") and folder.startswith(name[:-1]) for name in names)


def _troubles(path, text):
    """Why a source at a path below src/ must not include what it does."""
    own = _folder_of(path)
    if own is None:
        yield "its folder is not among those of scripts/layering.py"
        return
    if path.suffix == ".qml":
        for module in _IMPORT.findall(text):
            folder = f"views/{module.lower()}"
            if folder != own and not _within(folder, _FOLDERS[own].split()):
                yield f"must not import Kelpa.{module}"
        return
    for header, library in _INCLUDE.findall(text):
        folder = _folder_of(pathlib.PurePosixPath(header)) if header else own
        if folder != own and not _within(folder, _FOLDERS[own].split()):
            yield f"must not include {header}"
        for name, folders in _LIBRARIES.items():
            if library and re.match(name, library) and not _within(
                    own, [f"{each}/*" for each in folders.split()]):
                yield f"must not include {library}"


def _disorder():
    """Folders that use one listed after them in the table of README.md, or in `_FOLDERS`."""
    for own, used in _FOLDERS.items():
        above = list(_FOLDERS)[:list(_FOLDERS).index(own)]
        if any(name.startswith("views/") and name not in above and name != "views/*"
               for name in used.split()):
            yield f"scripts/layering.py: {own} uses a folder of the views that is not before it"
    table = re.findall(r"^\| `src/(\w+)/` \|", (_ROOT / "README.md").read_text(), re.MULTILINE)
    for own, used in _FOLDERS.items():
        for folder in used.split():
            top, other = own.split("/")[0], folder.split("/")[0]
            if top and (other not in table[:table.index(top) + 1]):
                yield f"README.md: src/{own} uses src/{folder}, which is not above it"


def main():
    sources = sorted(path for ending in ("h", "cpp", "qml")
                     for path in (_ROOT / "src").rglob(f"*.{ending}"))
    found = list(_disorder())
    for source in sources:
        path = source.relative_to(_ROOT / "src")
        found += [f"src/{path}: {trouble}" for trouble in _troubles(path, source.read_text())]
    print(*found, sep="\n", end="\n" if found else "")
    return 1 if found or not sources else 0


if __name__ == "__main__":
    sys.exit(main())
