// Hears the double tap of Super. The compositor tells each tap that was not part of a shortcut or of a
// click; what comes between two taps arrives here because the first one opens the overview, which
// has the keyboard and the pointer. Taps are told as they come and the rest when the Shell begins its next
// frame, so two taps are a double tap only then.

import Clutter from 'gi://Clutter';
import GLib from 'gi://GLib';
import * as Main from 'resource:///org/gnome/shell/ui/main.js';

import {DoubleTap, LONGEST_INTERVAL} from './rules.js';

const SUPER = [Clutter.KEY_Super_L, Clutter.KEY_Super_R];
const DISTURBING = [Clutter.EventType.BUTTON_PRESS, Clutter.EventType.TOUCH_BEGIN, Clutter.EventType.SCROLL];
const OTHER_MODIFIERS =
    Clutter.ModifierType.SHIFT_MASK | Clutter.ModifierType.CONTROL_MASK | Clutter.ModifierType.MOD1_MASK;

export class Taps {
    constructor(doubleTapped) {
        this._doubleTapped = doubleTapped;
        this._rule = new DoubleTap();
        this._events = 0;
        this._frame = 0;
        this._timeout = 0;
        this._overlayKey = global.display.connect('overlay-key', () => this._tapped());
    }

    end() {
        global.display.disconnect(this._overlayKey);
        this._stopListening();
        this._stopWaiting();
    }

    _tapped() {
        const time = global.get_current_time() || GLib.get_monotonic_time() / 1000;
        if (global.get_pointer()[2] & OTHER_MODIFIERS) {
            // What comes between the taps of a pair may still be told.
            if (!this._frame)
                this._stopListening();
            this._rule.disturbed(time);
        } else if (this._rule.tapped(time)) {
            this._confirmAtNextFrame();
        } else {
            this._stopListening();
            this._listen();
        }
    }

    _confirmAtNextFrame() {
        if (this._frame)
            return;
        this._frame = global.stage.connect('before-update', () => {
            this._stopWaiting();
            if (!this._rule.confirmed())
                return;
            // The first tap opened it, and the Shell has shown all applications for the second.
            Main.overview.hide();
            this._doubleTapped();
        });
        global.stage.queue_redraw();
    }

    _listen() {
        this._events = global.stage.connect('captured-event', (_stage, event) => {
            const type = event.type();
            if (type === Clutter.EventType.KEY_PRESS && SUPER.includes(event.get_key_symbol()))
                this._rule.pressed(event.get_time());
            else if (type === Clutter.EventType.KEY_PRESS || DISTURBING.includes(type))
                this._rule.disturbed(event.get_time());
            return Clutter.EVENT_PROPAGATE;
        });
        // Events may be late: their own times decide.
        this._timeout = GLib.timeout_add(GLib.PRIORITY_LOW, 3 * LONGEST_INTERVAL, () => {
            if (this._frame)
                return GLib.SOURCE_CONTINUE;
            this._timeout = 0;
            this._stopListening();
            return GLib.SOURCE_REMOVE;
        });
    }

    _stopListening() {
        if (this._events)
            global.stage.disconnect(this._events);
        if (this._timeout)
            GLib.source_remove(this._timeout);
        this._events = this._timeout = 0;
        this._rule.unheard();
    }

    _stopWaiting() {
        if (this._frame)
            global.stage.disconnect(this._frame);
        this._frame = 0;
    }
}
