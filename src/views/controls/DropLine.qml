pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// Shows between two rows where the dragged item will be inserted.
Rectangle {
    height: 2
    radius: 1
    color: Theme.focus
}
