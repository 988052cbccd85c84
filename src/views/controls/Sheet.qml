pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance

/// A sheet over the board. Escape closes it; a click beside it does not, so that nothing typed is
/// lost by accident.
T.Dialog {
    id: root

    property bool isFading: false

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(Theme.sheetWidth, parent ? parent.width - 2 * Theme.large : Theme.sheetWidth)
    implicitHeight: contentHeight + topPadding + bottomPadding
    focus: true
    // A sheet that fades away takes no more input: the next click is meant for the board, also where
    // the sheet still shows, and so is the next key, which the toolkit withholds from the window below
    // a sheet that Escape closes.
    enabled: !root.isFading
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
