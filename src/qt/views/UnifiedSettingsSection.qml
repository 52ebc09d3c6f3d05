import QtQuick
import Corvane

// A titled group of rows on a ground of its own.
Column {
    id: section

    required property string title
    required property string icon
    default property alias content: rows.data

    width: parent ? parent.width : 0
    spacing: 8

    Row {
        spacing: 8

        SymbolText {
            anchors.verticalCenter: parent.verticalCenter
            symbol: section.icon
            size: 16
            color: Theme.accent
        }
        BodyText {
            anchors.verticalCenter: parent.verticalCenter
            text: section.title
            font.pixelSize: 15
            font.weight: Font.DemiBold
        }
    }
    Rectangle {
        width: section.width
        height: rows.implicitHeight + 2 * 14
        radius: Theme.radius
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.separator

        Column {
            id: rows

            x: 14
            y: 14
            width: parent.width - 2 * 14
            spacing: 12
        }
    }
}
