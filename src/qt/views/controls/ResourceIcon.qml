import QtQuick
import Corvane

// The icon of an application where there is one, else the symbol of the type.
Item {
    id: view

    required property string symbol
    required property string iconSource
    property int size: 16
    property int symbolSize: 16
    property color color: Theme.secondaryLabel

    implicitWidth: size
    implicitHeight: size

    Image {
        id: picture

        anchors.centerIn: parent
        visible: status === Image.Ready
        width: view.size
        height: view.size
        sourceSize: Qt.size(2 * view.size, 2 * view.size)
        source: view.iconSource
    }
    SymbolText {
        anchors.centerIn: parent
        visible: !picture.visible
        symbol: view.symbol
        size: view.symbolSize
        color: view.color
    }
}
