// Small pictures of windows. They are drawn in the Shell's own process, on the thread that draws its
// frames, so they have a bounded size and a bounded share of the time; a window that has drawn nothing
// since is not drawn again.

import Cairo from 'cairo';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';

import {Refusal, TimeShare, fitted} from './rules.js';

const LARGEST_SIDE = 512;
// Of the Shell's time.
const SHARE = 0.2;

// Gives the memory of an image back now, where the language has a way; otherwise when it collects.
function release(image) {
    if (image.finish)
        image.finish();
}

function hasSize(content) {
    const [isKnown, width, height] = content.get_preferred_size();
    return isKnown && width > 0 && height > 0;
}

// What the window shows within its frame: an image of all of it has its shadows too.
function scaled(actor, boxWidth, boxHeight) {
    // Shells crash when they are asked for the image of a window that has none: its surface has no
    // content, or no size yet, which is so for a moment when it opens and when it closes.
    const surface = actor.get_texture();
    const image = surface && surface.get_texture() && hasSize(surface) &&
        actor.width > 0 && actor.height > 0 && actor.get_image(null);
    if (!image)
        throw new Refusal('NoPicture', 'the window shows nothing');
    try {
        const buffer = actor.meta_window.get_buffer_rect();
        const frame = actor.meta_window.get_frame_rect();
        const density = image.getWidth() / Math.max(1, buffer.width);
        const width = Math.max(1, frame.width * density);
        const height = Math.max(1, frame.height * density);
        const size = fitted(width, height, boxWidth, boxHeight);
        const picture = new Cairo.ImageSurface(Cairo.Format.ARGB32, size.width, size.height);
        const context = new Cairo.Context(picture);
        context.scale(size.width / width, size.height / height);
        context.setSourceSurface(image, (buffer.x - frame.x) * density, (buffer.y - frame.y) * density);
        context.paint();
        context.$dispose();
        return {picture, size};
    } finally {
        release(image);
    }
}

// The list of a file's descriptor, which is the receiver's alone when the file is closed here.
function descriptorsOf(file) {
    const descriptors = new Gio.UnixFDList();
    descriptors.append(file.get_fd());
    return descriptors;
}

// A file without a name, in the session's own folder, which is in memory: pictures come to no disk.
function withNamelessFile(write) {
    const path = `${GLib.get_user_runtime_dir()}/kelpa-${GLib.uuid_string_random()}`;
    const stream = Gio.File.new_for_path(path).create_readwrite(Gio.FileCreateFlags.PRIVATE, null);
    try {
        GLib.unlink(path);
        const file = stream.get_output_stream();
        write(`/proc/self/fd/${file.get_fd()}`);
        return descriptorsOf(file);
    } finally {
        stream.close(null);
    }
}

export class Pictures {
    constructor() {
        this._share = new TimeShare(SHARE);
        // By actor, those of which there has been a picture.
        this._states = new Map();
        // Never one that was given before the extension was switched off and on.
        this._lastRevision = GLib.get_monotonic_time();
        this._nothing = Gio.File.new_for_path('/dev/null').read(null);
    }

    end() {
        for (const actor of [...this._states.keys()])
            this._forget(actor);
        this._nothing.close(null);
    }

    // What the bus is to be told of the window: values and descriptors.
    take(window, width, height, known) {
        const actor = window.get_compositor_private();
        if (!actor)
            throw new Refusal('NoPicture', 'the window shows nothing');
        const began = GLib.get_monotonic_time();
        if (!this._share.isFree(began))
            throw new Refusal('Busy', 'pictures have had their share of the time');
        try {
            const state = this._states.get(actor);
            if (state && !state.hasDrawn && state.revision === known)
                return {values: [true, known, 0, 0, 0], descriptors: descriptorsOf(this._nothing)};
            const side = length => Math.min(Math.max(length, 1), LARGEST_SIDE);
            const {picture, size} = scaled(actor, side(width), side(height));
            const descriptors = withNamelessFile(path => picture.writeToPNG(path));
            release(picture);
            return {values: [false, this._revision(actor), size.width, size.height, 0], descriptors};
        } finally {
            this._share.spent(began, GLib.get_monotonic_time());
        }
    }

    _revision(actor) {
        let state = this._states.get(actor);
        if (!state) {
            state = {damaged: 0, destroyed: actor.connect('destroy', () => this._forget(actor))};
            this._states.set(actor, state);
        }
        if (!state.damaged) {
            // Heard once: a film costs no more than a window that draws one frame.
            state.damaged = actor.connect('damaged', () => {
                actor.disconnect(state.damaged);
                state.damaged = 0;
                state.hasDrawn = true;
            });
            state.hasDrawn = false;
            state.revision = ++this._lastRevision;
        }
        return state.revision;
    }

    _forget(actor) {
        const state = this._states.get(actor);
        this._states.delete(actor);
        actor.disconnect(state.destroyed);
        if (state.damaged)
            actor.disconnect(state.damaged);
    }
}
