import QtQuick
import QtQuick.Templates as T
import Corvane

// An alert: a text, perhaps a checkbox, and buttons, the first of which is the default one. Its
// size is fixed when it is shown, so nothing in it waits for a layout's later turn.
Window {
    id: window

    required property AlertModel alert
    readonly property int margin: Theme.sheetPadding
    readonly property int longestMessage: 420

    title: alert.title
    flags: Qt.Dialog
    width: 440
    height: texts.height + 18 + 32 + 2 * margin
    color: Theme.windowBackground
    onClosing: alert.dismiss(checkbox.checked)
    onVisibleChanged: {
        if (visible)
            announcement.say(alert.title + " " + alert.message);
    }

    Announcement {
        id: announcement
    }

    Item {
        anchors.fill: parent
        anchors.margins: window.margin
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: window.alert.title
        Keys.onEscapePressed: window.close()
        Keys.onReturnPressed: event => pressFirst(event)
        Keys.onEnterPressed: event => pressFirst(event)

        // Not by a key that is still held down from what led here.
        function pressFirst(event: KeyEvent) {
            if (!event.isAutoRepeat)
                window.alert.press(0, checkbox.checked);
        }

        SymbolText {
            id: mark

            width: 44
            symbol: window.alert.symbol
            size: 44
            color: window.alert.isWarning ? Theme.orange : Theme.accent
        }
        Item {
            id: texts

            x: mark.width + 16
            width: window.width - 2 * window.margin - x
            height: Math.max(mark.height, message.y + message.height + (checkbox.visible ? 12 + checkbox.height : 0))

            BodyText {
                id: heading

                width: parent.width
                text: window.alert.title
                wrapMode: Text.Wrap
                font.pixelSize: 15
                font.weight: Font.DemiBold
            }
            Flickable {
                id: message

                anchors.top: heading.bottom
                anchors.topMargin: Theme.spacingM
                width: parent.width
                height: Math.min(messageText.implicitHeight, window.longestMessage)
                contentHeight: messageText.implicitHeight
                interactive: contentHeight > height
                boundsBehavior: Flickable.StopAtBounds
                clip: true
                T.ScrollBar.vertical: ThemedScrollBar {}

                BodyText {
                    id: messageText

                    width: texts.width
                    text: window.alert.message
                    wrapMode: Text.Wrap
                    lineHeight: 1.15
                }
            }
            ThemedCheckBox {
                id: checkbox

                anchors.top: message.bottom
                anchors.topMargin: Theme.spacingL
                visible: text !== ""
                text: window.alert.checkbox
            }
        }
        Row {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            layoutDirection: Qt.RightToLeft
            spacing: Theme.spacingL

            Repeater {
                model: window.alert.buttons

                ActionButton {
                    required property int index
                    required property string modelData

                    width: Math.max(88, contentWidth)
                    text: modelData
                    isProminent: index === 0
                    tint: window.alert.firstButtonIsDestructive ? Theme.redFill : Theme.blueFill
                    onClicked: window.alert.press(index, checkbox.checked)
                }
            }
        }
    }
}
