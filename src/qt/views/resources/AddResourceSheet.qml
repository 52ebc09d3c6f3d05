import QtQuick
import QtQuick.Templates as T
import QtQuick.Layouts
import Corvane

// Adds a resource, or changes one: its type, its name, and a path, an address or a command.
Sheet {
    id: popup

    required property AddResourceModel sheet

    wantedWidth: 480
    wantedHeight: 580
    // No key gives up what was typed.
    closePolicy: T.Popup.NoAutoClose
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
            text: popup.sheet.title
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
        }
        BodyText {
            Layout.bottomMargin: Theme.spacingM
            Layout.fillWidth: true
            text: popup.sheet.subtitle
            wrapMode: Text.Wrap
            color: Theme.secondaryLabel
        }
        BodyText {
            text: "Resource Type"
            font.weight: Font.DemiBold
        }
        GridLayout {
            Layout.fillWidth: true
            columns: 3
            rowSpacing: Theme.spacingL
            columnSpacing: Theme.spacingL

            Repeater {
                model: popup.sheet.tiles

                ResourceTypeCard {
                    Layout.fillWidth: true
                    isSelected: modelData.type === popup.sheet.type
                    onClicked: popup.sheet.select(modelData.type)
                }
            }
        }
        BodyText {
            Layout.topMargin: Theme.spacingS
            text: "Resource Name"
            font.weight: Font.DemiBold
        }
        ThemedTextField {
            id: nameField

            focus: true
            Layout.fillWidth: true
            value: popup.sheet.name
            placeholderText: "Enter a name for this resource"
            onWritten: popup.sheet.name = text
        }
        BodyText {
            Layout.topMargin: Theme.spacingS
            text: popup.sheet.pathHeading
            font.weight: Font.DemiBold
        }
        PickerButton {
            Layout.fillWidth: true
            visible: popup.sheet.isPicked
            symbol: popup.sheet.pickerSymbol
            text: popup.sheet.pickerTitle
            onClicked: popup.sheet.pick()
        }
        ThemedTextField {
            Layout.fillWidth: true
            visible: !popup.sheet.isPicked
            value: popup.sheet.path
            placeholderText: popup.sheet.pathPrompt
            Accessible.name: popup.sheet.pathHeading
            font.family: popup.sheet.type === "terminal" ? "monospace" : nameField.font.family
            onWritten: popup.sheet.path = text
        }
        RowLayout {
            readonly property bool isCommand: popup.sheet.type === "terminal"
            readonly property color tint: isCommand ? Theme.blue : popup.sheet.isStatusValid ? Theme.green : Theme.orange

            id: status

            visible: popup.sheet.statusText !== ""
            spacing: Theme.spacingS

            SymbolText {
                symbol: status.isCommand ? "info.circle" : popup.sheet.isStatusValid ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
                size: 14
                color: status.tint
            }
            BodyText {
                text: popup.sheet.statusText
                onTextChanged: announcement.say(this.text)
                font.pixelSize: 12
                color: status.tint

                Announcement {
                    id: announcement
                }
            }
        }
        Item {
            Layout.fillHeight: true
        }
        RowLayout {
            Layout.fillWidth: true

            BodyText {
                Layout.fillWidth: true
                text: popup.sheet.enabledTitle
            }
            ThemedSwitch {
                Accessible.name: popup.sheet.enabledTitle
                isOn: popup.sheet.enabledByDefault
                onSwitched: on => popup.sheet.enabledByDefault = on
            }
        }
        RowLayout {
            Layout.topMargin: Theme.spacingS
            Layout.alignment: Qt.AlignRight
            spacing: Theme.spacingL

            ActionButton {
                implicitWidth: Math.max(88, contentWidth)
                text: "Cancel"
                onClicked: popup.sheet.cancel()
            }
            ActionButton {
                isProminent: true
                implicitWidth: Math.max(88, contentWidth)
                text: popup.sheet.addTitle
                enabled: popup.sheet.canAdd
                onClicked: popup.sheet.add()
            }
        }
    }
}
