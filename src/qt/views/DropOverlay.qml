import QtQuick
import Corvane

// Lies over what a drag would be dropped on.
Rectangle {
    required property color tint

    color: Theme.faded(tint, 0.1)
    border.color: tint
}
