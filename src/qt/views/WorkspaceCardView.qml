import QtQuick
import Corvane

// One workspace: its header, and under it a preview of its resources or all of them.
Rectangle {
    id: card

    required property int index
    required property string name
    required property string description
    required property string icon
    required property int gradient
    required property bool isRunning
    required property bool isLoading
    required property bool isExpanded
    required property bool canSaveLayout
    required property string startTitle
    required property string statusText
    required property var chips
    required property string counter
    required property WorkspaceListModel workspaces
    // Only what a user changes moves; a card that comes into sight doesn't.
    property bool isReady: false

    Component.onCompleted: Qt.callLater(() => card.isReady = true)

    implicitHeight: header.height + content.height
    radius: Theme.radius
    color: Theme.controlBackground
    border.width: 1
    border.color: Theme.separator
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    WorkspaceCardHeader {
        id: header

        width: card.width
        card: card
    }
    Item {
        id: content

        anchors.top: header.bottom
        width: card.width
        height: card.isExpanded ? list.implicitHeight : preview.implicitHeight
        clip: heightChange.running

        Behavior on height {
            enabled: card.isReady

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
        Loader {
            id: list

            active: card.isExpanded
            width: card.width
            sourceComponent: ResourceManagementView {
                resources: card.workspaces.resourcesOf(card.index)
            }
        }
    }
}
