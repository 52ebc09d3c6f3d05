import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Corvane

// Every preference, import and export, and help, in sections.
Sheet {
    id: popup

    required property SettingsModel settings

    width: 520
    height: Math.min(750, parent ? parent.height - 24 : 750)
    padding: 0

    contentItem: ColumnLayout {
        spacing: 0
        Accessible.role: Accessible.Dialog
        Accessible.name: "Settings"

        ColumnLayout {
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 20
            Layout.bottomMargin: 16
            spacing: 4

            SymbolText {
                Layout.alignment: Qt.AlignHCenter
                symbol: "gearshape.fill"
                size: 32
                color: Theme.accent
            }
            BodyText {
                Layout.alignment: Qt.AlignHCenter
                text: "Settings"
                font.pixelSize: Theme.titleSize
                font.weight: Font.DemiBold
            }
            BodyText {
                Layout.alignment: Qt.AlignHCenter
                text: "Configure Corvane Workspace Manager"
                color: Theme.secondaryLabel
            }
        }
        Flickable {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentHeight: sections.implicitHeight + 2 * 16
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar {}

            SettingsSections {
                id: sections

                x: 20
                y: 16
                width: scroll.width - 2 * 20
                settings: popup.settings
            }
        }
        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Theme.separator
        }
        ActionButton {
            Layout.alignment: Qt.AlignRight
            Layout.margins: 14
            implicitWidth: 88
            isProminent: true
            text: "Done"
            onClicked: popup.close()
        }
    }
}
