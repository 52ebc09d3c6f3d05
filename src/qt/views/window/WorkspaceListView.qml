import QtQuick
import QtQuick.Templates as T
import Corvane

// The cards, or what stands in their place.
Item {
    id: view

    required property WorkspaceListModel workspaces
    readonly property Item focusItem: Window.activeFocusItem
    property bool isDrawn: false

    signal newSpaceWanted

    // Not the list below, which would count as what has the keyboard.
    Accessible.role: Accessible.List
    Accessible.name: "Workspaces"
    onFocusItemChanged: {
        const reason = focusItem ? focusItem.focusReason : Qt.NoFocusReason; // qmllint disable
        if (reason === Qt.TabFocusReason || reason === Qt.BacktabFocusReason)
            Qt.callLater(list.reveal, focusItem);
    }
    Connections {
        target: view.Window.window
        enabled: !view.isDrawn

        function onFrameSwapped() {
            view.isDrawn = true;
        }
    }
    Connections {
        target: view.workspaces

        // The first match is seen from its top.
        function onSearched() {
            list.cancelFlick();
            list.contentY = list.originY - list.topMargin;
        }
        function onAdded(workspaceId: string) {
            const row = view.workspaces.rowOf(workspaceId);
            if (row < 0)
                return;
            list.cancelFlick();
            list.positionViewAtIndex(row, ListView.Contain);
            list.forceLayout();
            const card = list.itemAtIndex(row) as WorkspaceCardView;
            if (card)
                card.takeKeyboard();
        }
    }

    ResourceLists {
        id: resourceLists

        // As that of cards, or those that wait would be laid out anew.
        width: list.width - 36
    }
    ListView {
        id: list

        anchors.fill: parent
        leftMargin: Theme.spacingXL
        rightMargin: Theme.spacingXL
        topMargin: Theme.spacingXXL
        bottomMargin: Theme.spacingXXL
        spacing: Theme.spacingXXL
        clip: true
        model: view.workspaces
        reuseItems: true
        // It would move for seconds after the start, unseen, and have a frame painted at each step.
        highlightFollowsCurrentItem: false
        // A card more on either side, for the keyboard to go to, behind the first frame.
        cacheBuffer: view.isDrawn ? 150 : 0
        activeFocusOnTab: false
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ThemedScrollBar {
            policy: list.contentHeight + 48 > list.height ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
        }

        delegate: WorkspaceCardView {
            width: list.width - 36
            workspaces: view.workspaces
            lists: resourceLists
            onYChanged: Qt.callLater(list.sortCards)
            // A card that waits for its next workspace isn't there for the keyboard nor for screen
            // readers.
            ListView.onPooled: isInUse = false
            ListView.onReused: isInUse = true
        }

        function sortCards() {
            TabOrder.sortChildren(contentItem);
        }

        // Scrolls to what the keyboard has reached in a card, and some way on, so that the next card
        // is there to be reached.
        function reveal(item: Item) {
            if (!item)
                return;
            let ancestor = item;
            while (ancestor && ancestor !== contentItem)
                ancestor = ancestor.parent;
            if (!ancestor)
                return;
            const further = 64;
            const top = item.mapToItem(contentItem, 0, 0).y - further;
            const bottom = top + item.height + 2 * further;
            const wanted = Math.min(top, Math.max(contentY, bottom - height));
            const last = Math.max(originY - topMargin, originY + contentHeight + bottomMargin - height);
            contentY = Math.max(originY - topMargin, Math.min(wanted, last));
        }
    }

    Loader {
        anchors.centerIn: parent
        active: view.workspaces.showsEmptySearch
        sourceComponent: EmptySearchState {
            message: view.workspaces.emptySearchMessage
        }
    }
    Loader {
        anchors.centerIn: parent
        active: view.workspaces.showsEmptyWorkspaces
        sourceComponent: EmptyWorkspaceState {
            onActed: view.newSpaceWanted()
        }
    }
}
