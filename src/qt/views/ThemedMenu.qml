import QtQuick
import QtQuick.Controls.Basic
import Corvane

Menu {
    padding: 5

    background: Rectangle {
        implicitWidth: 160
        radius: 8
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.separator
    }
}
