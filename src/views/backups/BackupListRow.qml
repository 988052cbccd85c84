import Kelpa.Controls

/// One backup of the list: when, how much, and why it was made.
ChoiceRow {
    id: root

    required note
    required property string counts
    required property var goalTitles
    required property var goalCounts
    required property bool isReadable

    details: root.counts
    isUsable: root.isReadable
}
