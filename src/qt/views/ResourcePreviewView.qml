import QtQuick
import Corvane

// One line with the first resources of a collapsed card.
Item {
    id: view

    required property Item card
    readonly property bool isEmpty: card.chips.length === 0

    implicitHeight: isEmpty ? empty.implicitHeight : chips.implicitHeight + 2 * 12

    BodyText {
        id: empty

        visible: view.isEmpty
        width: parent.width
        padding: 24
        horizontalAlignment: Text.AlignHCenter
        text: "No resources configured"
        font.pixelSize: 14
        color: Theme.gray
    }
    Flickable {
        visible: !view.isEmpty
        anchors.fill: parent
        contentWidth: chips.width + 2 * 20
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Row {
            id: chips

            x: 20
            y: 12
            spacing: 8

            Repeater {
                model: view.card.chips

                ResourceChip {
                    card: view.card
                }
            }
            BodyText {
                visible: view.card.counter !== ""
                anchors.verticalCenter: parent.verticalCenter
                text: view.card.counter
                font.pixelSize: 12
                color: Theme.secondaryLabel
            }
        }
    }
}
