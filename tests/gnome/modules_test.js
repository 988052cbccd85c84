// modules_test.js FOLDER: runs the newer form of the extension, whose imports of the Shell are stubs, on the
// session bus, and is the Kelpa that it answers.

import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import System from 'system';

const [folder] = System.programArgs;
const {default: KelpaWindows} = await import(`file://${folder}/extension.js`);
const stubs = await import(`file://${folder}/shell_stubs.js`);

let failures = 0;

function expect(what, actual, expected) {
    const [is, should] = [JSON.stringify(actual), JSON.stringify(expected)];
    if (is !== should) {
        printerr(`${what}: ${is} instead of ${should}`);
        failures++;
    }
}

const bus = Gio.DBus.session;

// What is answered, or the name of the error.
function call(method, values = null) {
    return new Promise(done => {
        bus.call('org.kelpa.Windows', '/org/kelpa/Windows', 'org.kelpa.Windows1', method, values, null,
            Gio.DBusCallFlags.NO_AUTO_START, 20000, null, (_bus, result) => {
                try {
                    done(bus.call_finish(result).recursiveUnpack());
                } catch (error) {
                    done(Gio.DBusError.get_remote_error(error));
                }
            });
    });
}

function own(name) {
    return new Promise(done => Gio.bus_own_name_on_connection(
        bus, name, Gio.BusNameOwnerFlags.NONE, () => done(true), () => done(false)));
}

// The next signal of the extension; nothing when none comes.
function signal() {
    return new Promise(done => {
        const heard = bus.signal_subscribe(null, 'org.kelpa.Windows1', null, null, null, 0,
            (_bus, _sender, _path, _interface, name) => finish(name));
        const limit = GLib.timeout_add(GLib.PRIORITY_DEFAULT, 20000, () => finish(null));
        function finish(name) {
            bus.signal_unsubscribe(heard);
            if (name)
                GLib.source_remove(limit);
            done(name);
            return GLib.SOURCE_REMOVE;
        }
    });
}

function tap(time, modifiers) {
    global.get_current_time = () => time;
    global.get_pointer = () => [0, 0, modifiers];
    global.display.emit('overlay-key');
}

function press(time, key) {
    global.stage.emit('captured-event', {type: () => 1, get_key_symbol: () => key, get_time: () => time});
}

const extension = new KelpaWindows({program: GLib.file_read_link('/proc/self/exe')});
extension.enable();
expect('Kelpa has its name', await own('org.kelpa.Kelpa'), true);
expect('a list before Kelpa attaches', await call('List'), 'org.kelpa.Windows1.Error.AccessDenied');

const [run] = await call('Attach', new GLib.Variant('(u)', [2]));
expect('the run', Number.isSafeInteger(run) && run > 0, true);
const [windows] = await call('List');
expect('the windows', windows.map(({id, title, app, workspace, otherWorkspace}) =>
    [id, title, app, workspace, otherWorkspace]), [[7, 'Notes', 'notes.desktop', 1, '2']]);

let next = signal();
stubs.window.emit('notify::title');
expect('a new title is told', await next, 'Changed');
expect('a window is activated', [await call('Activate', new GLib.Variant('(tu)', [7, 0])),
    stubs.window.isActivated], [[], true]);
expect('no such window', await call('Close', new GLib.Variant('(t)', [8])),
    'org.kelpa.Windows1.Error.NoSuchWindow');

// Each list takes their names from the person's settings, which say none.
expect('the workspaces', await call('Workspaces'), [['', '']]);
const send = (id, number) => call('SendTo', new GLib.Variant('(tu)', [id, number]));
const show = number => call('ShowWorkspace', new GLib.Variant('(u)', [number]));
expect('a window is sent', [await send(7, 1), stubs.window.sentTo.index()], [[], 0]);
stubs.window.is_on_all_workspaces = () => true;
expect('one that is everywhere stays', [await send(7, 2), stubs.window.sentTo.index()], [[], 0]);
stubs.window.is_on_all_workspaces = () => false;
expect('no such window is sent', await send(8, 1), 'org.kelpa.Windows1.Error.NoSuchWindow');
expect('a workspace is shown', [await show(2), stubs.workspaces[1].shownAt], [[], 1]);
expect('that which shows is shown', [await show(1), stubs.workspaces[0].shownAt], [[], undefined]);
for (const number of [0, 3, 4294967295]) {
    expect(`nothing is sent to workspace ${number}`, [await send(7, number), stubs.window.sentTo.index()],
        ['org.kelpa.Windows1.Error.NoSuchWorkspace', 0]);
    expect(`there is no workspace ${number}`, await show(number), 'org.kelpa.Windows1.Error.NoSuchWorkspace');
}
const lists = () => call('ListWithWorkspaces');
const [listed, identified] = await lists();
expect('the windows of the same moment', listed.map(({id, workspace}) => [id, workspace]), [[7, 0]]);
expect('they have ids', identified.map(([id, name]) => [Number.isSafeInteger(id), name]),
    [[true, ''], [true, '']]);
