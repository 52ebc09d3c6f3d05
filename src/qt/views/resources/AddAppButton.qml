import QtQuick
import Corvane

// Lets one choose an application for a resource.
PressButton {
    id: button

    implicitWidth: row.implicitWidth + 2 * Theme.spacingM
    implicitHeight: 28
    text: "Add App"

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.spacingXS

            SymbolText {
                anchors.verticalCenter: parent.verticalCenter
                symbol: "plus"
                size: 14
                color: Theme.accent
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: button.text
                textFormat: Text.PlainText
                font.pixelSize: 12
                color: Theme.accent
                Accessible.ignored: true
            }
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            radius: Theme.tinyRadius
            color: Theme.faded(Theme.accent, button.down ? 0.16 : button.hovered ? 0.08 : 0)
        }
        DashedFrame {
            anchors.fill: parent
            radius: Theme.tinyRadius
            color: Theme.accent
        }
        OnDemand {
            parent: button.background
            wanted: button.visualFocus

            FocusRing {
                target: button
            }
        }
    }
}
