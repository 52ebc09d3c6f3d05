import QtQuick
import Corvane

// One row of the list: a resource or a separator. Takes rows that are dropped on it.
ResourceRowData {
    id: row

    // Where in the list a drag hovers over it; -1 where it left.
    signal draggedAt(y: real)

    handle: isSeparator ? separator.handle : regular.handle
    implicitHeight: (isSeparator ? separator.implicitHeight : regular.implicitHeight) + (line.visible ? 1 : 0)
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: opens

    RegularResourceRowContent {
        id: regular

        visible: !row.isSeparator
        width: parent.width
        row: row
    }
    SeparatorRowContent {
        id: separator

        visible: row.isSeparator
        width: parent.width
        row: row
    }
    Rectangle {
        id: line

        visible: row.resources !== null && row.index < row.resources.count - 1
        anchors.bottom: parent.bottom
        x: 12
        width: parent.width - 2 * Theme.spacingL
        height: 1
        color: Theme.faded(Theme.separator, 0.3)
    }
    DropArea {
        function follow(drag: var) {
            row.draggedAt(mapToItem(row.ListView.view, drag.x, drag.y).y);
        }

        anchors.fill: parent
        onEntered: drag => {
            drag.accepted = row.isOfThisList(drag.source) && row.resources.enterRow(row.index, drag.urls, drag.formats.includes("text/plain"), drag.text);
            if (drag.accepted)
                follow(drag);
        }
        onPositionChanged: drag => follow(drag)
        onExited: {
            row.draggedAt(-1);
            row.resources.leaveRow(row.index);
        }
        onDropped: drop => {
            row.draggedAt(-1);
            if (row.resources.dropOnRow(row.index, drop.urls, drop.formats.includes("text/plain"), drop.text))
                // Where another program dropped its text, a move would take the text away there.
                drop.accept(drop.source ? Qt.MoveAction : Qt.CopyAction);
        }
    }
    Rectangle {
        readonly property color tint: Theme.dropBlue

        anchors.fill: parent
        anchors.margins: row.inset
        visible: row.isRowTarget
        radius: Theme.mediumRadius
        color: Theme.faded(tint, 0.1)
        border.width: 2
        border.color: tint
    }
}
