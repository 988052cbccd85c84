pragma Singleton
pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// Every colour, length, radius, font and duration of the interface.
QtObject {
    id: root

    readonly property bool isDark: ViewSettings.isDark

    // Grounds, from the back to the front.
    readonly property color window: isDark ? "#1b1c1f" : "#f4f5f7"
    readonly property color column: isDark ? "#242529" : "#eaecef"
    readonly property color card: isDark ? "#303237" : "#ffffff"
    readonly property color field: isDark ? "#2a2b30" : "#ffffff"
    readonly property color popup: isDark ? "#303237" : "#ffffff"
    readonly property color scrim: isDark ? "#8c000000" : "#5920242c"

    // What a search does not find steps back behind what it finds.
    readonly property color found: isDark ? "#59f2c14e" : "#80f5c542"
    readonly property real recedingOpacity: 0.65

    // Laid over a ground under the pointer, while pressed, or when something is dragged onto it.
    readonly property color hover: isDark ? "#14ffffff" : "#0d14181f"
    readonly property color press: isDark ? "#22ffffff" : "#1a14181f"
    readonly property color accepting: isDark ? "#2e5b93ff" : "#1f2563eb"

    // Text is readable (4.5 to 1) on every ground above, also under the pointer; symbols and the
    // outlines of fields stand out (3 to 1).
    readonly property color text: isDark ? "#f1f2f4" : "#191b1f"
    readonly property color secondaryText: isDark ? "#bcbfc8" : "#565b66"
    readonly property color textOnAccent: "#ffffff"

    readonly property color accent: isDark ? "#2f6be4" : "#2563eb"
    readonly property color accentHover: isDark ? "#2a60d2" : "#1d57d8"
    readonly property color accentPress: isDark ? "#2455bd" : "#194cbe"
    readonly property color accentText: isDark ? "#9dbfff" : "#1d4fd0"
    readonly property color destructive: isDark ? "#ffada5" : "#b3261e"
    readonly property color warning: isDark ? "#f2c14e" : "#8a5a00"
    readonly property color warningGround: isDark ? "#332c1c" : "#fdf3dc"

    /// By the stored text of a priority, the most urgent first.
    readonly property var priorityColors: ({
        "p0": isDark ? "#ffa198" : "#b3261e",
        "p1": isDark ? "#ffb067" : "#9a4a00",
        "p2": isDark ? "#8db4ff" : "#1d4fd0",
        "p3": isDark ? "#bcbfc8" : "#565b66"
    })
    readonly property color done: isDark ? "#6fd08c" : "#1d7a3a"

    readonly property color outline: isDark ? "#24ffffff" : "#1a14181f"
    // The ground of the rail beside the board, from its top to its bottom.
    readonly property color railTop: isDark ? "#2a2c32" : "#e6eaf2"
    readonly property color railBottom: isDark ? "#202125" : "#eff0f3"
    readonly property color cardOutline: isDark ? "#12ffffff" : "#1214181f"
    readonly property color selectedCardOutline: isDark ? "#298db4ff" : "#292563eb"
    readonly property color fieldOutline: isDark ? "#858a94" : "#7b818d"
    readonly property color focus: isDark ? "#8db4ff" : "#2563eb"
    // The outline around the card that holds the selection.
    readonly property color enteredOutline: isDark ? "#598db4ff" : "#592563eb"
    readonly property color previewGround: isDark ? "#0dffffff" : "#0d14181f"
    readonly property color closing: isDark ? "#d93a31" : "#b3261e"
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

    readonly property int boardMargin: BoardMeasures.boardMargin
    readonly property int targetWidth: BoardMeasures.targetWidth
    readonly property int targetSpacing: BoardMeasures.targetSpacing
    readonly property int railWidth: BoardMeasures.railWidth
    readonly property int railSpacing: BoardMeasures.railSpacing
    readonly property int collapsedCardHeight: BoardMeasures.collapsedCardHeight
    readonly property int fadeHeight: BoardMeasures.fadeHeight
    readonly property int windowCardHeight: BoardMeasures.windowCardHeight
    readonly property size previewSize: BoardMeasures.previewSize
    // In a column, from its left edge: the middle of the symbols, and the beginning of all its
    // texts.
    readonly property int columnSymbolX: 22
    readonly property int columnTextX: 38
    // Where the list begins below a title with an explanation.
    readonly property int columnListY: 60
    readonly property int sheetWidth: 390
    readonly property int controlHeight: 32
    readonly property int symbolSize: BoardMeasures.symbolSize
    readonly property int todoHeight: 34

    readonly property int smallRadius: 6
    readonly property int controlRadius: 8
    readonly property int cardRadius: 11
    readonly property int columnRadius: BoardMeasures.columnRadius

    readonly property font caption: ViewSettings.font(ViewSettings.fontFamilies, 11, Font.Normal)
    readonly property font captionStrong: ViewSettings.font(ViewSettings.fontFamilies, 11, Font.Medium)
    readonly property font captionEmphasized: ViewSettings.font(ViewSettings.fontFamilies, 11, Font.DemiBold)
    readonly property font body: ViewSettings.font(ViewSettings.fontFamilies, 13, Font.Normal)
    readonly property font bodyDone: ViewSettings.struckOut(root.body)
    readonly property font bodyStrong: ViewSettings.font(ViewSettings.fontFamilies, 13, Font.DemiBold)
    readonly property font heading: ViewSettings.font(ViewSettings.fontFamilies, 17, Font.DemiBold)
    readonly property font title: ViewSettings.font(ViewSettings.fontFamilies, 22, Font.Bold)

    // Milliseconds.
    readonly property int shortTime: ViewSettings.isReducingMotion ? 0 : 120
    readonly property int mediumTime: ViewSettings.isReducingMotion ? 0 : 200
    readonly property int tipDelay: 700

    function priorityColor(priority: string): color {
        return root.priorityColors[priority] ?? root.secondaryText;
    }
    function accentColor(accent: string): color {
        return ViewSettings.accentColor(accent, root.isDark);
    }
    /// The accent as the edge of a dot and as a symbol, which stand out from every ground.
    function accentEdge(accent: string): color {
        return Qt.tint(root.accentColor(accent), Qt.alpha(root.text, 0.65));
    }
}
