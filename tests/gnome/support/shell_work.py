"""What the Shell does for Kelpa, counted in the Shell itself."""

import collections
import pathlib
import time

Work = collections.namedtuple("Work", "pictures bytes lists workspaces changes")
_DRAWING = pathlib.Path(__file__).with_name("drawing.py")
# Pictures are written by a method of the language's own library, and lists put together by another.
_COUNT = """(() => {
    const {GLib} = imports.gi;
    const {ImageSurface} = imports.cairo;
    const work = globalThis.kelpaWork = {pictures: 0, bytes: 0, lists: 0, workspaces: 0, changes: 0};
    const write = ImageSurface.prototype.writeToPNG;
    ImageSurface.prototype.writeToPNG = function (path) {
        write.call(this, path);
        work.pictures += 1;
        work.bytes += imports.gi.Gio.File.new_for_path(path).query_info('standard::size', 0, null).get_size();
    };
    const array = GLib.Variant.new_array;
    GLib.Variant.new_array = function (type, children) {
        // That of a window's own row is of pairs.
        if (type.dup_string() === 'a{sv}' && new Error().stack.includes('windows@kelpa.org'))
            work.lists += 1;
        return array.call(this, type, children);
    };
    const {WorkspaceManager} = imports.gi.Meta;
    const number = WorkspaceManager.prototype.get_n_workspaces;
    WorkspaceManager.prototype.get_n_workspaces = function () {
        // Also to send a window there.
        if (/^workspaces@.*windows@kelpa\\.org/m.test(new Error().stack))
            work.workspaces += 1;
        return number.call(this);
    };
    const {DBusConnection} = imports.gi.Gio;
    const emit = DBusConnection.prototype.emit_signal;
    DBusConnection.prototype.emit_signal = function (to, path, face, signal, values) {
        if (face === 'org.kelpa.Windows1' && signal === 'Changed')
            work.changes += 1;
        return emit.call(this, to, path, face, signal, values);
    };
    return true;
})()"""


def count(desktop):
    """Begins to count; once for each Shell."""
    assert desktop.evaluate(_COUNT)


def done(desktop):
    """The pictures and their bytes, the lists of windows and of workspaces, and the signals that something
    has changed, since `count` was called."""
    return Work(**desktop.evaluate("globalThis.kelpaWork"))


def done_in(desktop, seconds):
    """The same, of so many seconds from now."""
    before, began = done(desktop), time.monotonic()
    time.sleep(seconds)
    after = done(desktop)
    return Work(*(later - sooner for later, sooner in zip(after, before))), time.monotonic() - began


def start_drawing(desktop):
    """A window that changes without end."""
    drawing = desktop.start("/usr/bin/python3", "-B", _DRAWING)
    desktop.wait_for_window("Drawing")
    return drawing
