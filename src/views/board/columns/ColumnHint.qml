import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// Says below the title of "Unsorted" what to do there.
AppText {
    text: ViewSettings.copy.text(CopyKey.UnsortedHint)
    color: Theme.secondaryText
    font: Theme.caption
    verticalAlignment: Text.AlignTop
    Accessible.ignored: !visible
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
