pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// Shows between two rows where what is dragged will stand.
Rectangle {
    height: 2
    radius: 1
    color: Theme.focus
}
