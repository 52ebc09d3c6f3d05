import QtQuick
import Corvane

// Shows the path that was picked, and lets one pick another.
PressButton {
    id: button

    required property string symbol

    implicitHeight: 34

    contentItem: Item {
        SymbolText {
            id: mark

            x: 10
            anchors.verticalCenter: parent.verticalCenter
            symbol: button.symbol
            size: 16
            color: Theme.accent
        }
        Text {
            anchors.left: mark.right
            anchors.leftMargin: Theme.spacingM
            anchors.right: parent.right
            anchors.rightMargin: Theme.fieldPadding
            anchors.verticalCenter: parent.verticalCenter
            text: button.text.replace(/\s+/g, " ")
            maximumLineCount: 1
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            font.pixelSize: Theme.bodySize
            color: Theme.label
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: button.hovered ? Qt.darker(Theme.fieldBackground, 1.04) : Theme.fieldBackground
        border.width: 1
        border.color: Theme.separator

        FocusRing {
            target: button
        }
    }
}
