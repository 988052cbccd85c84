pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// A symbol with a text behind it, as buttons and menus show them.
Item {
    id: root

    required property string symbol
    required property string text
    property color symbolColor: root.color
    property color color: Theme.text
    property font font: Theme.body
    property int spacing: 6
    /// Reserves the symbol's place even without a symbol, so that texts are aligned.
    property bool isKeepingPlace: false
    property bool isTextShown: true
    /// How many lines the text may take before it is cut short.
    property int mostLines: 1
    /// The width of the whole text, in points.
    readonly property alias textWidth: label.implicitWidth

    readonly property bool hasPlace: root.symbol.length > 0 || root.isKeepingPlace
    readonly property real textX: root.hasPlace ? Theme.symbolSize + root.spacing : 0

    implicitWidth: root.textX + label.implicitWidth
    implicitHeight: Math.max(Theme.symbolSize, label.implicitHeight)

    AppIcon {
        name: root.symbol
        color: root.symbolColor
        visible: root.symbol.length > 0
        anchors.verticalCenter: parent.verticalCenter
    }
    AppText {
        id: label

        x: root.textX
        width: root.width - x
        text: root.text
        font: root.font
        color: root.color
        wrapMode: root.mostLines > 1 ? Text.Wrap : Text.NoWrap
        maximumLineCount: root.mostLines
        visible: root.isTextShown
        anchors.verticalCenter: parent.verticalCenter
    }
}
