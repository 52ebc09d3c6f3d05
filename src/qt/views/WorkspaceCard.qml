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

    implicitHeight: header.height + preview.height
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
    ResourcePreviewView {
        id: preview

        anchors.top: header.bottom
        width: card.width
        card: card
    }
}
