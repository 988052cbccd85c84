pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Board

/// The keys of the whole window, also while a field has the keyboard.
Item {
    id: root

    required property BoardController board

    Shortcut {
        sequence: "Ctrl+N"
        autoRepeat: false
        onActivated: root.board.newGoalRequested()
    }
    Shortcut {
        sequence: "F1"
        autoRepeat: false
        onActivated: root.board.keysRequested()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        autoRepeat: false
        onActivated: root.board.presence.requestQuit()
    }
}
