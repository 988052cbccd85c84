pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene

/// A symbol of the interface in one colour. It is hidden from assistive programs: the
/// control that contains it has the name.
SymbolItem {
    color: Theme.secondaryText
}
