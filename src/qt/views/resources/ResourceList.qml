import QtQuick
import QtQuick.Templates as T
import Corvane

// The rows, made as they come into sight. A long list scrolls in itself.
ListView {
    id: list

    required property ResourceListModel resources
    required property int longest
    readonly property Item focusItem: Window.activeFocusItem
    // Where the keyboard goes when the row that it was in has gone.
    property int successor: -1
    // The row that the keyboard stays in, wherever it goes.
    property string kept: ""

    signal emptied

    height: Math.min(longest, Math.max(44, contentHeight))
    clip: true
    interactive: contentHeight > height
    highlightFollowsCurrentItem: false
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: false
    keyNavigationEnabled: false
    // A row more on either side, for the keyboard to go to.
    cacheBuffer: 150
    model: resources
    reuseItems: true
    T.ScrollBar.vertical: ThemedScrollBar {
        policy: list.interactive ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
    }

    onFocusItemChanged: {
        for (let item = focusItem; item; item = item.parent) {
            if (item.parent === contentItem)
                return positionViewAtIndex((item as ResourceRow)?.index ?? -1, ListView.Contain);
        }
    }
    onCountChanged: {
        if (successor >= 0)
            Qt.callLater(list.giveKeyboardOn);
    }

    function giveKeyboardOn() {
        const row = itemAtIndex(Math.min(successor, count - 1)) as ResourceRow;
        successor = -1;
        row ? row.takeKeyboard() : emptied();
    }
    function keepKeyboard() {
        const place = resources.rowOf(kept);
        kept = "";
        if (place < 0)
            return;
        positionViewAtIndex(place, ListView.Contain);
        const row = itemAtIndex(place) as ResourceRow;
        if (row)
            row.takeKeyboard();
    }
    function sortRows() {
        TabOrder.sortChildren(contentItem);
    }

    Connections {
        target: list.resources

        function onChanged() {
            if (list.kept !== "")
                Qt.callLater(list.keepKeyboard);
        }
    }

    delegate: ResourceRow {
        width: list.width
        resources: list.resources
        onYChanged: Qt.callLater(list.sortRows)
        ListView.onPooled: isInUse = false
        ListView.onReused: isInUse = true
        onLeaving: list.successor = index
        onMoving: list.kept = key
        onDraggedAt: y => edge.dragY = y
    }

    // A drag near an edge brings the rows beyond it.
    Timer {
        id: edge

        property real dragY: -1
        readonly property int reach: 28
        readonly property int step: dragY < 0 ? 0 : dragY < reach ? -6 : dragY > list.height - reach ? 6 : 0

        interval: 16
        repeat: true
        running: step !== 0 && list.interactive
        onTriggered: {
            const last = list.originY + list.contentHeight - list.height;
            list.contentY = Math.max(list.originY, Math.min(last, list.contentY + step));
        }
    }
}
