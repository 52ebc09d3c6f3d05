import QtQuick
import QtQuick.Controls.Basic
import Corvane

// One folder, file or application in a panel's list.
AbstractButton {
    id: entry

    required property int index
    required property string title
    required property string symbol
    required property string iconSource
    property bool isSelected: false
    property bool listHasFocus: false
    readonly property color ink: isSelected && listHasFocus ? Theme.textOnTint : Theme.label

    height: 28
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.selectable: true
    Accessible.selected: isSelected

    contentItem: Item {
        Image {
            id: picture

            x: 12
            anchors.verticalCenter: parent.verticalCenter
            visible: entry.iconSource !== ""
            width: 20
            height: 20
            sourceSize: Qt.size(40, 40)
            source: entry.iconSource
        }
        SymbolText {
            x: 12
            width: picture.width
            anchors.verticalCenter: parent.verticalCenter
            visible: !picture.visible
            symbol: entry.symbol
            size: 18
            color: entry.isSelected && entry.listHasFocus ? Theme.textOnTint : entry.symbol === "folder.fill" ? Theme.blue : Theme.secondaryLabel
        }
        Text {
            anchors.left: picture.right
            anchors.leftMargin: 8
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: entry.title
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            font.pixelSize: Theme.bodySize
            color: entry.ink
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 4
        anchors.rightMargin: 4
        radius: Theme.smallRadius
        color: !entry.isSelected ? Theme.faded(Theme.primary, entry.hovered ? 0.04 : 0) : entry.listHasFocus ? Theme.blueFill : Theme.faded(Theme.primary, 0.12)
    }
}
