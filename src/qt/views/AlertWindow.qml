import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Corvane

// An alert: a text, perhaps a checkbox, and buttons, the first of which is the default one.
Window {
    id: window

    required property AlertModel alert

    title: alert.title
    flags: Qt.Dialog
    width: 440
    height: content.implicitHeight + 2 * 20
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    color: Theme.windowBackground
    onClosing: alert.dismiss()

    Item {
        anchors.fill: parent
        anchors.margins: 20
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: window.alert.title
        Keys.onEscapePressed: window.close()
        Keys.onReturnPressed: window.alert.press(0, checkbox.checked)
        Keys.onEnterPressed: window.alert.press(0, checkbox.checked)

        ColumnLayout {
            id: content

            width: parent.width
            spacing: 14

            RowLayout {
                Layout.fillWidth: true
                spacing: 16

                SymbolText {
                    Layout.alignment: Qt.AlignTop
                    symbol: window.alert.symbol
                    size: 44
                    color: window.alert.isWarning ? Theme.orange : Theme.accent
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 8

                    Text {
                        Layout.fillWidth: true
                        text: window.alert.title
                        textFormat: Text.PlainText
                        wrapMode: Text.Wrap
                        font.pixelSize: 15
                        font.weight: Font.DemiBold
                        color: Theme.label
                    }
                    Text {
                        Layout.fillWidth: true
                        text: window.alert.message
                        textFormat: Text.PlainText
                        wrapMode: Text.Wrap
                        font.pixelSize: Theme.bodySize
                        lineHeight: 1.15
                        color: Theme.label
                    }
                    ThemedCheckBox {
                        id: checkbox

                        visible: window.alert.checkbox !== ""
                        text: window.alert.checkbox
                    }
                }
            }
            RowLayout {
                Layout.alignment: Qt.AlignRight
                layoutDirection: Qt.RightToLeft
                spacing: 10

                Repeater {
                    model: window.alert.buttons

                    ActionButton {
                        required property int index
                        required property string modelData

                        text: modelData
                        implicitWidth: Math.max(88, contentWidth)
                        isProminent: index === 0
                        tint: window.alert.firstButtonIsDestructive ? Theme.red : Theme.accent
                        onClicked: window.alert.press(index, checkbox.checked)
                    }
                }
            }
        }
    }
}
