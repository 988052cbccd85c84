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
        world.setAccent("transparent");
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
    function setTheme(row) {
        world.setDark(row.isDark);
        world.setHighContrast(row.isHigh);
        compare(Theme.isDark, row.isDark);
    }
    SignalSpy {
        id: shades

        target: Theme
        signalName: "shadesChanged"
    }
    function test_the_shades_of_the_accent_are_made_once_for_each_change() {
        world.setAccent("#3584e4");
        for (const change of [() => world.setDark(true), () => world.setHighContrast(true), () => world.setDark(false),
                              () => world.setAccent("#3a944a")]) {
            shades.clear();
            change();
            compare(shades.count, 1);
        }
    }
    function themes() {
        return [{ tag: "light", isDark: false, isHigh: false }, { tag: "dark", isDark: true, isHigh: false },
            { tag: "light with high contrast", isDark: false, isHigh: true },
            { tag: "dark with high contrast", isDark: true, isHigh: true }];
    }
    function test_contrast_data() {
        return themes();
    }
    function test_contrast(row) {
        setTheme(row);
        checkAll(row);
    }
    function test_contrast_with_any_accent_data() {
        return themes();
    }
    function test_contrast_with_any_accent(row) {
        setTheme(row);
        const own = accented().join();
        const parts = [0, 64, 128, 192, 255];
        for (const red of parts) {
            for (const green of parts) {
                for (const blue of parts) {
                    world.setAccent(Qt.rgba(red / 255, green / 255, blue / 255, 1));
                    checkAccented(row);
                    verify(accented().join() !== own);
                }
            }
        }
        for (const accent of ["#3584e4", "#2190a4", "#3a944a", "#c88800", "#ed5b00", "#e62d42", "#d56199", "#9141ac",
                              "#6f8396", "#ffffff", "#000000", "#ffff00", "#808080"]) {
            world.setAccent(accent);
            checkAll(row);
        }
        world.setAccent("transparent");
        compare(accented().join(), own);
    }
    /// Everything that is made from the desktop's accent colour.
    function accented() {
        return ["accent", "accentHover", "accentPress", "accentText", "focus", "accepting", "enteredOutline",
                "selectedCardOutline"].map(name => Theme[name]);
    }
    /// What depends on the accent colour, on every ground.
    function checkAccented(row) {
        const text = row.isHigh ? 7 : 4.5;
        const symbol = row.isHigh ? 4.5 : 3;
        const all = groundsWith(grounds, overlays);
        const taking = groundsWith(grounds, ["accepting"]);
        const places = groundsWith(["accent", "accentHover", "accentPress"], []);
        compare(faults(text, named(["accentText"]), all), []);
        compare(faults(text, named(["text", "secondaryText"]), taking), []);
        compare(faults(text, named(["textOnAccent"]), places), []);
        compare(faults(symbol, named(["focus"]), all.concat(groundsWith(["railTop", "railBottom"], overlays))), []);
        compare(faults(symbol, named(["done"]).concat(priorities()).concat(accents()), taking), []);
        if (row.isHigh)
            compare(faults(symbol, named(["selectedCardOutline", "enteredOutline", "accent", "accentHover",
                                          "accentPress"]), groundsWith(grounds, [])), []);
        compare(new Set(places.map(([, color]) => color.toString())).size, 3);
        for (const name of grounds)
            verify(Qt.tint(Theme[name], Theme.accepting).toString() !== Theme[name].toString());
    }
    function checkAll(row) {
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
