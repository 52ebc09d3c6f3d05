import QtQuick
import Corvane

// The main window: the header over the list of workspaces, and the sheets above both.
Window {
    id: window

    required property HeaderModel header
    required property WorkspaceListModel workspaces
    required property SettingsModel settings
    required property UndoModel undo

    title: "Corvane"
    width: 1000
    height: 700
    minimumWidth: Math.min(950, Screen.desktopAvailableWidth)
    minimumHeight: Math.min(650, Screen.desktopAvailableHeight)
    color: Theme.windowBackground
    onActiveChanged: {
        if (active)
            workspaces.lookForFiles();
    }

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
        UndoBar {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.sheetPadding
            undo: window.undo
        }
    }

    Shortcut {
        sequences: [StandardKey.Find]
        onActivated: headerView.takeKeyboard()
    }
    Shortcut {
        sequences: [StandardKey.New]
        onActivated: window.header.openNewSpaceSheet()
    }
    Shortcut {
        sequence: "Ctrl+,"
        onActivated: settingsSheet.open()
    }
    Shortcut {
        sequences: [StandardKey.Undo]
        enabled: window.undo.text !== ""
        onActivated: window.undo.undo()
    }

    Announcement {
        id: announcement
    }
    Connections {
        target: window.undo

        function onChanged() {
            announcement.say(window.undo.text);
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
            if (!window.header.newSpaceSheet)
                window.workspaces.expectNew();
        }
    }
    Connections {
        target: window.workspaces

        function onAnnounced(text: string) {
            announcement.say(text);
        }
        function onSheetChanged() {
            window.showSheet(window.workspaces.editSheet);
        }
    }

    function showSheet(sheet: WorkspaceSheetModel) {
        if (sheet)
            (workspaceSheet.createObject(window.contentItem, {
                    sheet: sheet
                }) as WorkspaceSheet).open();
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
