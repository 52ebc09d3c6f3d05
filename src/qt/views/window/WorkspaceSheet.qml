import QtQuick
import QtQuick.Layouts
import Corvane

// Makes a workspace, or changes one.
Sheet {
    id: popup

    required property WorkspaceSheetModel sheet

    wantedWidth: 460
    wantedHeight: 460
    onClosed: {
        sheet.cancel();
        destroy();
    }

    Connections {
        target: popup.sheet

        function onClosed() {
            popup.close();
        }
    }

    contentItem: SheetColumn {
        spacing: Theme.spacingM
        Accessible.role: Accessible.Dialog
        Accessible.name: popup.sheet.title

        BodyText {
            Layout.bottomMargin: Theme.spacingM
            text: popup.sheet.title
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
        }
        BodyText {
            text: "Workspace Name"
            font.pixelSize: Theme.headlineSize
            font.weight: Font.DemiBold
        }
        ThemedTextField {
            Layout.fillWidth: true
            focus: true
            value: popup.sheet.name
            placeholderText: "Enter workspace name"
            onWritten: popup.sheet.name = text
            onAccepted: popup.sheet.commit()
        }
        BodyText {
            Layout.topMargin: Theme.spacingS
            text: "Description"
            font.pixelSize: Theme.headlineSize
            font.weight: Font.DemiBold
        }
        ThemedTextField {
            Layout.fillWidth: true
            value: popup.sheet.description
            placeholderText: "Enter workspace description (optional)"
            onWritten: popup.sheet.description = text
            onAccepted: popup.sheet.commit()
        }
        BodyText {
            Layout.topMargin: Theme.spacingS
            text: "Icon"
            font.pixelSize: Theme.headlineSize
            font.weight: Font.DemiBold
        }
        IconGrid {
            Layout.fillWidth: true
            Layout.preferredHeight: 140
            icons: popup.sheet.availableIcons
            selectedIcon: popup.sheet.selectedIcon
            onPicked: icon => popup.sheet.selectedIcon = icon
        }
        Item {
            Layout.fillHeight: true
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: Theme.spacingL

            ActionButton {
                implicitWidth: Math.max(88, contentWidth)
                isPlain: true
                text: "Cancel"
                onClicked: popup.sheet.cancel()
            }
            ActionButton {
                implicitWidth: Math.max(88, contentWidth)
                text: popup.sheet.commitTitle
                isProminent: true
                enabled: popup.sheet.canCommit
                onClicked: popup.sheet.commit()
            }
        }
    }
}
