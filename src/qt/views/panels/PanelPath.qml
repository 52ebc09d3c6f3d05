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
        id: visiblePart

        // So that the whole of a step is seen, its focus ring included.
        function reveal(step: Item) {
            const left = step.x - 4;
            const right = step.x + step.width + 4 - width;
            contentX = Math.max(0, Math.min(left, Math.max(right, contentX)));
        }

        anchors.left: up.right
        anchors.leftMargin: 4
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

            height: bar.height
            leftPadding: 4
            rightPadding: 4

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
                        anchors.verticalCenter: parent.verticalCenter
                        height: step.height - 2 * 4
                        isPlain: true
                        text: step.modelData
                        tooltip: "Go to " + step.modelData
                        onClicked: bar.panel.goToAncestor(step.index)
                        onActiveFocusChanged: {
                            if (activeFocus)
                                visiblePart.reveal(step);
                        }
                    }
                }
            }
        }
    }
}
