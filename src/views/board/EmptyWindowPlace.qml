import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// Takes the place of a column's window cards while it shows none, and says why: nothing was dragged
/// there, the search matches none of them, or the desktop lists none.
Item {
    id: root

    required property bool isSearchedEmpty
    required property bool areWindowsListed

    height: Math.max(92, reason.implicitHeight + 2 * Theme.medium)

    Rectangle {
        anchors.fill: parent
        radius: Theme.cardRadius
        color: Theme.window
    }
    AppText {
        id: reason

        anchors.fill: parent
        anchors.margins: Theme.medium
        horizontalAlignment: Text.AlignHCenter
        text: ViewSettings.copy.text(!root.areWindowsListed ? CopyKey.NoWindowsHere
                                     : root.isSearchedEmpty ? CopyKey.NoMatchingWindows
                                                            : CopyKey.DragWindowHere)
        color: Theme.secondaryText
        wrapMode: Text.Wrap
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
