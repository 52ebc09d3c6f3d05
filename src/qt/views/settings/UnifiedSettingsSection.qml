import QtQuick
import Corvane

// A titled group of rows on a ground of its own.
Rectangle {
    id: section

    required property string title
    required property string icon
    default property alias content: rows.data

    width: parent ? parent.width : 0
    height: whole.implicitHeight + 2 * whole.x
    radius: Theme.radius
    color: Theme.controlBackground
    border.width: 1
    border.color: Theme.separator

    Column {
        id: whole

        x: 16
        y: 16
        width: parent.width - 2 * x
        spacing: Theme.spacingL

        Row {
            spacing: Theme.spacingM

            SymbolText {
                anchors.verticalCenter: parent.verticalCenter
                symbol: section.icon
                size: 18
                color: Theme.secondaryLabel
            }
            BodyText {
                anchors.verticalCenter: parent.verticalCenter
                text: section.title
                font.pixelSize: 15
                font.weight: Font.DemiBold
            }
        }
        Column {
            id: rows

            width: parent.width
            spacing: Theme.spacingL
        }
    }
}
