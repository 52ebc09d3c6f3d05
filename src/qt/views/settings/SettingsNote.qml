import QtQuick
import Corvane

// A remark on a ground of its tint.
Rectangle {
    id: note

    required property string icon
    required property color tint
    required property string text

    width: parent ? parent.width : 0
    height: visible ? words.implicitHeight + 2 * Theme.fieldPadding : 0
    radius: Theme.mediumRadius
    color: Theme.faded(tint, 0.1)

    SymbolText {
        x: 10
        y: 10
        symbol: note.icon
        size: 16
        color: note.tint
    }
    BodyText {
        id: words

        x: 36
        y: 10
        width: parent.width - x - 10
        text: note.text
        wrapMode: Text.Wrap
        font.pixelSize: 12
    }
}
