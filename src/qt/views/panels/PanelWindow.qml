import QtQuick
import QtQuick.Layouts
import Corvane

// A panel that saves or opens a file.
Window {
    id: window

    required property PanelModel panel

    title: panel.title
    flags: Qt.Dialog
    width: 680
    height: 520
    minimumWidth: 520
    minimumHeight: 380
    color: Theme.windowBackground
    onClosing: panel.cancel()

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 20
        spacing: 12
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
        PanelNameField {
            id: nameField

            Layout.fillWidth: true
            visible: window.panel.takesName
            panel: window.panel
        }
        PanelPath {
            Layout.fillWidth: true
            panel: window.panel
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            radius: 8
            color: Theme.textBackground
            border.width: list.activeFocus ? 2 : 1
            border.color: list.activeFocus ? Theme.accent : Theme.separator

            PanelShortcuts {
                id: shortcuts

                x: 2
                y: 2
                width: 150
                height: parent.height - 2 * 2
                panel: window.panel
            }
            PanelList {
                id: list

                anchors.left: shortcuts.right
                anchors.right: parent.right
                anchors.top: parent.top
                anchors.bottom: parent.bottom
                anchors.margins: 2
                panel: window.panel
                onPathBegun: text => nameField.startPath(text)
            }
        }
        PanelProblem {
            Layout.fillWidth: true
            Layout.topMargin: -6
            Layout.bottomMargin: -6
            text: window.panel.problem
        }
        RowLayout {
            spacing: 10

            ThemedCheckBox {
                text: "Show hidden files"
                visible: window.panel.takesName
                checked: window.panel.showsHidden
                onClicked: window.panel.showsHidden = checked
            }
            Item {
                Layout.fillWidth: true
            }
            ActionButton {
                implicitWidth: 88
                text: "Cancel"
                onClicked: window.close()
            }
            ActionButton {
                implicitWidth: 88
                isProminent: true
                enabled: window.panel.canConfirm
                text: window.panel.confirmTitle
                // Another window may come up before this one goes.
                onClicked: Qt.callLater(window.panel.confirm)
            }
        }
    }
    Component.onCompleted: window.panel.isSaving ? nameField.start() : list.forceActiveFocus()
}
