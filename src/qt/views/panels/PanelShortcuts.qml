import QtQuick
import QtQuick.Controls.Basic
import Corvane

// Folders that are always near.
Rectangle {
    id: side

    required property PanelModel panel

    radius: 6
    color: Theme.controlBackground

    Column {
        x: 8
        y: 8
        width: parent.width - 2 * 8
        spacing: 2

        Repeater {
            model: side.panel.shortcuts

            PressButton {
                id: place

                required property int index
                required property var modelData
                readonly property bool isHere: side.panel.currentShortcut === index

                width: parent.width
                height: 30
                text: modelData.title
                onClicked: side.panel.goToShortcut(index)

                contentItem: Item {
                    SymbolText {
                        id: mark

                        x: 8
                        anchors.verticalCenter: parent.verticalCenter
                        symbol: place.modelData.symbol
                        size: 18
                        color: Theme.accent
                    }
                    Text {
                        anchors.left: mark.right
                        anchors.leftMargin: 8
                        anchors.right: parent.right
                        anchors.verticalCenter: parent.verticalCenter
                        text: place.text
                        elide: Text.ElideRight
                        font.pixelSize: Theme.bodySize
                        color: Theme.label
                        Accessible.ignored: true
                    }
                }
                background: Rectangle {
                    radius: Theme.smallRadius
                    color: Theme.faded(Theme.primary, place.isHere ? 0.1 : place.hovered ? 0.05 : 0)

                    FocusRing {
                        target: place
                    }
                }
            }
        }
    }
    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.separator
    }
}
