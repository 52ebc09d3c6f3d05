import QtQuick
import QtQuick.Layouts
import Corvane

// A divider with a name, which a press lets one change.
Item {
    id: content

    required property ResourceRowData row
    readonly property Item handle: grip

    // The name that is being typed is the model's, so that it outlives this row.
    readonly property bool isEditing: row.isEditing
    property bool startsEditing: false

    function begin() {
        startsEditing = true;
        row.resources.beginRenaming(row.key);
    }

    onIsEditingChanged: {
        if (isEditing && startsEditing) {
            field.forceActiveFocus(Qt.MouseFocusReason);
            // Once it has its text.
            Qt.callLater(field.selectAll);
        } else if (!isEditing && field.hadFocus) {
            title.forceActiveFocus(Qt.TabFocusReason);
        }
        startsEditing = false;
    }

    implicitHeight: Math.max(44, layout.implicitHeight + 2 * Theme.spacingM) + 2 * row.inset

    Rectangle {
        anchors.fill: parent
        anchors.margins: content.row.inset
        radius: Theme.mediumRadius
        color: Theme.faded(Theme.controlBackground, 0.3)
    }
    RowLayout {
        id: layout

        x: 12
        width: parent.width - 2 * Theme.spacingL
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacingL

        DragHandle {
            id: grip

            row: content.row
        }
        Rectangle {
            implicitWidth: 40
            implicitHeight: 1
            color: Theme.faded(Theme.secondaryLabel, 0.3)
        }
        PressButton {
            id: title

            visible: !content.isEditing
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            text: content.row.separatorTitle
            onClicked: content.begin()

            contentItem: Text {
                text: title.text
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font.pixelSize: 12
                font.weight: Font.Medium
                color: title.hovered ? Theme.label : Theme.secondaryLabel
                Accessible.ignored: true
            }
            background: Item {
                FocusRing {
                    target: title
                }
            }
        }
        ThemedTextField {
            id: field

            // It loses the keyboard as it goes.
            property bool hadFocus: false

            visible: content.isEditing
            implicitWidth: 240
            font.pixelSize: 12
            placeholderText: "Section name"
            value: content.row.editedName
            onWritten: content.row.resources.setEditedName(content.row.key, text)
            onAccepted: {
                hadFocus = true;
                content.row.resources.submitName(content.row.key);
            }
            Keys.onEscapePressed: {
                hadFocus = true;
                content.row.resources.cancelRenaming(content.row.key);
            }
            onVisibleChanged: {
                if (visible)
                    hadFocus = false;
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.minimumWidth: 40
            implicitHeight: 1
            color: Theme.faded(Theme.secondaryLabel, 0.3)
        }
        TrashButton {
            row: content.row
        }
    }
}
