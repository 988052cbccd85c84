// The Shell's windows: which there are, what is done with one, and when something of them changes.

import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';
import Shell from 'gi://Shell';
import * as Main from 'resource:///org/gnome/shell/ui/main.js';

import {Refusal, described, entryName, mostRecentFirst, otherWorkspace, workspaceNames} from './rules.js';

const KINDS = new Map([
    [Meta.WindowType.NORMAL, 'normal'],
    [Meta.WindowType.DIALOG, 'dialog'],
    [Meta.WindowType.MODAL_DIALOG, 'dialog'],
    [Meta.WindowType.UTILITY, 'utility'],
    [Meta.WindowType.TOOLBAR, 'utility'],
]);

// The windows from the lowest to the uppermost, without menus and what else its program places itself.
function all() {
    return global.get_window_actors()
        .filter(actor => !actor.is_destroyed())
        .map(actor => actor.meta_window)
        .filter(window => window && !window.is_override_redirect());
}

// In their order.
function presentWorkspaces() {
    const manager = global.workspace_manager;
    return Array.from({length: manager.get_n_workspaces()},
        (_none, index) => manager.get_workspace_by_index(index));
}

// The ids begin with the time, in microseconds, so that those of another run, which began later, are greater.
let lastWorkspaceID = GLib.get_real_time();

// Kept on the workspace itself: it lasts as long as that, also while the extension is switched off.
function workspaceID(workspace) {
    if (!workspace._kelpaID)
        workspace._kelpaID = ++lastWorkspaceID;
    return workspace._kelpaID;
}

function facts(window, names) {
    const frame = window.get_frame_rect();
    const app = Shell.WindowTracker.get_default().get_window_app(window);
    const workspace = window.get_workspace();
    const parent = window.get_transient_for();
    const active = global.workspace_manager.get_active_workspace();
    const index = window.is_on_all_workspaces() || !workspace ? -1 : workspace.index();
    return {
        id: window.get_id(),
        title: window.get_title(),
        pid: Math.max(0, window.get_pid()),
        app: entryName(app && app.get_id()),
        wmClass: window.get_wm_class(),
        x: frame.x, y: frame.y, width: frame.width, height: frame.height,
        workspace: index,
        otherWorkspace: otherWorkspace(index, active.index(), names),
        onScreen: window.located_on_workspace(active) && window.showing_on_its_workspace(),
        minimized: window.minimized,
        kind: KINDS.get(window.get_window_type()) || 'other',
        skipTaskbar: window.is_skip_taskbar(),
        xwayland: window.get_client_type() === Meta.WindowClientType.X11,
        role: window.get_role(),
        transientFor: parent && parent.get_id(),
        attention: window.demands_attention || window.urgent,
    };
}

function newestFirst(windows) {
    return mostRecentFirst(windows.map(window => ({
        window,
        isFocused: window.has_focus(),
        usedAt: window.get_user_time(),
    }))).map(({window}) => window);
}

// The list as the bus is told it. `names` gives those of the workspaces. To put a window into that form
// takes ten times as long as to look at it, so the forms of windows that are as they were are kept.
export class List {
    constructor(names) {
        this._names = names;
        this._rows = new Map();
    }

    forget() {
        this._rows.clear();
    }

    workspaces() {
        return workspaceNames(global.workspace_manager.get_n_workspaces(), this._names());
    }

    identifiedWorkspaces() {
        const names = this.workspaces();
        const rows = presentWorkspaces().map((workspace, index) => [workspaceID(workspace), names[index]]);
        return new GLib.Variant('a(ts)', rows);
    }

    take() {
        const before = this._rows;
        this._rows = new Map();
        const names = this._names();
        const rows = newestFirst(all()).map(window => {
            const now = facts(window, names);
            const text = JSON.stringify(now);
            let row = before.get(window);
            if (!row || row.text !== text)
                row = {text, form: new GLib.Variant('a{sv}', described(now))};
            this._rows.set(window, row);
            return row.form;
        });
        return GLib.Variant.new_array(new GLib.VariantType('a{sv}'), rows);
    }
}

export function find(id) {
    const found = all().find(window => window.get_id() === id);
    if (!found)
        throw new Refusal('NoSuchWindow', `there is no window ${id}`);
    return found;
}

