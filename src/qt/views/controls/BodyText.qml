import QtQuick
import Corvane

// A text of the program's, that screen readers find too.
Text {
    textFormat: Text.PlainText
    font.pixelSize: Theme.bodySize
    color: Theme.label
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
