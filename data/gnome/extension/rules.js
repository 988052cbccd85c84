// What can be decided without a Shell: when taps are a double tap, how often pictures are drawn and
// changes told, how large a picture is, and what a window looks like on the bus. Times are in
// milliseconds of any clock unless they say otherwise.

import GLib from 'gi://GLib';

const LONGEST_PRESS = 450;
export const LONGEST_INTERVAL = 360;

// Times of events are 32 bits wide and begin anew after 49 days.
function span(from, to) {
    return (to - from) >>> 0;
}

// Two quick taps of a key, alone. The compositor tells a tap when it ends; when a press began is known
// only while the Shell has the keyboard, in older ones. What comes between two taps may be told after both.
export class DoubleTap {
    constructor() {
        this._pressedAt = null;
        this._tappedAt = null;
        // When the pair that is not confirmed yet began and ended.
        this._pair = null;
    }

    pressed(time) {
        this._pressedAt = time;
    }

    // Nothing is told any more but taps, so the tap of a press may be missed.
    unheard() {
        this._pressedAt = null;
    }

    // Another key, a click or a turn of the wheel.
    disturbed(time) {
        this._tappedAt = null;
        if (this._pair && span(this._pair.began, time) <= span(this._pair.began, this._pair.ended))
            this._pair = null;
    }

    // True exactly when this tap completes a pair. A third tap in a row begins the next pair.
    tapped(time) {
        const isTap = this._pressedAt === null || span(this._pressedAt, time) <= LONGEST_PRESS;
        const isSecond = isTap && this._tappedAt !== null && span(this._tappedAt, time) <= LONGEST_INTERVAL;
        if (isSecond)
            this._pair = {began: this._tappedAt, ended: time};
        this._pressedAt = null;
        this._tappedAt = isTap && !isSecond ? time : null;
        return isSecond;
    }

    // Once all that was before the second tap has been told: true when the pair is a double tap.
    confirmed() {
        const isDoubleTap = this._pair !== null;
        this._pair = null;
        return isDoubleTap;
    }
}

// Keeps work that takes the Shell's time to a share of it: after a piece, there is none until enough
// time has passed. Times are in microseconds.
export class TimeShare {
    constructor(part) {
        this._pause = 1 / part - 1;
        this._freeAt = 0;
    }

    isFree(now) {
        return now >= this._freeAt;
    }

    spent(began, ended) {
        this._freeAt = ended + (ended - began) * this._pause;
    }
}

// At most so many turns in each period. Times are in the unit of the period.
export class Turns {
    constructor(most, period) {
        this._most = most;
        this._period = period;
        this._beganAt = -Infinity;
        this._taken = 0;
    }

    take(now) {
        if (now >= this._beganAt + this._period) {
            this._beganAt = now;
            this._taken = 0;
        }
        return ++this._taken <= this._most;
    }
}

// After how long without a change the next one is the first again.
const QUIET = 500;

// The time between two signals of a burst of changes: it doubles up to what a person still sees at once.
class Burst {
    constructor(shortest, longest) {
        this._shortest = this._interval = shortest;
        this._longest = longest;
        this._toldAt = -Infinity;
    }

    dueAt() {
        return this._toldAt + this._interval;
    }

    told(now) {
        const lasts = now <= this._toldAt + QUIET;
        this._interval = lasts ? Math.min(2 * this._interval, this._longest) : this._shortest;
        this._toldAt = now;
    }
}

// Says many changes as few: the first at once, the following ones together, the more seldom the longer they
// go on and the longer the Shell takes for what each makes the listener ask. What some windows change all the
// time, such as their titles, delays nobody who opens another one: each kind has its own bursts.
export class Coalescer {
    constructor({shortest, longest}, part) {
        this._shortest = this._interval = shortest;
        this._part = part;
        this._toldAt = -Infinity;
        this._bursts = {
            // Windows that open, close, go elsewhere or get the focus.
            windows: new Burst(shortest, longest),
            // What they look like and where they lie.
            looks: new Burst(shortest, longest),
        };
        this._waiting = new Set();
    }

