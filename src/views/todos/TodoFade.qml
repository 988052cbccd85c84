import QtQuick
import Kelpa.Appearance

/// Lies over the rows at the lower end of a list that goes on below it, as over a card that is cut off.
Rectangle {
    height: Theme.fadeHeight
    gradient: Gradient {
        GradientStop {
            position: 0
            color: Qt.alpha(Theme.column, 0)
        }
        GradientStop {
            position: 0.8
            color: Theme.column
        }
    }
}
