import QtQuick
import Corvane

// Six dots by which a row is dragged. What the drag carries is the row's index as text, and nothing
// else.
Item {
    id: handle

    required property int index

    width: 20
    height: 30
    Drag.active: dragging.active
    Drag.dragType: Drag.Automatic
    Drag.supportedActions: Qt.MoveAction
    Drag.mimeData: {
        "text/plain": String(index)
    }
    Accessible.role: Accessible.Graphic
    Accessible.name: "Move"

    Grid {
        anchors.centerIn: parent
        columns: 2
        spacing: 4

        Repeater {
            model: 6

            Rectangle {
                width: 3
                height: 3
                radius: 1.5
                color: Theme.secondaryLabel
                opacity: 0.6
            }
        }
    }
    HoverHandler {
        cursorShape: dragging.active ? Qt.ClosedHandCursor : Qt.OpenHandCursor
    }
    DragHandler {
        id: dragging

        target: null
    }
}
