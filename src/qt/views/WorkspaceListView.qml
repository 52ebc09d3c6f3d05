import QtQuick
import QtQuick.Controls.Basic
import Corvane

// The cards, or what stands in their place.
Item {
    id: view

    required property WorkspaceListModel workspaces

    ListView {
        id: list

        anchors.fill: parent
        leftMargin: 18
        rightMargin: 18
        topMargin: 24
        bottomMargin: 24
        spacing: 24
        clip: true
        model: view.workspaces
        activeFocusOnTab: false
        ScrollBar.vertical: ScrollBar {}

        delegate: WorkspaceCard {
            width: list.width - 36
            onStarted: view.workspaces.start(index)
        }
    }

    EmptyState {
        anchors.centerIn: parent
        visible: view.workspaces.showsEmptySearch
        symbol: "magnifyingglass"
        title: "No Results Found"
        message: view.workspaces.emptySearchMessage
    }
    EmptyState {
        anchors.centerIn: parent
        visible: view.workspaces.showsEmptyWorkspaces
        symbol: "rectangle.3.group"
        title: "No Workspaces Yet"
        message: "Create your first workspace to organize and launch your applications, files, and folders together."
    }
}
