import QtQuick
import Corvane

// Title, search and the controls of the whole program.
Rectangle {
    id: header

    required property HeaderModel model
    required property bool isShowingSettings

    // Where the window is too narrow for one line, the buttons go to a second one.
    readonly property bool isNarrow: width < 930

    signal settingsToggled

    function takeKeyboard() {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    implicitHeight: line.height + 2 * Theme.spacingL
    color: Theme.windowBackground

    Flow {
        id: line

        x: 20
        y: 12
        width: parent.width - 2 * Theme.sheetPadding
        spacing: Theme.spacingL

        Row {
            width: line.width - search.width - 12 - (header.isNarrow ? 0 : buttons.width + 12)
            height: 48
            spacing: Theme.spacingL

            Drawing {
                width: 48
                height: 48
                source: ":/data/mac.svg"
            }
            BodyText {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - 48 - 12 - (problem.visible ? problem.width + 12 : 0)
                text: "Workspace Manager"
                elide: Text.ElideRight
                // The narrowest window has room for it at 20.
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 16
                font.pixelSize: Theme.largeTitleSize
                font.weight: Font.DemiBold
            }
            SymbolButton {
                id: problem

                anchors.verticalCenter: parent.verticalCenter
                visible: header.model.savingProblem !== ""
                implicitWidth: 32
                implicitHeight: 32
                symbol: "exclamationmark.triangle.fill"
                size: 20
                tint: Theme.orange
                tooltip: header.model.savingProblem
                onClicked: header.model.saveAgain()
            }
        }
        Item {
            width: search.width
            height: 48

            SearchField {
                id: search

                anchors.verticalCenter: parent.verticalCenter
                width: header.isNarrow ? Math.min(240, 0.42 * line.width) : 240
                value: header.model.searchText
                placeholderText: "Search workspaces..."
                onWritten: header.model.searchText = text
                Keys.onEscapePressed: header.model.searchText = ""
            }
        }
        Row {
            id: buttons

            height: header.isNarrow ? 32 : 48
            spacing: Theme.spacingL

            ActionButton {
                anchors.verticalCenter: parent.verticalCenter
                implicitWidth: 32
                symbol: header.model.themeSymbol
                tooltip: header.model.themeTooltip
                onClicked: {
                    Theme.changesOver = true;
                    header.model.toggleTheme();
                }
            }
            ActionButton {
                anchors.verticalCenter: parent.verticalCenter
                isProminent: header.model.focusMode
                tint: Theme.purpleFill
                ground: Theme.dark ? Theme.underPageBackground : Theme.controlBackground
                symbol: "scope"
                text: "Focus Mode"
                tooltip: header.model.focusModeTooltip
                isToggle: true
                isToggledOn: header.model.focusMode
                onClicked: header.model.toggleFocusMode()
            }
            ActionButton {
                anchors.verticalCenter: parent.verticalCenter
                isProminent: true
                symbol: "plus"
                text: "New Workspace"
                onClicked: header.model.openNewSpaceSheet()
            }
            ActionButton {
                anchors.verticalCenter: parent.verticalCenter
                implicitWidth: 32
                symbol: "gearshape.fill"
                symbolSize: 20
                ground: header.isShowingSettings ? Theme.faded(Theme.accent, 0.1) : Theme.controlBackground
                tooltip: "Settings"
                onClicked: header.settingsToggled()
            }
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.separator
    }
}
