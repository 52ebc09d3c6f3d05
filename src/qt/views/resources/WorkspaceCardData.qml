import QtQuick
import Corvane

// What the parts of a card know of it.
Rectangle {
    required property string workspaceId
    required property int index
    required property string name
    required property string description
    required property string icon
    required property int gradient
    required property bool isRunning
    required property bool isLoading
    required property bool isExpanded
    required property ResourceListModel resources
    required property bool canSaveLayout
    required property string startTitle
    required property string statusText
    required property var chips
    required property string counter
    required property WorkspaceListModel workspaces

    // Only what a user changes moves; a card that takes another workspace doesn't.
    property string toggledWorkspace: ""

    function toggle() {
        toggledWorkspace = workspaceId;
        workspaces.toggleExpanded(workspaceId);
    }
}
