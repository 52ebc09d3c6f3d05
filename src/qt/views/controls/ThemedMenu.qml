import QtQuick
import QtQuick.Controls.Basic
import Corvane

Menu {
    id: menu

    required property Item opener

    padding: Theme.spacingXS
    onClosed: opener.forceActiveFocus(Qt.TabFocusReason)
    // A press beside it only closes it, and nothing below scrolls away from it.
    modal: true
    dim: false

    background: Rectangle {
        implicitWidth: 160
        radius: Theme.mediumRadius
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.separator
    }
}
