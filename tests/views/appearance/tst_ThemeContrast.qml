import QtQuick
import QtTest
import Kelpa.Appearance

/// The contrast of every text and symbol against each ground on which it may be, as the guidelines for
/// accessible contents measure it.
TestCase {
    name: "ThemeContrast"

    readonly property var grounds: ["window", "column", "card", "field", "popup"]
    /// Laid over a ground, one at a time.
    readonly property var overlays: ["hover", "press", "accepting"]

    function cleanup() {
        world.setDark(false);
    }
    function luminance(color) {
        const linear = each => each <= 0.04045 ? each / 12.92 : Math.pow((each + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
    }
    function contrast(one, other) {
        const [light, dark] = [luminance(one), luminance(other)].sort((a, b) => b - a);
        return (light + 0.05) / (dark + 0.05);
    }
    /// Each ground by its name, bare and under each overlay.
    function groundsWith(names, overlaid) {
        const found = [];
        for (const name of names) {
            found.push([name, Theme[name]]);
            for (const overlay of overlaid)
                found.push([name + " under " + overlay, Qt.tint(Theme[name], Theme[overlay])]);
        }
        return found;
    }
    /// Every pair that stands out too little.
    function faults(least, colors, places) {
        const found = [];
        for (const [name, color] of colors) {
            for (const [place, ground] of places) {
                const seen = Qt.tint(ground, color);
                const ratio = contrast(seen, ground);
                if (ratio < least)
                    found.push(name + " on " + place + ": " + ratio.toFixed(2));
            }
        }
        return found;
    }
    function named(names) {
        return names.map(name => [name, Theme[name]]);
    }
    function priorities() {
        return ["p0", "p1", "p2", "p3"].map(each => [each, Theme.priorityColor(each)]);
    }
    function accents() {
        return ["blue", "green", "orange", "purple", "pink"].map(each => [each, Theme.accentEdge(each)]);
    }
    function faded(names, opacity) {
        return names.map(name => [name + " at " + opacity, Qt.alpha(Theme[name], opacity)]);
    }
    function test_contrast_data() {
        return [{ tag: "light", isDark: false }, { tag: "dark", isDark: true }];
    }
    function test_contrast(row) {
        world.setDark(row.isDark);
        compare(Theme.isDark, row.isDark);
        const all = groundsWith(grounds, overlays);
        const rail = groundsWith(["railTop", "railBottom"], overlays);
        compare(faults(4.5, named(["text", "secondaryText", "accentText"]), all), []);
        compare(faults(4.5, named(["text"]), groundsWith(grounds, ["found"])), []);
        compare(faults(4.5, named(["text", "secondaryText"]), groundsWith(["warningGround"], [])), []);
        compare(faults(4.5, named(["destructive"]), groundsWith(["popup"], ["hover", "press"])), []);
        compare(faults(4.5, faded(["text"], 0.65), groundsWith(["railTop", "railBottom"], [])), []);
        compare(faults(4.5, named(["text"]), rail), []);
        compare(faults(4.5, faded(["text"], Theme.recedingOpacity), groundsWith(["column"], [])), []);
        compare(faults(4.5, named(["textOnAccent"]),
                       groundsWith(["accent", "accentHover", "accentPress", "closing"], [])), []);
        // A tip, and the toast, are as dark as the text and have the colour of the window.
        compare(faults(4.5, named(["window"]), groundsWith(["text"], [])), []);
        // Symbols and outlines.
        compare(faults(3, named(["secondaryText", "focus", "done", "accentText"]).concat(priorities()), all),
                []);
        compare(faults(3, accents(), all.concat(rail)), []);
        const atRest = accents().map(([name, color]) => [name + " at rest", Qt.alpha(color, 0.65)]);
        compare(faults(3, atRest, groundsWith(["railTop", "railBottom"], [])), []);
        // A mark on a card.
        compare(faults(3, named(["warning"]), groundsWith(["card"], overlays)), []);
        compare(faults(3, named(["fieldOutline"]), groundsWith(["window", "column", "card", "field"], [])),
                []);
        compare(faults(3, named(["warning"]), groundsWith(["warningGround"], [])), []);
    }
}
