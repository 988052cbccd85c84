pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// One line of text that is cut short at its end; plain, whatever characters it holds. Text that
/// wraps has as many lines as it needs.
Text {
    font: Theme.body
    color: Theme.text
    textFormat: Text.PlainText
    elide: Text.ElideRight
    maximumLineCount: wrapMode === Text.NoWrap ? 1 : 2147483647
    horizontalAlignment: Text.AlignLeft
    verticalAlignment: Text.AlignVCenter
}
