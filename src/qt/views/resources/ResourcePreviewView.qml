import QtQuick
import Corvane

// One line with the first resources of a collapsed card. The line above it is the card header's.
Item {
    id: view

    required property Item card
    // Read once from the model, for all chips.
    readonly property var resources: card.chips
    readonly property bool isEmpty: resources.length === 0
    // Chips stay when the card takes another workspace.
    property int chipCount: 0

    implicitHeight: isEmpty ? empty.height : Theme.chipHeight + 2 * 12
    onResourcesChanged: chipCount = Math.max(chipCount, resources.length)

    Loader {
        id: empty

        active: view.isEmpty
        width: parent.width

        sourceComponent: EmptyPreviewView {}
    }
    Flickable {
        id: line

        visible: !view.isEmpty
        // Within the outline of the card.
        x: 1
        width: parent.width - 2
        height: parent.height
        contentWidth: chips.width + 2 * chips.x
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        clip: contentWidth > width
        // Another workspace is seen from its first chip on.
        readonly property string workspace: view.card.workspaceId
        onWorkspaceChanged: contentX = 0

        // Scrolls to what the keyboard has reached.
        function reveal(chip: Item) {
            const left = chip.x;
            const right = left + chip.width + 2 * chips.x;
            contentX = Math.min(left, Math.max(contentX, right - width));
        }

        Row {
            id: chips

            x: 19
            y: 12
            spacing: 8

            Repeater {
                model: view.chipCount

                ResourceChipView {
                    card: view.card
                    resource: view.resources[index]
                    onVisualFocusChanged: {
                        if (visualFocus)
                            line.reveal(this);
                    }
                }
            }
            BodyText {
                visible: view.card.counter !== ""
                anchors.verticalCenter: parent.verticalCenter
                text: view.card.counter
                font.pixelSize: 12
                color: Theme.secondaryLabel
            }
        }
    }
}
