pragma ComponentBehavior: Bound

import QtQuick

/// All of a todo's row that reacts to the pointer and to keys, above what the row shows.
Item {
    required property bool isHovered
    required property bool isDragged
    /// Whether a button has the focus and shows it.
    required property bool hasKeyboard
}
