pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance

/// A sheet over the board. Escape closes it; a click beside it does not, so that nothing typed is
/// lost by accident.
T.Dialog {
    id: root

    property bool isFading: false
    /// Lies over the contents of a sheet that fades, which still look as if they could be pressed.
    readonly property MouseArea shield: MouseArea {
        parent: root.background.parent
        anchors.fill: parent
        z: 1
        visible: root.isFading
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(Theme.sheetWidth, parent ? parent.width - 2 * Theme.large : Theme.sheetWidth)
    implicitHeight: contentHeight + topPadding + bottomPadding
    focus: true
    // A sheet that fades away takes no more input. The next key is meant for the board, but the toolkit
    // withholds it from the window below a sheet that Escape closes.
    modal: !root.isFading
    closePolicy: root.isFading ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    padding: Theme.huge
    onAboutToHide: root.isFading = true
    // It may be opened again before it has faded.
    onAboutToShow: root.isFading = false
    // The scrim is chosen before a sheet is about to show.
    onClosed: root.isFading = false

    background: FloatingGround {
        radius: Theme.columnRadius
    }
    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.shortTime
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            from: 1
            to: 0
            duration: Theme.shortTime
        }
    }
}
