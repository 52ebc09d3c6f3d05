import QtQuick
import Corvane

// A symbol in white on one of the card gradients, which runs from top left to bottom right.
Item {
    id: tile

    required property string symbol
    property int symbolSize: 20
    property int gradientIndex: 0
    property int radius: 10
    readonly property var colors: Theme.cardGradients[gradientIndex]

    Rectangle {
        anchors.fill: parent
        radius: tile.radius
        gradient: Gradient {
            GradientStop {
                position: 0
                color: tile.colors[0]
            }
            GradientStop {
                position: 1
                color: tile.colors[1]
            }
        }
    }
    SymbolText {
        anchors.centerIn: parent
        symbol: tile.symbol
        size: tile.symbolSize
        color: "white"
    }
}
