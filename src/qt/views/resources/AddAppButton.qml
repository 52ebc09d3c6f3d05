import QtQuick
import QtQuick.Shapes
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
        Shape {
            anchors.fill: parent

            ShapePath {
                strokeWidth: 1
                strokeColor: Theme.accent
                strokeStyle: ShapePath.DashLine
                dashPattern: [4, 3]
                fillColor: "transparent"
                PathSvg {
                    readonly property real right: button.width - 0.5
                    readonly property real bottom: button.height - 0.5

                    path: `M 4.5 0.5 H ${right - 4} A 4 4 0 0 1 ${right} 4.5 V ${bottom - 4} A 4 4 0 0 1 ${right - 4} ${bottom} H 4.5 A 4 4 0 0 1 0.5 ${bottom - 4} V 4.5 A 4 4 0 0 1 4.5 0.5`
                }
            }
        }
        FocusRing {
            target: button
        }
    }
}
