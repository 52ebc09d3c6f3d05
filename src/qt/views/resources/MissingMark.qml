import QtQuick
import Corvane

// Says of a resource that there is nothing at its path.
SymbolText {
    id: mark

    required property string path

    symbol: "exclamationmark.triangle.fill"
    size: 12
    color: Theme.orange
    Accessible.ignored: false
    Accessible.role: Accessible.StaticText
    Accessible.name: "Not found: " + path

    HoverHandler {
        id: pointer
    }
    OnDemand {
        parent: mark
        wanted: pointer.hovered

        ThemedToolTip {
            text: mark.Accessible.name
            visible: true
        }
    }
}
