import QtQuick
import QtQuick.Controls.Basic
import Corvane

// What a control says of itself when the pointer rests on it.
ToolTip {
    id: tip

    delay: 600
    padding: Theme.spacingS
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
