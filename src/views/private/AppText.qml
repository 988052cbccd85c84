pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// One line of text that is cut short at its end; plain, whatever characters it holds.
Text {
    font: Theme.body
    color: Theme.text
    textFormat: Text.PlainText
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignLeft
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true
}
