import QtQuick
import Corvane

// A row that acts when pressed.
PressButton {
    id: button

    required property string symbol
    required property string title
    required property string subtitle
    property bool isDestructive: false

    width: parent ? parent.width : 0
    text: title
    Accessible.name: title
    Accessible.description: subtitle

    contentItem: SettingsRow {
        icon: button.symbol
        iconColor: button.isDestructive ? Theme.red : Theme.accent
        title: button.title
        titleColor: button.isDestructive ? Theme.red : Theme.label
        subtitle: button.subtitle

        SymbolText {
            symbol: "chevron.right"
            size: 12
            color: Theme.secondaryLabel
        }
    }
    background: Rectangle {
        anchors.fill: parent
        anchors.margins: -6
        radius: Theme.mediumRadius
        color: Theme.faded(Theme.primary, button.down ? 0.1 : button.hovered ? 0.05 : 0)

        FocusRing {
            target: button
        }
    }
}
