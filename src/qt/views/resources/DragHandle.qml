import QtQuick
import Corvane

// Six dots by which a row is dragged, or moved with the arrow keys. What the drag carries is the
// row's index as text, and nothing else.
Item {
    id: handle

    required property ResourceRowData row

    width: 20
    height: 30
    Drag.hotSpot: Qt.point(x + width / 2, row.height / 2)
    Drag.dragType: Drag.Automatic
    Drag.supportedActions: Qt.MoveAction
    Drag.mimeData: {
        "text/plain": String(row.index)
    }
    activeFocusOnTab: true
    Accessible.role: Accessible.Grip
    Accessible.name: "Move"
    Accessible.focusable: true
    Accessible.onIncreaseAction: row.moveBy(1)
    Accessible.onDecreaseAction: row.moveBy(-1)
    Keys.onUpPressed: row.moveBy(-1)
    Keys.onDownPressed: row.moveBy(1)

    OnDemand {
        parent: handle
        wanted: handle.activeFocus

        Rectangle {
            anchors.fill: parent
            radius: Theme.smallRadius
            color: "transparent"
            border.width: 2
            border.color: Theme.faded(Theme.accent, 0.7)
        }
    }
    SymbolText {
        anchors.centerIn: parent
        symbol: "dots.grip"
        size: 18
        color: Theme.secondaryLabel
        opacity: 0.6
    }
    HoverHandler {
        // What the pointer will carry. It is gone after this call where nobody has read it.
        onHoveredChanged: {
            if (hovered)
                handle.row.grabToImage(result => handle.Drag.imageSource = result.url);
        }
        cursorShape: dragging.active ? Qt.ClosedHandCursor : Qt.OpenHandCursor
    }
    DragHandler {
        id: dragging

        target: null
        // Not a binding, as the drag begins and ends inside of this change.
        onActiveChanged: handle.Drag.active = active
    }
}
