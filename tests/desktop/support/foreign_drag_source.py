"""A program from which texts can be dragged, one after the other:
foreign_drag_source.py TITLE TEXT...

It writes what becomes of a drag: began, asked (for the text), refused, the X id of the last window
below the pointer that takes drags, ended."""

import sys

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402

title, *texts = sys.argv[1:]


class Source(Gtk.EventBox):
    def __init__(self):
        super().__init__()
        self._over = None
        self.add(Gtk.Label(label="Drag me"))
        self.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [], Gdk.DragAction.COPY | Gdk.DragAction.MOVE)
        self.drag_source_add_text_targets()
        self.connect("drag-begin", self._begin)
        self.connect("drag-data-get", self._give)
        self.connect("drag-failed", self._fail)
        self.connect("drag-end", self._end)

    def _begin(self, _area, context):
        self._say("began")
        self._watch = GLib.timeout_add(20, self._look, context)

    def _look(self, context):
        """By the time a drag has ended, its destination is forgotten."""
        window = context.get_dest_window()
        self._over = hex(window.get_xid()) if window else self._over
        return GLib.SOURCE_CONTINUE

    def _give(self, _area, _context, data, *_):
        self._say("asked")
        data.set_text(texts[0], -1)

    def _fail(self, *_):
        self._say("refused")
        # The picture need not fly home; it would catch the next press.
        return True

    def _end(self, *_):
        GLib.source_remove(self._watch)
        self._say(self._over or "nowhere")
        texts.pop(0)
        self._say("ended")

    def _say(self, what):
        print(what, flush=True)


window = Gtk.Window(title=title)
window.set_default_size(160, 60)
window.set_keep_above(True)
window.add(Source())
window.connect("destroy", Gtk.main_quit)
window.move(0, 0)
window.show_all()
Gtk.main()
