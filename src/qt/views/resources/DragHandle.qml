import QtQuick
import Corvane

// Six dots by which a row is dragged, or moved with the arrow keys. What the drag carries is the
// row's index as text, and nothing else.
Item {
    id: handle

    required property Item row

    width: 20
    height: 30
    Drag.dragType: Drag.Automatic
    Drag.supportedActions: Qt.MoveAction
    Drag.mimeData: {
        "text/plain": String(row.index)
    }
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: "Move"
    Accessible.focusable: true
    Keys.onUpPressed: row.resources.move(row.index, row.index - 1)
    Keys.onDownPressed: row.resources.move(row.index, row.index + 1)

    Rectangle {
        anchors.fill: parent
        visible: handle.activeFocus
        radius: Theme.smallRadius
        color: "transparent"
        border.width: 2
        border.color: Theme.faded(Theme.accent, 0.7)
    }

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
        // Not a binding, as the drag begins and ends inside of this change.
        onActiveChanged: handle.Drag.active = active
    }
}
