"""editor.py [DOCUMENT]: a small text editor that says on the accessibility bus where its document is, as
large ones do. Its desktop entry is written by `install`, for which the toolkit is not needed."""

import ctypes
import pathlib
import sys

PROGRAM = "kelpa-test-editor"
NAME = "Small Editor"


def install(data_home):
    """Writes the desktop entry below the folder of the person's data."""
    folder = pathlib.Path(data_home) / "applications"
    folder.mkdir(parents=True, exist_ok=True)
    entry = folder / f"{PROGRAM}.desktop"
    entry.write_text(
        f"[Desktop Entry]\nType=Application\nName={NAME}\nStartupWMClass={PROGRAM}\n"
        f"Exec=/usr/bin/python3 -B {__file__} %F\n", encoding="utf-8")
    return entry


def _main():
    import gi

    gi.require_version("Gtk", "3.0")
    gi.require_version("Atk", "1.0")
    from gi.repository import Atk, GLib, Gtk

    glib = ctypes.CDLL("libglib-2.0.so.0")
    glib.g_strdup.restype = ctypes.c_void_p
    glib.g_strdup.argtypes = [ctypes.c_char_p]
    glib.g_malloc.restype = ctypes.c_void_p
    glib.g_malloc.argtypes = [ctypes.c_size_t]
    document = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else None

    def attribute(name, value):
        """An AtkAttribute, which the toolkit frees; the bindings know no way to make one."""
        memory = glib.g_malloc(2 * ctypes.sizeof(ctypes.c_void_p))
        pair = (ctypes.c_void_p * 2).from_address(memory)
        pair[0] = glib.g_strdup(name)
        pair[1] = glib.g_strdup(value)
        return memory

    class TextAccessible(Gtk.ContainerAccessible, Atk.Document):
        def do_get_role(self):
            return Atk.Role.DOCUMENT_TEXT

        def do_get_document_attributes(self):
            return [attribute(b"DocURL", document.as_uri().encode())] if document else []

    class Text(Gtk.EventBox):
        pass

    GLib.set_prgname(PROGRAM)
    Text.set_accessible_type(TextAccessible)
    window = Gtk.Window(title=f"{document.name if document else 'Untitled'} - {NAME}")
    window.add(Text())
    window.set_default_size(640, 480)
    window.connect("destroy", Gtk.main_quit)
    window.show_all()
    Gtk.main()


if __name__ == "__main__":
    _main()
