import QtQuick
import Corvane

// The main window: the header over the list of workspaces.
Window {
    id: window

    required property HeaderModel header
    required property WorkspaceListModel workspaces

    title: "Corvane"
    width: 1000
    height: 700
    minimumWidth: 950
    minimumHeight: 650
    color: Theme.windowBackground

    Binding {
        target: Theme
        property: "dark"
        value: window.header.isDarkMode
    }

    Column {
        anchors.fill: parent

        HeaderView {
            id: headerView

            width: parent.width
            model: window.header
        }
        WorkspaceListView {
            width: parent.width
            height: parent.height - headerView.height
            workspaces: window.workspaces
        }
    }
}
