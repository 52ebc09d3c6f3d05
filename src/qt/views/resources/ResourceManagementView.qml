import QtQuick
import QtQuick.Layouts
import Corvane

// Every resource of an expanded card, with what can be done about each. Takes files that are
// dropped on it.
Item {
    id: view

    required property ResourceListModel resources

    implicitHeight: panel.height + 2 * 14

    Rectangle {
        id: panel

        x: 14
        y: 14
        width: parent.width - 2 * 14
        height: content.implicitHeight
        radius: 8
        color: Theme.dark ? Theme.controlBackground : Theme.textBackground
        border.width: 1
        border.color: Theme.separator

        DropArea {
            anchors.fill: parent
            onEntered: drag => {
                if (view.resources.enterList(drag.urls))
                    drag.accept(Qt.CopyAction);
                else
                    drag.accepted = false;
            }
            onPositionChanged: drag => drag.accept(Qt.CopyAction)
            onExited: view.resources.leaveList()
            onDropped: drop => {
                if (view.resources.dropOnList(drop.urls))
                    drop.accept(Qt.CopyAction);
            }
        }
        Column {
            id: content

            width: parent.width

            RowLayout {
                width: parent.width
                height: 52
                spacing: 8

                BodyText {
                    Layout.leftMargin: 18
                    Layout.fillWidth: true
                    text: "Resources"
                    font.pixelSize: 15
                    font.weight: Font.DemiBold
                }
                ActionButton {
                    symbol: "line.3.horizontal"
                    text: "Separator"
                    onClicked: view.resources.addSeparator()
                }
                ActionButton {
                    Layout.rightMargin: 14
                    isProminent: true
                    symbol: "plus"
                    text: "Add Resource"
                    onClicked: view.resources.openAddSheet()
                }
            }
            HairLine {}
            Column {
                visible: view.resources.count > 0
                width: parent.width

                Row {
                    x: 18
                    height: 34
                    spacing: 8

                    SymbolText {
                        anchors.verticalCenter: parent.verticalCenter
                        symbol: "folder.badge.gearshape"
                        size: 16
                        color: Theme.secondaryLabel
                    }
                    BodyText {
                        anchors.verticalCenter: parent.verticalCenter
                        text: "Drag anything from Finder to add resources, or drag rows to reorder"
                        font.pixelSize: 12
                        color: Theme.secondaryLabel
                    }
                }
                HairLine {}
                Repeater {
                    model: view.resources

                    ResourceRow {
                        width: content.width
                        resources: view.resources
                    }
                }
            }
            EmptyResourcesView {
                visible: view.resources.count === 0
                width: parent.width
            }
        }
        RedDropTargetOverlay {
            anchors.fill: parent
            visible: view.resources.isDropTarget
        }
    }

    Component {
        id: addSheet

        AddResourceSheet {}
    }
    Connections {
        target: view.resources

        function onSheetChanged() {
            if (view.resources.addSheet)
                addSheet.createObject(view, {
                    sheet: view.resources.addSheet
                }).open();
        }
    }
}
