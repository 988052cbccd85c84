"""What the extension holds in the Shell: connections, subscriptions, names, objects and sources, noted from when it
takes them until it gives them back."""

_RECORD = """
const {Gio, GLib, GObject} = imports.gi;
const held = globalThis.kelpaHeld = new Map();
// Whether the extension calls the function that asks: below it, the Shell takes things for itself.
const isOurs = () => new Error().stack.split('\\n')[2].includes('windows@kelpa.org');
function record(owner, take, give, key) {
    const [taken, given] = [owner[take], owner[give]];
    owner[take] = function (...args) {
        const id = taken.apply(this, args);
        // The connections of the exported object are to itself.
        if (isOurs() && !`${args[0]}`.startsWith('handle-'))
            held.set(key(this, id), `${take} ${args[0]}`);
        return id;
    };
    owner[give] = function (...args) {
        held.delete(key(this, args[0]));
        return given.apply(this, args);
    };
}
const ofObject = (object, id) => `${object} ${id}`;
record(GObject.Object.prototype, 'connect', 'disconnect', ofObject);
record(Gio.DBusConnection.prototype, 'signal_subscribe', 'signal_unsubscribe', (_, id) => `subscription ${id}`);
record(Gio, 'bus_own_name_on_connection', 'bus_unown_name', (_, id) => `name ${id}`);
record(Gio.DBusExportedObject.prototype, 'export', 'unexport', object => `object ${object}`);
const add = GLib.timeout_add;
GLib.timeout_add = function (priority, interval, call) {
    if (!isOurs())
        return add(priority, interval, call);
    const id = add(priority, interval, () => {
        const again = call();
        if (!again)
            held.delete(`source ${id}`);
        return again;
    });
    held.set(`source ${id}`, 'timeout_add');
    return id;
};
const remove = GLib.source_remove;
GLib.source_remove = function (id) {
    held.delete(`source ${id}`);
    return remove(id);
};
true
"""


def record(desktop):
    """Begins to note; once for each Shell, while the extension is off."""
    assert desktop.evaluate(_RECORD)


def held(desktop):
    """Each with the function that took it and what that was asked for."""
    return sorted(desktop.evaluate("[...globalThis.kelpaHeld.values()]"))
