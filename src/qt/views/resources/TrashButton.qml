import QtQuick
import Corvane

// Removes a row at once.
SymbolButton {
    required property ResourceRowData row

    symbol: "trash"
    tint: Theme.red
    tooltip: "Remove"
    onClicked: row.remove(visualFocus)
    // The second press of two in a row isn't meant for the row that has come under the pointer.
    onDoubleClicked: {}
}
