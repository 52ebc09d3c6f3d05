import QtQuick
import Corvane

// One row of the list: a resource or a separator. Takes rows that are dropped on it.
ResourceRowData {
    id: entry

    // Where in the list a drag hovers over it; -1 where it left.
    signal draggedAt(y: real)

    // Not while it waits for its next resource: a list gives a row that has left it another one.
    property bool isInUse: true
    readonly property bool isLast: resources === null || index === resources.count - 1

    visible: isInUse
    handle: content.item ? content.item.handle : null // qmllint disable
    implicitHeight: content.implicitHeight + (isLast ? 0 : 1)
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: opens

    Loader {
        id: content

        width: parent.width
        sourceComponent: entry.isSeparator ? separator : regular
    }
    Component {
        id: regular

        RegularResourceRowContent {
            row: entry
        }
    }
    Component {
        id: separator

        SeparatorRowContent {
            row: entry
        }
    }
    Rectangle {
        visible: !entry.isLast
        anchors.bottom: parent.bottom
        x: 12
        width: parent.width - 2 * Theme.spacingL
        height: 1
        color: Theme.faded(Theme.separator, 0.3)
    }
    DropArea {
        function follow(drag: var) {
            entry.draggedAt(mapToItem(entry.ListView.view, drag.x, drag.y).y);
        }

        anchors.fill: parent
        onEntered: drag => {
            drag.accepted = entry.isOfThisList(drag.source) && entry.resources.enterRow(entry.index, drag.urls, drag.formats.includes("text/plain"), drag.text);
            if (drag.accepted)
                follow(drag);
        }
        onPositionChanged: drag => follow(drag)
        onExited: {
            entry.draggedAt(-1);
            entry.resources.leaveRow(entry.index);
        }
        onDropped: drop => {
            entry.draggedAt(-1);
            if (entry.resources.dropOnRow(entry.index, drop.urls, drop.formats.includes("text/plain"), drop.text))
                // Where another program dropped its text, a move would take the text away there.
                drop.accept(drop.source ? Qt.MoveAction : Qt.CopyAction);
        }
    }
    Rectangle {
        readonly property color tint: Theme.dropBlue

        anchors.fill: parent
        anchors.margins: entry.inset
        visible: entry.isRowTarget
        radius: Theme.mediumRadius
        color: Theme.faded(tint, 0.1)
        border.width: 2
        border.color: tint
    }
}
