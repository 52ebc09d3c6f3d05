import QtQuick
import Corvane

// The tile of one type.
PressButton {
    id: tile

    required property var modelData
    required property bool isSelected

    implicitWidth: 130
    implicitHeight: 80
    text: modelData.title
    spokenRole: Accessible.RadioButton
    isToggle: true
    isToggledOn: isSelected

    contentItem: Item {
        Column {
            anchors.centerIn: parent
            spacing: Theme.spacingXS

            SymbolText {
                anchors.horizontalCenter: parent.horizontalCenter
                symbol: tile.modelData.symbol
                size: 32
                color: tile.isSelected ? Theme.accent : Theme.secondaryLabel
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: tile.text
                textFormat: Text.PlainText
                font.pixelSize: 12
                font.weight: Font.Medium
                color: Theme.label
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: tile.isSelected ? Theme.faded(Theme.accent, 0.1) : Theme.faded(Theme.primary, tile.hovered ? 0.04 : 0)
        border.width: tile.isSelected ? 2 : 1
        border.color: tile.isSelected ? Theme.accent : Theme.faded(Theme.secondaryLabel, 0.3)

        FocusRing {
            target: tile
            radius: 15
        }
    }
}
