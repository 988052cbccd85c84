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
        world.setHighContrast(false);
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
        return [{ tag: "light", isDark: false, isHigh: false }, { tag: "dark", isDark: true, isHigh: false },
            { tag: "light with high contrast", isDark: false, isHigh: true },
            { tag: "dark with high contrast", isDark: true, isHigh: true }];
    }
    function test_contrast(row) {
        world.setDark(row.isDark);
        world.setHighContrast(row.isHigh);
        compare(Theme.isDark, row.isDark);
        // Of texts, and of symbols and outlines.
        const text = row.isHigh ? 7 : 4.5;
        const symbol = row.isHigh ? 4.5 : 3;
        const all = groundsWith(grounds, overlays);
        const rail = groundsWith(["railTop", "railBottom"], overlays);
        compare(faults(text, named(["text", "secondaryText", "accentText"]), all), []);
        compare(faults(text, named(["text"]), groundsWith(grounds, ["found"])), []);
        compare(faults(text, named(["text", "secondaryText"]), groundsWith(["warningGround"], [])), []);
        compare(faults(text, named(["destructive"]), groundsWith(["popup"], ["hover", "press"])), []);
        compare(faults(text, faded(["text"], Theme.restingOpacity), groundsWith(["railTop", "railBottom"], [])), []);
        compare(faults(text, named(["text"]), rail), []);
        compare(faults(text, faded(["text"], Theme.recedingOpacity), groundsWith(["column"], [])), []);
        compare(faults(text, named(["textOnAccent"]),
                       groundsWith(["accent", "accentHover", "accentPress", "closing"], [])), []);
        // A tip, and the toast, are as dark as the text and have the colour of the window.
        compare(faults(text, named(["window"]), groundsWith(["text"], [])), []);
        // Symbols and outlines.
        compare(faults(symbol, named(["secondaryText", "focus", "done", "accentText"]).concat(priorities()), all),
                []);
        compare(faults(symbol, accents(), all.concat(rail)), []);
        const atRest = accents().map(([name, color]) => [name + " at rest", Qt.alpha(color, Theme.restingOpacity)]);
        compare(faults(symbol, atRest, groundsWith(["railTop", "railBottom"], [])), []);
        // A mark on a card.
        compare(faults(symbol, named(["warning"]), groundsWith(["card"], overlays)), []);
        compare(faults(symbol, named(["fieldOutline"]), groundsWith(["window", "column", "card", "field"], [])),
                []);
        compare(faults(symbol, named(["warning"]), groundsWith(["warningGround"], [])), []);
        if (row.isHigh) {
            compare(faults(symbol, named(["outline", "cardOutline", "selectedCardOutline", "enteredOutline", "accent",
                                          "accentHover", "accentPress"]), groundsWith(grounds, [])), []);
            for (const opacity of [Theme.scrollBarOpacity, Theme.activeScrollBarOpacity,
                                   Theme.pressedScrollBarOpacity])
                compare(faults(symbol, faded(["text"], opacity),
                               groundsWith(grounds.concat(["railTop", "railBottom"]), [])), []);
        }
    }
}