export function activate(window, time) {
    Main.activateWindow(window, time || global.display.get_current_time_roundtrip());
}

export function close(window) {
    window.delete(global.display.get_current_time_roundtrip());
}

// Activates the window of a process that a person used last.
export function bringForward(pid) {
    const own = all().filter(window => window.get_pid() === pid &&
                                       window.get_window_type() === Meta.WindowType.NORMAL);
    if (!own.length)
        throw new Refusal('NoSuchWindow', 'the caller has no window');
    activate(newestFirst(own)[0], 0);
}

// By its number, from 1.
export function numberedWorkspace(number) {
    const count = global.workspace_manager.get_n_workspaces();
    if (number < 1 || number > count)
        throw new Refusal('NoSuchWorkspace', `there are ${count} workspaces, and none is ${number}`);
    return global.workspace_manager.get_workspace_by_index(number - 1);
}

// By its id.
export function identifiedWorkspace(id) {
    const found = presentWorkspaces().find(workspace => workspaceID(workspace) === id);
    if (!found)
        throw new Refusal('NoSuchWorkspace', `there is no workspace whose id is ${id}`);
    return found;
}

export function sendTo(window, workspace) {
    if (!window.is_on_all_workspaces())
        window.change_workspace(workspace);
}

export function showWorkspace(workspace) {
    Main.overview.hide();
    if (workspace !== global.workspace_manager.get_active_workspace())
        workspace.activate(global.display.get_current_time_roundtrip());
}

// Permits a program that is about to start to have the focus.
export function token(entry) {
    const app = entry ? Shell.AppSystem.get_default().lookup_app(entry) : null;
    const info = app && app.get_app_info() ||
        Gio.AppInfo.create_from_commandline('true', entry || 'program',
            Gio.AppInfoCreateFlags.SUPPORTS_STARTUP_NOTIFICATION);
    const now = global.display.get_current_time_roundtrip();
    return global.create_app_launch_context(now, -1).get_startup_notify_id(info, []) || '';
}

// By the kind of change; see the rules.
const WINDOW_SIGNALS = {
    windows: [
        'notify::minimized', 'notify::skip-taskbar', 'notify::on-all-workspaces', 'notify::window-type',
        'notify::demands-attention', 'notify::urgent', 'workspace-changed',
    ],
    looks: [
        'notify::title', 'notify::wm-class', 'notify::gtk-application-id', 'notify::mutter-hints',
        'position-changed', 'size-changed',
    ],
};

// One that goes or moves gives others new numbers.
const WORKSPACE_SIGNALS = [
    'active-workspace-changed', 'workspace-added', 'workspace-removed', 'workspaces-reordered',
];

// Calls a function with the kind of change whenever something of the list may have changed, until it ends.
export class Watch {
    constructor(changed) {
        this._changed = changed;
        this._connections = [];
        this._windows = new Map();
        this._connect(global.display, 'window-created', (_display, window) => {
            this._add(window);
            changed('windows');
        });
        for (const signal of ['notify::focus-window', 'restacked'])
            this._connect(global.display, signal, () => changed('windows'));
        for (const signal of WORKSPACE_SIGNALS)
            this._connect(global.workspace_manager, signal, () => changed('windows'));
        this._connect(Shell.WindowTracker.get_default(), 'tracked-windows-changed', () => changed('looks'));
        for (const window of all())
            this._add(window);
    }

    end() {
        for (const [object, connection] of this._connections)
            object.disconnect(connection);
        this._connections = [];
        for (const window of [...this._windows.keys()])
            this._remove(window);
    }

    _connect(object, signal, handler) {
        this._connections.push([object, object.connect(signal, handler)]);
    }

    _add(window) {
        if (this._windows.has(window))
            return;
        const connections = Object.entries(WINDOW_SIGNALS).flatMap(([kind, signals]) =>
            signals.map(signal => window.connect(signal, () => this._changed(kind))));
        connections.push(window.connect('unmanaged', () => {
            this._remove(window);
            this._changed('windows');
        }));
        this._windows.set(window, connections);
    }

    _remove(window) {
        for (const connection of this._windows.get(window))
            window.disconnect(connection);
        this._windows.delete(window);
    }
}
