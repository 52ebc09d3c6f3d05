import QtQuick
import Corvane

// One workspace: its header, and under it a preview of its resources or all of them. The list gives
// a card that has left it another workspace, so nothing here is the workspace's own.
WorkspaceCardData {
    id: card

    required property ResourceLists lists
    // Not while it waits for its next workspace.
    property bool isInUse: true

    function takeKeyboard() {
        header.takeKeyboard();
    }

    onWorkspaceIdChanged: toggledWorkspace = ""
    implicitHeight: header.height + content.height
    visible: isInUse
    radius: Theme.radius
    color: Theme.controlBackground
    border.width: 1
    border.color: Theme.separator
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    // The ground of all but the header and the chips, square at the top.
    Rectangle {
        id: ground

        visible: card.isExpanded || preview.isEmpty
        y: header.height
        x: 1
        width: parent.width - 2
        height: parent.height - y - 1
        radius: card.radius - 1
        color: Theme.textBackground

        Rectangle {
            width: parent.width
            height: parent.radius
            color: parent.color
        }
    }
    WorkspaceCardHeader {
        id: header

        width: card.width
        card: card
    }
    Item {
        id: content

        y: header.height
        width: card.width
        height: card.isExpanded ? list.implicitHeight : preview.implicitHeight
        clip: heightChange.running

        Behavior on height {
            enabled: card.toggledWorkspace === card.workspaceId

            NumberAnimation {
                id: heightChange

                duration: 300
                easing.type: Easing.InOutQuad
            }
        }

        ResourcePreviewView {
            id: preview

            visible: !card.isExpanded
            width: card.width
            card: card
        }
        Item {
            id: list

            readonly property ResourceListModel resources: card.isInUse ? card.resources : null
            property Item view: null

            width: card.width
            implicitHeight: view ? view.implicitHeight : 0
            onResourcesChanged: {
                if (view)
                    card.lists.giveBack(view);
                view = resources ? card.lists.take(resources, list) : null;
            }
        }
    }
}
