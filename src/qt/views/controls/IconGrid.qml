import QtQuick
import QtQuick.Templates as T
import Corvane

// Symbols to pick one of, eight in a row.
Rectangle {
    id: grid

    required property list<string> icons
    required property string selectedIcon

    signal picked(icon: string)

    radius: Theme.mediumRadius
    color: Theme.faded(Theme.primary, 0.05)

    GridView {
        id: view

        readonly property int columns: 8

        anchors.fill: parent
        anchors.margins: Theme.spacingM
        clip: true
        model: grid.icons
        cellWidth: Math.floor(width / columns)
        cellHeight: 36
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: false
        T.ScrollBar.vertical: ThemedScrollBar {}

        delegate: Item {
            id: cell

            required property int index
            required property string modelData

            width: view.cellWidth
            height: view.cellHeight

            IconTile {
                anchors.centerIn: parent
                symbol: cell.modelData
                isSelected: cell.modelData === grid.selectedIcon
                onClicked: grid.picked(cell.modelData)
                onActiveFocusChanged: {
                    if (activeFocus)
                        view.positionViewAtIndex(cell.index, GridView.Contain);
                }
            }
        }
    }
}
