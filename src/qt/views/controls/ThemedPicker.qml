import QtQuick
import Corvane

// One of a few values, from a menu.
PressButton {
    id: picker

    required property list<string> titles
    required property var values
    required property string value
    // Any other text counts as the first.
    readonly property int current: Math.max(0, values.indexOf(value))

    signal picked(value: string)

    implicitHeight: 28
    spokenRole: Accessible.ComboBox
    Accessible.description: titles[current]
    onClicked: menu.open()

    contentItem: Item {
        Text {
            anchors.left: parent.left
            anchors.leftMargin: Theme.fieldPadding
            anchors.verticalCenter: parent.verticalCenter
            text: picker.titles[picker.current]
            textFormat: Text.PlainText
            font.pixelSize: Theme.bodySize
            color: Theme.label
            Accessible.ignored: true
        }
        SymbolText {
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingS
            anchors.verticalCenter: parent.verticalCenter
            symbol: "chevron.down"
            size: 16
            color: Theme.secondaryLabel
        }
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: picker.hovered ? Qt.darker(Theme.fieldBackground, 1.05) : Theme.fieldBackground
        border.width: 1
        border.color: Theme.separator

        FocusRing {
            target: picker
        }
    }

    ThemedMenu {
        id: menu

        opener: picker

        y: picker.height + 4
        width: Math.max(picker.width, 140)

        Repeater {
            model: picker.titles

            ThemedMenuItem {
                required property int index
                required property string modelData

                text: modelData
                isToggle: true
                isToggledOn: index === picker.current
                onTriggered: picker.picked(picker.values[index])

                SymbolText {
                    anchors.right: parent.right
                    anchors.rightMargin: Theme.spacingM
                    anchors.verticalCenter: parent.verticalCenter
                    visible: parent.index === picker.current
                    symbol: "checkmark"
                    size: 16
                    color: parent.highlighted ? Theme.textOnTint : Theme.label
                }
            }
        }
    }
}
