import QtQuick
import Corvane

// A symbol that can be pressed, named by its tooltip.
PressButton {
    id: button

    required property string symbol
    required property color tint
    required property string tooltip
    property int size: 12
    property bool isBold: false

    implicitWidth: 24
    implicitHeight: 24
    Accessible.name: tooltip

    OnDemand {
        parent: button
        wanted: button.hovered

        ThemedToolTip {
            text: button.tooltip
            visible: true
        }
    }
    OnDemand {
        parent: button.background
        wanted: button.visualFocus

        FocusRing {
            target: button
        }
    }

    contentItem: SymbolText {
        symbol: button.symbol
        size: button.size
        font.bold: button.isBold
        color: button.tint
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: Theme.faded(Theme.primary, button.down ? 0.14 : button.hovered ? 0.07 : 0)
    }
}