    // How long to wait with a change, and with what waits already.
    delay(now, kind) {
        this._waiting.add(kind);
        const dueAt = Math.min(...[...this._waiting].map(each => this._bursts[each].dueAt()));
        return Math.max(0, Math.ceil(Math.max(dueAt, this._toldAt + this._interval) - now));
    }

    // All that waited.
    told(now) {
        for (const each of this._waiting)
            this._bursts[each].told(now);
        this._waiting.clear();
        this._toldAt = now;
    }

    cost(duration) {
        this._interval = Math.max(this._shortest, duration / this._part);
    }
}

// The size of a picture of something `width` x `height`, in its proportions, within a box, never larger
// than the thing itself and never without a pixel.
export function fitted(width, height, boxWidth, boxHeight) {
    const scale = Math.min(boxWidth / width, boxHeight / height, 1);
    return {
        width: Math.max(1, Math.round(width * scale)),
        height: Math.max(1, Math.round(height * scale)),
    };
}

const FIELDS = {
    id: 't', title: 's', pid: 'i', app: 's', wmClass: 's',
    x: 'i', y: 'i', width: 'i', height: 'i', workspace: 'i',
    onScreen: 'b', minimized: 'b', kind: 's', skipTaskbar: 'b', xwayland: 'b',
    role: 's', transientFor: 't', attention: 'b', otherWorkspace: 's',
};

// A window as the bus knows it. What the Shell does not know is nothing, of whatever type it is.
export function described(facts) {
    const nothing = {s: '', i: 0, t: 0, b: false};
    const row = {};
    for (const field of Object.keys(FIELDS)) {
        const type = FIELDS[field];
        const fact = facts[field];
        row[field] = new GLib.Variant(type, fact === null || fact === undefined ? nothing[type] : fact);
    }
    return row;
}

// The name that the person gave to a workspace, or else its number, where a window is on it and it is not
// the active one. An index below 0 stands for all of them.
export function otherWorkspace(index, active, names) {
    if (index < 0 || index === active)
        return '';
    return workspaceNames(index + 1, names)[index] || `${index + 1}`;
}

// The names of so many workspaces, nothing for one that has none.
export function workspaceNames(count, names) {
    return Array.from({length: count}, (_, index) => (names[index] || '').trim());
}

// Windows from the lowest to the uppermost, as the one that was active last first. Those that were
// active at the same time, or never, are as they lie.
export function mostRecentFirst(windows) {
    return [...windows].reverse().sort((one, other) => {
        if (one.isFocused !== other.isFocused)
            return one.isFocused ? -1 : 1;
        if (one.usedAt === 0 || other.usedAt === 0)
            return (one.usedAt === 0 ? 1 : 0) - (other.usedAt === 0 ? 1 : 0);
        return (other.usedAt - one.usedAt) | 0;
    });
}

// The name of a desktop entry, where the Shell's identifier of an application is one.
export function entryName(identifier) {
    return identifier && identifier.endsWith('.desktop') ? identifier : '';
}

// A number that is the same as long as a process lives, and no other process's: from the identifier of
// the machine's start and the line of /proc/PID/stat, whose name of the program may have any characters.
export function runOfProcess(boot, stat) {
    const [pid] = stat.split(' ', 1);
    const startedAt = stat.slice(stat.lastIndexOf(')') + 2).split(' ')[19];
    const text = `${boot.trim()} ${pid} ${startedAt}`;
    const sum = GLib.compute_checksum_for_string(GLib.ChecksumType.SHA256, text, -1);
    // As many bits as a number of this language holds.
    return parseInt(sum.slice(0, 13), 16) + 1;
}

// Why a call is refused, by the last part of the error's name on the bus.
export class Refusal extends Error {
    constructor(reason, message) {
        super(message);
        this.reason = reason;
    }
}
