import QtQuick
import QtQuick.Templates as T
import Corvane

// What a control says of itself when the pointer rests on it.
T.ToolTip {
    id: tip

    x: parent ? (parent.width - width) / 2 : 0
    y: -implicitHeight - 3
    implicitWidth: contentWidth + 2 * padding
    implicitHeight: contentHeight + 2 * padding
    margins: 6
    delay: 600
    padding: Theme.spacingS
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
    width: Math.min(implicitWidth, 420)

    contentItem: Text {
        text: tip.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font.pixelSize: 12
        color: Theme.label
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: Theme.tipBackground
        border.width: 1
        border.color: Theme.separator
    }
}
