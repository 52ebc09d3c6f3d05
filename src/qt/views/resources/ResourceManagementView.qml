import QtQuick
import QtQuick.Layouts
import Corvane

// Every resource of an expanded card, with what can be done about each. Takes files that are
// dropped on it.
Item {
    id: view

    // Null while the view of a workspace that has gone is on its way.
    required property ResourceListModel resources
    readonly property int count: resources ? resources.count : 0
    // So that the card's header and some of what is below it stay in sight.
    readonly property int longestList: Math.max(200, Window.height - 280)

    width: parent ? parent.width : 0
    implicitHeight: panel.height + 2 * 14

    Rectangle {
        id: panel

        x: 14
        y: 14
        width: parent.width - 2 * 14
        height: content.implicitHeight
        radius: Theme.mediumRadius
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
                spacing: Theme.spacingM

                BodyText {
                    Layout.leftMargin: Theme.spacingXL
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
                    id: addButton

                    Layout.rightMargin: Theme.spacingL
                    isProminent: true
                    symbol: "plus"
                    text: "Add Resource"
                    onClicked: view.resources.openAddSheet()
                }
            }
            HairLine {}
            Column {
                visible: view.count > 0
                width: parent.width
                Accessible.role: Accessible.List

                Row {
                    id: hint

                    x: 18
                    width: parent.width - 2 * Theme.spacingXL
                    height: Math.max(34, hintText.implicitHeight + 12)
                    spacing: Theme.spacingM

                    SymbolText {
                        anchors.verticalCenter: parent.verticalCenter
                        symbol: "folder.badge.gearshape"
                        size: 16
                        color: Theme.secondaryLabel
                    }
                    BodyText {
                        id: hintText

                        anchors.verticalCenter: parent.verticalCenter
                        width: hint.width - x
                        wrapMode: Text.Wrap
                        text: "Drag anything from Finder to add resources, or drag rows to reorder"
                        font.pixelSize: 12
                        color: Theme.secondaryLabel
                    }
                }
                HairLine {}
                ResourceList {
                    width: content.width
                    longest: view.longestList
                    resources: view.resources
                    onEmptied: addButton.forceActiveFocus(Qt.TabFocusReason)
                }
            }
            EmptyResourcesView {
                visible: view.count === 0
                width: parent.width
            }
        }
        RedDropTargetOverlay {
            anchors.fill: parent
            visible: view.resources ? view.resources.isDropTarget : false
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
                (addSheet.createObject(view, {
                        sheet: view.resources.addSheet
                    }) as AddResourceSheet).open();
        }
    }
}
