import QtQuick
import QtQuick.Templates as T
import Corvane

// The tile with the dots, and its menu, which is made when it is wanted.
ActionButton {
    id: button

    required property WorkspaceCardData card
    property T.Menu menu: null

    implicitWidth: 28
    implicitHeight: 28
    symbol: "ellipsis"
    Accessible.name: "More"
    spokenRole: Accessible.ButtonMenu
    Accessible.description: card.name
    onClicked: {
        if (!menu)
            menu = ofWorkspace.createObject(button);
        menu.open();
    }

    Component {
        id: ofWorkspace

        ThemedMenu {
            opener: button
            y: button.height + 4
            x: button.width - width

            ThemedMenuItem {
                text: "Edit"
                onTriggered: button.card.workspaces.edit(button.card.workspaceId)
            }
            ThemedMenuItem {
                text: "Duplicate"
                onTriggered: button.card.workspaces.duplicate(button.card.workspaceId)
            }
            T.MenuSeparator {
                implicitHeight: implicitContentHeight + 2 * padding
                padding: Theme.spacingXS
                contentItem: Rectangle {
                    implicitHeight: 1
                    color: Theme.separator
                }
            }
            ThemedMenuItem {
                text: "Delete"
                isDestructive: true
                onTriggered: button.card.workspaces.remove(button.card.workspaceId)
            }
        }
    }
}