expect('the later one has the greater', identified[0][0] < identified[1][0], true);
// The Shell removes the first one and adds another at the end.
const [removed] = stubs.workspaces.splice(0, 1);
stubs.workspaces.push({index: () => 1, activate() {}});
const [, shifted] = await lists();
expect('the one that is left has its id', shifted[0][0], identified[1][0]);
expect('the new one has another', shifted[1][0] > identified[1][0], true);
const sendByID = (id, workspace) => call('SendToWorkspace', new GLib.Variant('(tt)', [id, workspace]));
const showByID = workspace => call('GoToWorkspace', new GLib.Variant('(t)', [workspace]));
const [gone, left] = identified.map(([id]) => id);
const [remaining] = stubs.workspaces;
expect('a window is sent by the id', [await sendByID(7, left), stubs.window.sentTo === remaining], [[], true]);
stubs.window.sentTo = removed;
for (const id of [gone, 0, 2]) {
    expect(`nothing is sent to the workspace with the id ${id}`,
        [await sendByID(7, id), stubs.window.sentTo === removed],
        ['org.kelpa.Windows1.Error.NoSuchWorkspace', true]);
    expect(`none with the id ${id} is shown`, await showByID(id), 'org.kelpa.Windows1.Error.NoSuchWorkspace');
}
stubs.window.is_on_all_workspaces = () => true;
expect('one that is everywhere stays', [await sendByID(7, left), stubs.window.sentTo === removed], [[], true]);
stubs.window.is_on_all_workspaces = () => false;
expect('no such window is sent by an id', await sendByID(8, left), 'org.kelpa.Windows1.Error.NoSuchWindow');
remaining.shownAt = undefined;
global.workspace_manager.get_active_workspace = () => stubs.workspaces[1];
expect('a workspace is shown by the id', [await showByID(left), remaining.shownAt], [[], 1]);
remaining.shownAt = undefined;
global.workspace_manager.get_active_workspace = () => remaining;
expect('that which shows is shown', [await showByID(left), remaining.shownAt], [[], undefined]);
stubs.workspaces.splice(0, 2, removed, remaining);
expect('so has each of them when it is back', (await lists())[1], identified);
for (const event of ['workspace-added', 'workspace-removed', 'workspaces-reordered']) {
    next = signal();
    global.workspace_manager.emit(event);
    expect(`${event} is told`, await next, 'Changed');
}

// A key between them, which the Shell tells after both: the next signal is another one.
next = signal();
global.display.emit('overlay-key');
global.display.emit('overlay-key');
press(1000, 97);
global.stage.emit('before-update');
stubs.window.emit('notify::title');
expect('a key between two taps', await next, 'Changed');

// A tap with Shift ends the wait for a second tap, but not that for what came between two.
next = signal();
tap(2000, 0);
tap(2200, 0);
tap(2300, 1);
press(2100, 97);
global.stage.emit('before-update');
stubs.window.emit('notify::title');
expect('a key between two taps, told after a third', await next, 'Changed');
next = signal();
tap(20000, 0);
press(20100, 1);
tap(20200, 1);
tap(30000, 0);
tap(30200, 0);
global.stage.emit('before-update');
expect('two taps long after a press whose tap had Shift', await next, 'DoubleTap');
next = signal();
global.display.emit('overlay-key');
global.display.emit('overlay-key');
global.display.emit('overlay-key');
global.stage.emit('before-update');
expect('two taps are told', await next, 'DoubleTap');
next = signal();
new Gio.Settings({schema_id: 'org.gnome.mutter'}).set_string('overlay-key', '');
expect('a key that is taken away is told', await next, 'AbilitiesChanged');

// These wait for their frame when everything ends.
global.display.emit('overlay-key');
global.display.emit('overlay-key');
extension.disable();
expect('nothing is left behind', [global.display, global.stage, global.workspace_manager, stubs.tracker,
    stubs.window].map(each => each.handlers.size), [0, 0, 0, 0, 0]);
expect('nobody is answered any more', (await call('List')).startsWith('org.freedesktop.DBus.Error.'), true);

// As after the screen was locked.
extension.enable();
await call('Attach', new GLib.Variant('(u)', [4]));
expect('the workspaces are the same ones', (await lists())[1], identified);
extension.disable();

System.exit(failures ? 1 : 0);
