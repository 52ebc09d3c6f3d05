import QtQuick
import QtQuick.Templates as T
import QtQuick.Layouts

// What a sheet holds, from top to bottom. Where it has no room it scrolls, also to what the keyboard
// reaches.
Flickable {
    id: scroll

    property alias spacing: column.spacing
    default property alias content: column.data
    readonly property Item focused: Window.activeFocusItem
    // For the focus ring of what stands at the edge.
    readonly property int edge: 4

    contentHeight: column.height + 2 * edge
    implicitHeight: column.implicitHeight + 2 * edge
    clip: true
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ThemedScrollBar {
        policy: scroll.interactive ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
    }

    onFocusedChanged: {
        for (let item = focused; item; item = item.parent) {
            if (item !== column)
                continue;
            const top = column.mapFromItem(focused, 0, 0).y;
            const bottom = top + focused.height + 2 * edge - height;
            contentY = Math.max(0, Math.min(top, Math.max(bottom, contentY)));
            return;
        }
    }

    ColumnLayout {
        id: column

        x: scroll.edge
        y: scroll.edge
        width: scroll.width - 2 * scroll.edge
        height: Math.max(implicitHeight, scroll.height - 2 * scroll.edge)
    }
}
