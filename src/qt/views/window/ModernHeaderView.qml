import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Corvane

// Title, search and the controls of the whole program.
Rectangle {
    id: header

    required property HeaderModel model
    required property bool isShowingSettings

    signal settingsToggled

    implicitHeight: row.implicitHeight + 2 * 12
    color: Theme.windowBackground

    RowLayout {
        id: row

        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            leftMargin: 20
            rightMargin: 20
        }
        spacing: 12

        Drawing {
            implicitWidth: 48
            implicitHeight: 48
            source: ":/data/mac.svg"
        }
        BodyText {
            Layout.fillWidth: true
            text: "Workspace Manager"
            elide: Text.ElideRight
            // The narrowest window has room for it at 20.
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 16
            font.pixelSize: Theme.largeTitleSize
            font.weight: Font.DemiBold
        }
        SymbolButton {
            visible: header.model.savingProblem !== ""
            implicitWidth: 32
            implicitHeight: 32
            symbol: "exclamationmark.triangle.fill"
            size: 20
            tint: Theme.orange
            tooltip: header.model.savingProblem
            onClicked: header.model.saveAgain()
        }
        SearchField {
            text: header.model.searchText
            placeholderText: "Search workspaces..."
            onTextEdited: header.model.searchText = text
        }
        ActionButton {
            implicitWidth: 32
            symbol: header.model.themeSymbol
            tooltip: header.model.themeTooltip
            onClicked: {
                Theme.changesOver = true;
                header.model.toggleTheme();
            }
        }
        ActionButton {
            isProminent: header.model.focusMode
            tint: Theme.purpleFill
            ground: Theme.dark ? Theme.underPageBackground : Theme.controlBackground
            symbol: "scope"
            text: "Focus Mode"
            tooltip: header.model.focusModeTooltip
            Accessible.checkable: true
            Accessible.checked: header.model.focusMode
            onClicked: header.model.toggleFocusMode()
        }
        ActionButton {
            isProminent: true
            symbol: "plus"
            text: "New Workspace"
            onClicked: header.model.openNewSpaceSheet()
        }
        ActionButton {
            implicitWidth: 32
            symbol: "gearshape.fill"
            symbolSize: 20
            ground: header.isShowingSettings ? Theme.faded(Theme.accent, 0.1) : Theme.controlBackground
            tooltip: "Settings"
            onClicked: header.settingsToggled()
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.separator
    }
}
