import QtQuick
import Corvane

// One application in the list of the picker.
PressButton {
    id: entry

    required property string name
    required property string iconSource
    required property bool isSelected
    readonly property color ink: isSelected ? Theme.textOnTint : Theme.label

    implicitHeight: 32
    focusPolicy: Qt.NoFocus
    spokenRole: Accessible.ListItem
    text: name
    Accessible.selectable: true
    Accessible.selected: isSelected

    contentItem: Item {
        ResourceIcon {
            id: picture

            x: 12
            anchors.verticalCenter: parent.verticalCenter
            symbol: "app.badge"
            iconSource: entry.iconSource
            size: 20
            color: entry.isSelected ? Theme.textOnTint : Theme.secondaryLabel
        }
        Text {
            anchors.left: picture.right
            anchors.leftMargin: Theme.spacingM
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingL
            anchors.verticalCenter: parent.verticalCenter
            text: entry.name
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            font.pixelSize: Theme.bodySize
            color: entry.ink
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.spacingXS
        anchors.rightMargin: Theme.spacingXS
        radius: Theme.smallRadius
        color: entry.isSelected ? Theme.blueFill : Theme.faded(Theme.primary, entry.hovered ? 0.04 : 0)
    }
}
