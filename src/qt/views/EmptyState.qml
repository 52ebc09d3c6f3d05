import QtQuick
import Corvane

// A symbol, a title and a text where there are no cards.
Column {
    id: state

    required property string symbol
    required property string title
    required property string message

    width: 420
    spacing: 12

    SymbolText {
        anchors.horizontalCenter: parent.horizontalCenter
        symbol: state.symbol
        size: 48
        color: Theme.secondaryLabel
    }
    BodyText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: state.title
        font.pixelSize: Theme.titleSize
        font.weight: Font.DemiBold
    }
    BodyText {
        width: parent.width
        text: state.message
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondaryLabel
    }
}
