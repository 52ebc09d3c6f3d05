import QtQuick
import Corvane

// The way from the root to the folder; each folder on it is a button.
Item {
    id: bar

    required property PanelModel panel

    implicitHeight: 28

    ActionButton {
        id: up

        height: parent.height
        width: 32
        symbol: "chevron.up"
        tooltip: "Enclosing Folder"
        enabled: bar.panel.ancestors.length > 1
        onClicked: bar.panel.goUp()
    }
    Flickable {
        anchors.left: up.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        height: parent.height
        contentWidth: way.width
        contentHeight: height
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        // The end of a long way is what matters.
        onContentWidthChanged: contentX = Math.max(0, contentWidth - width)

        Row {
            id: way

            height: parent.height

            Repeater {
                model: bar.panel.ancestors

                Row {
                    id: step

                    required property int index
                    required property string modelData

                    height: way.height

                    SymbolText {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: step.index > 0
                        symbol: "chevron.right"
                        size: 16
                        color: Theme.secondaryLabel
                    }
                    ActionButton {
                        height: parent.height
                        isPlain: true
                        text: step.modelData
                        tooltip: "Go to " + step.modelData
                        onClicked: bar.panel.goToAncestor(step.index)
                    }
                }
            }
        }
    }
}
