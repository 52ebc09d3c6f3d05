import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Corvane

// Title, search and the controls of the whole program.
Rectangle {
    id: header

    required property HeaderModel model

    implicitHeight: row.implicitHeight + 2 * 12
    color: Theme.windowBackground

    RowLayout {
        id: row

        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            leftMargin: 20
            rightMargin: 20
        }
        spacing: 12

        GradientTile {
            implicitWidth: 48
            implicitHeight: 48
            symbol: "rectangle.3.group"
            symbolSize: 28
        }
        BodyText {
            text: "Workspace Manager"
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
        }
        Item {
            Layout.fillWidth: true
        }
        SearchField {
            model: header.model
        }
        ActionButton {
            implicitWidth: 32
            isProminent: false
            symbol: header.model.themeSymbol
            tooltip: header.model.themeTooltip
            Accessible.name: tooltip
            onClicked: header.model.toggleTheme()
        }
        ActionButton {
            isProminent: header.model.focusMode
            tint: Theme.purple
            symbol: "scope"
            text: "Focus Mode"
            tooltip: header.model.focusModeTooltip
            Accessible.checkable: true
            Accessible.checked: header.model.focusMode
            onClicked: header.model.toggleFocusMode()
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.separator
    }
}
