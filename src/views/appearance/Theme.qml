pragma Singleton
pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// Every colour, length, radius, font and duration of the interface.
QtObject {
    id: root

    readonly property bool isDark: ViewSettings.isDark
    readonly property bool isHighContrast: ViewSettings.isHighContrast

    // What the shades of the desktop's accent have to stand out from: one value, so that these are made once
    // when all of it changes.
    readonly property var surroundings: ({
        "window": root.shade("#1b1c1f", "#f4f5f7", "#000000", "#ffffff"),
        "column": root.shade("#242529", "#eaecef", "#121315", "#f0f1f4"),
        "card": root.shade("#303237", "#ffffff", "#1b1c1f", "#ffffff"),
        "field": root.shade("#2a2b30", "#ffffff", "#0c0d0e", "#ffffff"),
        "popup": root.shade("#303237", "#ffffff", "#1b1c1f", "#ffffff"),
        "railTop": root.shade("#2a2c32", "#e6eaf2", "#121315", "#f0f1f4"),
        "railBottom": root.shade("#202125", "#eff0f3", "#0c0d0e", "#f7f8fa"),
        "hover": root.shade("#14ffffff", "#0d14181f", "#14ffffff", "#0d14181f"),
        "press": root.shade("#22ffffff", "#1a14181f", "#22ffffff", "#1a14181f"),
        "ownAccepting": root.shade("#2e5b93ff", "#1f2563eb", "#2e5b93ff", "#1f2563eb"),
        "textOnAccent": root.shade("#ffffff", "#ffffff", "#000000", "#ffffff")
    })

    // Grounds, from the back to the front.
    readonly property color window: root.surroundings.window
    readonly property color column: root.surroundings.column
    readonly property color card: root.surroundings.card
    readonly property color field: root.surroundings.field
    readonly property color popup: root.surroundings.popup
    readonly property color scrim: isDark ? "#8c000000" : "#5920242c"

    // What a search does not find steps back behind what it finds.
    readonly property color found: isDark ? "#59f2c14e" : "#80f5c542"
    readonly property real recedingOpacity: root.isHighContrast ? 0.75 : 0.65
    // An entry of the rail that is neither selected nor below the pointer.
    readonly property real restingOpacity: root.isHighContrast ? 0.8 : 0.65

    // A scroll bar at rest, in use or under the pointer, and pressed.
    readonly property real scrollBarOpacity: root.isHighContrast ? 0.75 : 0.16
    readonly property real activeScrollBarOpacity: root.isHighContrast ? 1 : 0.36
    readonly property real pressedScrollBarOpacity: root.isHighContrast ? 1 : 0.5

    // Laid over a ground under the pointer, while pressed, or when something is dragged onto it.
    readonly property color hover: root.surroundings.hover
    readonly property color press: root.surroundings.press
    readonly property color ownAccepting: root.surroundings.ownAccepting
    readonly property color accepting: root.shades.accepting.valid ? root.shades.accepting : root.ownAccepting

    // Text is readable (4.5 to 1) on every ground above, also under the pointer; symbols and the
    // outlines of fields stand out (3 to 1). Where high contrast is wanted, that is 7 and 4.5 to 1, and
    // cards and buttons have outlines that stand out.
    readonly property color text: root.shade("#f1f2f4", "#191b1f", "#ffffff", "#000000")
    readonly property color secondaryText: root.shade("#bcbfc8", "#565b66", "#e2e4e9", "#2c3037")
    readonly property color textOnAccent: root.surroundings.textOnAccent

    // Made from the desktop's accent colour; invalid where it has none, and the colours are Kelpa's own.
    readonly property accentShades shades: ViewSettings.accentShades(
        ViewSettings.desktopAccent, root.grounds(root.surroundings),
        [root.surroundings.hover, root.surroundings.press], root.surroundings.textOnAccent,
        root.surroundings.ownAccepting)
    readonly property color accent: root.shaded(root.shades.accent, "#2f6be4", "#2563eb", "#a9c6ff", "#1546ab")
    readonly property color accentHover: root.shaded(root.shades.accentHover, "#2a60d2", "#1d57d8", "#c4d8ff", "#103a90")
    readonly property color accentPress: root.shaded(root.shades.accentPress, "#2455bd", "#194cbe", "#8db4ff", "#0c2f75")
    readonly property color accentText: root.shaded(root.shades.accentText, "#9dbfff", "#1d4fd0", "#c4d8ff", "#0b3494")
    readonly property color destructive: root.shade("#ffada5", "#b3261e", "#ffd0cb", "#7d120b")
    readonly property color warning: root.shade("#f2c14e", "#8a5a00", "#ffd97a", "#5c3b00")
    readonly property color warningGround: isDark ? "#332c1c" : "#fdf3dc"

    /// By the stored text of a priority, the most urgent first.
    readonly property var priorityColors: ({
        "p0": root.shade("#ffa198", "#b3261e", "#ffc4be", "#7d120b"),
        "p1": root.shade("#ffb067", "#9a4a00", "#ffd0a3", "#6b3200"),
        "p2": root.shade("#8db4ff", "#1d4fd0", "#c4d8ff", "#0b3494"),
        "p3": root.shade("#bcbfc8", "#565b66", "#e2e4e9", "#2c3037")
    })
    readonly property color done: root.shade("#6fd08c", "#1d7a3a", "#a5e8b8", "#0e5526")

    readonly property color outline: root.shade("#24ffffff", "#1a14181f", "#a6ffffff", "#a614181f")
    // The ground of the rail beside the board, from its top to its bottom.
    readonly property color railTop: root.surroundings.railTop
    readonly property color railBottom: root.surroundings.railBottom
    readonly property color cardOutline: root.shade("#12ffffff", "#1214181f", "#a6ffffff", "#a614181f")
    readonly property color selectedCardOutline: root.shaded(root.outlineShade(0x29),
                                                            "#298db4ff", "#292563eb", "#c4d8ff", "#0b3494")
    readonly property color fieldOutline: root.shade("#858a94", "#7b818d", "#e2e4e9", "#2c3037")
    readonly property color focus: root.shaded(root.shades.focus, "#8db4ff", "#2563eb", "#c4d8ff", "#0b3494")
    // The outline around the card that holds the selection.
    readonly property color enteredOutline: root.shaded(root.outlineShade(0x59),
                                                       "#598db4ff", "#592563eb", "#c4d8ff", "#0b3494")
    readonly property color previewGround: isDark ? "#0dffffff" : "#0d14181f"
    readonly property color closing: root.shade("#d93a31", "#b3261e", "#ffb4ad", "#8f1c15")
    readonly property color raisedShadow: isDark ? "#6b000000" : "#2414181f"
    // The shadow of items that float over the board, where it is darkest.
    readonly property color floatingShadow: isDark ? "#70000000" : "#2814181f"
    readonly property color shadow: isDark ? "#52000000" : "#1414181f"

    // Lengths, on a grid of four points.
    readonly property int tiny: 4
    readonly property int small: 8
    readonly property int medium: 12
    readonly property int large: 16
    readonly property int huge: 24

    // A line of text needs more room where texts are larger, and no less where they are smaller: symbols
    // and whatever is pressed keep their sizes. A height that holds lines of text adds for each line
    // what it has grown by in its font; everything else that has to follow texts grows with them.
    readonly property real textGrowth: Math.max(1, ViewSettings.textScale)
    readonly property int captionGrowth: root.lineGrowth(11)
    readonly property int bodyGrowth: root.lineGrowth(13)
    readonly property int titleGrowth: root.lineGrowth(22)

    readonly property int boardMargin: BoardMeasures.boardMargin
    readonly property int targetWidth: BoardMeasures.targetWidth
    readonly property int targetSpacing: BoardMeasures.targetSpacing
    readonly property int railWidth: root.grown(BoardMeasures.railWidth)
    // By how much the rail is wider than at the usual size of texts.
    readonly property int railGrowth: root.railWidth - BoardMeasures.railWidth
    readonly property int railSpacing: BoardMeasures.railSpacing
    readonly property int collapsedCardHeight: root.grown(BoardMeasures.collapsedCardHeight)
    readonly property int fadeHeight: BoardMeasures.fadeHeight
    readonly property int windowCardHeight: BoardMeasures.windowCardHeight + 2 * root.captionGrowth
    readonly property size previewSize: BoardMeasures.previewSize
    // In a column, from its left edge: the middle of the symbols, and the beginning of all its
    // texts.
    readonly property int columnSymbolX: 22
    readonly property int columnTextX: 38
    // Where the list begins below a title with an explanation.
    readonly property int columnListY: 60 + root.bodyGrowth + root.captionGrowth
    readonly property int sheetWidth: root.grown(390)
    readonly property int controlHeight: 32 + root.bodyGrowth
    readonly property int symbolSize: BoardMeasures.symbolSize
    readonly property int smallSymbolSize: 14
    /// Width and height of the buttons of a todo's row.
    readonly property int todoButtonSize: 28
    readonly property int todoHeight: 34 + root.bodyGrowth
    // Of a line of captions that are close together.
    readonly property int closeLineHeight: root.grown(13)
    // Of a number beside its symbol.
    readonly property int badgeHeight: 20 + root.captionGrowth

    readonly property int smallRadius: 6
    readonly property int controlRadius: 8
    readonly property int cardRadius: 11
    readonly property int columnRadius: BoardMeasures.columnRadius

    readonly property font caption: root.sized(11, Font.Normal)
    readonly property font captionStrong: root.sized(11, Font.Medium)
    readonly property font captionEmphasized: root.sized(11, Font.DemiBold)
    readonly property font body: root.sized(13, Font.Normal)
    readonly property font bodyDone: ViewSettings.struckOut(root.body)
    readonly property font bodyStrong: root.sized(13, Font.DemiBold)
    readonly property font heading: root.sized(17, Font.DemiBold)
    readonly property font title: root.sized(22, Font.Bold)

    // Milliseconds.
    readonly property int shortTime: ViewSettings.isReducingMotion ? 0 : 120
    readonly property int mediumTime: ViewSettings.isReducingMotion ? 0 : 200
    readonly property int tipDelay: 700

    /// The font of texts of this size, in points at their usual size.
    function sized(size: int, weight: int): font {
        return ViewSettings.font(ViewSettings.fontFamilies, size, weight, ViewSettings.textScale);
    }
    /// A length that follows the size of texts, in points at their usual size.
    function grown(length: real): int {
        return Math.round(length * root.textGrowth);
    }
    /// No font's lines are higher than one and a half times its size.
    function lineGrowth(size: int): int {
        return Math.ceil(1.5 * (root.grown(size) - size));
    }
    function grounds(around: var): var {
        return [around.window, around.column, around.card, around.field, around.popup, around.railTop,
            around.railBottom];
    }
    /// The colour of the present appearance.
    function shade(dark: string, light: string, highDark: string, highLight: string): color {
        if (root.isHighContrast)
            return root.isDark ? highDark : highLight;
        return root.isDark ? dark : light;
    }
    /// A colour made from the desktop's accent, where there is one.
    function shaded(made: color, dark: string, light: string, highDark: string, highLight: string): color {
        return made.valid ? made : root.shade(dark, light, highDark, highLight);
    }
    /// An outline of the focus's colour that is less strong, of 255, except in high contrast.
    function outlineShade(strength: int): color {
        const made = root.shades.focus;
        return made.valid && !root.isHighContrast ? Qt.alpha(made, strength / 255) : made;
    }
    function priorityColor(priority: string): color {
        return root.priorityColors[priority] ?? root.secondaryText;
    }
    function accentColor(accent: string): color {
        return ViewSettings.accentColor(accent, root.isDark);
    }
    /// The accent as the edge of a dot and as a symbol, which stand out from every ground.
    function accentEdge(accent: string): color {
        return Qt.tint(root.accentColor(accent), Qt.alpha(root.text, root.isHighContrast ? 0.8 : 0.65));
    }
}
