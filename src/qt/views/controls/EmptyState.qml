import QtQuick
import Corvane

// A symbol, a title and a text where there are no cards, and perhaps what to do about it.
Column {
    id: state

    required property string symbol
    required property string title
    required property string message
    property bool isEncircled: false
    property string actionSymbol: ""
    property string actionTitle: ""

    signal acted

    width: 420
    spacing: Theme.spacingL

    Item {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 120
        height: state.isEncircled ? 120 : 48

        GradientTile {
            anchors.fill: parent
            visible: state.isEncircled
            radius: width / 2
            opacity: 0.3
        }
        SymbolText {
            anchors.centerIn: parent
            symbol: state.symbol
            size: state.isEncircled ? 60 : 48
            color: state.isEncircled ? Theme.blue : Theme.secondaryLabel
        }
    }
    BodyText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: state.title
        font.pixelSize: Theme.largeTitleSize
        font.weight: Font.DemiBold
    }
    BodyText {
        width: parent.width
        text: state.message
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondaryLabel
    }
    ActionButton {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: state.actionTitle !== ""
        height: 38
        isProminent: true
        symbol: state.actionSymbol
        text: state.actionTitle
        onClicked: state.acted()
    }
}
