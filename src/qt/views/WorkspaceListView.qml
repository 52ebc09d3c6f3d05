import QtQuick
import QtQuick.Controls.Basic
import Corvane

// The cards, or what stands in their place.
Item {
    id: view

    required property WorkspaceListModel workspaces

    signal newSpaceWanted

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
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {
            policy: list.contentHeight + 48 > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        }

        delegate: WorkspaceCard {
            width: list.width - 36
            workspaces: view.workspaces
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
        isEncircled: true
        title: "No Workspaces Yet"
        message: "Create your first workspace to organize and launch your applications, files, and folders together."
        actionSymbol: "plus.circle.fill"
        actionTitle: "Create Your First Workspace"
        onActed: view.newSpaceWanted()
    }
}
