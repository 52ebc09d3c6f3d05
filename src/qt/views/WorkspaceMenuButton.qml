import QtQuick
import QtQuick.Controls.Basic
import Corvane

// The tile with the dots, and its menu.
ActionButton {
    id: button

    required property Item card

    implicitWidth: 28
    implicitHeight: 28
    symbol: "ellipsis"
    Accessible.name: "More"
    Accessible.role: Accessible.ButtonMenu
    Accessible.description: card.name
    onClicked: menu.open()

    ThemedMenu {
        id: menu

        y: button.height + 4
        x: button.width - width

        ThemedMenuItem {
            text: "Edit"
            onTriggered: button.card.workspaces.edit(button.card.index)
        }
        ThemedMenuItem {
            text: "Duplicate"
            onTriggered: button.card.workspaces.duplicate(button.card.index)
        }
        MenuSeparator {
            padding: 4
            contentItem: Rectangle {
                implicitHeight: 1
                color: Theme.separator
            }
        }
        ThemedMenuItem {
            text: "Delete"
            isDestructive: true
            onTriggered: Qt.callLater(button.card.workspaces.remove, button.card.index)
        }
    }
}
