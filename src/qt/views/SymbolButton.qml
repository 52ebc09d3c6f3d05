import QtQuick
import QtQuick.Controls.Basic
import Corvane

// A symbol that can be pressed, named by its tooltip.
AbstractButton {
    id: button

    required property string symbol
    required property color tint
    required property string tooltip
    property int size: 16

    implicitWidth: 24
    implicitHeight: 24
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: tooltip
    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()

    ThemedToolTip {
        text: button.tooltip
        visible: button.hovered
    }

    contentItem: SymbolText {
        symbol: button.symbol
        size: button.size
        color: button.tint
    }
    background: Rectangle {
        radius: 5
        color: Theme.faded(Theme.primary, button.down ? 0.14 : button.hovered ? 0.07 : 0)

        FocusRing {
            target: button
        }
    }
}
