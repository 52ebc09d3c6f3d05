import QtQuick
import Corvane

// A line that says what is wrong; its place is kept while nothing is.
Item {
    id: line

    required property string text

    implicitHeight: 18
    Accessible.ignored: true

    SymbolText {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        visible: line.text !== ""
        symbol: "exclamationmark.triangle.fill"
        size: 16
        color: Theme.orange
    }
    BodyText {
        anchors.left: mark.right
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: text !== ""
        text: line.text
        elide: Text.ElideMiddle
    }
}
