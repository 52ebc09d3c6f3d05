import QtQuick
import QtQuick.Templates as T
import QtQuick.Layouts
import Corvane

// Lets one pick an application: by its name, with the arrow keys, or with the pointer.
Window {
    id: window

    required property ApplicationPickerModel panel

    title: panel.title
    flags: Qt.Dialog
    width: 440
    height: 520
    minimumWidth: 320
    minimumHeight: 320
    color: Theme.windowBackground
    onClosing: panel.cancel()

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.sheetPadding
        spacing: Theme.spacingL
        Accessible.role: Accessible.Dialog
        Accessible.name: window.panel.title
        Keys.onEscapePressed: window.close()

        BodyText {
            Layout.fillWidth: true
            visible: text !== ""
            text: window.panel.message
            wrapMode: Text.Wrap
            font.weight: Font.DemiBold
        }
        SearchField {
            id: search

            Layout.fillWidth: true
            placeholderText: "Search applications..."
            value: window.panel.searchText
            focus: true
            onWritten: window.panel.searchText = text
            onAccepted: window.panel.confirm()
            Keys.onDownPressed: window.panel.moveSelection(1)
            Keys.onUpPressed: window.panel.moveSelection(-1)
            Keys.onPressed: event => {
                event.accepted = event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp;
                if (event.accepted)
                    window.panel.moveSelection(event.key === Qt.Key_PageDown ? list.rowsOnPage : -list.rowsOnPage);
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            radius: Theme.mediumRadius
            color: Theme.textBackground
            border.width: 1
            border.color: Theme.separator

            ListView {
                id: list

                readonly property int rowsOnPage: Math.max(1, Math.floor(height / 32) - 1)

                anchors.fill: parent
                anchors.margins: 1
                clip: true
                topMargin: Theme.spacingXS
                bottomMargin: Theme.spacingXS
                boundsBehavior: Flickable.StopAtBounds
                keyNavigationEnabled: false
                activeFocusOnTab: false
                model: window.panel
                Accessible.role: Accessible.List
                Accessible.name: "Applications"
                T.ScrollBar.vertical: ThemedScrollBar {}

                delegate: ApplicationEntry {
                    required property int index

                    width: list.width
                    isSelected: window.panel.selected === index
                    onPressed: window.panel.select(index)
                    onClicked: window.panel.select(index)
                    onDoubleClicked: window.panel.confirm()
                }
            }
            BodyText {
                anchors.centerIn: parent
                visible: list.count === 0
                text: window.panel.emptyText
                color: Theme.secondaryLabel
            }
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: Theme.spacingL

            ActionButton {
                implicitWidth: 88
                text: "Cancel"
                onClicked: window.close()
            }
            ActionButton {
                implicitWidth: 88
                isProminent: true
                enabled: window.panel.selected >= 0
                text: "Open"
                onClicked: window.panel.confirm()
            }
        }
    }
    Connections {
        target: window.panel

        function onChanged() {
            if (window.panel.selected >= 0)
                list.positionViewAtIndex(window.panel.selected, ListView.Contain);
        }
    }
    Component.onCompleted: search.forceActiveFocus()
}
