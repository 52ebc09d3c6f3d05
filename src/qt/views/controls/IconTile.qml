import QtQuick
import Corvane

// One symbol among those that one can be picked from.
PressButton {
    id: tile

    required property string symbol
    required property bool isSelected

    width: 28
    height: 28
    spokenRole: Accessible.RadioButton
    Accessible.name: symbol.replace(/\./g, " ")
    isToggle: true
    isToggledOn: isSelected

    contentItem: SymbolText {
        symbol: tile.symbol
        size: 16
        color: tile.isSelected ? Theme.accent : Theme.primary
    }
    OnDemand {
        parent: tile
        wanted: tile.hovered || tile.visualFocus

        ThemedToolTip {
            text: tile.Accessible.name
            visible: true
        }
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: tile.isSelected ? Theme.faded(Theme.accent, 0.2) : Theme.faded(Theme.primary, tile.down ? 0.22 : tile.hovered ? 0.16 : 0.1)

        FocusRing {
            target: tile
        }
    }
}
