import Corvane

// A text that something is searched for by.
ThemedTextField {
    id: field

    implicitWidth: 240
    implicitHeight: 32
    leftPadding: 14 + 16 + 6
    rightPadding: 14

    SymbolText {
        x: 14
        height: parent.height
        symbol: "magnifyingglass"
        size: 16
        color: Theme.secondaryLabel
    }
}
