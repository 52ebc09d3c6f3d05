import QtQuick
import Corvane

// A symbol by its name, of that size as it is seen: symbols fill three quarters of the square that
// their font gives them. Decoration: whoever shows it carries the name for screen readers.
Text {
    required property string symbol
    property int size: Theme.bodySize

    text: Symbols.glyph(symbol)
    textFormat: Text.PlainText
    font.family: Symbols.fontFamily
    font.pixelSize: Math.max(1, Math.round(size * 4 / 3))
    color: Theme.label
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true
}
