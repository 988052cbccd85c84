pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene

/// A symbol of the interface in one colour. Nothing tells assistive programs of it: what it stands
/// for is said by what it stands on.
SymbolItem {
    color: Theme.secondaryText
}
