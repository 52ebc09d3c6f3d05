import QtQuick
import QtQuick.Controls
import Corvane

// What stands above a window and takes all input until it is closed.
Popup {
    id: sheet

    parent: Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    padding: 20
    closePolicy: Popup.CloseOnEscape

    Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, Theme.dark ? 0.5 : 0.3)
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.windowBackground
        border.width: 1
        border.color: Theme.separator
    }
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 120
        }
    }
}
