// Tells Kelpa of the windows, and does with them what Kelpa is asked for; see the description of
// org.kelpa.Windows1. It shows nothing itself. Without a Kelpa that listens it hears of no change.

import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

import {Access} from './access.js';
import {INTERFACE} from './interface.js';
import {Pictures} from './pictures.js';
import {Coalescer, Refusal, runOfProcess} from './rules.js';
import {Taps} from './taps.js';
import * as Windows from './windows.js';

const NAME = 'org.kelpa.Windows';
const PATH = '/org/kelpa/Windows';
const VERSION = 4;
// Between two signals, in milliseconds, and which part of the Shell's time goes into lists.
const INTERVALS = {shortest: 50, longest: 250};
const SHARE = 0.1;

function run() {
    const read = path => new TextDecoder().decode(GLib.file_get_contents(path)[1]);
    return runOfProcess(read('/proc/sys/kernel/random/boot_id'), read('/proc/self/stat'));
}

export default class KelpaWindows extends Extension {
    enable() {
        this._bus = Gio.DBus.session;
        this._access = new Access(this._bus, this.metadata.program, caller => this._detach(caller));
        this._pictures = new Pictures();
        this._mutter = new Gio.Settings({schema_id: 'org.gnome.mutter'});
        this._workspaces = new Gio.Settings({schema_id: 'org.gnome.desktop.wm.preferences'});
        this._list = new Windows.List(() => this._workspaces.get_strv('workspace-names'));
        this._listeners = new Set();
        this._object = Gio.DBusExportedObject.wrapJSObject(INTERFACE, this._methods());
        this._object.export(this._bus, PATH);
        this._name = Gio.bus_own_name_on_connection(this._bus, NAME, Gio.BusNameOwnerFlags.NONE, null, null);
    }

    disable() {
        for (const caller of [...this._listeners])
            this._detach(caller);
        Gio.bus_unown_name(this._name);
        this._object.unexport();
        this._access.end();
        this._pictures.end();
        this._object = this._access = this._pictures = this._list = this._mutter = this._workspaces = null;
        this._listeners = this._bus = null;
    }

    // Each takes who calls, then the method's own arguments, and returns the answer, or its values, and its
    // descriptors.
    _methods() {
        const answers = {
            Attach: caller => ({values: this._attach(caller)}),
            Detach: caller => {
                this._access.dismiss(caller);
                this._detach(caller);
                return {};
            },
            List: () => ({reply: this._takeLists(() => [this._list.take()])}),
            ListWithWorkspaces: () => ({
                reply: this._takeLists(() => [this._list.take(), this._list.identifiedWorkspaces()]),
            }),
            Activate: (_caller, id, time) => {
                Windows.activate(Windows.find(id), time);
                return {};
            },
            Close: (_caller, id) => {
                Windows.close(Windows.find(id));
                return {};
            },
            Minimize: (_caller, id) => {
                Windows.find(id).minimize();
                return {};
            },
            Restore: (_caller, id) => {
                Windows.find(id).unminimize();
                return {};
            },
            Workspaces: () => ({values: [this._list.workspaces()]}),
            SendTo: (_caller, id, number) => {
                Windows.sendTo(Windows.find(id), Windows.numberedWorkspace(number));
                return {};
            },
            SendToWorkspace: (_caller, id, workspace) => {
                Windows.sendTo(Windows.find(id), Windows.identifiedWorkspace(workspace));
                return {};
            },
            ShowWorkspace: (_caller, number) => {
                Windows.showWorkspace(Windows.numberedWorkspace(number));
                return {};
            },
            GoToWorkspace: (_caller, workspace) => {
                Windows.showWorkspace(Windows.identifiedWorkspace(workspace));
                return {};
            },
            Picture: (_caller, id, ...wanted) => this._pictures.take(Windows.find(id), ...wanted),
            BringForward: caller => {
                Windows.bringForward(this._access.processOf(caller));
                return {};
            },
            Token: (_caller, entry) => ({values: [Windows.token(entry)]}),
        };
        const methods = {Version: VERSION};
        for (const name of Object.keys(answers)) {
            methods[`${name}Async`] = (parameters, invocation) =>
                this._answer(name, answers[name], parameters, invocation);
        }
        return methods;
    }

    async _answer(name, answer, parameters, invocation) {
        try {
            const caller = invocation.get_sender();
            if (name === 'Attach')
                await this._access.admit(caller);
            // It may have been switched off in the meantime.
            if (!this._object)
                throw new Refusal('AccessDenied', 'nobody is answered any more');
            this._access.processOf(caller);
            const {reply, values, descriptors} = answer(caller, ...parameters);
            const types = invocation.get_method_info().out_args.map(argument => argument.signature);
            invocation.return_value_with_unix_fd_list(
                reply || new GLib.Variant(`(${types.join('')})`, values || []), descriptors || null);
        } catch (error) {
            const reason = error instanceof Refusal ? error.reason : 'Failed';
            invocation.return_dbus_error(`org.kelpa.Windows1.Error.${reason}`, error.message);
        }
    }

    _takeLists(take) {
        const began = GLib.get_monotonic_time();
        const reply = GLib.Variant.new_tuple(take());
        this._coalescer.cost((GLib.get_monotonic_time() - began) / 1000);
        return reply;
    }

    _attach(caller) {
        if (!this._listeners.size) {
            this._coalescer = new Coalescer(INTERVALS, SHARE);
            this._timeout = 0;
            this._watch = new Windows.Watch(kind => this._changed(kind));
            this._taps = new Taps(() => this._tell('DoubleTap'));
            this._overlayKey =
                this._mutter.connect('changed::overlay-key', () => this._tell('AbilitiesChanged'));
            this._workspaceNames =
                this._workspaces.connect('changed::workspace-names', () => this._changed('looks'));
        }
        this._listeners.add(caller);
        const abilities = {doubleTap: new GLib.Variant('b', this._mutter.get_string('overlay-key') !== '')};
        return [run(), abilities];
    }

    _detach(caller) {
        this._listeners.delete(caller);
        if (this._listeners.size)
            return;
        this._list.forget();
        this._watch.end();
        this._taps.end();
        this._mutter.disconnect(this._overlayKey);
        this._workspaces.disconnect(this._workspaceNames);
        if (this._timeout)
            GLib.source_remove(this._timeout);
        this._watch = this._taps = this._coalescer = null;
        this._timeout = 0;
    }

    _changed(kind) {
        const now = GLib.get_monotonic_time() / 1000;
        const delay = this._coalescer.delay(now, kind);
        if (this._timeout) {
            if (this._dueAt <= now + delay)
                return;
            GLib.source_remove(this._timeout);
        }
        this._dueAt = now + delay;
        this._timeout = GLib.timeout_add(GLib.PRIORITY_DEFAULT, delay, () => {
            this._timeout = 0;
            this._coalescer.told(GLib.get_monotonic_time() / 1000);
            this._tell('Changed');
            return GLib.SOURCE_REMOVE;
        });
    }

    // To the listeners alone.
    _tell(signal) {
        for (const listener of this._listeners)
            this._bus.emit_signal(listener, PATH, 'org.kelpa.Windows1', signal, null);
    }
}
