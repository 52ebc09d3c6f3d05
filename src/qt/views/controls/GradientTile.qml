import QtQuick
import Corvane

// A symbol in white on one of the card gradients, which run from top left to bottom right.
Item {
    id: tile

    property string symbol: ""
    property int symbolSize: 20
    property int gradientIndex: 0
    property real radius: Theme.tileRadius

    GradientSquare {
        anchors.fill: parent
        radius: tile.radius
        from: Theme.cardGradients[tile.gradientIndex][0]
        to: Theme.cardGradients[tile.gradientIndex][1]
    }
    SymbolText {
        anchors.centerIn: parent
        visible: tile.symbol !== ""
        symbol: tile.symbol
        size: tile.symbolSize
        color: Theme.textOnTint
    }
}
