import QtQuick
import Corvane

// The main window: the header over the list of workspaces, and the sheets above both.
Window {
    id: window

    required property HeaderModel header
    required property WorkspaceListModel workspaces
    required property SettingsModel settings

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

    Item {
        anchors.fill: parent

        ModernHeaderView {
            id: headerView

            width: parent.width
            model: window.header
            isShowingSettings: settingsSheet.opened
            onSettingsToggled: settingsSheet.opened ? settingsSheet.close() : settingsSheet.open()
        }
        WorkspaceListView {
            anchors.top: headerView.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            workspaces: window.workspaces
            onNewSpaceWanted: window.header.openNewSpaceSheet()
        }
    }

    Component {
        id: workspaceSheet

        WorkspaceSheet {}
    }
    Connections {
        target: window.header

        function onSheetChanged() {
            window.showSheet(window.header.newSpaceSheet);
        }
    }
    Connections {
        target: window.workspaces

        function onSheetChanged() {
            window.showSheet(window.workspaces.editSheet);
        }
    }

    function showSheet(sheet: WorkspaceSheetModel) {
        if (sheet)
            workspaceSheet.createObject(window.contentItem, {
                sheet: sheet
            }).open();
    }

    UnifiedSettingsSheet {
        id: settingsSheet

        settings: window.settings
    }
    ConfirmationDialog {
        title: "Finish Workspace?"
        message: window.workspaces.finishMessage
        confirmTitle: "Finish & Close"
        isWanted: message !== ""
        onConfirmed: window.workspaces.confirmFinish()
        onCancelled: window.workspaces.cancelFinish()
    }
}
