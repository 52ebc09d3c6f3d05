import QtQuick
import QtQuick.Templates as T
import Corvane

// The outline of a control that the keyboard has reached.
Rectangle {
    required property T.Control target

    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.smallRadius + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.faded(Theme.accent, 0.7)
    visible: target.visualFocus
}
