import QtQuick
import Corvane

// A symbol, a title and a subtitle, and what stands at the right.
Item {
    id: row

    required property string icon
    required property string title
    required property string subtitle
    property color iconColor: Theme.accent
    property color titleColor: Theme.label
    default property alias control: slot.data

    width: parent ? parent.width : 0
    implicitHeight: Math.max(texts.implicitHeight, slot.childrenRect.height)

    SymbolText {
        width: 24
        anchors.verticalCenter: parent.verticalCenter
        symbol: row.icon
        size: 18
        color: row.iconColor
    }
    Column {
        id: texts

        x: 24 + 12
        width: parent.width - x - (slot.childrenRect.width > 0 ? slot.childrenRect.width + 12 : 0)
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacingXXS

        BodyText {
            width: parent.width
            text: row.title
            elide: Text.ElideRight
            font.pixelSize: 16
            color: row.titleColor
        }
        BodyText {
            width: parent.width
            text: row.subtitle
            wrapMode: Text.Wrap
            font.pixelSize: 14
            color: Theme.secondaryLabel
        }
    }
    Item {
        id: slot

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}
