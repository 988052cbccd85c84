pragma ComponentBehavior: Bound

import QtQuick

/// A sheet that exists while it is wanted. It has no type here: that would be read before the first
/// frame.
Loader {
    id: root

    required property bool isWanted
    required property string file
    /// The sheet's required properties.
    required property var parts

    onIsWantedChanged: {
        if (root.isWanted)
            root.setSource(root.file, root.parts);
        else
            root.source = "";
    }
}
