import QtQuick
import QtQuick.Templates as T
import Corvane

// The dots at the end of a row, and its menu, which is made when it is wanted.
SymbolButton {
    id: button

    required property ResourceRowData row
    property T.Menu menu: null

    function open() {
        if (!menu)
            menu = ofRow.createObject(button);
        menu.open();
    }

    symbol: "ellipsis"
    tint: Theme.secondaryLabel
    tooltip: "More"
    spokenRole: Accessible.ButtonMenu
    Accessible.description: row.name
    onClicked: open()

    Component {
        id: ofRow

        ThemedMenu {
            opener: button
            y: button.height + 4
            x: button.width - width

            ThemedMenuItem {
                text: "Edit"
                onTriggered: button.row.resources.edit(button.row.key)
            }
            ThemedMenuItem {
                text: "Locate…"
                enabled: button.row.isMissing
                onTriggered: button.row.resources.locate(button.row.key)
            }
        }
    }
}
