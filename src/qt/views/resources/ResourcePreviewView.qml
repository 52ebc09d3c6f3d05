import QtQuick
import Corvane

// One line with the first resources of a collapsed card.
Item {
    id: view

    required property WorkspaceCardData card
    // Read once from the model, for all chips.
    readonly property var resources: card.chips
    readonly property bool isEmpty: resources.length === 0
    // Chips stay when the card takes another workspace.
    property int chipCount: 0

    implicitHeight: isEmpty ? empty.height : Theme.chipHeight + 2 * Theme.spacingL
    onResourcesChanged: chipCount = Math.max(chipCount, resources.length)

    Loader {
        id: empty

        active: view.isEmpty
        width: parent.width

        sourceComponent: EmptyPreviewView {}
    }
    HairLine {
        visible: !view.isEmpty
        x: 1
        width: parent.width - 2
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
        // A plain wheel goes along the line while there is more of it that way.
        WheelHandler {
            onWheel: event => {
                const turned = event.angleDelta.x !== 0 ? event.angleDelta.x : event.angleDelta.y;
                const wanted = Math.max(0, Math.min(line.contentX - turned, line.contentWidth - line.width));
                event.accepted = line.clip && wanted !== line.contentX;
                if (event.accepted)
                    line.contentX = wanted;
            }
        }
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
            spacing: Theme.spacingM

            Repeater {
                model: view.chipCount

                ResourceChipView {
                    required property int index

                    card: view.card
                    resource: view.resources[index]
                    onVisualFocusChanged: {
                        if (visualFocus)
                            line.reveal(this);
                    }
                }
            }
            PressButton {
                id: more

                visible: view.card.counter !== ""
                anchors.verticalCenter: parent.verticalCenter
                padding: Theme.spacingS
                text: view.card.counter
                Accessible.description: "Show all resources"
                onClicked: view.card.toggle()
                onVisualFocusChanged: {
                    if (visualFocus)
                        line.reveal(this);
                }

                contentItem: BodyText {
                    text: more.text
                    font.pixelSize: 12
                    color: more.hovered ? Theme.label : Theme.secondaryLabel
                    Accessible.ignored: true
                }
                background: Item {
                    FocusRing {
                        target: more
                    }
                }
            }
        }
    }
}
