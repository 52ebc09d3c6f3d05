import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Shapes
import Corvane

// Lets one choose an application for a resource.
AbstractButton {
    id: button

    implicitWidth: row.implicitWidth + 2 * 8
    implicitHeight: 28
    text: "Add App"
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: 4

            SymbolText {
                anchors.verticalCenter: parent.verticalCenter
                symbol: "plus"
                size: 14
                color: Theme.accent
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: button.text
                font.pixelSize: 12
                color: Theme.accent
                Accessible.ignored: true
            }
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            radius: 4
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
                startX: 0.5
                startY: 0.5

                PathLine {
                    x: button.width - 0.5
                    y: 0.5
                }
                PathLine {
                    x: button.width - 0.5
                    y: button.height - 0.5
                }
                PathLine {
                    x: 0.5
                    y: button.height - 0.5
                }
                PathLine {
                    x: 0.5
                    y: 0.5
                }
            }
        }
        FocusRing {
            target: button
        }
    }
}
