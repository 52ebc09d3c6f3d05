import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Corvane

// The text that the list of workspaces is filtered by.
Rectangle {
    id: search

    required property HeaderModel model

    implicitWidth: 240
    implicitHeight: 18 + 2 * 7
    radius: Theme.smallRadius
    color: Theme.fieldBackground
    border.width: field.activeFocus ? 2 : 1
    border.color: field.activeFocus ? Theme.accent : Theme.separator

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        spacing: 6

        SymbolText {
            symbol: "magnifyingglass"
            size: 16
            color: Theme.secondaryLabel
        }
        TextField {
            id: field

            Layout.fillWidth: true
            padding: 0
            text: search.model.searchText
            placeholderText: "Search workspaces..."
            placeholderTextColor: Theme.secondaryLabel
            color: Theme.label
            selectionColor: Theme.accent
            selectedTextColor: Theme.textOnTint
            font.pixelSize: Theme.bodySize
            selectByMouse: true
            background: null
            Accessible.name: placeholderText
            onTextEdited: search.model.searchText = text
        }
    }
}
