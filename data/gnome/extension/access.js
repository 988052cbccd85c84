// Whether who attaches is Kelpa. Titles and pictures are private, and every program of the session may call:
// only a process that owns a name of Kelpa's on the bus is answered, and that runs the program which this
// extension was installed with. Who is not attached is refused without asking anybody, so that a stranger's
// calls cost next to nothing.

import Gio from 'gi://Gio';
import GLib from 'gi://GLib';

import {Refusal, Turns} from './rules.js';

const BUS = ['org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus'];
// A Kelpa with another board has a name below it.
const KELPA = 'org.kelpa.Kelpa';
// Of those who were refused, as many are remembered.
const LARGEST_MEMORY = 64;
// A proof asks the bus and reads two files. Kelpa needs one, and a stranger with many connections gets few.
const PROOFS_A_SECOND = 20;

function denial() {
    return new Refusal('AccessDenied', 'only Kelpa is answered');
}

export class Access {
    // `left` is called with a caller that was admitted and is not on the bus any more.
    constructor(connection, program, left) {
        this._connection = connection;
        this._program = program;
        this._left = left;
        this._cancellable = new Gio.Cancellable();
        this._admitted = new Map();
        // By caller, why.
        this._refused = new Map();
        // By caller, the proofs that are under way.
        this._proofs = new Map();
        this._turns = new Turns(PROOFS_A_SECOND, 1000000);
        this._names = this._subscribe(KELPA, Gio.DBusSignalFlags.MATCH_ARG0_NAMESPACE,
            () => {
                this._refused = new Map();
                this._proofs = new Map();
            });
    }

    end() {
        this._cancellable.cancel();
        this._connection.signal_unsubscribe(this._names);
        for (const caller of [...this._admitted.keys()])
            this.dismiss(caller);
    }

    // Proves that a caller is Kelpa; a refusal otherwise. Calls that come during the proof wait for the same one.
    async admit(caller) {
        if (this._admitted.has(caller))
            return;
        if (this._refused.has(caller))
            throw this._refused.get(caller);
        const proofs = this._proofs;
        if (!proofs.has(caller)) {
            if (!this._turns.take(GLib.get_monotonic_time()))
                throw new Refusal('Busy', 'too many want to attach');
            proofs.set(caller, this._admit(caller).finally(() => proofs.delete(caller)));
        }
        await proofs.get(caller);
    }

    async _admit(caller) {
        // A name that comes during the proof makes another set of them.
        const refused = this._refused;
        // Heard from now on: who leaves during the proof is not admitted.
        let hasLeft = false;
        const watch = this._subscribe(caller, Gio.DBusSignalFlags.NONE, () => {
            hasLeft = true;
            if (!this._admitted.has(caller))
                return;
            this.dismiss(caller);
            this._left(caller);
        });
        const {pid, refusal} = await this._prove(caller);
        if (pid && !hasLeft && !this._cancellable.is_cancelled() && !this._admitted.has(caller)) {
            this._admitted.set(caller, {pid, watch});
            return;
        }
        this._connection.signal_unsubscribe(watch);
        if (this._admitted.has(caller))
            return;
        const reason = refusal || denial();
        if (!hasLeft && refused.size < LARGEST_MEMORY)
            refused.set(caller, reason);
        throw reason;
    }

    dismiss(caller) {
        this._connection.signal_unsubscribe(this._admitted.get(caller).watch);
        this._admitted.delete(caller);
    }

    // The process of a caller that was admitted.
    processOf(caller) {
        if (!this._admitted.has(caller))
            throw new Refusal('AccessDenied', 'only Kelpa is answered, when it has attached');
        return this._admitted.get(caller).pid;
    }

    // The caller's process, or else why it is refused.
    async _prove(caller) {
        try {
            const pid = await this._ask('GetConnectionUnixProcessID', '(s)', [caller]);
            const executable = `/proc/${pid}/exe`;
            const [running, installed] =
                await Promise.all([this._identity(executable), this._identity(this._program)]);
            if (!await this._ownsName(pid))
                return {refusal: denial()};
            if (running === installed)
                return {pid};
            // An update puts a new file in the place of the one that runs. Nothing is told for this name.
            return {refusal: await this._target(executable) === `${this._program} (deleted)`
                ? new Refusal('Outdated', 'this Kelpa was updated: it is answered when it is started anew')
                : denial()};
        } catch (error) {
            return {refusal: denial()};
        }
    }

    async _ownsName(pid) {
        const names = (await this._ask('ListNames')).filter(
            name => name === KELPA || name.startsWith(`${KELPA}.`));
        // A name may have gone since.
        const owners = await Promise.all(names.map(
            name => this._ask('GetConnectionUnixProcessID', '(s)', [name]).catch(() => 0)));
        return owners.includes(pid);
    }

    // The file itself: its path says nothing of a process that has mounted another file there.
    async _identity(path) {
        const info = await this._query(path, 'id::file', Gio.FileQueryInfoFlags.NONE);
        return info.get_attribute_string('id::file');
    }

    async _target(link) {
        const info = await this._query(link, 'standard::symlink-target', Gio.FileQueryInfoFlags.NOFOLLOW_SYMLINKS);
        return info.get_symlink_target();
    }

    _query(path, attributes, flags) {
        return new Promise((resolve, reject) => {
            Gio.File.new_for_path(path).query_info_async(
                attributes, flags, GLib.PRIORITY_DEFAULT, this._cancellable, (file, result) => {
                    try {
                        resolve(file.query_info_finish(result));
                    } catch (error) {
                        reject(error);
                    }
                });
        });
    }

    _subscribe(name, flags, changed) {
        return this._connection.signal_subscribe(
            BUS[0], BUS[2], 'NameOwnerChanged', BUS[1], name, flags, () => changed());
    }

    _ask(method, signature, values) {
        const parameters = signature ? new GLib.Variant(signature, values) : null;
        return new Promise((resolve, reject) => {
            this._connection.call(
                ...BUS, method, parameters, null, Gio.DBusCallFlags.NONE, -1, this._cancellable,
                (connection, result) => {
                    try {
                        resolve(connection.call_finish(result).deepUnpack()[0]);
                    } catch (error) {
                        reject(error);
                    }
                });
        });
    }
}
