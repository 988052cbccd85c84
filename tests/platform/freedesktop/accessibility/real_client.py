"""A GTK program that shows one document and says where it is, as a browser does."""

import ctypes

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("Atk", "1.0")
from gi.repository import Atk, Gtk  # noqa: E402

glib = ctypes.CDLL("libglib-2.0.so.0")
glib.g_strdup.restype = ctypes.c_void_p
glib.g_strdup.argtypes = [ctypes.c_char_p]
glib.g_malloc.restype = ctypes.c_void_p
glib.g_malloc.argtypes = [ctypes.c_size_t]


def attribute(name, value):
    """An AtkAttribute, which the toolkit frees; the bindings know no way to make one."""
    memory = glib.g_malloc(2 * ctypes.sizeof(ctypes.c_void_p))
    pair = (ctypes.c_void_p * 2).from_address(memory)
    pair[0] = glib.g_strdup(name)
    pair[1] = glib.g_strdup(value)
    return memory


class PageAccessible(Gtk.ContainerAccessible, Atk.Document):
    def do_get_role(self):
        return Atk.Role.DOCUMENT_WEB

    def do_get_document_attributes(self):
        return [attribute(b"DocURL", b"https://example.org/real")]


class Page(Gtk.EventBox):
    pass


Page.set_accessible_type(PageAccessible)
window = Gtk.Window(title="Real page")
window.add(Page())
window.set_default_size(640, 480)
window.connect("map-event", lambda *event: print("shown", flush=True))
window.show_all()
Gtk.main()
