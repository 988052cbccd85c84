"""A program that has the desktop's clipboard: clipboard_holder.py [TEXT [TIMES]]

It gives the text, repeated that often, to every program that asks. Without one it has the clipboard and what is selected,
and never answers, as a program that hangs. It writes "held" as soon as it has them."""

import signal
import sys


def give(text):
    import gi

    gi.require_version("Gtk", "3.0")
    gi.require_version("Gdk", "3.0")
    from gi.repository import Gdk, GLib, Gtk

    def hold():
        Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD).set_text(text, -1)
        print("held", flush=True)

    GLib.idle_add(hold)
    Gtk.main()


def keep_silent():
    from Xlib import X, Xatom
    from Xlib.display import Display

    display = Display()
    window = display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
    for name in (display.intern_atom("CLIPBOARD"), Xatom.PRIMARY):
        window.set_selection_owner(name, X.CurrentTime)
    display.sync()
    print("held", flush=True)
    signal.pause()


if len(sys.argv) > 1:
    give(sys.argv[1] * int(sys.argv[2] if len(sys.argv) > 2 else 1))
else:
    keep_silent()
