import QtQuick
import Corvane

// The main window: the header over the list of workspaces, and the sheets above both.
Window {
    id: window

    required property HeaderModel header
    required property WorkspaceListModel workspaces
    required property SettingsModel settings
    required property UndoModel undo
    property Sheet settingsSheet: null
    property Sheet finishDialog: null

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
            isShowingSettings: window.settingsSheet ? window.settingsSheet.opened : false
            onSettingsToggled: isShowingSettings ? window.settingsSheet.close() : window.openSettings()
        }
        WorkspaceListView {
            anchors.top: headerView.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            workspaces: window.workspaces
            onNewSpaceWanted: window.header.openNewSpaceSheet()
        }
        Loader {
            id: undoBar

            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.sheetPadding
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
        onActivated: window.openSettings()
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
            if (window.undo.text !== "" && !undoBar.item)
                undoBar.setSource("UndoBar.qml", {
                    undo: window.undo
                });
        }
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
        function onContentChanged() {
            if (window.workspaces.finishMessage !== "" && !window.finishDialog)
                window.makeFinishDialog();
        }
    }

    // By its file, as all that isn't seen at the start, so that none is read before it is wanted.
    function makeSheet(file: string, properties: var): Sheet {
        const component = Qt.createComponent(file);
        if (component.status !== Component.Ready)
            console.error(component.errorString());
        return component.createObject(contentItem, properties) as Sheet;
    }
    function showSheet(sheet: WorkspaceSheetModel) {
        if (sheet)
            makeSheet("WorkspaceSheet.qml", {
                sheet: sheet
            }).open();
    }
    function openSettings() {
        if (!settingsSheet)
            settingsSheet = makeSheet("../settings/UnifiedSettingsSheet.qml", {
                settings: settings
            });
        settingsSheet.open();
    }
    function makeFinishDialog() {
        finishDialog = makeSheet("../cards/ConfirmationDialog.qml", {
            title: "Finish Workspace?",
            confirmTitle: "Finish & Close",
            message: Qt.binding(() => workspaces.finishMessage),
            isWanted: Qt.binding(() => workspaces.finishMessage !== "")
        });
        finishDialog.confirmed.connect(workspaces.confirmFinish);
        finishDialog.cancelled.connect(workspaces.cancelFinish);
    }
}
