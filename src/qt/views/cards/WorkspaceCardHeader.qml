import QtQuick
import Corvane

// What a workspace is called, whether it runs, and what can be done with it.
Item {
    id: header

    required property Item card

    implicitHeight: Math.max(tile.height, titles.height) + 2 * 18

    GradientTile {
        id: tile

        x: 18
        anchors.verticalCenter: parent.verticalCenter
        width: 36
        height: 36
        symbol: header.card.icon
        gradientIndex: header.card.gradient
    }
    Item {
        id: titles

        anchors {
            left: tile.right
            leftMargin: 12
            right: controls.left
            rightMargin: 12
            verticalCenter: parent.verticalCenter
        }
        height: name.height + (description.visible ? 2 + description.height : 0)

        ElidedText {
            id: name

            width: parent.width
            text: header.card.name
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
        }
        ElidedText {
            id: description

            anchors.bottom: parent.bottom
            width: parent.width
            visible: text !== ""
            text: header.card.description
            font.pixelSize: Theme.captionSize
            color: Theme.secondaryLabel
        }
    }
    Row {
        id: controls

        anchors {
            right: parent.right
            rightMargin: 18
            verticalCenter: parent.verticalCenter
        }
        spacing: 12

        // The keyboard stays with the button that a start or finish has changed.
        Loader {
            anchors.verticalCenter: parent.verticalCenter
            sourceComponent: header.card.isRunning ? whileRunning : otherwise
        }
        ActionButton {
            anchors.verticalCenter: parent.verticalCenter
            symbol: header.card.isExpanded ? "chevron.up" : "chevron.down"
            text: "Resources"
            foreground: header.card.isExpanded ? Theme.blue : Theme.label
            Accessible.checkable: true
            Accessible.checked: header.card.isExpanded
            Accessible.description: header.card.name
            onClicked: header.card.toggle()
        }
        WorkspaceMenuButton {
            anchors.verticalCenter: parent.verticalCenter
            card: header.card
        }
    }
    HairLine {
        anchors.bottom: parent.bottom
        x: 1
        width: parent.width - 2
    }

    Component {
        id: otherwise

        ActionButton {
            focus: true
            enabled: !header.card.isLoading
            implicitWidth: Math.max(120, contentWidth)
            isProminent: true
            isBusy: header.card.isLoading
            symbol: "play.fill"
            text: header.card.startTitle
            Accessible.description: header.card.name
            onClicked: header.card.workspaces.start(header.card.index)
        }
    }
    Component {
        id: whileRunning

        RunningControls {
            card: header.card
        }
    }
}
