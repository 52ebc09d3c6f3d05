import QtQuick
import QtQuick.Layouts
import QtQuick.Controls.Basic
import Corvane

// A divider with a name, which a press lets one change.
Item {
    id: content

    required property Item row
    property bool isEditing: false

    implicitHeight: Math.max(44, layout.implicitHeight + 2 * 8) + 2 * row.inset

    Rectangle {
        anchors.fill: parent
        anchors.margins: content.row.inset
        radius: 8
        color: Theme.faded(Theme.controlBackground, 0.3)
    }
    RowLayout {
        id: layout

        x: 12
        width: parent.width - 2 * 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 10

        DragHandle {
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
            onClicked: {
                field.text = content.row.name;
                content.isEditing = true;
                field.forceActiveFocus(Qt.MouseFocusReason);
                field.selectAll();
            }

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

            visible: content.isEditing
            implicitWidth: 240
            font.pixelSize: 12
            placeholderText: "Section name"
            onAccepted: {
                content.isEditing = false;
                content.row.resources.rename(content.row.index, text);
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.minimumWidth: 40
            implicitHeight: 1
            color: Theme.faded(Theme.secondaryLabel, 0.3)
        }
        SymbolButton {
            symbol: "trash"
            tint: Theme.red
            tooltip: "Remove"
            onClicked: Qt.callLater(content.row.resources.remove, content.row.index)
        }
    }
}
