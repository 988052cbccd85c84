// Stands in for what the Shell gives an extension in the newer form: one window, and signals that a test
// emits. Each import of the Shell's own modules and types becomes one of this file.

export class Emitter {
    constructor(members = {}) {
        this.handlers = new Map();
        this._last = 0;
        Object.assign(this, members);
    }

    connect(signal, handler) {
        this.handlers.set(++this._last, [signal, handler]);
        return this._last;
    }

    disconnect(connection) {
        if (!this.handlers.delete(connection))
            throw new Error(`there is no connection ${connection}`);
    }

    emit(signal, ...values) {
        for (const [name, handler] of [...this.handlers.values()]) {
            if (name === signal)
                handler(this, ...values);
        }
    }
}

export class Extension {
    constructor(metadata) {
        this.metadata = metadata;
    }
}

export const overview = {hide() {}};
export function activateWindow(window) {
    window.isActivated = true;
}

// The first one is active.
export const workspaces = [0, 1].map(index => ({
    index: () => index,
    activate(time) {
        this.shownAt = time;
    },
}));

export const tracker = new Emitter({get_window_app: () => ({get_id: () => 'notes.desktop'})});

export const window = new Emitter({
    isActivated: false,
    minimized: false,
    demands_attention: false,
    urgent: false,
    get_id: () => 7,
    get_title: () => 'Notes',
    get_pid: () => 41,
    get_wm_class: () => 'notes',
    get_role: () => null,
    get_frame_rect: () => ({x: 1, y: 2, width: 300, height: 200}),
    sentTo: workspaces[1],
    get_workspace() {
        return this.sentTo;
    },
    change_workspace(target) {
        this.sentTo = target;
    },
    get_transient_for: () => null,
    get_window_type: () => 0,
    get_client_type: () => 0,
    get_user_time: () => 5,
    has_focus: () => false,
    is_on_all_workspaces: () => false,
    is_override_redirect: () => false,
    is_skip_taskbar: () => false,
    located_on_workspace: () => false,
    showing_on_its_workspace: () => true,
});

globalThis.global = {
    display: new Emitter({get_current_time_roundtrip: () => 1}),
    stage: new Emitter({queue_redraw() {}}),
    workspace_manager: new Emitter({
        get_active_workspace: () => workspaces[0],
        get_n_workspaces: () => workspaces.length,
        get_workspace_by_index: index => workspaces[index],
    }),
    get_current_time: () => 1000,
    get_pointer: () => [0, 0, 0],
    get_window_actors: () => [{is_destroyed: () => false, meta_window: window}],
};

export default {
    EVENT_PROPAGATE: false,
    EventType: {KEY_PRESS: 1, BUTTON_PRESS: 2, TOUCH_BEGIN: 3, SCROLL: 4},
    KEY_Super_L: 1,
    KEY_Super_R: 2,
    ModifierType: {SHIFT_MASK: 1, CONTROL_MASK: 4, MOD1_MASK: 8},
    WindowClientType: {WAYLAND: 0, X11: 1},
    WindowTracker: {get_default: () => tracker},
    WindowType: {NORMAL: 0, DIALOG: 1, MODAL_DIALOG: 2, UTILITY: 3, TOOLBAR: 4},
};
