pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Board

/// The keys of the whole window, also while a field has the keyboard, and the sheet that lists all keys.
Item {
    id: root

    required property BoardController board

    /// Created on first use.
    property KeysSheet keysSheet: null

    signal newGoalRequested

    function showKeys(): void {
        if (root.keysSheet === null)
            root.keysSheet = keysSheetType.createObject(root) as KeysSheet;
        root.keysSheet.open();
    }

    Shortcut {
        sequence: "Ctrl+N"
        autoRepeat: false
        onActivated: root.newGoalRequested()
    }
    Shortcut {
        sequence: "F1"
        autoRepeat: false
        onActivated: root.showKeys()
    }
    Connections {
        target: root.board

        function onKeysRequested(): void {
            root.showKeys();
        }
    }
    Component {
        id: keysSheetType

        KeysSheet {
            isDoubleTapOffered: root.board.isDoubleTapOffered
        }
    }
}
