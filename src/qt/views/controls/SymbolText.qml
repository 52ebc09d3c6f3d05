import QtQuick
import Corvane

// A symbol by its name. Decoration: whoever shows it carries the name for screen readers.
Text {
    required property string symbol
    property int size: Theme.bodySize

    text: Symbols.glyph(symbol)
    textFormat: Text.PlainText
    font.family: Symbols.fontFamily
    font.pixelSize: size
    color: Theme.label
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true
}
