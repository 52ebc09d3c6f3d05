import QtQuick
import QtQuick.Templates as T
import Corvane

// What stands above a window and takes all input until it is closed.
T.Popup {
    id: sheet

    // What had the keyboard before, and what that is in.
    property var before: []

    // To the control that opened the sheet, or the one nearest to where that was.
    function giveKeyboardBack() {
        for (const item of before) {
            if (!item || !item.visible)
                continue;
            // That can't be pressed now, but has the keyboard as soon as it can.
            if (item === before[0] && item.activeFocusOnTab)
                return item.forceActiveFocus(Qt.TabFocusReason);
            const next = item.nextItemInFocusChain();
            for (let inner = next; inner; inner = inner.parent) {
                if (inner === item)
                    return next.forceActiveFocus(Qt.TabFocusReason);
            }
            // What the control has changed into, which can't be pressed yet either.
            if (item instanceof Loader && item.enabled)
                return item.forceActiveFocus(Qt.TabFocusReason);
        }
    }

    // The size it has where the window has room for it.
    property int wantedWidth: 0
    property int wantedHeight: 0
    readonly property int most: 24

    implicitWidth: contentWidth + 2 * padding
    implicitHeight: contentHeight + 2 * padding
    width: Math.min(wantedWidth, parent ? parent.width - most : wantedWidth)
    height: wantedHeight > 0 ? Math.min(wantedHeight, parent ? parent.height - most : wantedHeight) : implicitHeight
    parent: T.Overlay.overlay
    onAboutToShow: {
        const items = [];
        for (let item = parent.Window.activeFocusItem; item; item = item.parent)
            items.push(item);
        before = items;
    }
    onClosed: giveKeyboardBack()
    anchors.centerIn: parent
    modal: true
    focus: true
    padding: Theme.sheetPadding
    closePolicy: T.Popup.CloseOnEscape

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.windowBackground
        border.width: 1
        border.color: Theme.separator
    }
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 120
        }
    }
}
