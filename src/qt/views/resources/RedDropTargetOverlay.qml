import QtQuick
import Corvane

// Lies over the list while a drag of files hovers over it.
Rectangle {
    readonly property color tint: Theme.dropRed

    radius: Theme.radius
    color: Theme.faded(tint, 0.1)
    border.width: 3
    border.color: tint
}
