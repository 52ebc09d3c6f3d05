import QtQuick
import Corvane

// What the parts of a row know of it.
Item {
    required property int index
    required property string key
    required property string name
    required property string opens
    required property string type
    required property string symbol
    required property string iconSource
    required property bool isEnabled
    required property bool isRunning
    required property var chips
    required property string playTooltip
    required property string enabledTooltip
    required property string separatorTitle
    required property bool isEditing
    required property string editedName
    required property bool isRowTarget
    required property bool isMissing
    required property string path
    required property ResourceListModel resources
    readonly property bool isSeparator: type === "separator"
    // The grounds of the rows stand apart.
    readonly property int inset: 3
    // What the row is moved by.
    property Item handle: null

    // It was removed by the keyboard, which goes to what takes its place.
    signal leaving
    // It is moved by the keyboard, which goes along.
    signal moving

    // A row of another card is no row of this list.
    function isOfThisList(source: var): bool {
        return !source || source.row?.resources === resources;
    }

    function moveBy(rows: int) {
        moving();
        resources.moveBy(key, rows);
    }
    function remove(byKey: bool) {
        if (byKey)
            leaving();
        resources.remove(key);
    }

    function takeKeyboard() {
        handle.forceActiveFocus(Qt.TabFocusReason);
    }
}
