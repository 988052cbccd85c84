"""A program from which text can be dragged: foreign_drag_source.py TITLE TEXT"""

import sys

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402

title, text = sys.argv[1:]
window = Gtk.Window(title=title)
window.set_default_size(160, 60)
window.set_keep_above(True)
area = Gtk.EventBox()
area.add(Gtk.Label(label="Drag me"))
area.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [], Gdk.DragAction.COPY | Gdk.DragAction.MOVE)
area.drag_source_add_text_targets()
area.connect("drag-begin", lambda *_: print("began", flush=True))
area.connect("drag-data-get", lambda _area, _context, data, *_: data.set_text(text, -1))
area.connect("drag-end", lambda *_: print("ended", flush=True))
window.add(area)
window.connect("destroy", Gtk.main_quit)
window.move(0, 0)
window.show_all()
Gtk.main()
