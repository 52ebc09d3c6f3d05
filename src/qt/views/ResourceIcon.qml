import QtQuick
import Corvane

// The icon of an application where there is one, else the symbol of the type.
Item {
    id: view

    required property string symbol
    required property string icon
    property int size: 16

    implicitWidth: size
    implicitHeight: size

    Image {
        id: picture

        anchors.centerIn: parent
        visible: status === Image.Ready
        width: view.size
        height: view.size
        sourceSize: Qt.size(2 * view.size, 2 * view.size)
        source: view.icon !== "" ? "image://icon/" + encodeURIComponent(view.icon) : ""
    }
    SymbolText {
        anchors.centerIn: parent
        visible: !picture.visible
        symbol: view.symbol
        size: view.size
        color: Theme.secondaryLabel
    }
}
