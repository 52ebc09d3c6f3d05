import QtQuick
import QtQuick.Layouts
import Corvane

// What a workspace is called, whether it runs, and what can be done with it.
Item {
    id: header

    required property Item card

    implicitHeight: row.implicitHeight + 2 * 18

    RowLayout {
        id: row

        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            margins: 18
        }
        spacing: 12

        GradientTile {
            implicitWidth: 36
            implicitHeight: 36
            symbol: header.card.icon
            gradientIndex: header.card.gradient
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            BodyText {
                Layout.fillWidth: true
                text: header.card.name
                elide: Text.ElideRight
                maximumLineCount: 1
                font.pixelSize: Theme.titleSize
                font.weight: Font.DemiBold
            }
            BodyText {
                Layout.fillWidth: true
                visible: header.card.description !== ""
                text: header.card.description
                elide: Text.ElideRight
                maximumLineCount: 1
                font.pixelSize: Theme.captionSize
                color: Theme.secondaryLabel
            }
        }
        RunningPill {
            visible: header.card.isRunning
        }
        BodyText {
            visible: header.card.isRunning
            text: header.card.statusText
            color: Theme.secondaryLabel
        }
        ActionButton {
            visible: !header.card.isRunning
            enabled: !header.card.isLoading
            implicitWidth: Math.max(120, contentWidth)
            isProminent: true
            isBusy: header.card.isLoading
            symbol: "play.fill"
            text: header.card.startTitle
            Accessible.description: header.card.name
            onClicked: header.card.workspaces.start(header.card.index)
        }
        ActionButton {
            visible: header.card.isRunning
            enabled: !header.card.isLoading
            isProminent: true
            tint: Theme.redFill
            isBusy: header.card.isLoading
            symbol: "power"
            text: "Finish"
            Accessible.description: header.card.name
            onClicked: header.card.workspaces.requestFinish(header.card.index)
        }
        ActionButton {
            visible: header.card.isRunning && header.card.canSaveLayout
            symbol: "rectangle.dock"
            text: "Save Layout"
            tooltip: "Save current window layout for this workspace (only available when workspace is running)"
            onClicked: Qt.callLater(header.card.workspaces.saveLayout, header.card.index)
        }
        ActionButton {
            symbol: header.card.isExpanded ? "chevron.up" : "chevron.down"
            text: "Resources"
            foreground: header.card.isExpanded ? Theme.blue : Theme.label
            Accessible.checkable: true
            Accessible.checked: header.card.isExpanded
            Accessible.description: header.card.name
            onClicked: header.card.workspaces.toggleExpanded(header.card.index)
        }
        WorkspaceMenuButton {
            card: header.card
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        x: 1
        width: parent.width - 2
        height: 1
        color: Theme.separator
    }
}
