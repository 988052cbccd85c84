pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls

/// Says below a field what the person who is writing in it must know, and screen readers say it too.
/// It takes neither keys nor the keyboard.
AppToolTip {
    id: root

    delay: 0
    closePolicy: T.Popup.NoAutoClose

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        font: Theme.caption
        color: Theme.window
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.text

        Announcement {
            text: root.text
        }
    }
}
