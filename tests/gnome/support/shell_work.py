"""What the Shell does for Kelpa, counted in the Shell itself."""

import pathlib
import time

_DRAWING = pathlib.Path(__file__).with_name("drawing.py")
# Pictures are written by a method of the language's own library, and lists put together by another.
_COUNT = """(() => {
    const {GLib} = imports.gi;
    const {ImageSurface} = imports.cairo;
    const work = globalThis.kelpaWork = {pictures: 0, bytes: 0, lists: 0};
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
    return true;
})()"""


def count(desktop):
    """Begins to count; once for each Shell."""
    assert desktop.evaluate(_COUNT)


def done(desktop):
    """Pictures, their bytes and lists since `count` was called."""
    work = desktop.evaluate("globalThis.kelpaWork")
    return work["pictures"], work["bytes"], work["lists"]


def done_in(desktop, seconds):
    """The same, of so many seconds from now."""
    before, began = done(desktop), time.monotonic()
    time.sleep(seconds)
    after = done(desktop)
    return tuple(later - sooner for later, sooner in zip(after, before)), time.monotonic() - began


def start_drawing(desktop):
    """A window that changes without end."""
    drawing = desktop.start("/usr/bin/python3", "-B", _DRAWING)
    desktop.wait_for_window("Drawing")
    return drawing
