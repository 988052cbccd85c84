pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows

/// The windows among which a person chooses: the arrow keys go through them, Space chooses one, and
/// Return confirms the choice.
ListView {
    id: root

    required property WindowController windows
    /// Without it, there are no rows.
    required property bool isShown

    readonly property int rowHeight: 62 + Theme.bodyGrowth + 2 * Theme.captionGrowth
    // Not of `contentHeight`, which the width of the rows would depend on as they are created.
    readonly property bool isScrolled: root.count * root.rowHeight > root.height

    /// The Up key leaves the list at its first row.
    signal leftUpwards

    /// Leads the keyboard to the first row when it enters next.
    function begin(): void {
        root.currentIndex = -1;
        root.positionViewAtBeginning();
    }
    function enter(): void {
        if (root.count === 0)
            return;
        root.currentIndex = Math.max(0, root.currentIndex);
        root.forceActiveFocus();
    }

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    activeFocusOnTab: true
    currentIndex: -1
    highlightMoveDuration: 0
    model: root.isShown ? root.windows.picker.rows : null
    T.ScrollBar.vertical: AppScrollBar {}
    Accessible.role: Accessible.List
    onActiveFocusChanged: if (root.activeFocus)
        root.enter()
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Space && root.currentItem !== null)
            event.isAutoRepeat || (root.currentItem as WindowPickerRow).toggle();
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            // A held Return key has come here from the search.
            event.isAutoRepeat || root.windows.picker.confirm();
        else if (event.key === Qt.Key_Up && root.currentIndex <= 0)
            root.leftUpwards();
        else if (event.key === Qt.Key_Home)
            root.currentIndex = 0;
        else if (event.key === Qt.Key_End)
            root.currentIndex = root.count - 1;
        else
            event.accepted = false;
    }

    delegate: WindowPickerRow {
        width: root.width - (root.isScrolled ? Theme.medium : 0)
        height: root.rowHeight
        windows: root.windows
    }
}
